#include "solver/board/grid.h"

#include <algorithm>
#include <cassert>

#include "solver/board/key_mix.h"

namespace kavit {

namespace {

Grid::Shape SmallestShape(int rows, int cols) {
    assert(rows >= 1 && rows <= 15 && cols >= 1 && cols <= 17);
    if (cols <= 7) return Grid::Shape::kRows16x8;
    if (cols <= 15) return rows <= 8 ? Grid::Shape::kRows8x16 : Grid::Shape::kRows16x16;
    return Grid::Shape::kRows16x32;
}

int LaneBitsOf(Grid::Shape shape) {
    switch (shape) {
        case Grid::Shape::kRows16x8:
            return 8;
        case Grid::Shape::kRows8x16:
        case Grid::Shape::kRows16x16:
            return 16;
        case Grid::Shape::kRows16x32:
            break;
    }
    return 32;
}

}  // namespace

Grid::Grid(const BoardArrays& arrays) {
    assert(arrays.Enclosed);
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
    BoardShape = SmallestShape(arrays.LastIn / Maxcol - minRow + 1, maxCol - minCol + 1);
    LaneBits = LaneBitsOf(BoardShape);
    Step = {-1, LaneBits, 1, -LaneBits};

    for (int c = 0; c < kCells; ++c) {
        if (!arrays.Inside(c)) {
            if (arrays.BoxStart[static_cast<std::size_t>(c)] != 0)
                StaticCells.push_back(static_cast<std::int16_t>(c));
            continue;
        }
        const int bit = (c / Maxcol - minRow) * LaneBits + c % Maxcol - minCol;
        assert(bit < kMaxBits && bit % LaneBits < LaneBits - 1);  // a lane's highest stays free
        assert(InsideBits.empty() || bit > InsideBits.back());
        const auto at = static_cast<std::size_t>(bit);
        CellToBit[static_cast<std::size_t>(c)] = static_cast<std::int16_t>(bit);
        BitToCell[at] = static_cast<std::int16_t>(c);
        BitToKey[at] = arrays.KeyByte(c);
        assert(BitToKey[at] != 0 && KeyToBit[BitToKey[at]] == -1);  // a byte names one cell
        KeyToBit[BitToKey[at]] = static_cast<std::int16_t>(bit);
        BoxMix[at] = kKeyWords.Box[BitToKey[at]];
        ManMix[at] = kKeyWords.Man[BitToKey[at]];
        InsideBits.push_back(bit);
        const bool dead = arrays.DeadSq[static_cast<std::size_t>(c)] != 0;
        (dead ? DeadBits : LiveBits).push_back(bit);
        if (arrays.GoalSq[static_cast<std::size_t>(c)] != 0) GoalBits.push_back(bit);
    }
}

}  // namespace kavit
