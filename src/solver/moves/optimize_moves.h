#pragma once

#include "level/result.h"
#include "solver/search/expander.h"
#include "solver/search/search_state.h"

// The optimizer pass, after a successful search at OptLevel 2 and 3.
//
// The search has stored its levels with one way into each position, the cheapest from the level
// before. The pass goes over the levels again in the order in which they were made, and expands
// the positions that carry a tag of 10 or more: those on paths to a meeting, and at level 3 those
// that lost a child to a cheaper parent. Positions that are reached with fewer moves are improved,
// new ones are stored with such a tag, and every meeting is scored. Then it goes two levels past
// the fewest pushes on either side, where a longer push path may need fewer moves.
//
// Pushes are tested for freezing here as in the search: a frozen box is on no solution, so the test
// can only spare work.

namespace kavit {

// GoOn when the pass went through, OutOfMemory when the store filled, Stopped. Needs a search that
// ended with Ok; the kept solutions stay valid whatever it returns.
[[nodiscard]] Result OptimizeMoves(SearchState& state, Expander& expander);

}  // namespace kavit
