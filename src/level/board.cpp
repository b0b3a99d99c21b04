#include "level/board.h"

#include <algorithm>

namespace kavit {

std::uint8_t CharToCell(std::string_view character) {
    if (character.size() != 1) return kInvalidChar;
    switch (character[0]) {
        case ' ':
            return kFloor;
        case '.':
            return kGoal;
        case '$':
            return kBox;
        case '*':
            return kBoxOnGoal;
        case '#':
            return kWall;
        case '@':
            return kMan;
        case '+':
            return kManOnGoal;
        default:
            return kInvalidChar;
    }
}

char CellToChar(std::uint8_t code) {
    constexpr std::string_view characters = " .$*#@@@@+";
    return code <= kManOnGoal ? characters[code] : '\0';
}

void ClearBoard(Board& board) {
    board.Cell.fill(kFloor);
}

std::string BoardText(const Board& board, std::string_view rowEnd) {
    const int rows = std::min<int>(board.MaxRow, Maxrow);
    const int cols = std::min<int>(board.MaxCol, Maxcol);
    std::string text;
    for (int row = 0; row < rows; ++row) {
        for (int col = 0; col < cols; ++col) {
            const char c = CellToChar(board.Cell[static_cast<std::size_t>(row * Maxcol + col)]);
            if (c != '\0') text += c;
        }
        text += rowEnd;
    }
    return text;
}

}  // namespace kavit
