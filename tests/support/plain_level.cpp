#include "support/plain_level.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace kavit::test {

namespace {

// The rows that belong to the level: lines that begin with a character of the level alphabet.
std::vector<std::string> LevelRows(std::string_view text) {
    std::vector<std::string> rows;
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const auto first = line.find_first_not_of(' ');
        if (line.empty()) continue;
        if (first != std::string::npos &&
            CharToCell(std::string_view(line).substr(first, 1)) == kInvalidChar) {
            continue;
        }
        rows.push_back(line);
    }
    return rows;
}

}  // namespace

Result ReadPlainLevel(std::string_view text, Board& board) {
    const std::vector<std::string> rows = LevelRows(text);
    std::size_t top = rows.size();
    std::size_t bottom = 0;
    std::size_t left = std::string::npos;
    std::size_t right = 0;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        const auto first = rows[r].find('#');
        if (first == std::string::npos) continue;
        top = std::min(top, r);
        bottom = r;
        left = std::min(left, first);
        right = std::max(right, rows[r].rfind('#'));
    }
    ClearBoard(board);
    if (left == std::string::npos) return Result::Ok;
    if (bottom - top >= Maxrow) return Result::TooHigh;
    if (right - left >= Maxcol) return Result::TooWide;
    for (std::size_t r = top; r <= bottom; ++r) {
        for (std::size_t c = left; c <= right && c < rows[r].size(); ++c) {
            const std::uint8_t code = CharToCell(std::string_view(rows[r]).substr(c, 1));
            board.Cell[(r - top) * Maxcol + c - left] = code == kInvalidChar ? kFloor : code;
        }
    }
    SetExtent(board);
    return Result::Ok;
}

Board PlainLevel(std::initializer_list<std::string_view> rows) {
    std::string text;
    for (const std::string_view row : rows) text.append(row).append("\n");
    Board board;
    if (ReadPlainLevel(text, board) != Result::Ok) throw std::length_error("level too large");
    return board;
}

void SetExtent(Board& board) {
    const Board empty;
    board.MinRow = empty.MinRow;
    board.MinCol = empty.MinCol;
    board.MaxRow = empty.MaxRow;
    board.MaxCol = empty.MaxCol;
    for (std::size_t c = 0; c < kCells; ++c) {
        const auto row = static_cast<std::int16_t>(c / Maxcol + 1);
        const auto col = static_cast<std::int16_t>(c % Maxcol + 1);
        if (board.Cell[c] == kMan || board.Cell[c] == kManOnGoal) {
            board.ManPos = static_cast<std::int16_t>(c);
        }
        if (board.Cell[c] != kWall) continue;
        board.MinRow = std::min(board.MinRow, row);
        board.MinCol = std::min(board.MinCol, col);
        board.MaxRow = std::max(board.MaxRow, row);
        board.MaxCol = std::max(board.MaxCol, col);
    }
}

std::optional<std::string> ReadWholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string LevelsFolder() {
    const char* folder = std::getenv("KAVIT_LEVELS");
    return folder != nullptr ? folder : KAVIT_LEVELS_FOLDER;
}

}  // namespace kavit::test
