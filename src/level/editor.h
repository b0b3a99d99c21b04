#pragma once

#include <cstdint>

#include "level/board.h"

namespace kavit {

// Paints one square of a board, with the code 0 to 5 or 9. Painting a man takes every other man off
// the board (one on a goal leaves the goal), so that a drawn board never has two. Painting anything
// else over a man is refused: false, and nothing changes. So is a square that is none.
//
// Painting widens the board's extent; floor never shrinks it.
[[nodiscard]] bool PaintCell(Board& board, int index, std::uint8_t code);

}  // namespace kavit
