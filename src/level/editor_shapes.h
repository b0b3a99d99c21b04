#pragma once

#include "level/board.h"

namespace kavit {

// Shapes for the editor's tools that paint no men. The board's extent widens as when single cells
// are painted. A man stays where he is: both answer false when one was in the way, or when there
// was nothing to do, which is a tool that paints men or a cell beside the board.

// The outline of the rectangle between two corners.
bool DrawRectangle(Board& board, int corner, int opposite, int tool);

// The cell and all that hang together with it, side by side, and hold the same code.
bool FillArea(Board& board, int cell, int tool);

}  // namespace kavit
