#include "solver/board_hints.h"

#include "solver/board/board_arrays.h"
#include "solver/board/freeze.h"

namespace kavit {

BoardHints HintsOf(const Board& board) {
    BoardHints hints;
    BoardArrays arrays;
    if (!DescribeBoard(board, arrays)) return hints;
    FreezeBoard freeze(arrays);
    for (int cell = arrays.FirstIn; cell <= arrays.LastIn; ++cell) {
        const auto at = static_cast<std::size_t>(cell);
        if (!arrays.Inside(cell)) continue;
        if (arrays.DeadSq[at] != 0) hints.DeadSquares.push_back(cell);
        if (arrays.BoxStart[at] != 0 && arrays.GoalSq[at] == 0 && freeze.Frozen(cell))
            hints.StuckBoxes.push_back(cell);
    }
    return hints;
}

}  // namespace kavit
