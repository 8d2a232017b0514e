#include "tools/halvane/commands/ending_signals.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/child_process.h"

using halvane::testing::isTrueInChild;
using halvane::testing::startChild;
using halvane::tool::endOnSignals;
using halvane::tool::takeEndingSignals;

namespace {

void block(int signal) {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, signal);
    ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
}

bool isBlocked(int signal) {
    sigset_t blocked;
    ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    return sigismember(&blocked, signal) == 1;
}

bool hasDefaultAction(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_DFL;
}

// Sends a signal to the process as a whole, and waits for the end.
[[noreturn]] void endBy(int signal) {
    ::kill(::getpid(), signal);
    for (;;) ::pause();
}

// The number of the signal that ended the child; 0 if none did.
template <typename Run>
int endOfChild(Run run) {
    int status = 0;
    ::waitpid(startChild(run), &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

TEST(EndingSignals, EndTheProgramAsDone) {
    for (const int signal : {SIGINT, SIGTERM}) {
        EXPECT_TRUE(isTrueInChild([signal]() -> bool {
            takeEndingSignals();
            endOnSignals();
            endBy(signal);
        })) << signal;
    }
}

TEST(EndingSignals, EndTheProgramByDefaultBefore) {
    for (const int signal : {SIGINT, SIGTERM}) {
        EXPECT_EQ(endOfChild([signal]() -> bool {
                      takeEndingSignals();
                      endBy(signal);
                  }),
                  signal);
    }
}

// A handler runs only when its thread lets it.
TEST(EndingSignals, RunNoHandler) {
    for (const int signal : {SIGINT, SIGTERM}) {
        EXPECT_TRUE(isTrueInChild([signal] {
            takeEndingSignals();
            endOnSignals();
            return hasDefaultAction(signal) && isBlocked(signal);
        })) << signal;
    }
}

TEST(EndingSignals, AreTakenWhereTheyWereBlocked) {
    EXPECT_TRUE(isTrueInChild([]() -> bool {
        block(SIGTERM);
        takeEndingSignals();
        endOnSignals();
        endBy(SIGTERM);
    }));
    EXPECT_EQ(endOfChild([]() -> bool {
                  block(SIGTERM);
                  takeEndingSignals();
                  endBy(SIGTERM);
              }),
              SIGTERM);
}

// The system discards an ignored signal at once, unless the thread blocks it.
TEST(EndingSignals, StayIgnoredWhereTheyWere) {
    EXPECT_TRUE(isTrueInChild([] {
        std::signal(SIGINT, SIG_IGN);
        takeEndingSignals();
        endOnSignals();
        return !hasDefaultAction(SIGINT) && !isBlocked(SIGINT) && isBlocked(SIGTERM);
    }));
}

TEST(EndingSignals, LeaveOtherSignalsAlone) {
    EXPECT_EQ(endOfChild([]() -> bool {
                  takeEndingSignals();
                  endOnSignals();
                  endBy(SIGHUP);
              }),
              SIGHUP);
}

}  // namespace
