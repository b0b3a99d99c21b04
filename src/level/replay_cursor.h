#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "level/board.h"

namespace kavit {

// One position in a line of moves: the board after the first At() letters. A step changes three
// cells at the most, so that going anywhere costs the moves between.
//
// Steps by push stop at the start, behind each push, and at the end of the line: forward and back
// visit the same places.
class ReplayCursor {
  public:
    ReplayCursor() = default;
    // A line that the rules forbid, or a board without its one man, ends for the cursor where it
    // can't be played any further.
    ReplayCursor(const Board& start, std::string_view lurd);

    [[nodiscard]] const Board& Start() const { return start_; }
    [[nodiscard]] const Board& Position() const { return position_; }
    [[nodiscard]] const std::string& Line() const { return line_; }
    [[nodiscard]] std::int64_t Moves() const { return static_cast<std::int64_t>(line_.size()); }
    [[nodiscard]] std::int64_t Pushes() const { return PushesUpTo(Moves()); }

    [[nodiscard]] std::int64_t At() const { return at_; }
    [[nodiscard]] std::int64_t PushesAt() const { return PushesUpTo(at_); }
    [[nodiscard]] bool AtEnd() const { return at_ == playable_; }
    // Moves played when the k-th push is done, for each push of the line: marks for a slider.
    [[nodiscard]] const std::vector<std::int64_t>& PushMarks() const { return pushMarks_; }
    // The direction that the man looks in, after his last step; -1 at the start.
    [[nodiscard]] int Facing() const;

    // All answer whether the position changed.
    bool Forward() { return Seek(at_ + 1); }
    bool ForwardPush();
    bool BackPush();
    bool First() { return Seek(0); }
    bool Last() { return Seek(playable_); }
    // A place before the start or behind the end is the start or the end.
    bool Seek(std::int64_t move);
    // Behind the k-th push, the start for 0.
    bool SeekPush(std::int64_t push);

    // Steps where the cursor stands; what followed in the line gives way to it, unless it is the
    // same step. False for a step that the rules forbid, which changes nothing.
    bool Step(int direction);

  private:
    [[nodiscard]] std::int64_t PushesUpTo(std::int64_t move) const;
    void Append(char letter);

    Board start_;
    Board position_;
    std::string line_;
    std::vector<std::int64_t> pushMarks_;
    std::int64_t playable_ = 0;
    std::int64_t at_ = 0;
};

// How fast a replay can go, as parts of its normal speed of four moves a second.
struct ReplaySpeed {
    double Factor;
    int TickMs;
};
inline constexpr ReplaySpeed kReplaySpeeds[] = {{0.25, 1000}, {0.5, 500}, {1, 250}, {2, 125},
                                                {4, 62},      {8, 31},    {16, 16}};
inline constexpr int kNormalSpeed = 2;  // index of the speed of ANIM

}  // namespace kavit
