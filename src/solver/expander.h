#pragma once

#include <cstdint>
#include <memory>

#include "level/result.h"
#include "solver/grid.h"
#include "solver/search_state.h"
#include "solver/store_pos.h"

namespace kavit {

// A range of positions of one side to expand.
struct ExpandJob {
    std::uint8_t Side = kForwTag;
    std::int32_t Top = 0;
    std::int32_t End = 0;
    // Backward only: the positions are the solved ones, where the man is placed freely, so that a
    // first pull counts one move.
    bool FirstPull = false;
    // Only positions with a tag of 10 or more, one at a time, because storing the successors of one
    // may tag the next.
    bool TaggedOnly = false;
};

// What a start position needs to be offered: the boxes are those on the given cells.
struct StartOffer {
    std::array<std::uint8_t, kCells> Boxes{};  // 1 = box
    int ManCell = 0;
    std::uint8_t Tag = kForwTag;
    bool NormalisedMan = false;  // the man is written as the smallest cell of his region
};

// The part of the solver that depends on how many words a level's bit board needs.
class Expander : public WalkMeter {
  public:
    // Offers every successor of the job's positions, in order: positions by index, boxes by cell,
    // directions as in Dir. GoOn when all are done, else what ended it.
    [[nodiscard]] virtual Result Expand(const ExpandJob& job) = 0;
    // Offers a start position; its parent is -1.
    [[nodiscard]] virtual Result OfferStart(const StartOffer& start) = 0;
    [[nodiscard]] virtual const Grid& Map() const = 0;
};

// The expander of the level in state.Arrays, whose store has been cleared for it.
[[nodiscard]] std::unique_ptr<Expander> MakeExpander(SearchState& state);

}  // namespace kavit
