#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include "halvane/platform/os/wake_event_internal.h"

#include "tests/support/child_process.h"

namespace {

using halvane::WakeEvent;

bool isSignalled(const WakeEvent& event) {
    pollfd polled = {event.descriptor(), POLLIN, 0};
    return ::poll(&polled, 1, 0) == 1;
}

TEST(WakeEvent, IsSignalledUntilCleared) {
    WakeEvent event;
    ASSERT_TRUE(event);
    EXPECT_FALSE(isSignalled(event));
    event.signal();
    event.signal();
    EXPECT_TRUE(isSignalled(event));
    event.clear();
    EXPECT_FALSE(isSignalled(event));
    event.clear();  // waits for nothing
}

TEST(WakeEvent, TakesNoNumberOfAStandardStream) {
    EXPECT_TRUE(halvane::testing::isTrueInChild([] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::close(stream);
        WakeEvent event;
        event.signal();
        return event.descriptor() > STDERR_FILENO && isSignalled(event) &&
               ::close(STDIN_FILENO) != 0;
    }));
}

}  // namespace
