#include "tools/halvane/commands/ending_signals.h"

#include <atomic>
#include <csignal>
#include <initializer_list>
#include <new>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "tools/halvane/commands/command.h"

namespace halvane::tool {

namespace {

std::atomic<bool> gIsRegularEnd = false;

sigset_t endingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM}) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) sigaddset(&signals, signal);
    }
    return signals;
}

// Returns only where the default action is none, as in the first process of a container.
void endByDefault(int signal) {
    sigset_t own;
    sigemptyset(&own);
    sigaddset(&own, signal);
    ::pthread_sigmask(SIG_UNBLOCK, &own, nullptr);
    ::raise(signal);
    ::pthread_sigmask(SIG_BLOCK, &own, nullptr);
}

// REQUIRES: every thread blocks the signals.
[[noreturn]] void waitForSignals(const sigset_t& signals) {
    for (;;) {
        int signal = 0;
        if (::sigwait(&signals, &signal) != 0) continue;
        // Only _exit() is safe here: another thread may hold a lock that exit() needs.
        if (gIsRegularEnd) ::_exit(kExitDone);
        endByDefault(signal);
    }
}

}  // namespace

void takeEndingSignals() {
    const sigset_t signals = endingSignals();
    sigset_t before;
    ::pthread_sigmask(SIG_BLOCK, &signals, &before);
    try {
        std::thread([signals] { waitForSignals(signals); }).detach();
    } catch (const std::system_error&) {
        ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
        throw std::bad_alloc();
    }
}

void endOnSignals() noexcept {
    gIsRegularEnd = true;
}

}  // namespace halvane::tool
