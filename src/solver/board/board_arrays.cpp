#include "solver/board/board_arrays.h"

#include <algorithm>
#include <cassert>
#include <vector>

#include "level/steps.h"
#include "solver/board/freeze.h"

namespace kavit {

namespace {

using Cells = BoardArrays::Cells;

std::uint8_t& Cell(Cells& cells, int cell) {
    assert(cell >= 0 && cell < kCells);
    return cells[static_cast<std::size_t>(cell)];
}

struct Counts {
    int Boxes = 0;
    int Men = 0;
    int BoxesOnGoals = 0;
};

Counts SplitBoard(const Board& board, BoardArrays& a) {
    Counts counts;
    a.FirstCell = kCells;
    a.LastCell = 0;
    for (int c = 0; c < kCells; ++c) {
        const std::uint8_t code = board.Cell[static_cast<std::size_t>(c)];
        const bool box = code == kBox || code == kBoxOnGoal;
        const bool man = code == kMan || code == kManOnGoal;
        if (code == kGoal || code == kBoxOnGoal || code == kManOnGoal) {
            Cell(a.GoalSq, c) = 1;
            a.NumBoxes += 1;
        }
        if (box) {
            Cell(a.BoxStart, c) = 1;
            Cell(a.SeaBoard, c) = 2;
            counts.Boxes += 1;
            counts.BoxesOnGoals += code == kBoxOnGoal ? 1 : 0;
        }
        if (man) {
            a.ManStart = c;
            counts.Men += 1;
        }
        if (code == kWall) {
            Cell(a.EmptyBoard, c) = 1;
            Cell(a.SeaBoard, c) = 1;
            a.FirstCell = std::min(a.FirstCell, c);
            a.LastCell = std::max(a.LastCell, c);
        }
    }
    return counts;
}

// Dead-end corridors become wall, from their ends inwards: a free cell with more than two walls
// around it, without goal, box or man.
void FillDeadEnds(BoardArrays& a) {
    const int from = std::max(a.FirstCell, Maxcol + 1);
    const int to = std::min(a.LastCell, kCells - Maxcol - 2);
    bool changed = true;
    while (changed) {
        changed = false;
        for (int c = from; c <= to; ++c) {
            if (Cell(a.SeaBoard, c) != 0 || Cell(a.GoalSq, c) != 0 || c == a.ManStart) continue;
            const auto walls = std::count_if(Dir.begin(), Dir.end(), [&](int step) {
                return Cell(a.EmptyBoard, c + step) != 0;
            });
            if (walls <= 2) continue;
            Cell(a.EmptyBoard, c) = 1;
            Cell(a.SeaBoard, c) = 1;
            changed = true;
        }
    }
}

// Marks the region of the man. A region that touches the edge of the grid is open.
void FillReach(BoardArrays& a) {
    assert(Cell(a.EmptyBoard, a.ManStart) == 0);
    a.FirstIn = kCells;
    a.LastIn = 0;
    std::vector<int> open = {a.ManStart};
    Cell(a.ReachSq, a.ManStart) = 255;
    while (!open.empty()) {
        const int c = open.back();
        open.pop_back();
        assert(a.Inside(c));
        a.FirstIn = std::min(a.FirstIn, c);
        a.LastIn = std::max(a.LastIn, c);
        for (const int direction : {0, 1, 2, 3}) {
            const int n = NextCell(c, direction);
            if (n < 0) {
                a.Enclosed = false;
                return;
            }
            if (Cell(a.EmptyBoard, n) != 0 || Cell(a.ReachSq, n) != 0) continue;
            Cell(a.ReachSq, n) = 255;
            open.push_back(n);
        }
    }
}

// Inside cells past 255 do not fit a key byte: number the inside cells instead, of which the
// largest board has 255.
void NumberInside(BoardArrays& a) {
    assert(a.Enclosed && Maxcol < a.FirstIn && a.FirstIn <= a.LastIn);
    a.SqCompact = a.LastIn > 255;
    if (!a.SqCompact) return;
    static_assert((Maxrow - 2) * (Maxcol - 2) <= 255);
    int k = 0;
    for (int c = a.FirstIn; c <= a.LastIn; ++c) {
        if (!a.Inside(c)) continue;
        ++k;
        Cell(a.CellToIdx, c) = static_cast<std::uint8_t>(k);
        a.IdxToCell[static_cast<std::size_t>(k)] = static_cast<std::int16_t>(c);
    }
}

// A square stays dead when no pulls on the empty board bring a box there from a goal.
void MarkLive(BoardArrays& a, int c) {
    assert(a.Inside(c) && Cell(a.DeadSq, c) == 1);
    Cell(a.DeadSq, c) = 0;
    for (const int step : Dir) {
        const int n = c + step;
        if (Cell(a.DeadSq, n) == 1 && Cell(a.EmptyBoard, n) == 0 &&
            Cell(a.EmptyBoard, n + step) == 0)
            MarkLive(a, n);
    }
}

void ComputeDeadSq(BoardArrays& a) {
    for (int c = 0; c < kCells; ++c) Cell(a.DeadSq, c) = a.Inside(c) ? 1 : 0;
    for (int c = a.FirstIn; c <= a.LastIn; ++c)
        if (Cell(a.GoalSq, c) != 0 && Cell(a.DeadSq, c) == 1) MarkLive(a, c);
}

// What follows from walls, goals and the man alone; false when his region is open.
bool DescribeSquares(BoardArrays& a) {
    FillDeadEnds(a);
    FillReach(a);
    if (a.Enclosed) ComputeDeadSq(a);
    return a.Enclosed;
}

// Only boxes on goals get the freeze test here; those beside goals are left to the search.
Result FrozenCheck(BoardArrays& a) {
    FreezeBoard board(a);
    for (int c = a.FirstIn; c <= a.LastIn; ++c) {
        if (Cell(a.SeaBoard, c) != 2) continue;
        if (Cell(a.DeadSq, c) == 1) return Result::FrozenBlock;
        if (Cell(a.GoalSq, c) != 0 && board.Frozen(c)) return Result::FrozenBlock;
    }
    return Result::Ok;
}

}  // namespace

Result AnalyseBoard(const Board& board, int blocks, BoardArrays& arrays) {
    assert(blocks >= 1);
    arrays = BoardArrays{};
    const Counts counts = SplitBoard(board, arrays);
    if (counts.Boxes == 0 || counts.Boxes != arrays.NumBoxes || counts.Men != 1)
        return Result::StrangeMapping;
    if (counts.Boxes == counts.BoxesOnGoals) return Result::AlreadySolved;
    if (arrays.NumBoxes > blocks) return Result::TooManyBoxes;
    if (!DescribeSquares(arrays)) return Result::StrangeMapping;
    NumberInside(arrays);
    return FrozenCheck(arrays);
}

bool DescribeBoard(const Board& board, BoardArrays& arrays) {
    arrays = BoardArrays{};
    return SplitBoard(board, arrays).Men == 1 && DescribeSquares(arrays);
}

}  // namespace kavit
