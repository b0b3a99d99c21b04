#pragma once

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <vector>

#include "solver/store/position_store.h"

// The successors of some positions in a row, on their way to the store. A successor costs two cache
// misses, its place in the hash table and, when it is a duplicate, the row it equals. One at a time
// they would be most of a search; in a chunk what lies in memory is fetched a few offers ahead of
// its turn. The order in which offers reach the store is the order in which they were made, so no
// count depends on the chunks, nor on who makes them.

namespace kavit {

// One expanded position and its offers, a range of the chunk.
struct ParentRun {
    std::int32_t Pos = 0;
    int First = 0;
    int End = 0;
    bool Made = false;  // false: left out, since no path led through it then
};

// Begins a cache line of its own: another thread fills the chunk beside it, and every offer writes
// the count.
class alignas(64) OfferChunk {
  public:
    static constexpr int kMostParents = 128;
    static constexpr int kMostOffers = 4096;  // about; a single position may have more

    // A position has at most 4 successors for each box.
    [[nodiscard]] static int ParentsFor(int boxes) {
        return std::clamp(kMostOffers / (4 * std::max(boxes, 1)), 1, kMostParents);
    }

    explicit OfferChunk(int boxes)
        : keyStride_(static_cast<std::size_t>(boxes + 8) / 8 * 8),
          offers_(static_cast<std::size_t>(ParentsFor(boxes) * 4 * std::max(boxes, 1))),
          keys_(offers_.size() * keyStride_ + 16) {
        parents_.reserve(static_cast<std::size_t>(ParentsFor(boxes)));
    }

    [[nodiscard]] const std::vector<ParentRun>& Parents() const { return parents_; }
    [[nodiscard]] int Count() const { return count_; }
    [[nodiscard]] Offer& At(int i) {
        assert(i >= 0 && i < count_);
        return offers_[static_cast<std::size_t>(i)];
    }
    // KeyLength bytes, with 8 readable bytes behind them: those of the next key.
    [[nodiscard]] std::uint8_t* KeyOf(int i) {
        assert(i >= 0 && i < count_);
        return keys_.data() + static_cast<std::size_t>(i) * keyStride_;
    }

    void AddParent(std::int32_t pos, bool made) {
        assert(parents_.size() < parents_.capacity());
        assert(parents_.empty() || parents_.back().End == count_);  // the runs leave no gap
        parents_.push_back({pos, count_, count_, made});
    }
    // A new offer of the last parent; the caller fills its key, Mix, Moves, Man and Beside.
    int Add() {
        assert(static_cast<std::size_t>(count_) < offers_.size() && parents_.back().Made);
        parents_.back().End = count_ + 1;
        return count_++;
    }
    void Empty() {
        count_ = 0;
        parents_.clear();
    }

    // Puts every offer at the beginning of its path; the table itself is not read.
    void Hash(const PositionStore& store) {
        store.WithTable([this](const auto& table) {
            int i = 0;
            for (; i + kHashLanes <= count_; i += kHashLanes)
                table.HomeLanes(&At(i), KeyOf(i), keyStride_);
            for (; i < count_; ++i) table.Home(At(i), KeyOf(i));
        });
    }

  private:
    std::size_t keyStride_;
    std::vector<Offer> offers_;
    std::vector<std::uint8_t> keys_;
    std::vector<ParentRun> parents_;
    int count_ = 0;
};

}  // namespace kavit
