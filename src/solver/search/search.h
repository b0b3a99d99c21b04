#pragma once

#include "level/result.h"
#include "solver/search/expander.h"
#include "solver/search/search_state.h"

// One push-optimal search from both ends.
//
// Both sides grow by whole levels: level k of the forward side holds exactly the positions first
// reached with k pushes, level k of the backward side those first reached with k pulls from a
// solved placement. The side whose next level is smaller goes next. The first level that meets the
// other side therefore meets it at the fewest pushes; with OptLevel above 0 it is finished, so that
// all meetings of that push count are seen. A side that makes no new position has stored all that
// can be reached from its end, and proves that there is no solution.

namespace kavit {

// Sets the counters and kept solutions to what they are before a search.
void InitSearchCounters(SearchState& state);

// Stores the start positions, then searches: Ok, NoSolution, OutOfMemory or Stopped.
[[nodiscard]] Result Search(SearchState& state, Expander& expander);

}  // namespace kavit
