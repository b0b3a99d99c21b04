#include "level/transform.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <vector>

namespace kavit {

namespace {

bool IsEmpty(const Board& board) {
    return std::all_of(board.Cell.begin(), board.Cell.end(),
                       [](std::uint8_t code) { return code == kFloor; });
}

void MoveExtent(Board& board, int rows, int cols) {
    board.MinRow = static_cast<std::int16_t>(board.MinRow + rows);
    board.MaxRow = static_cast<std::int16_t>(board.MaxRow + rows);
    board.MinCol = static_cast<std::int16_t>(board.MinCol + cols);
    board.MaxCol = static_cast<std::int16_t>(board.MaxCol + cols);
}

struct Offset {
    int Rows = 0;
    int Cols = 0;
};

// How far a shift moves the level; nothing where it touches the edge that it would move to.
Offset ShiftOffset(const Board& board, int index) {
    switch (index) {
        case 0:
            return {0, board.MinCol >= 2 ? -1 : 0};
        case 1:
            return {board.MaxRow < Maxrow ? 1 : 0, 0};
        case 2:
            return {0, board.MaxCol < Maxcol ? 1 : 0};
        case 3:
            return {board.MinRow >= 2 ? -1 : 0, 0};
        case 4:
            return {((Maxrow - board.MaxRow) - (board.MinRow - 1)) / 2,
                    ((Maxcol - board.MaxCol) - (board.MinCol - 1)) / 2};
        default:
            return {};
    }
}

// One shift of all cells in a line. No square is carried over a row end: the columns that it would
// cross are empty when the moved extent fits the board.
void MoveCells(Board& board, int step) {
    auto& cells = board.Cell;
    if (step > 0) {
        std::move_backward(cells.begin(), cells.end() - step, cells.end());
        std::fill_n(cells.begin(), step, kFloor);
    } else {
        std::move(cells.begin() - step, cells.end(), cells.begin());
        std::fill_n(cells.end() + step, -step, kFloor);
    }
}

struct Square {
    int Row = 0;
    int Col = 0;
};

// Where a square of a rectangle lies after a button, both counted from 0 in the rectangle.
Square Mapped(int index, Square from, int height, int width) {
    switch (index) {
        case 0:
            return {from.Col, height - 1 - from.Row};
        case 1:
            return {from.Row, width - 1 - from.Col};
        case 2:
            return {width - 1 - from.Col, from.Row};
        case 3:
            return {height - 1 - from.Row, from.Col};
        default:
            return {height - 1 - from.Row, width - 1 - from.Col};
    }
}

int IndexOf(int row, int col) {
    return (row - 1) * Maxcol + (col - 1);
}

bool IsMan(std::uint8_t code) {
    return code == kMan || code == kManOnGoal;
}

// The rectangle of all squares that are not floor.
struct Cutout {
    int Height = 0;
    int Width = 0;
    std::vector<std::uint8_t> Code;

    bool operator==(const Cutout&) const = default;
};

Cutout CutOut(Board board) {
    if (IsEmpty(board)) return {};
    RecomputeExtent(board);
    Cutout picture{board.MaxRow - board.MinRow + 1, board.MaxCol - board.MinCol + 1, {}};
    for (int row = board.MinRow; row <= board.MaxRow; ++row) {
        for (int col = board.MinCol; col <= board.MaxCol; ++col) {
            picture.Code.push_back(board.Cell[static_cast<std::size_t>(IndexOf(row, col))]);
        }
    }
    return picture;
}

Cutout Turned(const Cutout& from, int index) {
    const bool turn = index == 0 || index == 2;
    Cutout to{turn ? from.Width : from.Height, turn ? from.Height : from.Width, from.Code};
    for (int row = 0; row < from.Height; ++row) {
        for (int col = 0; col < from.Width; ++col) {
            const Square square = Mapped(index, {row, col}, from.Height, from.Width);
            to.Code[static_cast<std::size_t>(square.Row * to.Width + square.Col)] =
                from.Code[static_cast<std::size_t>(row * from.Width + col)];
        }
    }
    return to;
}

}  // namespace

void RecomputeExtent(Board& board) {
    board.MinRow = board.MinCol = 32767;
    board.MaxRow = board.MaxCol = 0;
    for (int index = 0; index < kCells; ++index) {
        if (board.Cell[static_cast<std::size_t>(index)] == kFloor) continue;
        const auto row = static_cast<std::int16_t>(index / Maxcol + 1);
        const auto col = static_cast<std::int16_t>(index % Maxcol + 1);
        board.MinRow = std::min(board.MinRow, row);
        board.MaxRow = std::max(board.MaxRow, row);
        board.MinCol = std::min(board.MinCol, col);
        board.MaxCol = std::max(board.MaxCol, col);
    }
}

std::string CroppedText(Board board) {
    RecomputeExtent(board);
    std::string text;
    for (int row = board.MinRow; row <= board.MaxRow; ++row) {
        for (int col = board.MinCol; col <= board.MaxCol; ++col)
            text += CellToChar(board.Cell[static_cast<std::size_t>(IndexOf(row, col))]);
        text += '\n';
    }
    return text;
}

bool ShiftBoard(Board& board, int index) {
    if (IsEmpty(board)) return false;
    RecomputeExtent(board);
    const Offset offset = ShiftOffset(board, index);
    const int step = offset.Rows * Maxcol + offset.Cols;
    if (step == 0) return false;
    MoveExtent(board, offset.Rows, offset.Cols);
    assert(board.MaxRow <= Maxrow && board.MaxCol <= Maxcol);
    MoveCells(board, step);
    return true;
}

bool MirrorRotate(Board& board, int index) {
    if (index < 0 || index > 4 || IsEmpty(board)) return true;
    const Board old = board;
    RecomputeExtent(board);
    const int height = board.MaxRow - board.MinRow + 1;
    const int width = board.MaxCol - board.MinCol + 1;
    if (width > Maxrow) {
        board = old;
        return false;
    }
    const bool turn = index == 0 || index == 2;
    const int minRow = board.MinRow;
    const int minCol = board.MinCol;
    const int top = turn ? std::min(minRow, Maxrow + 1 - width) : minRow;
    const int left = turn ? std::min(minCol, Maxcol + 1 - height) : minCol;
    const std::optional<int> man = FindMan(old);
    ClearBoard(board);
    for (int row = 0; row < height; ++row) {
        for (int col = 0; col < width; ++col) {
            const int from = IndexOf(minRow + row, minCol + col);
            const Square square = Mapped(index, {row, col}, height, width);
            const int to = IndexOf(top + square.Row, left + square.Col);
            board.Cell[static_cast<std::size_t>(to)] = old.Cell[static_cast<std::size_t>(from)];
            if (man == from) board.ManPos = static_cast<std::int16_t>(to);
        }
    }
    RecomputeExtent(board);
    return true;
}

std::optional<int> FindMan(const Board& board) {
    const int known = board.ManPos;
    if (known >= 0 && known < kCells && IsMan(board.Cell[static_cast<std::size_t>(known)])) {
        return known;
    }
    for (int index = kCells - 1; index >= 0; --index) {
        if (IsMan(board.Cell[static_cast<std::size_t>(index)])) return index;
    }
    return std::nullopt;
}

// The eight ways to lay a level: four turns, each with its mirror image.
bool SameLevel(const Board& a, const Board& b) {
    const Cutout wanted = CutOut(b);
    Cutout turned = CutOut(a);
    for (int quarter = 0; quarter < 4; ++quarter) {
        if (turned == wanted || Turned(turned, 1) == wanted) return true;
        turned = Turned(turned, 0);
    }
    return false;
}

}  // namespace kavit
