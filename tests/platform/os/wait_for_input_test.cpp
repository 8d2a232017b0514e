#include <chrono>
#include <gtest/gtest.h>
#include <poll.h>
#include <thread>

#include "halvane/platform/os/wait_for_input_internal.h"

namespace {

using halvane::waitForInput;
using halvane::WakeEvent;
using Clock = std::chrono::steady_clock;

TEST(WaitForInput, FindsInput) {
    WakeEvent input, wake;
    input.signal();
    EXPECT_TRUE(waitForInput(input.descriptor(), POLLIN, wake, {}));
    EXPECT_TRUE(waitForInput(input.descriptor(), POLLIN, wake, Clock::now()));
}

TEST(WaitForInput, IsWokenOnce) {
    WakeEvent input, wake;
    wake.signal();
    EXPECT_FALSE(waitForInput(input.descriptor(), POLLIN, wake, {}));
    std::thread waker([&] { wake.signal(); });
    EXPECT_FALSE(waitForInput(input.descriptor(), POLLIN, wake, {}));
    waker.join();
    wake.signal();
    input.signal();
    EXPECT_TRUE(waitForInput(input.descriptor(), POLLIN, wake, {}));
}

TEST(WaitForInput, EndsInTime) {
    using namespace std::chrono_literals;
    WakeEvent input, wake;
    waitForInput(input.descriptor(), POLLIN, wake, Clock::time_point::min());
    waitForInput(input.descriptor(), POLLIN, wake, Clock::now() - 1h);
    const auto end = Clock::now() + 5ms;
    while (Clock::now() < end) waitForInput(input.descriptor(), POLLIN, wake, end);
}

}  // namespace
