#include <array>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "halvane/platform/os/descriptor_mask_internal.h"

namespace {

using halvane::DescriptorMask;
using halvane::FileDescriptor;

class DescriptorMaskTest : public ::testing::Test {
  protected:
    DescriptorMaskTest() {
        std::array<int, 2> ends{};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        watched_ = FileDescriptor(ends[0]);
        other_ = FileDescriptor(ends[1]);
        EXPECT_TRUE(mask_.watch(watched_.number(), POLLIN));
    }

    bool isReadable() const {
        pollfd polled = {mask_.descriptor(), POLLIN, 0};
        return ::poll(&polled, 1, 0) == 1;
    }
    void send() { EXPECT_EQ(::write(other_.number(), "x", 1), 1); }

    FileDescriptor watched_, other_;
    DescriptorMask mask_;
};

TEST_F(DescriptorMaskTest, IsReadableWhileTheDescriptorHasWhatIsWatchedFor) {
    EXPECT_FALSE(isReadable());
    send();
    EXPECT_TRUE(isReadable());
    char byte = 0;
    EXPECT_EQ(::read(watched_.number(), &byte, 1), 1);
    EXPECT_FALSE(isReadable());
}

TEST_F(DescriptorMaskTest, HidesTheDescriptorUntilItIsShownAgain) {
    mask_.hide();
    send();
    EXPECT_FALSE(isReadable());
    mask_.show(POLLIN);
    EXPECT_TRUE(isReadable());
    mask_.hide();
    EXPECT_FALSE(isReadable());
}

TEST_F(DescriptorMaskTest, ShowsTheDescriptorForOtherEvents) {
    mask_.show(POLLIN | POLLOUT);
    EXPECT_TRUE(isReadable());
    mask_.show(POLLIN);
    EXPECT_FALSE(isReadable());
}

TEST_F(DescriptorMaskTest, ForgetsTheDescriptor) {
    send();
    mask_.forget();
    EXPECT_FALSE(isReadable());
    EXPECT_TRUE(mask_.watch(watched_.number(), POLLIN));
    EXPECT_TRUE(isReadable());
}

TEST(DescriptorMask, WatchesNothingThatCannotBePolled) {
    EXPECT_FALSE(DescriptorMask().watch(-1, POLLIN));
}

}  // namespace
