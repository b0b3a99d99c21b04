#pragma once

#include <cassert>
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
    [[nodiscard]] Offer& At(int i) {
        assert(i >= 0 && static_cast<std::size_t>(i) < offers_.size());
        return offers_[static_cast<std::size_t>(i)];
    }
    // KeyLength bytes, with 8 readable bytes behind them.
    [[nodiscard]] std::uint8_t* KeyOf(int i) {
        assert(i >= 0 && (static_cast<std::size_t>(i) + 1) * keyStride_ <= keys_.size());
        return keys_.data() + static_cast<std::size_t>(i) * keyStride_;
    }

    void AddParent(std::int32_t pos) { parents_.push_back({pos, count_, count_}); }
    // A new offer of the last parent; the caller fills its key, Mix, Moves and Man.
    int Add() {
        assert(!parents_.empty());
        parents_.back().End = count_ + 1;
        return count_++;
    }
    void Empty() {
        count_ = 0;
        parents_.clear();
    }

    // Puts every offer at the beginning of its path and fetches what lies there.
    void Hash(const PositionStore& store);
    // Follows the path of offer i (when there is one) past all positions that cannot have its key,
    // and fetches the row that it ends on.
    template <typename Table>
    void Peek(const PositionStore& store, const Table& table, int i) {
        if (i >= count_) return;
        const std::int32_t pos = table.Candidate(At(i));
        if (pos != 0) store.PrefetchRow(pos);
    }
    // The same for a position that is looked for in a run of indices only.
    template <typename Table>
    void PeekRun(const PositionStore& store, const Table& table, int i, LayerRun run) {
        if (i >= count_) return;
        const std::int32_t pos = CandidateIn(table, i, run);
        if (pos != 0) store.PrefetchRow(pos);
    }
    // The position of offer i in the run, 0 when it is not stored there.
    template <typename Table>
    [[nodiscard]] std::int32_t Find(const PositionStore& store, const Table& table, int i,
                                    LayerRun run) {
        for (;;) {
            const std::int32_t pos = CandidateIn(table, i, run);
            if (pos == 0 || store.HasKey(pos, KeyOf(i))) return pos;
            table.Pass(At(i));
        }
    }

  private:
    // The next position of the run on the path of offer i that may have its key; 0 at its end.
    template <typename Table>
    std::int32_t CandidateIn(const Table& table, int i, LayerRun run) {
        for (;;) {
            const std::int32_t pos = table.Candidate(At(i));
            if (pos == 0 || (pos >= run.Top && pos <= run.End)) return pos;
            table.Pass(At(i));
        }
    }

    std::vector<Offer> offers_;
    std::vector<std::uint8_t> keys_;
    std::vector<ParentRun> parents_;
    std::size_t keyStride_ = 0;
    int count_ = 0;
};

}  // namespace kavit
