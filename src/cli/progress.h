#pragma once

#include <cstdint>
#include <string>

#include "solver/solver.h"

namespace kavit {

// The progress bar on standard error. It shows only where somebody looks, and only when the solve
// takes long enough to be looked at; it leaves no trace.
class Progress {
  public:
    Progress();

    [[nodiscard]] bool Wanted() const { return wanted_; }
    // Draws the line anew when the last one is old enough. `now` is in seconds since the start.
    void Show(const SearchCounters& counters, std::int64_t numPos, double now);
    void Clear();

  private:
    static constexpr double kFirstSeconds = 0.2;
    static constexpr double kEverySeconds = 0.1;

    bool wanted_ = false;
    bool shown_ = false;
    double next_ = kFirstSeconds;
};

// The line itself, without control characters.
[[nodiscard]] std::string ProgressLine(const SearchCounters& counters, std::int64_t numPos,
                                       double seconds);

}  // namespace kavit
