#pragma once

#include <array>
#include <cassert>
#include <cstdint>

#include "solver/board/board_arrays.h"
#include "solver/board/grid.h"

namespace kavit {

// The freeze rule: a box is frozen when it is blocked along both axes. Along an axis it is blocked
// by a wall on either side, by dead squares on both, or by a box that is itself blocked along the
// other axis while this one counts as wall. Only one neighbour along an axis is ever followed, the
// one above or to the right first. A group that is frozen on goals alone is allowed.
//
// One byte for each square, so that each look is one load, in either numbering: bits of a bit board
// for the search, cells of the board for its analysis. Most pushed boxes have no neighbour along
// the vertical axis and are let go after three looks.
class FreezeBoard {
  public:
    // The level without its boxes.
    explicit FreezeBoard(const Grid& grid) : width_(grid.LaneBits) {
        content_.fill(Content::Wall);
        for (const int bit : grid.InsideBits) content_[At(bit)] = Content::Free;
        for (const int bit : grid.DeadBits) dead_[At(bit)] = 1;
        for (const int bit : grid.GoalBits) goal_[At(bit)] = 1;
    }
    // The level as it begins, boxes outside the man's region included.
    explicit FreezeBoard(const BoardArrays& arrays) : width_(Maxcol) {
        content_.fill(Content::Wall);
        for (int cell = 0; cell < kCells; ++cell) {
            content_[At(cell)] = static_cast<Content>(BoardArrays::At(arrays.SeaBoard, cell));
            dead_[At(cell)] = BoardArrays::At(arrays.DeadSq, cell);
            goal_[At(cell)] = BoardArrays::At(arrays.GoalSq, cell);
        }
    }
    void PutBox(int at) {
        assert(content_[At(at)] == Content::Free);
        content_[At(at)] = Content::Box;
    }
    void TakeBox(int at) {
        assert(content_[At(at)] == Content::Box);
        content_[At(at)] = Content::Free;
    }

    // The box that stands there is frozen, in a group that is not all on goals.
    [[nodiscard]] bool Frozen(int at) {
        assert(content_[At(at)] == Content::Box);
        bool notOnGoal = false;
        return Blocked(at, width_, notOnGoal) && Blocked(at, -1, notOnGoal) && notOnGoal;
    }
    // The box that is pushed from `from` to `to` is frozen there, in a group that is not all on
    // goals. Leaves the board as it was.
    [[nodiscard, gnu::always_inline]] inline bool FrozenAfter(int from, int to) {
        assert(content_[At(from)] == Content::Box && content_[At(to)] == Content::Free);
        content_[At(from)] = Content::Free;
        assert(to - from == 1 || from - to == 1 || to - from == width_ || from - to == width_);
        const Content above = content_[At(to - width_)];
        const Content below = content_[At(to + width_)];
        bool frozen = false;
        if (above != Content::Free || below != Content::Free ||
            (dead_[At(to - width_)] & dead_[At(to + width_)]) != 0) {
            content_[At(to)] = Content::Box;
            frozen = Frozen(to);
            content_[At(to)] = Content::Free;
        }
        content_[At(from)] = Content::Box;
        return frozen;
    }

  private:
    // An enumeration, not a byte: a store of a byte may change anything for all the compiler knows.
    enum class Content : std::uint8_t { Free = 0, Wall = 1, Box = 2 };
    static constexpr std::size_t kPad = 32;  // a row above and below
    static std::size_t At(int at) {
        assert(at >= -static_cast<int>(kPad) && at < Grid::kMaxBits + static_cast<int>(kPad));
        return static_cast<std::size_t>(at + static_cast<int>(kPad));
    }

    bool Blocked(int bit, int step, bool& notOnGoal) {
        assert((step == -1 || step == width_) && content_[At(bit)] == Content::Box);
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
