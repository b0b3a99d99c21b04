#include "cli/solve_hooks.h"

namespace kavit {

void SolveHooks::Start() {
    RefreshDue = false;
    StopSea = StopCause::No;
    // In this order: a signal between the two lines is not lost.
    if (interrupted_) RequestStop(StopCause::User);
    watch_.Start(dayClock_.Now(), solver_.AppliedSizes().MaxTime);
    start_ = Clock::now();
    nextTick_ = 1;
    left_ = kPositionsPerLook;
}

void SolveHooks::Finish() {
    watch_.Finish(dayClock_.Now());
    progress_.Clear();
}

void SolveHooks::ShowProgress(std::int64_t /*bucketCnt*/) {
    Look();
}

void SolveHooks::Look() {
    left_ = kPositionsPerLook;
    const double now = std::chrono::duration<double>(Clock::now() - start_).count();
    if (now >= nextTick_) {
        nextTick_ += 1;
        watch_.Tick(dayClock_.Now(), *this);
    }
    progress_.Show(solver_.Counters(), solver_.AppliedSizes().NumPos, now);
}

}  // namespace kavit
