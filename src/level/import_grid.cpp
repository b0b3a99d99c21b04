#include "level/import_grid.h"

#include <algorithm>
#include <cassert>

namespace kavit {

void WidenExtent(Board& board, int row, int col) {
    const auto r = static_cast<std::int16_t>(row);
    const auto c = static_cast<std::int16_t>(col);
    board.MinRow = std::min(board.MinRow, r);
    board.MaxRow = std::max(board.MaxRow, r);
    board.MinCol = std::min(board.MinCol, c);
    board.MaxCol = std::max(board.MaxCol, c);
}

void CropToBoard(const ImportGrid& grid, Board& board) {
    assert(!IsTooHigh(board) && !IsTooWide(board));
    for (int row = board.MinRow; row <= board.MaxRow; ++row) {
        for (int col = board.MinCol; col <= board.MaxCol; ++col) {
            const int index = (row - board.MinRow) * Maxcol + (col - board.MinCol);
            const std::uint8_t code = grid.At(row, col);
            board.Cell[static_cast<std::size_t>(index)] = code;
            if (code == kMan || code == kManOnGoal) board.ManPos = static_cast<std::int16_t>(index);
        }
    }
}

}  // namespace kavit
