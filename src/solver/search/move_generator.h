#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "solver/board/grid.h"
#include "solver/search/offer_chunk.h"
#include "solver/store/position_store.h"

// Position in, offers out. A generator has its own scratch (the boards of the position in hand) and
// changes nothing else, so that every thread can have one. Offers come in order: boxes by cell,
// directions as in Dir.

namespace kavit {

// What a start position needs to be offered: the boxes are those on the given cells.
struct StartOffer {
    std::array<std::uint8_t, kCells> Boxes{};  // 1 = box
    int ManCell = 0;
    std::uint8_t Tag = kForwTag;
    bool NormalisedMan = false;  // the man is written as the smallest cell of his region
};

// A position whose moves are wanted.
struct ParentPosition {
    PosRecord Record;                   // its Tag may be anything
    const std::uint8_t* Key = nullptr;  // exactly as many bytes as a key has
    int Boxes = 0;
};

class MoveGenerator {
  public:
    virtual ~MoveGenerator() = default;
    // Adds every successor as an offer of the chunk's last parent: pushes for the forward side,
    // pulls for the other.
    virtual void MakeMoves(const ParentPosition& parent, std::uint8_t side, OfferChunk& offers) = 0;
    // Adds the start position itself.
    virtual void MakeStart(const BoardArrays& arrays, const StartOffer& start,
                           OfferChunk& offers) = 0;
};

// For the level of the grid, which must outlive it.
[[nodiscard]] std::unique_ptr<MoveGenerator> MakeMoveGenerator(const Grid& grid);

}  // namespace kavit
