#pragma once

#include <cstdint>

#include "level/board.h"

// The rules of the game on a Board, a step at a time and back. Everything that is played by hand,
// replayed or looked for by walking is made of these few functions.
//
// The edge of the board is a wall. A man is a square that a level's text can show as one (codes 5
// and 9); the further men of the editor's palette count as floor, as they do when a level is
// solved.
namespace kavit {

[[nodiscard]] constexpr bool HoldsBox(std::uint8_t code) {
    return code == kBox || code == kBoxOnGoal;
}
[[nodiscard]] constexpr bool HoldsMan(std::uint8_t code) {
    return code == kMan || code == kManOnGoal;
}
[[nodiscard]] constexpr bool OnGoal(std::uint8_t code) {
    return code == kGoal || code == kBoxOnGoal || code == kManOnGoal;
}
[[nodiscard]] inline std::uint8_t CodeAt(const Board& board, int cell) {
    return board.Cell[static_cast<std::size_t>(cell)];
}

// The next cell in a direction of Dir; -1 beyond the edge.
[[nodiscard]] constexpr int NextCell(int cell, int direction) {
    const int col = cell % Maxcol;
    const bool off = direction == 0   ? col == 0
                     : direction == 1 ? cell + Maxcol >= kCells
                     : direction == 2 ? col == Maxcol - 1
                                      : cell < Maxcol;
    return off ? -1 : cell + Dir[static_cast<std::size_t>(direction)];
}

// Neither wall nor box, and on the board: the man may step there and a box may be pushed there.
[[nodiscard]] bool FreeCell(const Board& board, int cell);

// 0..3 for the letters of a walk and of a push, -1 for any other.
[[nodiscard]] int DirectionOf(char letter);
[[nodiscard]] bool IsPush(char letter);

// The cell of the one man; -1 where there is none or more than one.
[[nodiscard]] int TheMan(const Board& board);

// Moves the man at ManPos in a direction, with the box that is in his way. Answers the letter of
// the move, or '\0' for a move that the rules forbid, which changes nothing.
char StepMan(Board& board, int direction);

// Takes back the last step, whose letter is `letter`.
void TakeBack(Board& board, char letter);

// There is a box, and none stands beside a goal.
[[nodiscard]] bool IsSolved(const Board& board);

}  // namespace kavit
