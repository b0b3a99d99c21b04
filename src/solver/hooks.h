#pragma once

#include <atomic>
#include <cstdint>

#include "level/result.h"

namespace kavit {

// All that the solver knows of the world outside: five calls and three flags. Every call may be
// left as it is. The calls come on the thread that runs the solver; the flags may be set from
// anywhere, a signal handler included.
class SolverHooks {
  public:
    virtual ~SolverHooks() = default;

    // Progress value: positions stored so far, every 5000 insertions and at the end of a level of
    // the optimizer.
    virtual void ShowProgress(std::int32_t bucketCnt) { (void)bucketCnt; }
    // Side label: '1' or '2' before a step of the search, 'F' or 'B' before a range of the
    // optimizer.
    virtual void ShowSide(char side) { (void)side; }
    // Status message.
    virtual void ShowMsg(Result message) { (void)message; }
    // Called once per expanded position and after every progress value, some ten million times a
    // second at most: must be cheap.
    virtual void Yield() {}

    // Ends the search or the optimizer before the next position or insertion.
    std::atomic<bool> StopSea{false};
    // Says that it was the time limit that set StopSea.
    std::atomic<bool> TimeOut{false};
    // Asks for message 28 at the next meeting; the solver clears it.
    std::atomic<bool> RefreshDue{false};
};

}  // namespace kavit
