// The channel, with the family of every kernel that tells of the others.
#include "tools/halvane/input/nl80211_channel.h"

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <gtest/gtest.h>
#include <linux/genetlink.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tools/halvane/input/netlink_attributes.h"

using namespace halvane::tool;

namespace {

using Clock = Nl80211Channel::Clock;

class ChannelToTheKernel : public ::testing::Test {
  protected:
    void SetUp() override {
        auto channel = Nl80211Channel::open("nlctrl");
        if (!channel) GTEST_SKIP() << "no generic netlink here: " << channel.error().text;
        channel_ = std::move(*channel);
    }

    std::unique_ptr<Nl80211Channel> channel_;
};

TEST_F(ChannelToTheKernel, ReturnsAList) {
    const auto answer = channel_->ask({.command = CTRL_CMD_GETFAMILY, .isList = true});
    ASSERT_TRUE(answer) << answer.error().text;
    bool hasItself = false;
    for (const auto& message : answer->messages) {
        auto generic = readGenericMessage(message);
        ASSERT_TRUE(generic);
        EXPECT_EQ(generic->command, CTRL_CMD_NEWFAMILY);
        while (const auto attribute = generic->attributes.next()) {
            const std::string text(attribute->value.begin(), attribute->value.end());
            hasItself = hasItself || (attribute->type == CTRL_ATTR_FAMILY_NAME &&
                                      text == std::string("nlctrl") + '\0');
        }
        EXPECT_FALSE(generic->attributes.areBroken());
    }
    EXPECT_TRUE(hasItself);
}

TEST_F(ChannelToTheKernel, ReturnsOneMessage) {
    Nl80211Request request{.command = CTRL_CMD_GETFAMILY};
    const std::string name = std::string("nlctrl") + '\0';
    request.attributes.add(CTRL_ATTR_FAMILY_NAME,
                           std::vector<std::uint8_t>(name.begin(), name.end()));
    const auto answer = channel_->ask(request);
    ASSERT_TRUE(answer) << answer.error().text;
    EXPECT_EQ(answer->messages.size(), 1U);
    EXPECT_EQ(channel_->ask(request)->messages, answer->messages);  // nothing is left over
}

TEST_F(ChannelToTheKernel, TellsARefusal) {
    for (const bool isList : {false, true}) {
        const auto answer = channel_->ask({.command = 200, .isList = isList});
        ASSERT_FALSE(answer);
        EXPECT_EQ(answer.error(),
                  (Nl80211Fault{.kind = Nl80211Fault::Kind::Refused, .error = EOPNOTSUPP}));
    }
    EXPECT_TRUE(channel_->ask({.command = CTRL_CMD_GETFAMILY, .isList = true}));
}

TEST_F(ChannelToTheKernel, WaitsForEventsToItsDeadline) {
    EXPECT_EQ(channel_->subscribe("notify"), std::nullopt);
    const auto deadline = Clock::now() + std::chrono::milliseconds(5);
    const auto event = channel_->nextEvent(deadline, -1);
    ASSERT_TRUE(event) << event.error().text;
    EXPECT_TRUE(*event || Clock::now() >= deadline);
}

TEST_F(ChannelToTheKernel, WaitsForEventsToAnInterrupt) {
    EXPECT_EQ(channel_->subscribe("notify"), std::nullopt);
    const int interrupt = ::eventfd(1, EFD_CLOEXEC);
    const auto event = channel_->nextEvent(Clock::now() + std::chrono::hours(1000), interrupt);
    ASSERT_TRUE(event) << event.error().text;
    EXPECT_FALSE(*event);
    ::close(interrupt);
}

// The family tells of families that come and go; here none does.
TEST_F(ChannelToTheKernel, ReturnsReadyEventsWithoutWaiting) {
    EXPECT_FALSE(channel_->readyEvents());
    EXPECT_EQ(channel_->eventDescriptor(), -1);
    EXPECT_EQ(channel_->subscribe("notify"), std::nullopt);
    const int descriptor = channel_->eventDescriptor();
    EXPECT_GE(descriptor, 0);
    const auto events = channel_->readyEvents();
    ASSERT_TRUE(events) << events.error().text;
    EXPECT_FALSE(events->wereLost);
    EXPECT_EQ(channel_->subscribe("notify"), std::nullopt);
    EXPECT_EQ(channel_->eventDescriptor(), descriptor);  // one for all groups
}

TEST_F(ChannelToTheKernel, KnowsNoOtherGroup) {
    const auto fault = channel_->subscribe("halvane-none");
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->kind, Nl80211Fault::Kind::Lost);
    EXPECT_FALSE(channel_->nextEvent(Clock::now(), -1));
}

TEST_F(ChannelToTheKernel, TellsThatThereIsNoFamily) {
    const auto channel = Nl80211Channel::open("halvane-none");
    ASSERT_FALSE(channel);
    EXPECT_EQ(channel.error().kind, Nl80211Fault::Kind::NoFamily);
}

}  // namespace
