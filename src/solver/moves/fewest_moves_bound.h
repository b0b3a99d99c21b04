#pragma once

#include <array>
#include <vector>

#include "solver/board/grid.h"

// What a position is worth in moves: the man has to come back.
//
// A sum of pushes is a poor bound on the man's moves, for between two boxes he walks. But wherever
// boxes have to be pushed one way, the man has to walk back the other way once for each of them but
// the last, and that can be put into one number per cell. Let phi be any function on the cells that
// changes by at most 1 from a cell to its neighbour. Of all his moves, pushes and steps, phi grows
// in all by phi(end) - phi(start); what it grows by in the pushes, the steps have to take back, at
// 1 each at most. So with P the pushes of a solution and W its steps,
//
//     W >= sum over P of (change of phi) + phi(start) - phi(end), and
//     P + W >= sum over P of (1 + change of phi) + phi(start) - phi(end).
//
// A push thus costs between 0 and 2 by where it is made, and the least sum over the pushes is an
// assignment of boxes to goals by cheapest push paths. phi = 0 gives the plain count of pushes; the
// phi that gives most is looked for by a subgradient ascent from there, a few dozen rounds: where
// the pushes of the best assignment enter more than leave, phi rises. On a level with 298 moves and
// 101 pushes the start is worth 75 by pushes and 131 so.
//
// An assignment for every position would cost more than the search itself. Its dual does not: with
// prices v of the goals from the start's assignment, each box on x has to pay at least
// w(x) = min over goals of (cost from x to the goal - price), whichever goal it takes. The value of
// a position becomes a sum of one number for each box and one for the man, which a push changes in
// two terms. Measured, it prunes as well as the assignment, and one phi as well as eight.
//
// The same phi gives the value of the way from the start, with prices of the starts. The search
// works from both sides and needs a value that serves both: half the difference of the two. Numbers
// are kept in half moves, so that it is whole.
//
// What is used of it is only that the value is consistent: one step or push of cost 1 changes it by
// no more than 2 half moves. It holds for the steps because phi is no steeper; for the pushes
// because w is made of cheapest paths over all pushes that the empty board allows.

namespace kavit {

struct MovesBound {
    std::array<int, Grid::kMaxBits> Box{};  // by bit, in half moves
    std::array<int, Grid::kMaxBits> Man{};
    // Where pushes on the empty board bring a box from some start: a box elsewhere came from
    // nowhere, so that the backward side need not pull one there.
    std::vector<int> FromStarts;
    // Where the man can stand when the last box has come home.
    std::vector<int> ManEnds;
};

[[nodiscard]] MovesBound MakeMovesBound(const Grid& grid, const BoardArrays& arrays);

}  // namespace kavit
