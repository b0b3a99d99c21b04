#pragma once

#include <array>
#include <cassert>
#include <cstdint>

#include "level/board.h"
#include "level/result.h"

namespace kavit {

// The solver's picture of one level: what AnalyseBoard makes of the Board, unchanged during a
// search. One byte per cell 0..322 unless said otherwise.
struct BoardArrays {
    using Cells = std::array<std::uint8_t, kCells>;

    Cells SeaBoard{};    // 0 free, 1 wall, 2 box
    Cells EmptyBoard{};  // 0 free, 1 wall
    Cells GoalSq{};      // 1 = goal
    Cells BoxStart{};    // 1 = a box stands there at the start
    Cells ReachSq{};     // 255 = inside: in the region of the man, boxes left aside
    Cells DeadSq{};      // 1 = no box may ever stand there
    Cells CellToIdx{};   // compact square numbers of the inside cells, 0 outside; when SqCompact
    std::array<std::int16_t, 256> IdxToCell{};  // and back, 1..255

    int NumBoxes = 0;  // goals; equals the boxes once the checks have passed
    int ManStart = 0;
    int FirstCell = 0;  // smallest and largest wall cell
    int LastCell = 0;
    int FirstIn = 0;  // smallest and largest inside cell
    int LastIn = 0;
    bool Enclosed = true;  // the region does not touch the edge of the grid
    bool SqCompact = false;

    [[nodiscard]] bool Inside(int cell) const { return At(ReachSq, cell) == 255; }
    // A read of any cell; beyond the board everything is wall (nonzero).
    [[nodiscard]] static std::uint8_t At(const Cells& cells, int cell) {
        return cell >= 0 && cell < kCells ? cells[static_cast<std::size_t>(cell)] : std::uint8_t{1};
    }
    // The byte that stands for a cell in a key. A box outside the man's region never moves; where
    // its cell has no byte of its own it is written as 0, which names no inside cell.
    [[nodiscard]] std::uint8_t KeyByte(int cell) const {
        assert(cell >= 0 && cell < kCells);
        if (SqCompact) return At(CellToIdx, cell);
        return cell <= 255 ? static_cast<std::uint8_t>(cell) : std::uint8_t{0};
    }
    // And back; 0 for 0.
    [[nodiscard]] int KeyCell(std::uint8_t byte) const {
        return SqCompact ? IdxToCell[byte] : byte;
    }
};

// Fills the arrays from the board: Ok, TooManyBoxes, StrangeMapping, AlreadySolved or FrozenBlock.
// blocks: the largest number of boxes allowed.
[[nodiscard]] Result AnalyseBoard(const Board& board, int blocks, BoardArrays& arrays);

// The same arrays without the checks of counts and freezes, and without key bytes. False when there
// is not one man, or his region is open.
[[nodiscard]] bool DescribeBoard(const Board& board, BoardArrays& arrays);

}  // namespace kavit
