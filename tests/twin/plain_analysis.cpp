#include <algorithm>

#include "twin/plain_twin.h"

namespace kavit {

namespace {

std::size_t At(int cell) {
    return static_cast<std::size_t>(cell);
}

}  // namespace

int PlainTwin::SplitBoard(const Board& board) {
    NumBoxes = 0;
    int boxes = 0;
    int men = 0;
    int boxesOnGoals = 0;
    FirstCell = kCells - 1;
    LastCell = 0;
    for (int c = 0; c < kCells; ++c) {
        EmptyBoard[At(c)] = GoalSq[At(c)] = BoxStart[At(c)] = 0;
        SeaBoard[At(c)] = ReachSq[At(c)] = DeadSq[At(c)] = 0;
        const int code = board.Cell[At(c)];
        if (code == kGoal || code == kBoxOnGoal || code == kManOnGoal) {
            GoalSq[At(c)] = 1;
            ++NumBoxes;
        }
        if (code == kBox || code == kBoxOnGoal) {
            BoxStart[At(c)] = 1;
            SeaBoard[At(c)] = 2;
            ++boxes;
        }
        if (code == kBoxOnGoal) ++boxesOnGoals;
        if (code == kWall) {
            EmptyBoard[At(c)] = SeaBoard[At(c)] = 1;
            FirstCell = std::min(FirstCell, c);
            LastCell = std::max(LastCell, c);
        }
        if (code == kMan || code == kManOnGoal) {
            ManStart = c;
            ++men;
        }
    }
    if (boxes == 0 || boxes != NumBoxes || men != 1) return 2;
    if (boxes == boxesOnGoals) return 9;
    if (NumBoxes > Blocks) return 1;
    return 0;
}

int PlainTwin::AnalyseBoard(const Board& board) {
    const int refused = SplitBoard(board);
    if (refused != 0) return refused;
    FillDeadEnds();
    FirstIn = kCells - 1;
    LastIn = 0;
    enclosed_ = true;
    FillReach(ManStart);
    if (!enclosed_) return 2;
    NumberCells();
    ComputeDeadSq();
    return FrozenCheck();
}

void PlainTwin::FillDeadEnds() {
    const int from = FirstCell < 21 ? 20 : FirstCell;
    const int to = std::min(LastCell, 302);
    bool changed = true;
    while (changed) {
        changed = false;
        for (int c = from; c <= to; ++c) {
            if (SeaBoard[At(c)] != 0 || GoalSq[At(c)] != 0 || c == ManStart) continue;
            int walls = 0;
            for (const int dir : Dir) walls += EmptyBoard[At(c + dir)] == 1;
            if (walls > 2) {
                EmptyBoard[At(c)] = SeaBoard[At(c)] = 1;
                changed = true;
            }
        }
    }
}

void PlainTwin::FillReach(int cell) {
    if (!enclosed_) return;
    const int row = cell / Maxcol;
    const int col = cell % Maxcol;
    if (row == 0 || row == Maxrow - 1 || col == 0 || col == Maxcol - 1) {
        enclosed_ = false;
        return;
    }
    FirstIn = std::min(FirstIn, cell);
    LastIn = std::max(LastIn, cell);
    ReachSq[At(cell)] = 255;
    for (const int dir : Dir) {
        const int n = cell + dir;
        if (EmptyBoard[At(n)] == 0 && ReachSq[At(n)] == 0) FillReach(n);
    }
}

void PlainTwin::NumberCells() {
    SqCompact = LastIn > 255;
    CellToIdx.fill(0);
    int k = 0;
    for (int c = FirstIn; c <= LastIn; ++c) {
        if (ReachSq[At(c)] != 255) continue;
        ++k;
        CellToIdx[At(c)] = static_cast<std::uint8_t>(k);  // the inside is 15 x 17 = 255 at most
        IdxToCell[At(k)] = c;
    }
    unnamedBoxes_.clear();
    for (int c = 0; c < kCells; ++c) {
        if (BoxStart[At(c)] == 0 || ReachSq[At(c)] == 255) continue;
        if (SqCompact || c > 255) unnamedBoxes_.push_back(c);
    }
}

void PlainTwin::ComputeDeadSq() {
    for (int c = FirstCell; c <= LastCell; ++c) DeadSq[At(c)] = ReachSq[At(c)] == 255 ? 1 : 0;
    for (int c = FirstIn; c <= LastIn; ++c) {
        if (GoalSq[At(c)] != 0 && DeadSq[At(c)] == 1) MarkLive(c);
    }
}

void PlainTwin::MarkLive(int cell) {
    DeadSq[At(cell)] = 0;
    for (const int dir : Dir) {
        const int n = cell + dir;
        if (DeadSq[At(n)] == 1 && EmptyBoard[At(n)] == 0 && EmptyBoard[At(n + dir)] == 0)
            MarkLive(n);
    }
}

int PlainTwin::FrozenCheck() {
    for (int c = FirstIn; c <= LastIn; ++c) {
        if (SeaBoard[At(c)] != 2) continue;
        if (DeadSq[At(c)] == 1) return 14;
        if (GoalSq[At(c)] != 0 && FrozenTest(c)) return 14;
    }
    return 0;
}

// Boxes that the man never gets to stay where they are: they must be exactly the goals there.
bool PlainTwin::OutsideFits() const {
    for (int c = 0; c < kCells; ++c) {
        if (ReachSq[At(c)] != 255 && BoxStart[At(c)] != GoalSq[At(c)]) return false;
    }
    return true;
}

}  // namespace kavit
