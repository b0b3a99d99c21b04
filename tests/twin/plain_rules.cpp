#include <algorithm>

#include "twin/plain_twin.h"

namespace kavit {

namespace {

std::size_t At(int cell) {
    return static_cast<std::size_t>(cell);
}

// What stands on a cell; there is wall all around the board.
int Look(const PlainCells<std::uint8_t>& board, int cell) {
    return cell < 0 || cell >= kCells ? 1 : board[At(cell)];
}

bool IsDead(const PlainCells<std::uint8_t>& dead, int cell) {
    return cell >= 0 && cell < kCells && dead[At(cell)] != 0;
}

}  // namespace

bool PlainTwin::FrozenTest(int cell) {
    notOnGoal_ = false;
    if (!Blocked(cell, 1)) return false;
    if (!Blocked(cell, 0)) return false;
    return notOnGoal_;
}

bool PlainTwin::Blocked(int cell, int axis) {
    if (GoalSq[At(cell)] == 0) notOnGoal_ = true;
    const int a = cell - Dir[At(axis)];
    const int z = cell + Dir[At(axis)];
    if (Look(SeaBoard, a) == 1) return true;
    if (Look(SeaBoard, z) == 1) return true;
    if (IsDead(DeadSq, a) && IsDead(DeadSq, z)) return true;
    SeaBoard[At(cell)] = 1;
    bool blocked = false;
    if (Look(SeaBoard, a) == 2) {
        blocked = Blocked(a, 1 - axis);
    } else if (Look(SeaBoard, z) == 2) {
        blocked = Blocked(z, 1 - axis);
    }
    SeaBoard[At(cell)] = 2;
    return blocked;
}

void PlainTwin::FillManDist(int man) {
    for (int c = FirstCell; c <= LastCell; ++c) ManDist[At(c)] = 255;
    RelaxManDist(man, 1);
}

void PlainTwin::RelaxManDist(int cell, int depth) {
    ManDist[At(cell)] = static_cast<std::uint8_t>(depth);
    for (const int dir : Dir) {
        const int n = cell + dir;
        if (SeaBoard[At(n)] == 0 && ManDist[At(n)] > depth + 1) RelaxManDist(n, depth + 1);
    }
}

int PlainTwin::NormMan(int man) {
    std::copy(SeaBoard.begin() + FirstCell, SeaBoard.begin() + LastCell + 1,
              scratch_.begin() + FirstCell);
    normResult_ = kCells - 1;
    const auto fill = [this](const auto& self, int cell) -> void {
        scratch_[At(cell)] = 1;
        normResult_ = std::min(normResult_, cell);
        for (const int dir : Dir) {
            if (scratch_[At(cell + dir)] == 0) self(self, cell + dir);
        }
    };
    fill(fill, man);
    return normResult_;
}

void PlainTwin::FillFree(PlainCells<std::uint8_t>& mark, int cell) {
    mark[At(cell)] = 1;
    for (const int dir : Dir) {
        const int n = cell + dir;
        if (SeaBoard[At(n)] == 0 && mark[At(n)] == 0) FillFree(mark, n);
    }
}

}  // namespace kavit
