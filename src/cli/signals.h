#pragma once

#include <csignal>

#include "output/solve_session.h"

namespace kavit {

// While it lives, the first SIGINT or SIGTERM stops the session and the program ends in its own
// time, with what it knows; the second one ends it at once, with the status of a program that the
// signal killed. The same signal again within a fifth of a second is still the first. SIGPIPE is
// ignored: a reader that went away shows as a failed write.
//
// A blocked read is not restarted, so that a program that waits for its input can end too.
class SignalGuard {
  public:
    explicit SignalGuard(SolveSession& toStop);
    ~SignalGuard();
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;
};

// While it lives, SIGINT and SIGTERM wait: even a second one does not come between the two halves
// of what must be whole. Only for what takes no longer than writing a file.
class SignalHold {
  public:
    explicit SignalHold(bool wanted = true);
    ~SignalHold();
    SignalHold(const SignalHold&) = delete;
    SignalHold& operator=(const SignalHold&) = delete;

  private:
    sigset_t before_ = {};
};

}  // namespace kavit
