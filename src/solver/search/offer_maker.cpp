#include "solver/search/offer_maker.h"

#include <algorithm>
#include <cassert>

namespace kavit {

OfferMaker::OfferMaker(const PositionStore& store, const Grid& grid)
    : store_(store), grid_(grid), boxes_(store.KeyLength() - 1), single_(boxes_) {
    MakeRoom(1, 1);
}

void OfferMaker::MakeRoom(int slots, int threads) {
    while (static_cast<int>(chunks_.size()) < slots) chunks_.emplace_back(boxes_);
    while (static_cast<int>(generators_.size()) < threads)
        generators_.push_back(MakeMoveGenerator(grid_));
}

void OfferMaker::Make(std::int32_t number, int slot, int thread) {
    assert(number >= 0 && First(number) < job_.Count());
    assert(thread >= 0 && static_cast<std::size_t>(thread) < generators_.size());
    MoveGenerator& generator = *generators_[static_cast<std::size_t>(thread)];
    OfferChunk& chunk = In(slot);
    chunk.Empty();
    const std::int64_t first = First(number);
    const std::int64_t end = std::min(First(number + 1), job_.Count());
    if (job_.List == nullptr) store_.PrefetchRows(job_.PosAt(first), job_.PosAt(end - 1));
    for (std::int64_t i = first; i < end; ++i) {
        const std::int32_t pos = job_.PosAt(i);
        // Position 0 is a run that was stopped before its start was stored: only the stop is due.
        const bool made = pos > 0 && (!job_.OnPathOnly || store_.OnPath(pos));
        AddMoves(generator, pos, made, job_.Side, chunk);
    }
    chunk.Hash(store_);
}

void OfferMaker::AddMoves(MoveGenerator& generator, std::int32_t pos, bool made, std::uint8_t side,
                          OfferChunk& chunk) const {
    chunk.AddParent(pos, made);
    if (made)
        generator.MakeMoves({store_.UntaggedRecord(pos), store_.KeyAt(pos), boxes_}, side, chunk);
}

OfferChunk& OfferMaker::MakeOne(std::int32_t pos, std::uint8_t side) {
    assert(pos >= 1);
    single_.Empty();
    AddMoves(*generators_.front(), pos, true, side, single_);
    single_.Hash(store_);
    assert(single_.Parents().size() == 1);
    return single_;
}

OfferChunk& OfferMaker::MakeStart(const BoardArrays& arrays, const StartOffer& start) {
    single_.Empty();
    single_.AddParent(-1, true);
    generators_.front()->MakeStart(arrays, start, single_);
    single_.Hash(store_);
    return single_;
}

}  // namespace kavit
