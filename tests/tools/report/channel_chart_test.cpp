#include "tools/halvane/report/channel_chart.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

#include "halvane/air/neighbor.h"
#include "halvane/base/mac_address.h"

#include "tests/tools/report/report_for_tests.h"
#include "tools/halvane/report/channel_use.h"
#include "tools/halvane/report/chart_scale.h"
#include "tools/halvane/report/radar_ranges.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::derived;
using halvane::testing::hostileNames;
using halvane::testing::ownNamed;
using halvane::testing::ParsedPart;
using halvane::testing::ReportMaker;
using halvane::testing::textOf;
using halvane::testing::written;

namespace {

constexpr auto k5 = air::Band::Ghz5;

TEST(ChannelUse, CountsWhoReachesOverAChannel) {
    ReportMaker maker;
    maker.add({.name = "wide", .lastOctet = 0x10, .signal = -50, .band = k5, .channel = 36}, 5210,
              80);
    maker.add({.name = "second", .lastOctet = 0x11, .signal = -60, .band = k5, .channel = 36}, 5210,
              80);
    maker.add({.name = "narrow", .lastOctet = 0x20, .signal = -40, .band = k5, .channel = 40}, 5200,
              20);
    const ReportData data = maker.data();
    const auto scale = *ChartScale::of(k5);
    const auto cells = channelCells(data, scale, radiosOf(data, k5));
    ASSERT_EQ(cells[1].number, 40);
    EXPECT_EQ(cells[0].radios, 1u);
    EXPECT_EQ(cells[0].networks, 2u);
    EXPECT_EQ(cells[0].primaries, 1u);
    EXPECT_EQ(cells[1].radios, 2u);
    EXPECT_EQ(cells[1].networks, 3u);
    EXPECT_EQ(cells[1].primaries, 1u);
    EXPECT_EQ(cells[1].strongest->name.octets(), "narrow");
    EXPECT_EQ(cells[4].radios, 0u);
    EXPECT_EQ(mostRadios(cells), 2u);
}

TEST(ChannelUse, CountsWhatOthersTellOnce) {
    ReportMaker maker;
    air::Neighbor neighbor{.bssid = MacAddress({2, 0, 0, 0, 9, 9}), .frequency = 5180};
    const std::vector<air::Neighbor> neighbors = {
        neighbor, neighbor, {.bssid = MacAddress({2, 0, 0, 0, 0, 0x10}), .frequency = 5180}};
    for (const auto octet : std::initializer_list<std::uint8_t>{0x10, 0x20}) {
        maker
            .add({.name = "x", .lastOctet = octet, .signal = -50, .band = k5, .channel = 40}, 5200,
                 20)
            .profile.neighbors = air::Neighbors(neighbors);
    }
    const ReportData data = maker.data();
    const auto cells = channelCells(data, *ChartScale::of(k5), radiosOf(data, k5));
    EXPECT_EQ(cells[0].told, 1u);
    const ParsedPart part(written(writeChannels, data));
    EXPECT_EQ(part.all("//circle[@class='told']").size(), 1u);
}

TEST(RadarRanges, ComeFromTheRegulatoryData) {
    const std::vector<FrequencyRange> expected = {{5250, 5330}, {5490, 5710}};
    EXPECT_EQ(radarRanges("DE"), expected);
    EXPECT_EQ(radarRanges(""), expected);
    EXPECT_EQ(radarRanges("??"), expected);
}

TEST(ChannelChart, HasAShapeForEachRadio) {
    ReportMaker maker;
    maker.add({.name = "one", .lastOctet = 0x10, .signal = -55, .band = k5, .channel = 40}, 5210,
              80);
    maker.add({.name = "two", .lastOctet = 0x11, .signal = -75, .band = k5, .channel = 40}, 5210,
              80);
    const ParsedPart part(written(writeChannels, maker.data(ownNamed("one"))));
    ASSERT_TRUE(part.isWellFormed());
    const auto shapes = part.all("//a[contains(@class,'sh ')]");
    ASSERT_EQ(shapes.size(), 1u);
    EXPECT_STREQ(shapes[0].attribute("href").value(), "#n-020000000010");
    EXPECT_STREQ(shapes[0].attribute("tabindex").value(), "-1");
    EXPECT_STREQ(shapes[0].attribute("class").value(), "sh own");
    EXPECT_STREQ(shapes[0].attribute("data-n").value(), "n-020000000010 n-020000000011");
    EXPECT_EQ(textOf(shapes[0].child("title")),
              "one, 2 networks\nchannel 40, 80 MHz\n\u221255 dBm");
    // 5170 to 5250 MHz, at the height of -55 dBm.
    const auto body = shapes[0].child("rect");
    EXPECT_STREQ(body.attribute("x").value(), "6.53%");
    EXPECT_STREQ(body.attribute("width").value(), "12.08%");
    EXPECT_STREQ(body.attribute("y").value(), "196.0");
    EXPECT_STREQ(body.attribute("height").value(), "150.0");
    EXPECT_EQ(part.all("//a/line[@class='prim']").size(), 1u);
    EXPECT_EQ(part.text("//text[contains(@class,'lb')]"), "\u2068one +1\u2069");
}

TEST(ChannelChart, ShowsPuncturingAndTwoSegments) {
    ReportMaker maker;
    maker
        .add({.name = "holes", .lastOctet = 0x10, .signal = -55, .band = k5, .channel = 36}, 5210,
             80)
        .profile.channel.punctured = derived<std::uint16_t>(0b0100);
    maker
        .add({.name = "two", .lastOctet = 0x20, .signal = -65, .band = k5, .channel = 36}, 5210,
             160)
        .profile.channel.span.value.center2 = 5775;
    const ParsedPart part(written(writeChannels, maker.data()));
    EXPECT_EQ(part.all("//a[@data-n='n-020000000010']/rect[@class='bd']").size(), 2u);
    EXPECT_EQ(part.all("//a[@data-n='n-020000000010']/rect[@class='pu']").size(), 1u);
    EXPECT_EQ(part.all("//a[@data-n='n-020000000020']/rect[@class='bd']").size(), 2u);
    EXPECT_EQ(part.all("//text[@data-n='n-020000000020']").size(), 2u);
}

TEST(ChannelChart, HasBarsForRadiosWithoutSignal) {
    ReportMaker maker;
    for (std::uint8_t i = 1; i <= 3; ++i) {
        maker.add({.name = "quiet", .lastOctet = static_cast<std::uint8_t>(i << 4), .channel = 6},
                  2437, 20);
    }
    ReportLimits limits;
    limits.untoldRows = 2;
    const ParsedPart part(written(writeChannels, maker.data({}, limits)));
    EXPECT_EQ(part.all("//a[contains(@class,'nos')]").size(), 2u);
    EXPECT_NE(part.text("//figure").find("1 radio is counted and not drawn"), std::string::npos);
    EXPECT_NE(part.text("//svg[@role='img']").find("The signal of no radio is told."),
              std::string::npos);
    // None of them is the strongest.
    EXPECT_TRUE(part.all("//details//a").empty());
}

TEST(ChannelChart, SaysWhichBandsAreEmpty) {
    ReportMaker maker;
    maker.add({.name = "none", .lastOctet = 1});
    const std::string html = written(writeChannels, maker.data());
    for (const char* const band : {"2.4", "5", "6"}) {
        EXPECT_NE(html.find("No network was heard on " + std::string(band) + " GHz."), html.npos);
    }
    EXPECT_NE(html.find("1 network of another band, or without a channel"), html.npos);
}

TEST(ChannelChart, DrawsNoMoreThanItsLimit) {
    ReportMaker maker;
    for (std::uint8_t i = 0; i < 12; ++i) {
        maker.add({.name = "x", .lastOctet = static_cast<std::uint8_t>(i << 4), .signal = -40 - i},
                  2412, 20);
    }
    ReportLimits limits;
    limits.shapes = 5;
    const ParsedPart part(written(writeChannels, maker.data({}, limits)));
    EXPECT_EQ(part.all("//a[contains(@class,'sh ')]").size(), 5u);
    EXPECT_NE(part.text("//figure").find("7 radios are counted and not drawn"), std::string::npos);
}

TEST(ChannelChart, StandsHostileNames) {
    ReportMaker maker;
    std::uint8_t octet = 0;
    for (const auto name : hostileNames()) {
        octet = static_cast<std::uint8_t>(octet + 0x10);
        maker.add({.name = name, .lastOctet = octet, .signal = -40}, 2412, 20);
    }
    const ParsedPart part(written(writeChannels, maker.data()));
    EXPECT_TRUE(part.isWellFormed());
    EXPECT_TRUE(part.all("//script|//img|//b").empty());
}

}  // namespace
