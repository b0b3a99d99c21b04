#pragma once

#include <atomic>
#include <cstdint>

#include "level/result.h"
#include "solver/types.h"

namespace kavit {

// All that the solver knows of the world outside: five calls and two flags. Every call may be left
// as it is. The calls come on the thread that runs the solver; the flags may be set from anywhere,
// a signal handler included.
class SolverHooks {
  public:
    virtual ~SolverHooks() = default;

    // Progress value: positions stored so far, every 5000 insertions and at the end of a layer of
    // the optimizer.
    virtual void ShowProgress(std::int64_t bucketCnt) { (void)bucketCnt; }
    // Side label: '1' or '2' before a step of the search, 'F' or 'B' before a range of the
    // optimizer.
    virtual void ShowSide(char side) { (void)side; }
    // Status message.
    virtual void ShowMsg(Result message) { (void)message; }
    // Called once per expanded position and after every progress value, some ten million times a
    // second at most: must be cheap.
    virtual void Yield() {}

    // Sets StopSea, unless an earlier cause is there already.
    void RequestStop(StopCause cause) noexcept {
        StopCause before = StopCause::No;
        StopSea.compare_exchange_strong(before, cause);
    }
    [[nodiscard]] bool Stopping() const noexcept {
        return StopSea.load(std::memory_order_relaxed) != StopCause::No;
    }

    // Anything but No ends the search or the optimizer before the next position or insertion.
    std::atomic<StopCause> StopSea{StopCause::No};
    // Asks for message 28 at the next meeting; the solver clears it.
    std::atomic<bool> RefreshDue{false};
    static_assert(std::atomic<StopCause>::is_always_lock_free);
};

}  // namespace kavit
