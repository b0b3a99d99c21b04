#include "solver/grid.h"

#include <algorithm>

namespace kavit {

namespace {

// Fixed pseudo-random words, the same on every machine (splitmix64).
class WordSource {
  public:
    std::uint32_t Next() {
        state_ += 0x9e3779b97f4a7c15U;
        std::uint64_t z = state_;
        z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
        z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
        return static_cast<std::uint32_t>((z ^ (z >> 31)) >> 32);
    }

  private:
    std::uint64_t state_ = 0x243f6a8885a308d3U;
};

std::array<bool, 256> MakeRingConnected() {
    constexpr std::array<int, 8> circle = {0, 1, 2, 4, 7, 6, 5, 3};  // once around the centre
    std::array<bool, 256> connected{};
    for (unsigned ring = 0; ring < 256; ++ring) {
        const auto free = [&](std::size_t i) { return (ring >> circle[i % 8] & 1U) != 0; };
        // Runs of free cells around the circle that hold a side neighbour.
        int groups = 0;
        bool whole = true;
        for (std::size_t i = 0; i < 8; ++i) {
            whole = whole && free(i);
            if (!free(i) || free(i + 7)) continue;  // not the start of a run
            bool side = false;
            for (std::size_t j = i; free(j) && j < i + 8; ++j)
                side = side || circle[j % 8] == 1 || circle[j % 8] == 3 || circle[j % 8] == 4 ||
                       circle[j % 8] == 6;
            groups += side ? 1 : 0;
        }
        connected[ring] = whole || groups <= 1;
    }
    return connected;
}

}  // namespace

const std::array<bool, 256>& RingConnected() {
    static const std::array<bool, 256> table = MakeRingConnected();
    return table;
}

Grid::Grid(const BoardArrays& arrays) {
    CellToBit.fill(-1);
    KeyToBit.fill(-1);
    int minCol = Maxcol;
    int maxCol = 0;
    for (int c = arrays.FirstIn; c <= arrays.LastIn; ++c) {
        if (!arrays.Inside(c)) continue;
        minCol = std::min(minCol, c % Maxcol);
        maxCol = std::max(maxCol, c % Maxcol);
    }
    const int minRow = arrays.FirstIn / Maxcol;
    Width = maxCol - minCol + 2;
    BitCount = (arrays.LastIn / Maxcol - minRow + 2) * Width;
    Step = {-1, Width, 1, -Width};

    WordSource words;
    for (int c = 0; c < kCells; ++c) {
        if (!arrays.Inside(c)) {
            if (arrays.BoxStart[static_cast<std::size_t>(c)] != 0)
                StaticCells.push_back(static_cast<std::int16_t>(c));
            continue;
        }
        const int bit = (c / Maxcol - minRow + 1) * Width + c % Maxcol - minCol + 1;
        const auto at = static_cast<std::size_t>(bit);
        CellToBit[static_cast<std::size_t>(c)] = static_cast<std::int16_t>(bit);
        BitToCell[at] = static_cast<std::int16_t>(c);
        BitToKey[at] = arrays.KeyByte(c);
        KeyToBit[BitToKey[at]] = static_cast<std::int16_t>(bit);
        BoxMix[at] = words.Next();
        ManMix[at] = words.Next();
        InsideBits.push_back(bit);
        const bool dead = arrays.DeadSq[static_cast<std::size_t>(c)] != 0;
        (dead ? DeadBits : LiveBits).push_back(bit);
        if (arrays.GoalSq[static_cast<std::size_t>(c)] != 0) GoalBits.push_back(bit);
    }
}

}  // namespace kavit
