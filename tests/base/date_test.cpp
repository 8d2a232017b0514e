#include "halvane/base/date.h"

#include <ctime>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

using halvane::Date;

namespace {

constexpr std::int64_t kEarliest = -62'135'596'800;  // 0001-01-01 00:00:00
constexpr std::int64_t kLatest = 253'402'300'799;    // 9999-12-31 23:59:59

TEST(Date, StartsAtTheUnixEpoch) {
    EXPECT_EQ(Date().unixTime(), 0);
    EXPECT_EQ(Date().fields(), (Date::Fields{1970, 1, 1, 0, 0, 0}));
}

TEST(Date, MapsFieldsToSeconds) {
    struct Row {
        Date::Fields fields;
        std::int64_t seconds;
    };
    const std::vector<Row> rows = {
        {{1, 1, 1, 0, 0, 0}, kEarliest},
        {{1969, 12, 31, 23, 59, 59}, -1},
        {{1970, 1, 1, 0, 0, 0}, 0},
        {{1970, 1, 2, 0, 0, 0}, 86'400},
        {{2000, 2, 29, 12, 0, 0}, 951'825'600},
        {{2001, 9, 9, 1, 46, 40}, 1'000'000'000},
        {{2038, 1, 19, 3, 14, 7}, 2'147'483'647},
        {{2038, 1, 19, 3, 14, 8}, 2'147'483'648},
        {{9999, 12, 31, 23, 59, 59}, kLatest},
    };
    for (const Row& row : rows) {
        const auto date = Date::fromFields(row.fields);
        ASSERT_TRUE(date.has_value()) << row.seconds;
        EXPECT_EQ(date->unixTime(), row.seconds);
        EXPECT_EQ(Date::fromUnixTime(row.seconds).fields(), row.fields) << row.seconds;
    }
}

TEST(Date, RefusesFieldsThatNameNoDate) {
    const std::vector<Date::Fields> rows = {
        {0, 1, 1, 0, 0, 0},
        {10000, 1, 1, 0, 0, 0},
        {-1, 1, 1, 0, 0, 0},
        {2026, 0, 1, 0, 0, 0},
        {2026, 13, 1, 0, 0, 0},
        {2026, 1, 0, 0, 0, 0},
        {2026, 1, 32, 0, 0, 0},
        {2026, 2, 30, 0, 0, 0},
        {2026, 4, 31, 0, 0, 0},
        {2026, 1, 1, 24, 0, 0},
        {2026, 1, 1, 0, 60, 0},
        {2026, 1, 1, 0, 0, 60},
        {67562, 1, 1, 0, 0, 0},
        {-63510, 1, 1, 0, 0, 0},  // 2026 modulo 2^16
        {2026, 257, 1, 0, 0, 0},
        {2026, 1, 257, 0, 0, 0},  // 1 modulo 2^8
        {2026, 0xFFFFFF01, 1, 0, 0, 0},
    };
    for (const auto& fields : rows) {
        EXPECT_EQ(Date::fromFields(fields), std::nullopt)
            << fields.year << "-" << fields.month << "-" << fields.day << " " << fields.hour;
    }
}

TEST(Date, KnowsLeapYears) {
    struct Row {
        int year;
        bool isLeap;
    };
    for (const Row& row : std::vector<Row>{{4, true},
                                           {100, false},
                                           {400, true},
                                           {1900, false},
                                           {2000, true},
                                           {2023, false},
                                           {2024, true},
                                           {2100, false},
                                           {9996, true}}) {
        EXPECT_EQ(Date::fromFields({row.year, 2, 29, 0, 0, 0}).has_value(), row.isLeap) << row.year;
    }
}

TEST(Date, BecomesTheNearestSecondOfItsRange) {
    EXPECT_EQ(Date::fromUnixTime(kEarliest - 1).unixTime(), kEarliest);
    EXPECT_EQ(Date::fromUnixTime(kLatest + 1).unixTime(), kLatest);
    EXPECT_EQ(Date::fromUnixTime(std::numeric_limits<std::int64_t>::min()).unixTime(), kEarliest);
    EXPECT_EQ(Date::fromUnixTime(std::numeric_limits<std::int64_t>::max()).unixTime(), kLatest);
}

TEST(Date, OrdersByTime) {
    EXPECT_LT(Date::fromUnixTime(-1), Date());
    EXPECT_GT(Date::fromUnixTime(1), Date());
    EXPECT_EQ(Date::fromUnixTime(0), Date());
}

TEST(Date, AgreesWithTheStandardLibraryAndReadsBack) {
    std::mt19937_64 random(20261121);
    std::uniform_int_distribution<std::int64_t> anySecond(kEarliest, kLatest);
    for (int round = 0; round < 20000; ++round) {
        const Date date = Date::fromUnixTime(anySecond(random));
        const Date::Fields fields = date.fields();
        const std::time_t seconds = date.unixTime();
        std::tm broken{};
        ASSERT_NE(gmtime_r(&seconds, &broken), nullptr);
        ASSERT_EQ(fields.year, broken.tm_year + 1900) << seconds;
        ASSERT_EQ(fields.month, static_cast<unsigned>(broken.tm_mon + 1)) << seconds;
        ASSERT_EQ(fields.day, static_cast<unsigned>(broken.tm_mday)) << seconds;
        ASSERT_EQ(fields.hour, static_cast<unsigned>(broken.tm_hour)) << seconds;
        ASSERT_EQ(fields.minute, static_cast<unsigned>(broken.tm_min)) << seconds;
        ASSERT_EQ(fields.second, static_cast<unsigned>(broken.tm_sec)) << seconds;
        ASSERT_EQ(Date::fromFields(fields), date) << seconds;
    }
}

}  // namespace
