#pragma once

#include <cassert>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "solver/search/chunk_ring.h"
#include "solver/search/move_generator.h"
#include "solver/search/offer_chunk.h"

namespace kavit {

// Positions to expand, in order: a run of indices, or a list of them.
struct ExpandJob {
    std::uint8_t Side = kForwTag;
    std::int32_t Top = 0;
    std::int32_t End = 0;
    // Only positions on a path to a meeting. Storing the successors of one may put the next on a
    // path; the storing thread asks again when its turn comes.
    bool OnPathOnly = false;
    const std::vector<std::int32_t>* List = nullptr;  // positions Top..End of it, where given

    [[nodiscard]] std::int64_t Count() const { return std::int64_t{End} - Top + 1; }
    [[nodiscard]] std::int32_t PosAt(std::int64_t i) const {
        assert(i >= 0 && i < Count());
        return List == nullptr ? static_cast<std::int32_t>(Top + i)
                               : (*List)[static_cast<std::size_t>(Top + i)];
    }
};

// Makes the offers of positions, generated and hashed.
//
// Workers read the keys, parents, moves and men of the job's positions, which storing never changes
// while they are expanded: a successor differs from them in the number of its pushes by one, and
// that number is even or odd for good. Only their tags change, and those are single bytes with
// atomic access (PositionStore::OnPath).
class OfferMaker final : public ChunkWork {
  public:
    // Both must outlive it; the store has been cleared for the level of the grid.
    OfferMaker(const PositionStore& store, const Grid& grid);

    // What the chunks are made of from now on; between two jobs of the ring.
    void SetJob(const ExpandJob& job) {
        assert(job.Side == kForwTag || job.Side == kBackTag);
        job_ = job;
    }
    [[nodiscard]] OfferChunk& In(int slot) {
        assert(slot >= 0 && static_cast<std::size_t>(slot) < chunks_.size());
        return chunks_[static_cast<std::size_t>(slot)];
    }

    // The moves of one position, by the storing thread, in a chunk of their own.
    [[nodiscard]] OfferChunk& MakeOne(std::int32_t pos, std::uint8_t side);
    // A start position, likewise.
    [[nodiscard]] OfferChunk& MakeStart(const BoardArrays& arrays, const StartOffer& start);

    bool List(std::int32_t number, std::int32_t /*waiting*/) override {
        return First(number) < job_.Count();
    }
    void Make(std::int32_t number, int slot, int thread) override;
    void MakeRoom(int slots, int threads) override;

  private:
    // The chunk's first position in the job.
    [[nodiscard]] std::int64_t First(std::int32_t number) const {
        return std::int64_t{number} * OfferChunk::ParentsFor(boxes_);
    }
    void AddMoves(MoveGenerator& generator, std::int32_t pos, bool made, std::uint8_t side,
                  OfferChunk& chunk) const;

    const PositionStore& store_;
    const Grid& grid_;
    int boxes_;
    ExpandJob job_;
    std::vector<std::unique_ptr<MoveGenerator>> generators_;  // by thread
    std::deque<OfferChunk> chunks_;                           // by slot
    OfferChunk single_;
};

}  // namespace kavit
