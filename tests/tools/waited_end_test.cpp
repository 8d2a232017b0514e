#include "tools/halvane/waited_end.h"

#include <csignal>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

using halvane::tool::WaitedEnd;

namespace {

// The signals that are blocked as they were before, and none of them is left behind.
class WaitedEndTest : public ::testing::Test {
  protected:
    WaitedEndTest() { ::pthread_sigmask(SIG_SETMASK, nullptr, &before_); }
    ~WaitedEndTest() override { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    // The test's own thread is the only one that takes it.
    static void takeSignal(int signal) {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, signal);
        int taken = 0;
        ::sigwait(&signals, &taken);
    }

  private:
    sigset_t before_{};
};

TEST_F(WaitedEndTest, ComesBySignal) {
    for (const int signal : {SIGINT, SIGTERM}) {
        WaitedEnd end;
        ::pthread_kill(::pthread_self(), signal);
        EXPECT_EQ(end.wait(), WaitedEnd::Reason::Signal);
        takeSignal(signal);
    }
}

TEST_F(WaitedEndTest, ComesFromAnotherThread) {
    WaitedEnd end;
    std::thread other([&] { end.end(WaitedEnd::Reason::DaemonGone); });
    EXPECT_EQ(end.wait(), WaitedEnd::Reason::DaemonGone);
    other.join();
}

TEST_F(WaitedEndTest, HasTheReasonThatCameFirst) {
    WaitedEnd end;
    end.end(WaitedEnd::Reason::OutputLost);
    end.end(WaitedEnd::Reason::DaemonGone);
    ::pthread_kill(::pthread_self(), SIGTERM);
    EXPECT_EQ(end.wait(), WaitedEnd::Reason::OutputLost);
    takeSignal(SIGTERM);
}

}  // namespace
