#include "tools/halvane/report/page_words.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/tools/report/report_for_tests.h"

using namespace halvane::tool;
using halvane::testing::ReportMaker;

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

TEST(PageWords, TellDatesAndDurations) {
    EXPECT_EQ(dateText(0), "1 January 1970");
    EXPECT_EQ(dateText(-1), "31 December 1969");
    EXPECT_EQ(dateText(1700000000 * kSecond), "14 November 2023");
    EXPECT_EQ(durationText(0), "less than 1 s");
    EXPECT_EQ(durationText(15 * kSecond), "15 s");
    EXPECT_EQ(durationText(197 * kSecond), "3 min 17 s");
    EXPECT_EQ(durationText(3600 * kSecond), "1 h 0 min");
    EXPECT_EQ(durationText((26 * 3600 + 61) * kSecond), "26 h 1 min");
}

TEST(PageWords, CountInWords) {
    EXPECT_EQ(countedText(0, "network", "networks"), "0 networks");
    EXPECT_EQ(countedText(1, "network", "networks"), "1 network");
    EXPECT_EQ(countedText(12345, "network", "networks"), "12\u202F345 networks");
    EXPECT_EQ(percentOfLoad(255), 100);
    EXPECT_EQ(percentOfLoad(128), 50);
}

TEST(PageWords, LabelRadios) {
    ReportMaker maker;
    maker.add({.name = "A name of thirty-two octets, no?", .lastOctet = 0x10, .signal = -1});
    maker.add({.name = "b", .lastOctet = 0x11, .signal = -2});
    maker.add({.name = "c", .lastOctet = 0x20, .signal = -3}).details.accessPoint = "AP#1";
    maker.add({.name = "d", .lastOctet = 0x21, .signal = -3}).details.accessPoint = "AP#1";
    maker.add({.name = "e", .lastOctet = 0x30, .signal = -4});
    const ReportData data = maker.data();
    ASSERT_EQ(data.radios.size(), 3u);
    EXPECT_EQ(radioLabel(data, data.radios[0]).octets(), "A name of th\u2026ts, no? +1");
    EXPECT_EQ(radioLabel(data, data.radios[1]).octets(), "AP#1 \u00D72");
    EXPECT_EQ(radioLabel(data, data.radios[2]).octets(), "e");
}

TEST(PageWords, NameFilesByTheirLastPart) {
    EXPECT_EQ(fileName("-").octets(), "standard input");
    EXPECT_EQ(fileName("a/b/walk.pcap").octets(), "walk.pcap");
    EXPECT_EQ(fileName("a\x1B.pcap").octets(), "a\\x1B.pcap");
}

}  // namespace
