#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include "halvane/platform/os/write_signal_internal.h"

#include "tests/support/child_process.h"

namespace {

using halvane::canRaiseWriteSignal;
using halvane::WriteSignalBlock;
using halvane::testing::isTrueInChild;

volatile sig_atomic_t gSignals = 0;

void countSignal(int) {
    gSignals = gSignals + 1;
}

// A program that has a handler for SIGPIPE.
class WriteSignalTest : public ::testing::Test {
  protected:
    WriteSignalTest() {
        gSignals = 0;
        struct sigaction action {};
        action.sa_handler = countSignal;
        ::sigaction(SIGPIPE, &action, &before_);
        sigemptyset(&signals_);
        sigaddset(&signals_, SIGPIPE);
        ::pthread_sigmask(SIG_UNBLOCK, &signals_, &mask_);
    }
    ~WriteSignalTest() override {
        ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
        ::sigaction(SIGPIPE, &before_, nullptr);
    }

    void block() const { ::pthread_sigmask(SIG_BLOCK, &signals_, nullptr); }

    // A signal that arrived while it was blocked is delivered now.
    int signalsAfterUnblocking() const {
        ::pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
        return gSignals;
    }

    // Writes to a pipe without a reader, and returns errno.
    static int breakPipe() {
        int ends[2];
        if (::pipe(ends) != 0) return 0;
        ::close(ends[0]);
        const int error = ::write(ends[1], "x", 1) < 0 ? errno : 0;
        ::close(ends[1]);
        return error;
    }

  private:
    sigset_t signals_;
    sigset_t mask_;
    struct sigaction before_ {};
};

TEST_F(WriteSignalTest, TakesBackTheSignalOfItsWrite) {
    {
        WriteSignalBlock block;
        const int error = breakPipe();
        EXPECT_EQ(error, EPIPE);
        block.takeBackSignal(error);
    }
    EXPECT_EQ(gSignals, 0);
}

// Somebody else sends the signal while a write fails without raising one.
TEST_F(WriteSignalTest, LeavesASignalOfAnotherWhereTheWriteFailedOtherwise) {
    for (const int error : {EAGAIN, ENOSPC, EIO, EINTR, EFBIG, 0}) {
        gSignals = 0;
        {
            WriteSignalBlock block;
            ::pthread_kill(::pthread_self(), SIGPIPE);
            block.takeBackSignal(error);
        }
        EXPECT_EQ(gSignals, 1) << error;
    }
}

// The signal is sent to the process, and the write's own signal to the thread. The program has one
// thread, so that no other thread takes the signal.
TEST_F(WriteSignalTest, LeavesASignalToTheProcessBesideThatOfItsWrite) {
    EXPECT_TRUE(isTrueInChild([] {
        {
            WriteSignalBlock block;
            ::kill(::getpid(), SIGPIPE);
            block.takeBackSignal(breakPipe());
        }
        return gSignals == 1;
    }));
}

TEST_F(WriteSignalTest, LeavesASignalThatWasWaitingBefore) {
    block();
    ::pthread_kill(::pthread_self(), SIGPIPE);
    {
        WriteSignalBlock block;
        block.takeBackSignal(breakPipe());
    }
    EXPECT_EQ(gSignals, 0);
    EXPECT_EQ(signalsAfterUnblocking(), 1);
}

TEST_F(WriteSignalTest, LeavesTheSignalBlockedThatTheProgramBlocks) {
    block();
    {
        WriteSignalBlock block;
        block.takeBackSignal(breakPipe());
    }
    sigset_t blocked;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGPIPE), 1);
    EXPECT_EQ(signalsAfterUnblocking(), 0);
}

TEST_F(WriteSignalTest, KnowsWhatCanBreak) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    EXPECT_TRUE(canRaiseWriteSignal(ends[1]));
    ::close(ends[0]);
    ::close(ends[1]);
    EXPECT_FALSE(canRaiseWriteSignal(-1));
}

}  // namespace
