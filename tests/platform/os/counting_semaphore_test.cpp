#include "halvane/platform/os/counting_semaphore.h"

#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace {

using halvane::CountingSemaphore;

TEST(CountingSemaphore, LetsAsManyPassAsItCounts) {
    CountingSemaphore semaphore(2);
    semaphore.wait();
    semaphore.wait();
    semaphore.signal();
    semaphore.wait();
}

TEST(CountingSemaphore, KeepsSignalsThatNobodyWaitsFor) {
    CountingSemaphore semaphore(0);
    for (int i = 0; i < 1000; ++i) semaphore.signal();
    for (int i = 0; i < 1000; ++i) semaphore.wait();
}

TEST(CountingSemaphore, HoldsAThreadUntilItIsSignalled) {
    CountingSemaphore asked(0), answered(0);
    int value = 0;  // written and read in turns: what was done before a signal is seen after it
    std::thread other([&] {
        for (int i = 0; i < 1000; ++i) {
            asked.wait();
            ++value;
            answered.signal();
        }
    });
    for (int i = 1; i <= 1000; ++i) {
        asked.signal();
        answered.wait();
        EXPECT_EQ(value, i);
    }
    other.join();
}

TEST(CountingSemaphore, MayBeDestroyedByWhomItReleased) {
    for (int i = 0; i < 200; ++i) {
        auto semaphore = std::make_unique<CountingSemaphore>(0);
        std::thread other([signalled = semaphore.get()] { signalled->signal(); });
        semaphore->wait();
        semaphore.reset();
        other.join();
    }
}

}  // namespace
