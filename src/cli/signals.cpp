#include "cli/signals.h"

#include <csignal>

namespace kavit {

namespace {

// All that a signal handler can reach; nothing else of the program is global. They point into the
// command that runs, and to nothing when none does.
std::atomic<std::atomic<bool>*> interruptedFlag{nullptr};
std::atomic<SolverHooks*> solverHooks{nullptr};

static_assert(std::atomic<bool>::is_always_lock_free);
static_assert(std::atomic<SolverHooks*>::is_always_lock_free);

extern "C" void OnSignal(int number) {
    std::atomic<bool>* const interrupted = interruptedFlag;
    SolverHooks* const hooks = solverHooks;
    if (interrupted == nullptr || hooks == nullptr || interrupted->exchange(true)) {
        std::signal(number, SIG_DFL);
        std::raise(number);  // takes effect when the handler returns
        return;
    }
    hooks->RequestStop(StopCause::User);
}

void Install(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

}  // namespace

SignalGuard::SignalGuard(std::atomic<bool>& interrupted, SolverHooks& hooks) {
    interruptedFlag = &interrupted;
    solverHooks = &hooks;
    std::signal(SIGPIPE, SIG_IGN);
    Install(OnSignal);
}

SignalGuard::~SignalGuard() {
    Install(SIG_DFL);
    interruptedFlag = nullptr;
    solverHooks = nullptr;
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
