#include "halvane/ie/link_quality.h"

#include <gtest/gtest.h>

#include "tests/support/replaced_system.h"

using halvane::HalvaneLinkQuality;
using halvane::Number;

namespace {

TEST(LinkQuality, KeepsTheWholePartOfTheRSSI) {
    const auto rssiOf = [](const Number& rssi) {
        return HalvaneLinkQuality::initWithRSSI_withTxRate(rssi, Number(54)).rssi();
    };
    EXPECT_EQ(rssiOf(Number(-61.7)), Number(-61.0));
    EXPECT_EQ(rssiOf(Number(-61)), Number(-61.0));
    EXPECT_EQ(rssiOf(Number(0.9)), Number(0.0));
    EXPECT_TRUE(rssiOf(Number(-61)).isReal());
}

TEST(LinkQuality, KeepsTheRateAsAReal) {
    const auto sample = HalvaneLinkQuality::initWithRSSI_withTxRate(Number(-60), Number(54));
    EXPECT_EQ(sample.txRate(), Number(54));
    EXPECT_TRUE(sample.txRate().isReal());
    EXPECT_EQ(HalvaneLinkQuality::initWithRSSI_withTxRate(Number(-60), Number(6.5)).txRate(),
              Number(6.5));
}

TEST(LinkQuality, IsStampedWithTheUpTimeInMicroseconds) {
    halvane::ScopedUpTime clock;
    clock.set(1'234'567'999);
    const auto sample = HalvaneLinkQuality::initWithRSSI_withTxRate(Number(-60), Number(54));
    EXPECT_EQ(sample.timestamp(), Number(1'234'567));
    EXPECT_TRUE(sample.timestamp().isUnsigned());
}

TEST(LinkQuality, DescribesItself) {
    halvane::ScopedUpTime clock;
    clock.set(5'000'000);
    EXPECT_EQ(HalvaneLinkQuality::initWithRSSI_withTxRate(Number(-61.7), Number(6.5)).description(),
              "<5000> RSSI <-61>, Tx Rate <6.5>");
}

}  // namespace
