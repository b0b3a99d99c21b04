#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "solver/hooks.h"

// The clock of a solve: how long it has run, what the label says and when the limit is reached.
//
// Times are seconds since midnight. They fall back by a day's worth at midnight; the watch counts
// that and keeps its own times running on, so that LastTick - SeaStart is the elapsed time however
// late the solve began, also with a limit of a whole day.
namespace kavit {

inline constexpr double kSecondsPerDay = 86400;

// The time of day, taken from the system once and carried on by a clock that nobody sets: summer
// time or a corrected clock must not end a solve.
class DayClock {
  public:
    DayClock();
    [[nodiscard]] double Now() const;  // 0 <= Now < 86400, with fractions

  private:
    double atStart_ = 0;
    std::chrono::steady_clock::time_point start_;
};

class SolveWatch {
  public:
    // The solve starts; returns the label's caption.
    std::string Start(double clock, std::int64_t maxTime);
    // Once a second while it runs; returns the caption. Asks for a refresh at every tenth call, and
    // ends the solve when the limit is reached.
    std::string Tick(double clock, SolverHooks& hooks);
    // The solve ended; takes the time once more, since the last tick may be a second ago.
    void Finish(double clock) { TakeTime(clock); }

    [[nodiscard]] double SeaStart() const { return seaStart_; }
    [[nodiscard]] double LastTick() const { return lastTick_; }

  private:
    void TakeTime(double clock);
    // Whole seconds, halves to even.
    [[nodiscard]] std::int64_t Elapsed() const;
    [[nodiscard]] std::string Caption() const;

    double seaStart_ = 0;
    double lastTick_ = 0;  // counts on past midnight
    std::int64_t maxTime_ = 0;
    std::uint8_t tickCnt_ = 0;
};

}  // namespace kavit
