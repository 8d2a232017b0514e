#include "tools/halvane/input/pcapng_time.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using halvane::tool::nanosecondsOfTicks;
using ::testing::Optional;

namespace {

constexpr std::uint8_t kBinary = 0x80;

TEST(PcapngTime, CountsInPowersOfTen) {
    EXPECT_THAT(nanosecondsOfTicks(1700000000, 0, 0), Optional(1700000000'000000000));
    EXPECT_THAT(nanosecondsOfTicks(1700000000'123456, 6, 0), Optional(1700000000'123456000));
    EXPECT_THAT(nanosecondsOfTicks(1700000000'123456789, 9, 0), Optional(1700000000'123456789));
    EXPECT_THAT(nanosecondsOfTicks(1700000000'1234567899U, 10, 0), Optional(1700000000'123456789));
    EXPECT_THAT(nanosecondsOfTicks(UINT64_MAX, 19, 0), Optional(1844674407));
    EXPECT_THAT(nanosecondsOfTicks(UINT64_MAX, 127, 0), Optional(0));
}

TEST(PcapngTime, CountsInPowersOfTwo) {
    EXPECT_THAT(nanosecondsOfTicks(1700000000, kBinary, 0), Optional(1700000000'000000000));
    EXPECT_THAT(nanosecondsOfTicks(3, kBinary | 1, 0), Optional(1'500000000));
    EXPECT_THAT(nanosecondsOfTicks(std::uint64_t{1700000000} << 32 | 0x80000000, kBinary | 32, 0),
                Optional(1700000000'500000000));
    EXPECT_THAT(nanosecondsOfTicks(UINT64_MAX, kBinary | 64, 0), Optional(999999999));
    EXPECT_THAT(nanosecondsOfTicks(UINT64_MAX, kBinary | 127, 0), Optional(0));
}

TEST(PcapngTime, AddsTheOffset) {
    EXPECT_THAT(nanosecondsOfTicks(500000, 6, 1700000000), Optional(1700000000'500000000));
    EXPECT_THAT(nanosecondsOfTicks(0, 6, -1), Optional(-1'000000000));
}

TEST(PcapngTime, IsAbsentIfItDoesNotFit) {
    EXPECT_FALSE(nanosecondsOfTicks(UINT64_MAX, 0, 0));
    EXPECT_FALSE(nanosecondsOfTicks(0, 0, std::numeric_limits<std::int64_t>::max()));
    EXPECT_FALSE(nanosecondsOfTicks(0, 0, std::numeric_limits<std::int64_t>::min()));
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    EXPECT_THAT(nanosecondsOfTicks(kMost, 9, 0), Optional(kMost));
    EXPECT_FALSE(nanosecondsOfTicks(static_cast<std::uint64_t>(kMost) + 1, 9, 0));
}

}  // namespace
