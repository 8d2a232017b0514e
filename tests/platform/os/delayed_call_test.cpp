#include <atomic>
#include <chrono>
#include <gtest/gtest.h>

#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/delayed_call_internal.h"

namespace {

using halvane::CountingSemaphore;
using halvane::DelayedCall;
using namespace std::chrono_literals;

TEST(DelayedCall, CallsNotBeforeItsTime) {
    CountingSemaphore called(0);
    DelayedCall call("test", [&] { called.signal(); });
    const auto start = std::chrono::steady_clock::now();
    call.schedule(20ms);
    called.wait();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
}

TEST(DelayedCall, CallsOnceForEachTimeItIsAsked) {
    CountingSemaphore called(0);
    std::atomic<int> calls = 0;
    DelayedCall call("test", [&] {
        ++calls;
        called.signal();
    });
    for (int i = 1; i <= 3; ++i) {
        call.schedule(0ms);
        called.wait();
        EXPECT_EQ(calls, i);
    }
}

TEST(DelayedCall, MayBeAskedByTheCall) {
    CountingSemaphore done(0);
    int calls = 0;
    DelayedCall* self = nullptr;
    DelayedCall call("test", [&] {
        if (++calls == 5) return done.signal();
        self->schedule(0ms);
    });
    self = &call;
    call.schedule(0ms);
    done.wait();
}

TEST(DelayedCall, TakesTheLastTimeThatItWasGiven) {
    CountingSemaphore called(0);
    DelayedCall call("test", [&] { called.signal(); });
    call.schedule(1h);
    call.schedule(0ms);
    called.wait();
}

TEST(DelayedCall, CallsNothingOnceStopped) {
    std::atomic<int> calls = 0;
    DelayedCall call("test", [&] { ++calls; });
    call.schedule(1h);
    call.stop();
    call.schedule(0ms);
    call.stop();
    EXPECT_EQ(calls, 0);
}

TEST(DelayedCall, WaitsForACallThatIsRunning) {
    CountingSemaphore entered(0), released(0);
    std::atomic<bool> hasLeft = false;
    DelayedCall call("test", [&] {
        entered.signal();
        released.wait();
        hasLeft = true;
    });
    call.schedule(0ms);
    entered.wait();
    released.signal();
    call.stop();
    EXPECT_TRUE(hasLeft);
}

}  // namespace
