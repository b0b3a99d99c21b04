#pragma once

#include <string>
#include <vector>

#include "level/board.h"

// Why a board cannot be solved, in words that name the squares. The solver itself only says
// "Strange mapping ???", by a handful of counts and one rule: the room around the man, boxes left
// aside, must not touch the edge of the grid once dead ends are filled up with wall. The same
// counts and the same rule stand here a second time, for this folder knows nothing of the solver; a
// test compares the two on random boards.

namespace kavit {

enum class RefusalKind {
    NothingButFloor,
    NoMan,
    SeveralMen,
    NoBox,
    BoxesAndGoals,  // unequal numbers of them
    SolvedAlready,  // every box on a goal
    WallOpen,       // Cells: the square where the man gets out
    OutOfReach,     // boxes beside goals, or goals without a box, that no way leads to
};

struct Refusal {
    RefusalKind Kind;
    std::string Text;        // "3 boxes and 2 goals", "wall open at row 1, column 4"
    std::vector<int> Cells;  // what it is about, where there are such squares
};

// Every reason found, in the order of the kinds; empty when nothing is wrong. The solver refuses a
// board for any of them but OutOfReach, which it would find out by a search.
[[nodiscard]] std::vector<Refusal> WhyRefused(const Board& board);

}  // namespace kavit
