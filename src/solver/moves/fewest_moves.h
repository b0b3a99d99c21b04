#pragma once

#include <cstdint>
#include <vector>

#include "level/result.h"
#include "solver/board/board_arrays.h"
#include "solver/hooks.h"
#include "solver/moves/fewest_moves_table.h"
#include "solver/moves/fewest_moves_trace.h"
#include "solver/search/chunk_ring.h"

// The fewest man moves of any solution, whatever its pushes.
//
// A position is the boxes and the square on which a push has left the man; from one to the next he
// walks and pushes. Cheapest paths are looked for from both ends: forward from the start, backward
// from the solved positions, where a pull undoes a push and a walk leads to the squares on which
// the push before may have left him. Both sides keep their moves in the same table, so that they
// meet in a row that has a number from either.
//
//  1. Every side takes on its positions by value: 2 * moves plus (forward) or less (backward) the
//     worth of the position (fewest_moves_bound.h), counted from the least that the side can have.
//     Because the worth is consistent, values never fall along a path, and a position that is taken
//     on has its fewest moves.
//  2. The side with fewer positions waiting goes on, by one value.
//  3. A row that has moves from both sides is a solution. `best` is the fewest moves so far; at the
//     beginning those of the best solution known.
//  4. The end is reached when the values of both sides make up 2 * best - D, where D is the worth
//     of the start less the largest worth of a solved position.
//
// Why no solution with fewer moves is lost. Take one of c < best moves for the best at the end. Its
// positions have forward value + backward value = 2c - D, if both numbers of moves are the fewest.
// Let s be its last position whose forward value the forward side has passed. It was taken on, and
// has offered the next, t. The forward side has not passed the value of t, so the backward value of
// t is below 2 * best - D less what the forward side has passed, which is what the backward side
// has passed: t was offered by both sides, and whichever came second saw the other's moves.
//
// What is cut, and why it may be:
//  - Pushes to dead squares, and pushes that freeze a box in a group not all on goals: no solution
//    comes of them at any number of moves. These are the only pushes that the push search refuses
//    as well, so nothing that it refused is missing here.
//  - Pulls to squares that no start leads to (FromStarts): the start is not beyond them.
//  - New positions whose value makes up 2 * best - D with what the other side has passed. Were one
//    of them on a better solution, the other side's value of it would have been passed, it would be
//    in the table, and not new.
//  - Positions taken on once are not taken on again: their moves are the fewest.
//
// Any number of threads. A position that is taken on has its fewest moves, and its boxes and man
// never change, so that its neighbours can be made by anybody (fewest_moves_wave.h); they are
// stored by one thread, in the order in which the positions were taken on. Chunks of 64 are taken
// on up to 32 ahead of the one that is stored, with one thread as with many: what is stored, and
// when the best solution is found, depends on that order and on nothing else.
//
// What it costs: a row of 4 bytes and the key for a position, a fill for each position taken on
// (one for each pull backward), and a look at the table for each offer. Against one side by moves
// plus a bound, it needs a third of the positions of larger levels and a fortieth of some. What was
// tried and left out: dropping positions of the same boxes that a walk from another one reaches no
// later (a fifth fewer offers, no fewer positions, a list for each placement); bounds by assignment
// for each position, or the largest of eight worths (as many positions, dearer).

namespace kavit {

struct FewestAnswer {
    Result Code = Result::GoOn;   // GoOn: to the end; OutOfMemory; Stopped
    int Moves = 0;                // of the best solution, the one known at first included
    std::vector<BoxPush> Pushes;  // of a better one; empty when none was found
};

// `known`: the moves of the best solution so far, below MovesTable::kUnknown. The level of the
// arrays has a solution. While it runs, MovesLowerBound rises, and FewestPositions and FewestOffers
// are counted; Yield is called once for every position taken on, before what comes of it is stored,
// ShowProgress every 5000 positions. Threads are gone when it returns.
[[nodiscard]] FewestAnswer SearchFewestMoves(const BoardArrays& arrays, const LentMemory& memory,
                                             int known, const ChunkThreads& threads,
                                             SearchCounters& counters, SolverHooks& hooks);

}  // namespace kavit
