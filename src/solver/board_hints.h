#pragma once

#include <vector>

#include "level/board.h"

namespace kavit {

// What the search knows of a board before it begins, for a player or a setter to see.
struct BoardHints {
    std::vector<int> DeadSquares;  // no box that stands there can reach any goal
    std::vector<int> StuckBoxes;   // off goal, and frozen by the rule of the search
};

// Nothing for a board that has not its one man, or whose walls are open. Counts of boxes and goals
// do not matter, nor whether the level is solved.
[[nodiscard]] BoardHints HintsOf(const Board& board);

}  // namespace kavit
