#include "tools/halvane/commands/ending_signals.h"

#include <csignal>
#include <gtest/gtest.h>

#include "tests/support/child_process.h"

using halvane::testing::isTrueInChild;
using halvane::tool::endOnSignals;

namespace {

TEST(EndingSignals, EndTheProgramAsDone) {
    for (const int signal : {SIGINT, SIGTERM}) {
        EXPECT_TRUE(isTrueInChild([signal] {
            endOnSignals();
            std::raise(signal);
            return false;
        })) << signal;
    }
}

TEST(EndingSignals, AreTakenWhereTheyWereBlocked) {
    EXPECT_TRUE(isTrueInChild([] {
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
        std::raise(SIGTERM);
        endOnSignals();
        return false;
    }));
}

TEST(EndingSignals, StayIgnoredWhereTheyWere) {
    EXPECT_FALSE(isTrueInChild([] {
        std::signal(SIGINT, SIG_IGN);
        endOnSignals();
        std::raise(SIGINT);
        return false;
    }));
}

}  // namespace
