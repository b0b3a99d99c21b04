#pragma once

#include <vector>

#include "level/board.h"

namespace kavit {

// The floor outside the walls: what can be reached from the edge of the board without crossing a
// wall. Nothing where a man stands out there, or where there is none: then no side of the walls is
// known to be the outer one.
[[nodiscard]] std::vector<int> OutsideFloor(const Board& board);

}  // namespace kavit
