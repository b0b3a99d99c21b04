#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "level/result.h"
#include "solver/search/search_state.h"
#include "solver/search/walk_meter.h"

namespace kavit {

// A range of positions of one side to expand.
struct ExpandJob {
    std::uint8_t Side = kForwTag;
    std::int32_t Top = 0;
    std::int32_t End = 0;
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

// A push between two positions, seen from the one whose moves were generated.
struct Link {
    std::int32_t Near = 0;   // index into the list of positions that was asked for
    std::int32_t Far = 0;    // the stored position at the other end of the push
    std::uint8_t Stand = 0;  // where the man stands before the push, in key numbering
    std::uint8_t End = 0;    // and where after it
};

// A square of the man and what it costs.
struct ManCost {
    std::uint8_t Man = 0;  // in key numbering
    int Cost = 0;
};

// The part of the solver that depends on how many words a level's bit board needs.
class Expander : public WalkMeter {
  public:
    // Offers every successor of the job's positions, in order: positions by index, boxes by cell,
    // directions as in Dir. GoOn when all are done, else what ended it.
    [[nodiscard]] virtual Result Expand(const ExpandJob& job) = 0;
    // Offers a start position; its parent is -1.
    [[nodiscard]] virtual Result OfferStart(const StartOffer& start) = 0;
    // All pushes out of the given positions (side kForwTag), or into them (kBackTag), whose other
    // end is stored in the run; grouped by position, in their order. Counts nothing. False when
    // StopSea was set.
    [[nodiscard]] virtual bool FindLinks(const std::vector<std::int32_t>& positions,
                                         std::uint8_t side, LayerRun run,
                                         std::vector<Link>& links) = 0;
    // For every target square of a position the least of cost + walk over all sources. All squares
    // are in one region of the man.
    virtual void SpreadCosts(std::int32_t pos, const std::vector<ManCost>& sources,
                             std::vector<ManCost>& targets) = 0;
};

// The expander of the level in state.Arrays, whose store has been cleared for it.
[[nodiscard]] std::unique_ptr<Expander> MakeExpander(SearchState& state);

}  // namespace kavit
