#include "cli/signals.h"

#include <atomic>
#include <csignal>
#include <cstdint>
#include <ctime>

namespace kavit {

namespace {

// Whoever stops a program in its group may send one signal twice: to the program, and to the group.
constexpr std::int64_t kSamePressMs = 200;

// All that a signal handler can reach; nothing else of the program is global. The first points to
// the session that runs, and to nothing when none does; the others tell of the signal that stopped
// it.
std::atomic<SolveSession*> session{nullptr};
std::atomic<int> stoppedBy{0};
std::atomic<std::int64_t> stoppedAtMs{0};

static_assert(std::atomic<SolveSession*>::is_always_lock_free);
static_assert(std::atomic<std::int64_t>::is_always_lock_free);

std::int64_t NowMs() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);  // may be called in a signal handler
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

extern "C" void OnSignal(int number) {
    if (number == stoppedBy && NowMs() - stoppedAtMs < kSamePressMs) return;
    SolveSession* const running = session;
    if (running != nullptr && running->RequestStop()) {
        stoppedAtMs = NowMs();
        stoppedBy = number;
    } else {
        std::signal(number, SIG_DFL);
        std::raise(number);  // takes effect when the handler returns
    }
}

void Install() {
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

}  // namespace

SignalGuard::SignalGuard(SolveSession& toStop) {
    session = &toStop;
    stoppedBy = 0;
    std::signal(SIGPIPE, SIG_IGN);
    Install();
}

SignalGuard::~SignalGuard() {
    session = nullptr;  // OnSignal then does what a signal does by default, but for a late repeat
}

SignalHold::SignalHold(bool wanted) {
    sigset_t held;
    sigemptyset(&held);
    if (wanted) {
        sigaddset(&held, SIGINT);
        sigaddset(&held, SIGTERM);
    }
    pthread_sigmask(SIG_BLOCK, &held, &before_);
}

SignalHold::~SignalHold() {
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

}  // namespace kavit
