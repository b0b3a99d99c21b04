#pragma once

#include <array>
#include <string>
#include <string_view>

#include "level/board.h"

// Moves, mirrors and turns the whole level on the board. The extent is then the rectangle of all
// squares that are not floor.

namespace kavit {

inline constexpr std::array<std::string_view, 5> kShiftCaptions = {"Left", "Down", "Right", "Up",
                                                                   "Center"};
inline constexpr std::array<std::string_view, 5> kMirrorRotateCaptions = {
    "+ 90", "H Mirror", "- 90", "V Mirror", "180"};

struct TransformReply {
    bool Changed = false;  // the board must be drawn again
    std::string Message;   // a refusal to show, "" for none; the board is as it was then
};

// Sets the extent; 32767 and 0 when every square is floor.
void RecomputeExtent(Board& board);

// By the index of kShiftCaptions. A level that touches the edge stays. ManPos stays too: it is
// found again when a solve starts.
TransformReply ShiftBoard(Board& board, int index);

// By the index of kMirrorRotateCaptions. The rectangle keeps its top left corner unless it would
// pass the edge after a turn; it moves left and up then. The man moves with his square, and ManPos
// with him. A level wider than the board is high is refused.
TransformReply MirrorRotate(Board& board, int index);

}  // namespace kavit
