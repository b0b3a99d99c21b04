#pragma once

#include <array>
#include <cassert>
#include <cstdint>
#include <vector>

#include "solver/board/board_arrays.h"

namespace kavit {

// The inside of a level as a bit board: the rows and columns of the region's rectangle, one lane of
// bits a row. The order of the bits is the order of the cells, so the lowest bit of a region is its
// smallest cell. The rectangle has at most 15 rows of 17 cells; the highest bit of a lane stays
// free.
struct Grid {
    // Lanes of 8, 16 or 32 bits, in one, two or four registers of 128: the smallest that fits.
    enum class Shape { kRows16x8, kRows8x16, kRows16x16, kRows16x32 };

    static constexpr int kMaxBits = 512;

    Shape BoardShape = Shape::kRows16x32;
    int LaneBits = 32;          // a step down
    std::array<int, 4> Step{};  // a step in each direction, in bits

    std::array<std::int16_t, kCells> CellToBit{};  // -1 outside
    std::array<std::int16_t, kMaxBits> BitToCell{};
    std::array<std::uint8_t, kMaxBits> BitToKey{};  // the byte that names the cell in a key
    std::array<std::int16_t, 256> KeyToBit{};       // -1 where the byte names no inside cell
    std::array<std::uint64_t, kMaxBits> BoxMix{};   // words of the mix of a key (key_mix.h)
    std::array<std::uint64_t, kMaxBits> ManMix{};
    std::vector<int> InsideBits;
    std::vector<int> DeadBits;
    std::vector<int> GoalBits;
    std::vector<int> LiveBits;  // inside and not dead
    // Boxes that stand outside the man's region, in increasing order; they never move.
    std::vector<std::int16_t> StaticCells;
    std::uint8_t ManByte(int bit) const {
        assert(bit >= 0 && bit < kMaxBits && BitToKey[static_cast<std::size_t>(bit)] != 0);
        return BitToKey[static_cast<std::size_t>(bit)];
    }

    explicit Grid(const BoardArrays& arrays);
};

// By the 8 cells around a cell (RowBits::Rows::Ring): all free cells among its four side neighbours
// hang together through the ring itself, or there is at most one, so that blocking the cell divides
// nothing.
constexpr std::array<bool, 256> MakeRingConnected() {
    constexpr std::array<unsigned, 8> circle = {0, 1, 2, 4, 7, 6, 5, 3};  // once around
    constexpr unsigned sides = 1U << 1 | 1U << 3 | 1U << 4 | 1U << 6;
    std::array<bool, 256> connected{};
    for (unsigned ring = 0; ring < 256; ++ring) {
        const auto free = [&](std::size_t i) { return (ring >> circle[i % 8] & 1U) != 0; };
        // Runs of free cells around the circle that hold a side neighbour.
        int groups = 0;
        for (std::size_t i = 0; i < 8; ++i) {
            if (!free(i) || free(i + 7)) continue;  // not the start of a run
            bool side = false;
            for (std::size_t j = i; free(j) && j < i + 8; ++j)
                side = side || (sides >> circle[j % 8] & 1U) != 0;
            groups += side ? 1 : 0;
        }
        connected[ring] = groups <= 1;
    }
    return connected;
}
inline constexpr std::array<bool, 256> kRingConnected = MakeRingConnected();

}  // namespace kavit
