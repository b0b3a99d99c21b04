#pragma once

#include <cstdint>
#include <vector>

#include "solver/store/position_store.h"
#include "solver/types.h"

// Successors wait in a batch before they are stored. A successor costs two cache misses, its hash
// slot and, when it is a duplicate, the row it equals. One at a time they would be most of a
// search; in a batch the slots are fetched while the next keys are hashed, and the rows a few
// offers ahead of their turn. The order in which offers reach the store is the order in which they
// were made, so no count depends on the batch.

namespace kavit {

// A successor on its way to the store.
struct Offer {
    std::uint32_t Mix = 0;       // random mix of the key, for the fingerprint
    std::int32_t Slot = 0;       // where its probe path stands
    std::int32_t Step = 0;       // probe step
    std::uint32_t Reprobes = 0;  // steps made on the way to Slot
    std::int32_t Moves = 0;      // may be larger than its field: checked when it is stored
    std::uint8_t Man = 0;        // where he stands after the move, in key numbering
    std::uint8_t Beside = 0;     // of a push, where he stands before it; of a pull, where after the
                                 // push that it undoes
};

// The offers of one expanded position: a range of the batch.
struct ParentRun {
    std::int32_t Pos = 0;
    int First = 0;
    int End = 0;
};

class OfferBatch {
  public:
    static constexpr int kFull = 256;  // the batch is stored when it holds as many

    // Room for levels with up to `boxes` boxes. A position has at most 4 successors per box.
    void Reserve(int boxes);
    void StartSearch(const PositionStore& store);

    [[nodiscard]] bool Full() const {
        return count_ >= kFull || parents_.size() >= static_cast<std::size_t>(kFull);
    }
    [[nodiscard]] const std::vector<ParentRun>& Parents() const { return parents_; }
    [[nodiscard]] Offer& At(int i) { return offers_[static_cast<std::size_t>(i)]; }
    // KeyLength bytes, with 8 readable bytes behind them.
    [[nodiscard]] std::uint8_t* KeyOf(int i) {
        return keys_.data() + static_cast<std::size_t>(i) * keyStride_;
    }

    void AddParent(std::int32_t pos) { parents_.push_back({pos, count_, count_}); }
    // A new offer of the last parent; the caller fills its key, Mix, Moves and Man.
    int Add() {
        parents_.back().End = count_ + 1;
        offers_[static_cast<std::size_t>(count_)].Reprobes = 0;
        return count_++;
    }
    void Empty() {
        count_ = 0;
        parents_.clear();
    }

    // Works out the home slot of every offer and fetches the slots.
    void Hash(const PositionStore& store);
    // Follows the probe path of offer i (when there is one) past all slots that cannot hold its
    // key, and fetches the row that it ends on.
    void Peek(const PositionStore& store, int i);
    // The same for a position that is looked for in a run of indices only.
    void PeekRun(const PositionStore& store, int i, LayerRun run);
    // The position of offer i in the run, 0 when it is not stored there.
    [[nodiscard]] std::int32_t Find(const PositionStore& store, int i, LayerRun run);

  private:
    // Goes along the probe path of offer i to the next slot that may hold its key in the run; 0 at
    // the end of the path.
    std::int32_t NextCandidate(const PositionStore& store, int i, LayerRun run);

    std::vector<Offer> offers_;
    std::vector<std::uint8_t> keys_;
    std::vector<ParentRun> parents_;
    std::size_t keyStride_ = 0;
    int count_ = 0;
};

}  // namespace kavit
