#include "tools/halvane/output/time_text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

using namespace halvane::tool;

namespace {

TEST(TimeText, IsThatOfTheUTC) {
    EXPECT_EQ(utcTimeText(0), "1970-01-01T00:00:00.000000Z");
    EXPECT_EQ(utcTimeText(1673043004117250000), "2023-01-06T22:10:04.117250Z");
    EXPECT_EQ(utcTimeText(1673043004117250001), "2023-01-06T22:10:04.117250001Z");
    EXPECT_EQ(utcTimeText(-1000), "1969-12-31T23:59:59.999999Z");
    EXPECT_EQ(utcSecondText(1673043004117250001), "2023-01-06 22:10:04");
}

TEST(TimeText, HoldsTheEndsOfTime) {
    EXPECT_EQ(utcTimeText(std::numeric_limits<std::int64_t>::max()),
              "2262-04-11T23:47:16.854775807Z");
    EXPECT_EQ(utcTimeText(std::numeric_limits<std::int64_t>::min()),
              "1677-09-21T00:12:43.145224192Z");
}

}  // namespace
