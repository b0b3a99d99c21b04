#include "level/editor_shapes.h"

#include <algorithm>
#include <vector>

#include "level/import_grid.h"
#include "level/steps.h"

namespace kavit {

namespace {

bool CanDraw(int cell, int tool) {
    return tool >= kFloor && tool < kMan && cell >= 0 && cell < kCells;
}

// False for a man, who stays.
bool Paint(Board& board, int cell, int tool) {
    std::uint8_t& code = board.Cell[static_cast<std::size_t>(cell)];
    if (code >= kMan) return false;
    code = static_cast<std::uint8_t>(tool);
    if (tool != kFloor) WidenExtent(board, cell / Maxcol + 1, cell % Maxcol + 1);
    return true;
}

}  // namespace

bool DrawRectangle(Board& board, int corner, int opposite, int tool) {
    if (!CanDraw(corner, tool) || !CanDraw(opposite, tool)) return false;
    const auto [top, bottom] = std::minmax({corner / Maxcol, opposite / Maxcol});
    const auto [left, right] = std::minmax({corner % Maxcol, opposite % Maxcol});
    bool all = true;
    for (int row = top; row <= bottom; ++row)
        for (int col = left; col <= right; ++col)
            if (row == top || row == bottom || col == left || col == right)
                all = Paint(board, row * Maxcol + col, tool) && all;
    return all;
}

bool FillArea(Board& board, int cell, int tool) {
    if (!CanDraw(cell, tool)) return false;
    const std::uint8_t code = CodeAt(board, cell);
    if (code == tool || !Paint(board, cell, tool)) return false;
    std::vector<int> painted = {cell};
    for (std::size_t i = 0; i < painted.size(); ++i) {
        for (int direction = 0; direction < 4; ++direction) {
            const int next = NextCell(painted[i], direction);
            if (next < 0 || CodeAt(board, next) != code) continue;
            Paint(board, next, tool);
            painted.push_back(next);
        }
    }
    return true;
}

}  // namespace kavit
