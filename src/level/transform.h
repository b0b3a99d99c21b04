#pragma once

#include <optional>
#include <string>

#include "level/board.h"

// Moves, mirrors and turns the whole level on the board. The extent is then the rectangle of all
// squares that are not floor.

namespace kavit {

// Sets the extent; 32767 and 0 when every square is floor.
void RecomputeExtent(Board& board);

// The rows of the smallest rectangle that holds all that is not floor, each ended by "\n".
[[nodiscard]] std::string CroppedText(Board board);

// 0 left, 1 down, 2 right, 3 up, 4 to the middle. A level that touches the edge stays. ManPos stays
// too: it is found again when a solve starts. False when nothing moved.
bool ShiftBoard(Board& board, int index);

// 0 a quarter clockwise, 1 left and right swapped, 2 a quarter counter-clockwise, 3 top and bottom
// swapped, 4 upside down. The rectangle keeps its top left corner unless it would pass the edge
// after a turn; it moves left and up then. The man moves with his square, and ManPos with him.
// False for a level wider than the board is high: it stays as it is.
[[nodiscard]] bool MirrorRotate(Board& board, int index);

// The man's index: ManPos when he is there, otherwise the last man on the board.
[[nodiscard]] std::optional<int> FindMan(const Board& board);

// Whether two boards hold the same level, wherever it lies and whichever way it is turned or
// mirrored. The extents and ManPos do not count.
[[nodiscard]] bool SameLevel(const Board& a, const Board& b);

}  // namespace kavit
