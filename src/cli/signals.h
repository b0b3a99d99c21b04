#pragma once

#include <atomic>
#include <string>

namespace kavit {

// While it lives, the first SIGINT or SIGTERM sets two flags and the program ends in its own time,
// with what it knows; the second one ends it at once, with the status of a program that the signal
// killed. SIGPIPE is ignored: a reader that went away shows as a failed write.
//
// A blocked read is not restarted, so that a program that waits for its input can end too.
class SignalGuard {
  public:
    SignalGuard(std::atomic<bool>& interrupted, std::atomic<bool>& stopSea);
    ~SignalGuard();
    SignalGuard(const SignalGuard&) = delete;
    SignalGuard& operator=(const SignalGuard&) = delete;
};

}  // namespace kavit
