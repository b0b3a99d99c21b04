#pragma once

#include <array>
#include <cstdint>

#include "solver/grid.h"

namespace kavit {

// The freeze test on the bit board's numbering: the same rule as FrozenTest in board_arrays.h, on a
// byte per bit so that each look is one load. Most pushed boxes have no neighbour along the
// vertical axis and are let go after three looks.
class FreezeBoard {
  public:
    explicit FreezeBoard(const Grid& grid) : width_(grid.LaneBits) {
        content_.fill(kWallHere);
        for (const int bit : grid.InsideBits) content_[At(bit)] = kFreeHere;
        for (const int bit : grid.DeadBits) dead_[At(bit)] = 1;
        for (const int bit : grid.GoalBits) goal_[At(bit)] = 1;
    }
    void PutBox(int bit) { content_[At(bit)] = kBoxHere; }
    void TakeBox(int bit) { content_[At(bit)] = kFreeHere; }

    // The box that is pushed from `from` to `to` is frozen there, in a group that is not all on
    // goals. Leaves the board as it was.
    [[nodiscard]] bool FrozenAfter(int from, int to) {
        content_[At(from)] = kFreeHere;
        const std::uint8_t above = content_[At(to - width_)];
        const std::uint8_t below = content_[At(to + width_)];
        bool frozen = false;
        if ((above | below | (dead_[At(to - width_)] & dead_[At(to + width_)])) != 0) {
            bool notOnGoal = false;
            frozen = Blocked(to, width_, notOnGoal) && Blocked(to, -1, notOnGoal) && notOnGoal;
            content_[At(to)] = kFreeHere;
        }
        content_[At(from)] = kBoxHere;
        return frozen;
    }

  private:
    static constexpr std::uint8_t kFreeHere = 0;
    static constexpr std::uint8_t kWallHere = 1;
    static constexpr std::uint8_t kBoxHere = 2;
    static constexpr int kPad = 32;  // a row above and below
    static std::size_t At(int bit) { return static_cast<std::size_t>(bit + kPad); }

    bool Blocked(int bit, int step, bool& notOnGoal) {
        notOnGoal = notOnGoal || goal_[At(bit)] == 0;
        const std::uint8_t before = content_[At(bit - step)];
        const std::uint8_t after = content_[At(bit + step)];
        if (before == kWallHere || after == kWallHere) return true;
        if ((dead_[At(bit - step)] & dead_[At(bit + step)]) != 0) return true;
        if (before != kBoxHere && after != kBoxHere) return false;
        const int other = step == -1 ? width_ : -1;
        content_[At(bit)] = kWallHere;  // while its neighbour is looked at
        const bool blocked =
            Blocked(before == kBoxHere ? bit - step : bit + step, other, notOnGoal);
        content_[At(bit)] = kBoxHere;
        return blocked;
    }

    int width_;
    std::array<std::uint8_t, Grid::kMaxBits + 2 * kPad> content_{};
    std::array<std::uint8_t, Grid::kMaxBits + 2 * kPad> dead_{};
    std::array<std::uint8_t, Grid::kMaxBits + 2 * kPad> goal_{};
};

}  // namespace kavit
