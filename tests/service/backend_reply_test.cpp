#include "halvane/service/backend_reply.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace halvane {

namespace {

static_assert(!std::is_copy_constructible_v<BackendReply<void>>);

class BackendReplyTest : public ::testing::Test {
  protected:
    int calls_ = 0;
    std::optional<BackendResult<int>> last_;
    BackendReply<int> reply_{[this](BackendResult<int> result) {
        ++calls_;
        last_ = std::move(result);
    }};
};

TEST_F(BackendReplyTest, IsCalledOnce) {
    EXPECT_TRUE(reply_);
    reply_(7);
    EXPECT_FALSE(reply_);
    reply_(8);
    EXPECT_EQ(calls_, 1);
    EXPECT_EQ(last_, BackendResult<int>(7));
}

TEST_F(BackendReplyTest, PassesAStatusOn) {
    reply_(Unexpected(static_cast<DaemonStatus>(kFirstOwnStatus + 3)));
    ASSERT_TRUE(last_);
    EXPECT_EQ(static_cast<int>(last_->error()), 103);
}

TEST_F(BackendReplyTest, MovesWithItsRequest) {
    BackendReply<int> moved = std::move(reply_);
    reply_(1);  // NOLINT(bugprone-use-after-move): it does nothing
    EXPECT_EQ(calls_, 0);
    moved(2);
    EXPECT_EQ(calls_, 1);
}

// A call may destroy the reply itself.
TEST(BackendReply, MayBeDestroyedByItsHandler) {
    std::unique_ptr<BackendReply<void>> reply;
    bool isCalled = false;
    reply = std::make_unique<BackendReply<void>>([&](const BackendResult<void>&) {
        reply.reset();
        isCalled = true;
    });
    (*reply)({});
    EXPECT_TRUE(isCalled);
    EXPECT_EQ(reply, nullptr);
}

TEST(BackendReply, DropsItsHandlerUncalled) {
    const auto witness = std::make_shared<int>();
    {
        const BackendReply<void> reply([witness](const BackendResult<void>&) { FAIL(); });
        EXPECT_EQ(witness.use_count(), 2);
    }
    EXPECT_EQ(witness.use_count(), 1);
}

}  // namespace

}  // namespace halvane
