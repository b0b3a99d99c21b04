#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "solver/board_arrays.h"

namespace kavit {

// The inside of a level as a bit board. The cells of the region's rectangle are numbered row by row
// with one guard column on the left and one guard row on top, both wall: a shift by 1 or by Width
// is then a step in a direction, and the guard column stops it at either side. The order of the
// bits is the order of the cells, so the lowest bit of a region is its smallest cell.
//
// The rectangle holds at most 15 rows of 17 cells: 288 bits, five words; most levels need one to
// three.
struct Grid {
    static constexpr int kMaxBits = 320;

    int Width = 0;  // bits a row, guard column included; a step down
    int BitCount = 0;
    std::array<int, 4> Step{};  // a step in each direction, in bits

    std::array<std::int16_t, kCells> CellToBit{};  // -1 outside
    std::array<std::int16_t, kMaxBits> BitToCell{};
    std::array<std::uint8_t, kMaxBits> BitToKey{};  // the byte that names the cell in a key
    std::array<std::int16_t, 256> KeyToBit{};       // -1 where the byte names no inside cell
    std::array<std::uint32_t, kMaxBits> BoxMix{};   // random words for the fingerprint of a key
    std::array<std::uint32_t, kMaxBits> ManMix{};
    std::vector<int> InsideBits;
    std::vector<int> DeadBits;
    std::vector<int> GoalBits;
    std::vector<int> LiveBits;  // inside and not dead
    // Boxes that stand outside the man's region, in increasing order; they never move.
    std::vector<std::int16_t> StaticCells;
    std::uint8_t ManByte(int bit) const { return BitToKey[static_cast<std::size_t>(bit)]; }

    explicit Grid(const BoardArrays& arrays);
};

// What lies around a cell, as 8 bits: the cell's 3x3 neighbourhood row by row without its centre.
// RingConnected[ring] says that all free cells among the four side neighbours hang together through
// the ring itself (or that there is at most one), so that blocking the centre divides nothing.
inline constexpr std::array<int, 4> kRingSide = {3, 6, 4, 1};  // ring bit of left, down, right, up
[[nodiscard]] const std::array<bool, 256>& RingConnected();

}  // namespace kavit
