#include "halvane/base/result.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "halvane/base/error.h"

using halvane::Error;
using halvane::Result;
using halvane::Unexpected;

namespace {

const Error kFailure = {"org.example", -7};

Result<int> half(int number) {
    if (number % 2 != 0) return Unexpected(kFailure);
    return number / 2;
}

TEST(Result, HoldsAValue) {
    const auto result = half(8);
    ASSERT_TRUE(result);
    EXPECT_TRUE(result.has_value());
    EXPECT_EQ(*result, 4);
    EXPECT_EQ(result.value_or(9), 4);
}

TEST(Result, HoldsAnError) {
    const auto result = half(7);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), kFailure);
    EXPECT_EQ(result.value_or(9), 9);
}

TEST(Result, TellsAValueFromAnErrorOfTheSameType) {
    const Result<std::string, std::string> good("text");
    const Result<std::string, std::string> bad = Unexpected(std::string("text"));
    EXPECT_TRUE(good);
    EXPECT_EQ(*good, "text");
    EXPECT_FALSE(bad);
    EXPECT_EQ(bad.error(), "text");
}

TEST(Result, IsEqualToAnEqualResultOrValue) {
    EXPECT_EQ(half(8), half(8));
    EXPECT_NE(half(8), half(6));
    EXPECT_EQ(half(7), half(9));
    EXPECT_NE(half(7), half(8));
    EXPECT_NE(half(8), half(7));
    const Result<int> otherError = Unexpected(Error{"org.example", -8});
    EXPECT_NE(half(7), otherError);
    EXPECT_EQ(half(8), 4);
    EXPECT_NE(half(8), 5);
    EXPECT_NE(half(1), 0);
}

TEST(Result, MovesWhatCannotBeCopied) {
    Result<std::unique_ptr<int>> result = std::make_unique<int>(5);
    ASSERT_TRUE(result);
    EXPECT_EQ(**result, 5);
    const std::unique_ptr<int> taken = *std::move(result);
    EXPECT_EQ(*taken, 5);
    static_assert(!std::is_copy_constructible_v<Result<std::unique_ptr<int>>>);
}

TEST(Result, GivesAccessToMembers) {
    Result<std::string> result = std::string("text");
    EXPECT_EQ(result->size(), 4u);
    result->push_back('s');
    EXPECT_EQ(*result, "texts");
}

TEST(Result, GoesOnWithTheValueAlone) {
    EXPECT_EQ(half(12).and_then(half).value_or(0), 3);
    EXPECT_EQ(half(6).and_then(half).error(), kFailure);
    int calls = 0;
    const auto count = [&calls](int number) {
        ++calls;
        return half(number);
    };
    EXPECT_EQ(half(3).and_then(count).error(), kFailure);
    EXPECT_EQ(calls, 0);
}

TEST(Result, IsTransformedIntoAnotherType) {
    const auto text = half(10).transform([](int number) { return std::to_string(number); });
    ASSERT_TRUE(text);
    EXPECT_EQ(*text, "5");
    const auto none = half(1).transform([](int number) { return std::to_string(number); });
    EXPECT_EQ(none.error(), kFailure);
}

TEST(Result, OfNothingTellsSuccessAlone) {
    const Result<void> good;
    EXPECT_TRUE(good);
    const Result<void> bad = Unexpected(kFailure);
    EXPECT_FALSE(bad);
    EXPECT_EQ(bad.error(), kFailure);
}

}  // namespace
