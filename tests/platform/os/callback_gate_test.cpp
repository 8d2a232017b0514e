#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include "halvane/platform/os/callback_gate_internal.h"
#include "halvane/platform/os/counting_semaphore.h"

namespace {

using halvane::CallbackGate;
using halvane::CountingSemaphore;

TEST(CallbackGate, LetsCallbacksThroughUntilItIsClosed) {
    CallbackGate gate;
    {
        const CallbackGate::Pass one(gate), another(gate);
        EXPECT_TRUE(one);
        EXPECT_TRUE(another);
        EXPECT_FALSE(gate.isClosed());
    }
    gate.close();
    EXPECT_TRUE(gate.isClosed());
    const CallbackGate::Pass late(gate);
    EXPECT_FALSE(late);
}

TEST(CallbackGate, WaitsForTheCallbacksOfOtherThreads) {
    CallbackGate gate;
    CountingSemaphore inside(0), released(0);
    bool isDone = false;  // seen because the gate waits
    std::thread callback([&] {
        const CallbackGate::Pass pass(gate);
        inside.signal();
        released.wait();
        isDone = true;
    });
    inside.wait();
    std::thread releaser([&] {
        while (!gate.isClosed()) std::this_thread::yield();
        released.signal();
    });
    gate.close();
    EXPECT_TRUE(isDone);
    callback.join();
    releaser.join();
}

TEST(CallbackGate, DoesNotWaitForTheCallbackThatClosesIt) {
    CallbackGate gate;
    const CallbackGate::Pass outer(gate), inner(gate);
    gate.close();
    EXPECT_TRUE(gate.isClosed());
}

TEST(CallbackGate, LetsCallbacksLeaveInAnyOrder) {
    CallbackGate gate;
    auto one = std::make_unique<CallbackGate::Pass>(gate);
    auto two = std::make_unique<CallbackGate::Pass>(gate);
    auto three = std::make_unique<CallbackGate::Pass>(gate);
    two.reset();
    one.reset();
    const CallbackGate::Pass four(gate);
    three.reset();
    EXPECT_TRUE(four);
    gate.close();
}

TEST(CallbackGate, MayBeClosedTwice) {
    CallbackGate gate;
    gate.close();
    gate.close();
    EXPECT_TRUE(gate.isClosed());
}

}  // namespace
