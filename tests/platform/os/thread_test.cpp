#include <array>
#include <csignal>
#include <gtest/gtest.h>
#include <pthread.h>

#include "halvane/platform/os/thread_internal.h"

namespace {

using halvane::startThread;
using halvane::threadName;

TEST(Thread, IsNamedByTheEndOfItsLabel) {
    EXPECT_EQ(threadName(""), "");
    EXPECT_EQ(threadName("fifteen bytes.."), "fifteen bytes..");
    EXPECT_EQ(threadName("org.example.reply.queue"), "ple.reply.queue");
}

TEST(Thread, IsNotNamedByHalfACharacter) {
    EXPECT_EQ(threadName("x\xC3\xA9"
                         "12345678901234"),
              "12345678901234");
}

TEST(Thread, BearsItsName) {
    std::array<char, 16> name{};
    startThread("a queue's reply.queue", [&] {
        ::pthread_getname_np(::pthread_self(), name.data(), name.size());
    }).join();
    EXPECT_STREQ(name.data(), "e's reply.queue");
}

TEST(Thread, TakesNoSignalsButThoseOfItsFaults) {
    sigset_t blocked{};
    startThread("signals", [&] { ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked); }).join();
    EXPECT_EQ(sigismember(&blocked, SIGTERM), 1);
    EXPECT_EQ(sigismember(&blocked, SIGCHLD), 1);
    EXPECT_EQ(sigismember(&blocked, SIGSEGV), 0);
}

TEST(Thread, LeavesTheSignalsOfItsStarterAsTheyWere) {
    sigset_t before{}, after{};
    ::pthread_sigmask(SIG_BLOCK, nullptr, &before);
    startThread("signals", [] {}).join();
    ::pthread_sigmask(SIG_BLOCK, nullptr, &after);
    for (const int signal : {SIGTERM, SIGINT, SIGCHLD, SIGUSR1}) {
        EXPECT_EQ(sigismember(&before, signal), sigismember(&after, signal)) << signal;
    }
}

}  // namespace
