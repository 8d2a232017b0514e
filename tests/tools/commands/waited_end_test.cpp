#include "tools/halvane/commands/waited_end.h"

#include <gtest/gtest.h>
#include <thread>

using halvane::tool::WaitedEnd;

namespace {

TEST(WaitedEnd, ComesFromAnotherThread) {
    WaitedEnd end;
    std::thread other([&] { end.end(WaitedEnd::Reason::DaemonRefused); });
    EXPECT_EQ(end.wait(), WaitedEnd::Reason::DaemonRefused);
    other.join();
}

TEST(WaitedEnd, HasTheReasonThatCameFirst) {
    WaitedEnd end;
    end.end(WaitedEnd::Reason::OutputLost);
    end.end(WaitedEnd::Reason::DaemonRefused);
    EXPECT_EQ(end.wait(), WaitedEnd::Reason::OutputLost);
}

}  // namespace
