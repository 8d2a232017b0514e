#include <algorithm>
#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "halvane/daemon/back_off_internal.h"
#include "halvane/daemon/pending_internal.h"

#include "tests/support/scarce_memory.h"

namespace {

using namespace halvane;
using namespace std::chrono_literals;
using Kind = DaemonError::Kind;
using halvane::testing::withEachAllocationFailing;
using ::testing::ElementsAre;

class DaemonPending : public ::testing::Test {
  protected:
    DaemonCompletions::Completion completion(const std::string& name) {
        return [this, name](const DaemonReply& reply) {
            told_.push_back(name + (reply ? ": done" : std::string(": ") + reply.error().text()));
        };
    }
    auto request(const std::string& name) {
        auto done = completion(name);
        return std::make_unique<DaemonNumberedRequest>(completions_, done);
    }

    const std::shared_ptr<DaemonCompletions> completions_ = std::make_shared<DaemonCompletions>();
    std::vector<std::string> told_;
};

TEST_F(DaemonPending, TellsAReplyOnce) {
    const auto first = request("first");
    first->finish(IPCMessage());
    first->finish(daemonFailure(Kind::BusGone));
    EXPECT_THAT(told_, ElementsAre("first: done"));
}

TEST_F(DaemonPending, TellsOfAReplyThatWasDropped) {
    request("first");
    EXPECT_THAT(told_, ElementsAre("first: out of memory"));
}

TEST_F(DaemonPending, TellsNothingOfAForgottenRequest) {
    request("first")->forget();
    EXPECT_THAT(told_, ElementsAre());
}

// What the client's end takes at the same time cannot be given back.
TEST_F(DaemonPending, TakesNoFunctionWhereThereIsNoRoomForItsRequest) {
    auto done = completion("first");
    std::shared_ptr<DaemonNumberedRequest> request;
    const auto failures = withEachAllocationFailing(
        [&] { request = std::make_shared<DaemonNumberedRequest>(completions_, done); },
        [&] {
            EXPECT_TRUE(done);
            completions_->finishAll();
            EXPECT_THAT(told_, ElementsAre());
        });
    EXPECT_GE(failures, 2u);
    EXPECT_FALSE(done);
    request->finish(IPCMessage());
    EXPECT_THAT(told_, ElementsAre("first: done"));
}

TEST_F(DaemonPending, LeavesWhatIsDroppedAtTheEndToTheEnd) {
    auto first = request("first"), second = request("second"), third = request("third");
    completions_->beginEnd();
    third.reset();
    first.reset();
    second->finish(IPCMessage());
    EXPECT_THAT(told_, ElementsAre("second: done"));
    completions_->finishAll();
    EXPECT_THAT(told_, ElementsAre("second: done", "first: the client is ending",
                                   "third: the client is ending"));
}

TEST_F(DaemonPending, TellsWhyAReplyIsLost) {
    const unsigned losses = completions_->losses();
    EXPECT_EQ(completions_->lostReply(losses).error().kind, Kind::OutOfMemory);
    completions_->noteLoss();
    EXPECT_EQ(completions_->lostReply(losses).error().kind, Kind::BusGone);
    EXPECT_EQ(completions_->lostReply(losses + 1).error().kind, Kind::OutOfMemory);
    completions_->beginEnd();
    EXPECT_EQ(completions_->lostReply(losses).error().kind, Kind::Ending);
}

TEST(BackOff, WaitsTwiceAsLongEachTimeWithinBounds) {
    BackOff backOff;
    EXPECT_EQ(backOff.next(), 100ms);
    EXPECT_EQ(backOff.next(), 200ms);
    EXPECT_EQ(backOff.next(), 400ms);
    for (int i = 0; i < 100; ++i) EXPECT_LE(backOff.next(), 10s);
    EXPECT_EQ(backOff.next(), 10s);
    backOff.reset();
    EXPECT_EQ(backOff.next(), 100ms);
}

TEST(DaemonError, HasATextForEachKind) {
    std::vector<std::string> texts;
    for (int kind = 0; kind <= static_cast<int>(Kind::OutOfMemory); ++kind) {
        texts.emplace_back(DaemonError{static_cast<Kind>(kind)}.text());
        EXPECT_NE(texts.back(), "unknown");
        EXPECT_EQ(std::count(texts.begin(), texts.end(), texts.back()), 1) << texts.back();
    }
}

}  // namespace
