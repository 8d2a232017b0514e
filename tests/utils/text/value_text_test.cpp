#include "halvane/utils/text/value_text.h"

#include <climits>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

constexpr const char* kEnd = nullptr;

TEST(ValueText, IsTheTextThatBelongsToTheValue) {
    char buffer[16] = "untouched";
    const auto state = [&](int value) {
        return MapValueToString(value, "state %d", buffer, sizeof(buffer), "idle", 0, "running", 1,
                                "failed", -1, "again", 1, kEnd);
    };
    EXPECT_STREQ(state(0), "idle");
    EXPECT_STREQ(state(1), "running");  // the first that matches
    EXPECT_STREQ(state(-1), "failed");
    EXPECT_STREQ(buffer, "untouched");
    EXPECT_EQ(state(7), buffer);
    EXPECT_STREQ(buffer, "state 7");
    EXPECT_EQ(state(INT_MIN), buffer);
    EXPECT_STREQ(buffer, "state -21474836");  // cut to the buffer
}

TEST(ValueText, IsTheFormatWithoutABuffer) {
    const char* const format = "unknown";
    char buffer[4] = "abc";
    EXPECT_EQ(MapValueToString(1, format, nullptr, 0, kEnd), format);
    EXPECT_EQ(MapValueToString(1, format, nullptr, 16, kEnd), format);
    EXPECT_EQ(MapValueToString(1, format, buffer, 0, kEnd), format);
    EXPECT_EQ(MapValueToString(1, nullptr, buffer, sizeof(buffer), kEnd), nullptr);
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(MapValueToString(1, nullptr, nullptr, 0, "one", 2, kEnd), nullptr);
    EXPECT_STREQ(MapValueToString(2, nullptr, nullptr, 0, "two", 2, kEnd), "two");
}

TEST(ValueText, WritesNothingPastTheBuffer) {
    GuardedBytes buffer(5);
    EXPECT_EQ(MapValueToString(123456789, "%d", buffer.chars(), 5, kEnd), buffer.chars());
    EXPECT_STREQ(buffer.chars(), "1234");
    GuardedBytes least(1, 'x');
    EXPECT_STREQ(MapValueToString(1, "%d", least.chars(), 1, kEnd), "");
}

TEST(OrdinalSuffix, FollowsTheLastDigits) {
    const std::vector<std::pair<int, const char*>> rows = {
        {0, "th"},   {1, "st"},    {2, "nd"},    {3, "rd"},       {4, "th"},
        {9, "th"},   {10, "th"},   {11, "th"},   {12, "th"},      {13, "th"},
        {19, "th"},  {20, "th"},   {21, "st"},   {22, "nd"},      {23, "rd"},
        {100, "th"}, {101, "st"},  {111, "th"},  {112, "th"},     {113, "th"},
        {121, "st"}, {1002, "nd"}, {1012, "th"}, {INT_MAX, "th"}, {INT_MAX - 4, "rd"},
        {-1, "st"},  {-11, "th"},  {-2, "nd"},   {INT_MIN, "th"},
    };
    for (const auto& [number, suffix] : rows) {
        EXPECT_STREQ(NumberToOrdinalSuffixCString(number), suffix) << number;
    }
}

}  // namespace
