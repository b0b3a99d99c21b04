#include "level/editor.h"

#include "level/import_grid.h"

namespace kavit {

bool PaintCell(Board& board, int index, std::uint8_t code) {
    if (index < 0 || index >= kCells) return false;
    std::uint8_t& cell = board.Cell[static_cast<std::size_t>(index)];
    if (code < kMan) {
        if (cell >= kMan) return false;
    } else {
        for (std::uint8_t& other : board.Cell) {
            if (other >= kMan) other = other == kManOnGoal ? kGoal : kFloor;
        }
        board.ManPos = static_cast<std::int16_t>(index);
    }
    cell = code;
    if (code != kFloor) WidenExtent(board, index / Maxcol + 1, index % Maxcol + 1);
    return true;
}

}  // namespace kavit
