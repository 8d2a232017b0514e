// A service on a bus, without what it serves. tests/service/ has what a daemon makes of it.
#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <systemd/sd-event.h>
#include <variant>
#include <vector>

#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_host_internal.h"

#include "tests/support/bus_caller.h"
#include "tests/support/private_bus.h"

namespace halvane {

namespace {

using ::halvane::testing::BusCaller;
using ::halvane::testing::command;
using ::halvane::testing::PrivateBus;
using ::testing::Contains;
using ::testing::HasSubstr;

constexpr const char kName[] = "org.halvane.halvaned";

IPCMessage status(std::int64_t value) {
    IPCMessage message;
    message.entries().set("status", value);
    return message;
}

class ServiceHostTest : public ::testing::Test {
  protected:
    PrivateBus bus_;
    const EventPointer loop_ = newEventLoop();
    BusCaller caller_{bus_.address()};
    std::vector<ServiceHost::Call> calls_;
    std::string sender_;
    IPCMessage request_;
    std::vector<std::string> departed_;
    int lost_ = 0;
    // Takes a request instead of keeping it.
    std::function<void(const ServiceHost::Call&)> onCall_ = [this](const ServiceHost::Call& call) {
        calls_.push_back(call);
    };
    ServiceHost host_{loop_.get(),
                      kName,
                      {.request =
                           [this](const std::string& sender, const IPCMessage& request,
                                  const ServiceHost::Call& call) {
                               sender_ = sender;
                               request_ = request;
                               onCall_(call);
                           },
                       .departed = [this](const std::string& name) { departed_.push_back(name); },
                       .left = [] {},
                       .lost = [this] { ++lost_; },
                       .nameless = [](const std::string&) {}}};

    void SetUp() override {
        const auto started = host_.start();
        ASSERT_TRUE(started) << started.error();
    }

    template <typename Condition>
    void runUntil(Condition isDone) {
        while (!isDone()) ASSERT_GE(::sd_event_run(loop_.get(), UINT64_MAX), 0);
    }
};

TEST_F(ServiceHostTest, HandsRequestsOver) {
    const auto reply = caller_.requestLater(command("enable", "wlan0"));
    runUntil([&] { return !calls_.empty(); });
    EXPECT_EQ(sender_, caller_.name());
    EXPECT_EQ(request_.entries().size(), 2u);
    EXPECT_EQ(calls_[0]->request, nullptr);  // its content is not kept
    ServiceHost::reply(calls_[0], status(7));
    caller_.waitFor(*reply);
    EXPECT_EQ(reply->status(), 7);
}

TEST_F(ServiceHostTest, RepliesWithErrors) {
    onCall_ = [](const ServiceHost::Call& call) {
        ServiceHost::replyError(call, "org.example.Error", "100 %s");
    };
    const auto refused = caller_.requestLater(command("enable"));
    runUntil([&] { return !sender_.empty(); });
    caller_.waitFor(*refused);
    EXPECT_EQ(refused->error, "org.example.Error");

    onCall_ = [this](const ServiceHost::Call& call) { calls_.push_back(call); };
    const auto failed = caller_.requestLater(command("enable"));
    runUntil([&] { return !calls_.empty(); });
    ServiceHost::replyFailure(calls_[0]);
    caller_.waitFor(*failed);
    EXPECT_EQ(failed->error, "org.freedesktop.DBus.Error.NoMemory");
}

TEST_F(ServiceHostTest, RepliesForAHandlerWithoutMemory) {
    onCall_ = [](const ServiceHost::Call&) { throw std::bad_alloc(); };
    const auto reply = caller_.requestLater(command("enable"));
    runUntil([&] { return !sender_.empty(); });
    caller_.waitFor(*reply);
    EXPECT_EQ(reply->error, "org.freedesktop.DBus.Error.NoMemory");
}

TEST_F(ServiceHostTest, SendsEventsToOneConnection) {
    BusCaller other(bus_.address());
    for (int i = 0; i < 3; ++i) host_.send(status(i), caller_.name());
    host_.flush();
    for (std::int64_t i = 0; i < 3; ++i) {
        EXPECT_EQ(std::get<std::int64_t>(caller_.nextEvent().message.at("status")), i);
    }
    other.ownerOf(kName);
    EXPECT_TRUE(other.eventsSoFar().empty());
}

TEST_F(ServiceHostTest, LearnsThatAConnectionLeft) {
    auto other = std::make_unique<BusCaller>(bus_.address());
    const std::string name = other->name();
    other.reset();
    runUntil([&] { return !departed_.empty(); });
    EXPECT_THAT(departed_, Contains(name));
}

TEST_F(ServiceHostTest, LearnsThatTheBusIsGone) {
    bus_.kill();
    runUntil([&] { return lost_ > 0; });
    const auto restarted = host_.restart();
    ASSERT_FALSE(restarted);
    EXPECT_THAT(restarted.error(), HasSubstr("joining the bus: "));
    EXPECT_EQ(lost_, 2);
}

TEST_F(ServiceHostTest, ComesBackWithItsNameOrWithout) {
    const std::string before = caller_.ownerOf(kName);
    EXPECT_TRUE(host_.restart());
    EXPECT_NE(caller_.ownerOf(kName), before);
    EXPECT_TRUE(host_.dropName());
    EXPECT_FALSE(host_.dropName());
    EXPECT_EQ(caller_.ownerOf(kName), "");
    EXPECT_TRUE(host_.takeName());
    EXPECT_TRUE(host_.takeName());
}

}  // namespace

}  // namespace halvane
