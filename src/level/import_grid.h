#pragma once

#include <array>
#include <cstdint>

#include "level/board.h"

namespace kavit {

// The staging grid of the readers, in the coordinates of the text: rows 1..30, columns 1..50.
class ImportGrid {
  public:
    static constexpr int kRows = 30;
    static constexpr int kCols = 50;

    [[nodiscard]] std::uint8_t At(int row, int col) const { return cells_[Index(row, col)]; }
    void Set(int row, int col, std::uint8_t code) { cells_[Index(row, col)] = code; }

  private:
    static std::size_t Index(int row, int col) {
        const int index = (row - 1) * kCols + (col - 1);
        return static_cast<std::size_t>(index);
    }
    std::array<std::uint8_t, std::size_t{kRows} * kCols> cells_{};
};

// Widens the extent of `board` so that it holds (row, col).
void WidenExtent(Board& board, int row, int col);

[[nodiscard]] inline bool IsTooHigh(const Board& board) {
    return board.MaxRow - board.MinRow >= Maxrow;
}
[[nodiscard]] inline bool IsTooWide(const Board& board) {
    return board.MaxCol - board.MinCol >= Maxcol;
}

// Copies the rectangle of `board`'s wall extent, which must fit the board, to the board's top left
// corner. What lies outside of it is dropped, a man included. The extent keeps the coordinates of
// the text. Of several men the last one in row order gives ManPos; without a man it stays.
void CropToBoard(const ImportGrid& grid, Board& board);

}  // namespace kavit
