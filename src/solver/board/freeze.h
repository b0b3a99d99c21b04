#pragma once

#include <array>
#include <cstdint>

#include "solver/board/grid.h"

namespace kavit {

// The freeze test on the bit board's numbering: the same rule as FrozenTest in board_arrays.h, on a
// byte per bit so that each look is one load. Most pushed boxes have no neighbour along the
// vertical axis and are let go after three looks.
class FreezeBoard {
  public:
    explicit FreezeBoard(const Grid& grid) : width_(grid.LaneBits) {
        content_.fill(Content::Wall);
        for (const int bit : grid.InsideBits) content_[At(bit)] = Content::Free;
        for (const int bit : grid.DeadBits) dead_[At(bit)] = 1;
        for (const int bit : grid.GoalBits) goal_[At(bit)] = 1;
    }
    void PutBox(int bit) { content_[At(bit)] = Content::Box; }
    void TakeBox(int bit) { content_[At(bit)] = Content::Free; }

    // The box that is pushed from `from` to `to` is frozen there, in a group that is not all on
    // goals. Leaves the board as it was.
    [[nodiscard, gnu::always_inline]] inline bool FrozenAfter(int from, int to) {
        content_[At(from)] = Content::Free;
        const Content above = content_[At(to - width_)];
        const Content below = content_[At(to + width_)];
        bool frozen = false;
        if (above != Content::Free || below != Content::Free ||
            (dead_[At(to - width_)] & dead_[At(to + width_)]) != 0) {
            bool notOnGoal = false;
            frozen = Blocked(to, width_, notOnGoal) && Blocked(to, -1, notOnGoal) && notOnGoal;
            content_[At(to)] = Content::Free;
        }
        content_[At(from)] = Content::Box;
        return frozen;
    }

  private:
    // An enumeration, not a byte: a store of a byte may change anything for all the compiler knows.
    enum class Content : std::uint8_t { Free = 0, Wall = 1, Box = 2 };
    static constexpr std::size_t kPad = 32;  // a row above and below
    static std::size_t At(int bit) { return static_cast<std::size_t>(bit) + kPad; }

    bool Blocked(int bit, int step, bool& notOnGoal) {
        notOnGoal = notOnGoal || goal_[At(bit)] == 0;
        const Content before = content_[At(bit - step)];
        const Content after = content_[At(bit + step)];
        if (before == Content::Wall || after == Content::Wall) return true;
        if ((dead_[At(bit - step)] & dead_[At(bit + step)]) != 0) return true;
        if (before != Content::Box && after != Content::Box) return false;
        const int other = step == -1 ? width_ : -1;
        content_[At(bit)] = Content::Wall;  // while its neighbour is looked at
        const bool blocked =
            Blocked(before == Content::Box ? bit - step : bit + step, other, notOnGoal);
        content_[At(bit)] = Content::Box;
        return blocked;
    }

    int width_;
    std::array<Content, Grid::kMaxBits + 2 * kPad> content_{};
    std::array<std::uint8_t, Grid::kMaxBits + 2 * kPad> dead_{};
    std::array<std::uint8_t, Grid::kMaxBits + 2 * kPad> goal_{};
};

}  // namespace kavit
