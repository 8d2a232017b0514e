#include "tools/halvane/commands/ending_signals.h"

#include <csignal>
#include <initializer_list>
#include <unistd.h>

#include "tools/halvane/commands/command.h"

namespace halvane::tool {

namespace {

// Only _exit() is safe here: another thread may hold a lock that exit() needs.
void endNow(int) {
    ::_exit(kExitDone);
}

}  // namespace

void endOnSignals() noexcept {
    sigset_t taken;
    sigemptyset(&taken);
    for (const int signal : {SIGINT, SIGTERM}) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler == SIG_IGN) continue;
        action = {};
        action.sa_handler = endNow;
        ::sigaction(signal, &action, nullptr);
        sigaddset(&taken, signal);
    }
    ::pthread_sigmask(SIG_UNBLOCK, &taken, nullptr);
}

}  // namespace halvane::tool
