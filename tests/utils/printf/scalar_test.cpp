#include <array>
#include <cstdlib>
#include <ctime>
#include <limits>

#include "halvane/platform/os/wall_clock_internal.h"

#include "tests/support/replaced_system.h"
#include "tests/utils/printf/test_support.h"

namespace {

using halvane::testing::printed;

TEST(PrintFReal, PassesSignWidthAndPrecision) {
    EXPECT_EQ(printed("%f %.2f %+.1f %.0f", 1.5, 2.345, 3.0, 4.0), "1.500000 2.35 +3.0 4");
    EXPECT_EQ(printed("[%8.2f|%-8.2f]", 1.5, -1.5), "[    1.50|-1.50   ]");
    EXPECT_EQ(printed("[%08.2f|% .1f]", 1.5, 1.5), "[    1.50|1.5]");
}

TEST(PrintFReal, FitsTheScratchArea) {
    const std::string largest = printed("%f", std::numeric_limits<double>::max());
    EXPECT_EQ(largest.size(), 299u);
    EXPECT_TRUE(largest.starts_with("17976931348623157"));
    EXPECT_EQ(printed("%.2147483647f", 1.0), "1." + std::string(297, '0'));
    EXPECT_EQ(printed("%400.1f", 1.5), std::string(397, ' ') + "1.5");
    EXPECT_EQ(printed("%-400.1f", 1.5), "1.5" + std::string(397, ' '));
}

TEST(PrintFErrorCode, PrintsDecimalAndHexadecimal) {
    EXPECT_EQ(printed("%m", 0), "0/0x0 ");
    EXPECT_EQ(printed("%m", 22), "22/0x16 ");
    EXPECT_EQ(printed("%m", -6728), "-6728/0xFFFFFFFFFFFFE5B8 ");
    EXPECT_EQ(printed("[%10m|%-10m]", 22, 22), "[  22/0x16 |22/0x16   ]");
}

TEST(PrintFErrorCode, AddsTheCharactersOfAPrintableCode) {
    EXPECT_EQ(printed("%#m", 0x77686174), "2003329396/0x77686174/'what' ");
    EXPECT_EQ(printed("%#m", 0x2020207E), "538976382/0x2020207E/'   ~' ");
    EXPECT_EQ(printed("%#m", 0x7768617F), "2003329407/0x7768617F ");
    EXPECT_EQ(printed("%#m", 0x1F686174), "526934388/0x1F686174 ");
    EXPECT_EQ(printed("%#m", -6728), "-6728/0xFFFFFFFFFFFFE5B8 ");
}

TEST(PrintFVersion, PrintsNumbersAndStage) {
    struct Row {
        std::uint32_t version;
        const char* text;
    };
    constexpr std::array<Row, 12> kRows = {{
        {0x01008000, "1.0"},
        {0x01238000, "1.2.3"},
        {0x7F208000, "127.2"},
        {0xFFFF8000, "255.15.15"},
        {0x01008001, "1.0f1"},
        {0x010080FF, "1.0f255"},
        {0x01102005, "1.1d5"},
        {0x01104000, "1.1a0"},
        {0x01136063, "1.1.3b99"},
        {0x01000000, "1.0<< ERROR: invalid NumVersion stage: 0x00 >>"},
        {0x0100FF07, "1.0<< ERROR: invalid NumVersion stage: 0xFF >>"},
        {0x01050A00, "1.0.5<< ERROR: invalid NumVersion stage: 0x0A >>"},
    }};
    for (const auto& row : kRows) EXPECT_EQ(printed("%v", row.version), row.text);
    EXPECT_EQ(printed("[%6v]", 0x01008000u), "[   1.0]");
}

TEST(PrintFUUID, PrintsFieldsReversedOrAsStored) {
    const std::array<std::uint8_t, 16> bytes = {0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77,
                                                0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF};
    EXPECT_EQ(printed("%#U", bytes.data()), "00112233-4455-6677-8899-aabbccddeeff");
    EXPECT_EQ(printed("%U", bytes.data()), "33221100-5544-7766-8899-aabbccddeeff");
    EXPECT_EQ(printed("[%38U]", bytes.data()), "[  33221100-5544-7766-8899-aabbccddeeff]");
    EXPECT_EQ(
        printed("%U%#U", static_cast<const void*>(nullptr), static_cast<const void*>(nullptr)),
        "<<NULL>><<NULL>>");
}

// A clock that stands still, in a zone that the test chooses.
class PrintFNow : public ::testing::Test {
  protected:
    void SetUp() override {
        if (const char* zone = std::getenv("TZ")) zoneBefore_ = zone;
        hadZone_ = std::getenv("TZ") != nullptr;
        setZone("UTC0");
        halvane::replaceWallClock([] { return now_; });
    }
    void TearDown() override {
        halvane::replaceWallClock(nullptr);
        if (hadZone_) return setZone(zoneBefore_.c_str());
        unsetenv("TZ");
        tzset();
    }

    static void setZone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }

    inline static halvane::WallTime now_ = {};

  private:
    bool hadZone_ = false;
    std::string zoneBefore_;
};

TEST_F(PrintFNow, PrintsATwelveHourClock) {
    struct Row {
        std::int64_t seconds;
        std::uint32_t microseconds;
        const char* text;
    };
    constexpr std::array<Row, 6> kRows = {{
        {0, 0, "1970-01-01 12:00:00.000000 AM"},
        {1, 5, "1970-01-01 12:00:01.000005 AM"},
        {43199, 999999, "1970-01-01 11:59:59.999999 AM"},
        {43200, 0, "1970-01-01 12:00:00.000000 PM"},
        {46800, 1000, "1970-01-01 01:00:00.001000 PM"},
        {951868799, 123456, "2000-02-29 11:59:59.123456 PM"},
    }};
    for (const auto& row : kRows) {
        now_ = {row.seconds, row.microseconds};
        EXPECT_EQ(printed("%N"), row.text);
    }
    now_ = {};
    EXPECT_EQ(printed("[%32N]"), "[   1970-01-01 12:00:00.000000 AM]");
}

TEST_F(PrintFNow, PrintsLocalTime) {
    now_ = {0, 0};
    setZone("EAST-05:30");
    EXPECT_EQ(printed("%N"), "1970-01-01 05:30:00.000000 AM");
    setZone("WEST+01:00");
    EXPECT_EQ(printed("%N"), "1969-12-31 11:00:00.000000 PM");
}

TEST(PrintFDuration, PrintsTheUnitsThatCount) {
    struct Row {
        int seconds;
        const char* text;
    };
    constexpr std::array<Row, 17> kRows = {{
        {0, "0s"},
        {1, "1s"},
        {59, "59s"},
        {60, "1m"},
        {61, "1m 1s"},
        {3599, "59m 59s"},
        {3600, "1h"},
        {3601, "1h 1s"},
        {3660, "1h 1m"},
        {86399, "23h 59m 59s"},
        {86400, "1d"},
        {86401, "1d 1s"},
        {90000, "1d 1h"},
        {90061, "1d 1h 1m 1s"},
        {std::numeric_limits<int>::max(), "24855d 3h 14m 7s"},
        {-90061, "-1d 1h 1m 1s"},
        {std::numeric_limits<int>::min(), "-24855d 3h 14m 8s"},
    }};
    for (const auto& row : kRows) EXPECT_EQ(printed("%{dur}", row.seconds), row.text);
}

TEST(PrintFDuration, HonoursSizeModifiersAndField) {
    EXPECT_EQ(printed("%ll{dur}", 86400ll * 100000000000ll), "100000000000d");
    EXPECT_EQ(printed("%ll{dur}", std::numeric_limits<long long>::min()),
              "-106751991167300d 15h 30m 8s");
    EXPECT_EQ(printed("%h{dur}|%hh{dur}", 0x1003C, 0x13C), "1m|1m");
    EXPECT_EQ(printed("[%5{dur}|%-5{dur}]", 60, 60), "[   1m|1m   ]");
}

}  // namespace
