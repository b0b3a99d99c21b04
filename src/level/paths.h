#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "level/board.h"

namespace kavit {

// The shortest walk of the one man to a free cell, in letters; of several the first in the order
// left, down, right, up. Nothing when he cannot get there; "" when he stands there.
[[nodiscard]] std::optional<std::string> WalkPath(const Board& board, int to);

// Where one box can be pushed while the others stay: for each cell the moves with the fewest
// pushes, and of those with the fewest moves.
//
// Dijkstra over the box's cell and the side of it that the man stands on: 4 x 323 states, each
// with one walk around the box. It takes a few milliseconds at the worst, once for a box; every
// path is then read off.
class BoxPaths {
  public:
    BoxPaths(const Board& board, int box);

    [[nodiscard]] int Box() const { return box_; }
    // Cells that the box can be brought to, its own not among them.
    [[nodiscard]] std::vector<int> Cells() const;
    // Nothing when the box cannot get there; "" for its own cell.
    [[nodiscard]] std::optional<std::string> To(int cell) const;

  private:
    static constexpr int kStates = 4 * kCells;  // cell * 4 + side, a direction of Dir
    struct Cost {
        int Pushes = -1;  // -1: not reached
        int Steps = 0;    // between the pushes
    };

    [[nodiscard]] int BestState(int cell) const;

    Board board_;  // as it stands
    int box_;
    int man_;
    std::array<Cost, kStates> cost_{};
    std::array<int, kStates> before_{};  // the state before; -1 at the start
};

}  // namespace kavit
