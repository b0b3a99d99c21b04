#pragma once

#include "level/result.h"
#include "solver/search/expander.h"
#include "solver/search/search_state.h"

// The fewest man moves among all solutions with the fewest pushes, exactly.
//
// Relaxing stored positions one parent at a time cannot see that a dearer way into a position may
// be the cheaper way out of it. What settles it is small, because few positions lie on a
// push-optimal path at all: those are picked out of the store, with every push between them, and
// the man's walks are added up over this graph.
//
//  1. The middle. Every push-optimal solution makes one push from the last forward level to a
//     position of the backward side. The search finished the level in which the sides met, so
//     MeetParents holds one end of each such push; the other ends are looked up.
//  2. Outward. From the forward ends level by level to the start: every pull whose position is
//  stored
//     in the forward level one lower is a push of the graph. From the backward ends to the solved
//     positions by pushes in the same way. Nothing is stored.
//  3. Homeward. From the solved positions back to the start: for every position and every square on
//     which a push of the graph leaves the man there, the fewest moves from it to the end, by one
//     fill per position from all squares where he may begin a next push.
//
// Why it is exact. Step i of a push-optimal solution with L pushes is a position at distance i from
// the start and L - i from the end: were one of them smaller, so were L. The forward side holds all
// positions of each of its levels that can be solved (dead squares and frozen boxes refuse only
// what cannot), the backward side all of its levels, since no insertion was refused: a search that
// meets has never found the store full. So every push of every push-optimal solution is an edge of
// the graph, and every path through the graph is such a solution. A state of the man is the square
// on which his last push left him; his walks are shortest walks among the boxes of that position.
// Hence the least over all paths is the least over all push-optimal solutions.
//
// What it costs: one expansion and one lookup per move of each position on a path, one fill per
// position, and memory for the pushes of the graph (12 bytes each), nothing for the rest.

namespace kavit {

// Runs after the optimizer pass of OptLevel 3. GoOn: proved; Counters.MovesProved is set and
// solution 1 has the fewest moves. Stopped, OutOfMemory: nothing is claimed and the solutions are
// as they were.
[[nodiscard]] Result ProveMoves(SearchState& state, Expander& expander);

}  // namespace kavit
