#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavit {

inline constexpr int Maxrow = 17;
inline constexpr int Maxcol = 19;
inline constexpr int kCells = Maxrow * Maxcol;  // 323; index = (row - 1) * 19 + (column - 1)

// Cell codes. They are no independent bits: the man is 5 and the man on a goal 9. The text
// readers never make 6 to 8; where they occur they print as "@".
inline constexpr std::uint8_t kFloor = 0;
inline constexpr std::uint8_t kGoal = 1;
inline constexpr std::uint8_t kBox = 2;
inline constexpr std::uint8_t kBoxOnGoal = 3;
inline constexpr std::uint8_t kWall = 4;
inline constexpr std::uint8_t kMan = 5;
inline constexpr std::uint8_t kManOnGoal = 9;
inline constexpr std::uint8_t kInvalidChar = 99;  // answer of CharToCell, never stored

// Directions, in the order that every loop uses and that breaks every tie: left, down, right, up.
inline constexpr std::array<int, 4> Dir = {-1, Maxcol, 1, -Maxcol};
inline constexpr std::string_view kWalkLetters = "ldru";
inline constexpr std::string_view kPushLetters = "LDRU";

// The one level that the program holds.
struct Board {
    std::array<std::uint8_t, kCells> Cell{};
    std::int16_t ManPos = 0;  // 0..322; may be out of date after a shift
    // Wall extent, rows and columns counted from 1 in the coordinates of the text that was read.
    std::int16_t MinRow = 32767;
    std::int16_t MinCol = 32767;
    std::int16_t MaxRow = 0;
    std::int16_t MaxCol = 0;

    bool operator==(const Board&) const = default;
};

// The code of a one-character text; kInvalidChar for anything else, "" included.
[[nodiscard]] std::uint8_t CharToCell(std::string_view character);

// The character of a code, '\0' for a code that prints as nothing.
[[nodiscard]] char CellToChar(std::uint8_t code);

// Sets all cells to floor; the wall extent and ManPos stay.
void ClearBoard(Board& board);

// Rows 1..MaxRow, columns 1..MaxCol, each row followed by `rowEnd`; trailing blanks are kept.
// An extent beyond the board prints what lies on the board.
[[nodiscard]] std::string BoardText(const Board& board, std::string_view rowEnd = "\r");

}  // namespace kavit
