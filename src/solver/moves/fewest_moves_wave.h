#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <deque>

#include "solver/moves/fewest_moves_offers.h"
#include "solver/moves/fewest_moves_table.h"
#include "solver/search/chunk_ring.h"

namespace kavit {

// Takes on the positions of a bucket, in chunks, and makes their offers.
//
// Workers read what is listed in a chunk, and the keys, which never move or change; the table and
// the numbers in its rows belong to the storing thread. What the offers of a chunk bring into the
// same bucket is taken on with a later one. A chunk that would not be full is put off while others
// wait: it may be full by then.
template <typename Set>
class MovesWave final : public ChunkWork {
  public:
    MovesWave(const Grid& grid, const MovesBound& bound, MovesTable& table, int boxes)
        : grid_(grid), bound_(bound), table_(table), boxes_(boxes) {
        MakeRoom(1, 1);
    }

    // The bucket that chunks are made of from now on; none is under way.
    void Begin(BucketQueue& queue, int side, int bucket) {
        assert((side == 0 || side == 1) && bucket >= 0);
        queue_ = &queue;
        side_ = side;
        bucket_ = bucket;
    }
    [[nodiscard]] const MovesOffers& In(int slot) const {
        assert(slot >= 0 && static_cast<std::size_t>(slot) < offers_.size());
        return offers_[static_cast<std::size_t>(slot)];
    }

    bool List(std::int32_t number, std::int32_t waiting) override {
        Chunk& chunk = ChunkOf(number);
        chunk.Side = side_;
        chunk.Count = 0;
        while (chunk.Count == 0) {
            const std::int64_t here = queue_->Waiting(bucket_);
            if (here == 0 || (here < kPositions && waiting > 0)) return false;
            Fill(chunk, std::min(here, kPositions));
        }
        return true;
    }
    void Make(std::int32_t number, int slot, int thread) override {
        assert(static_cast<std::size_t>(slot) < offers_.size());
        assert(thread >= 0 && static_cast<std::size_t>(thread) < makers_.size());
        const Chunk& chunk = ChunkOf(number);
        assert(chunk.Count >= 1 && chunk.Count <= kPositions);
        MovesOffers& offers = offers_[static_cast<std::size_t>(slot)];
        MovesMaker<Set>& maker = makers_[static_cast<std::size_t>(thread)];
        offers.Begin(chunk.Count);
        for (std::size_t i = 0; i < chunk.Count; ++i) {
            __builtin_prefetch(chunk.Taken[i].Key);
            __builtin_prefetch(chunk.Taken[i].Key + boxes_);
        }
        for (std::size_t i = 0; i < chunk.Count; ++i) {
            const auto& [key, moves] = chunk.Taken[i];
            if (chunk.Side == 0)
                maker.MakePushes(key, boxes_, moves, offers);
            else
                maker.MakePulls(key, boxes_, moves, offers);
        }
    }
    void MakeRoom(int slots, int threads) override {
        while (static_cast<int>(offers_.size()) < slots) offers_.emplace_back(boxes_ + 1);
        while (static_cast<int>(makers_.size()) < threads) makers_.emplace_back(grid_, bound_);
    }

  private:
    static constexpr std::int64_t kPositions = 64;  // of a chunk, at most

    struct Position {
        const std::uint8_t* Key = nullptr;
        int Moves = 0;
    };
    struct Chunk {
        int Side = 0;
        std::size_t Count = 0;
        std::array<Position, kPositions> Taken{};
    };

    // Takes so many positions, and marks those as taken on that were not before, with fewer moves
    // than when they were put here.
    void Fill(Chunk& chunk, std::int64_t count) {
        assert(count >= 1 && count <= kPositions);
        std::array<std::int32_t, kPositions> taken{};
        for (std::int64_t i = 0; i < count; ++i) {
            taken[static_cast<std::size_t>(i)] = queue_->Take(bucket_);
            table_.PrefetchRow(taken[static_cast<std::size_t>(i)]);
        }
        for (std::int64_t i = 0; i < count; ++i) {
            const std::int32_t pos = taken[static_cast<std::size_t>(i)];
            if (table_.Expanded(pos, side_)) continue;
            table_.SetExpanded(pos, side_);
            assert(table_.Moves(pos, side_) < MovesTable::kUnknown);
            chunk.Taken[chunk.Count++] = {table_.Key(pos), table_.Moves(pos, side_)};
        }
    }
    [[nodiscard]] Chunk& ChunkOf(std::int32_t number) {
        assert(number >= 0);
        return chunks_[static_cast<std::size_t>(number % ChunkRing::kAhead)];
    }

    const Grid& grid_;
    const MovesBound& bound_;
    MovesTable& table_;
    int boxes_;
    BucketQueue* queue_ = nullptr;
    int side_ = 0;
    int bucket_ = 0;
    std::array<Chunk, ChunkRing::kAhead> chunks_;  // listed
    std::deque<MovesMaker<Set>> makers_;           // by thread
    std::deque<MovesOffers> offers_;               // by slot
};

}  // namespace kavit
