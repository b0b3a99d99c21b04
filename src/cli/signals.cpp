#include "cli/signals.h"

#include <atomic>
#include <csignal>

namespace kavit {

namespace {

// All that a signal handler can reach; nothing else of the program is global. It points to the
// session that runs, and to nothing when none does.
std::atomic<SolveSession*> session{nullptr};

static_assert(std::atomic<SolveSession*>::is_always_lock_free);

extern "C" void OnSignal(int number) {
    SolveSession* const running = session;
    if (running == nullptr || !running->RequestStop()) {
        std::signal(number, SIG_DFL);
        std::raise(number);  // takes effect when the handler returns
    }
}

void Install(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

}  // namespace

SignalGuard::SignalGuard(SolveSession& toStop) {
    session = &toStop;
    std::signal(SIGPIPE, SIG_IGN);
    Install(OnSignal);
}

SignalGuard::~SignalGuard() {
    Install(SIG_DFL);
    session = nullptr;
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
