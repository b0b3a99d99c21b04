#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

#include "cli/progress.h"
#include "output/watch.h"
#include "solver/hooks.h"
#include "solver/solver.h"

namespace kavit {

// The world as the solver sees it from a terminal: a clock that ends it in time, a progress bar,
// and the wish to stop, which comes by a signal and outlives the level.
class SolveHooks final : public SolverHooks {
  public:
    explicit SolveHooks(const Solver& solver) : solver_(solver) {}

    // Around each solve. A stop asked for between two levels counts for the next one.
    void Start();
    void Finish();

    void ShowProgress(std::int64_t bucketCnt) override;
    void Yield() override {
        if (--left_ == 0) Look();
    }

    [[nodiscard]] const SolveWatch& Watch() const { return watch_; }
    [[nodiscard]] std::atomic<bool>& Interrupted() { return interrupted_; }

  private:
    using Clock = std::chrono::steady_clock;
    // Expanding a position takes from a tenth of a microsecond to some milliseconds, reading the
    // clock some 30 ns: every 64 positions it costs nothing, and no limit is missed by much.
    static constexpr int kPositionsPerLook = 64;

    void Look();

    const Solver& solver_;
    std::atomic<bool> interrupted_{false};
    DayClock dayClock_;
    SolveWatch watch_;
    Progress progress_;
    Clock::time_point start_;
    double nextTick_ = 0;
    int left_ = kPositionsPerLook;
};

}  // namespace kavit
