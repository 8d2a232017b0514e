#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include "halvane/platform/bus/awaited_reply_internal.h"

namespace {

using namespace std::chrono_literals;
using halvane::AwaitedReply;
using halvane::IPCMessage;
using halvane::OwedReply;
using halvane::ServiceError;
using halvane::Unexpected;

TEST(AwaitedReply, IsTheFirstThatArrives) {
    const auto reply = std::make_shared<AwaitedReply>();
    OwedReply(reply).set(IPCMessage());
    reply->set(Unexpected(ServiceError()));
    EXPECT_FALSE(reply->await({}));
    const auto taken = reply->take();
    ASSERT_TRUE(taken.has_value());
    EXPECT_TRUE(taken->has_value());
    EXPECT_FALSE(reply->take().has_value());
}

TEST(AwaitedReply, IsLostWithWhoeverOwesIt) {
    const auto reply = std::make_shared<AwaitedReply>();
    EXPECT_FALSE(reply->isSettled());
    static_cast<void>(OwedReply(reply));
    EXPECT_TRUE(reply->isSettled());
    EXPECT_FALSE(reply->await({}));
    reply->set(IPCMessage());
    EXPECT_FALSE(reply->take().has_value());
}

TEST(AwaitedReply, IsAwaitedNoLongerThanSaid) {
    AwaitedReply reply;
    EXPECT_FALSE(reply.await(std::chrono::steady_clock::now() + 1ms));
    EXPECT_FALSE(reply.isSettled());
}

TEST(AwaitedReply, AsksItsThreadToLeadOnce) {
    AwaitedReply reply;
    std::thread leader([&] { EXPECT_TRUE(reply.appoint()); });
    EXPECT_TRUE(reply.await({}));
    leader.join();
    EXPECT_FALSE(reply.await(std::chrono::steady_clock::now()));
}

TEST(AwaitedReply, AsksNoThreadToLeadThatHasItsReply) {
    AwaitedReply reply;
    reply.lose();
    EXPECT_FALSE(reply.appoint());
    EXPECT_FALSE(reply.await({}));
}

}  // namespace
