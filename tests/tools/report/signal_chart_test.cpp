#include "tools/halvane/report/signal_chart.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/capture/folded_sighting.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"

#include "tests/tools/report/report_for_tests.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/survey/network_statistics.h"
#include "tools/halvane/survey/signal_history.h"

using namespace halvane::tool;
using halvane::testing::ownNamed;
using halvane::testing::ParsedPart;
using halvane::testing::ReportMaker;
using halvane::testing::textOf;
using halvane::testing::written;

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

SurveyedCapture captureOf(std::int64_t first, std::int64_t last) {
    SurveyedCapture capture;
    capture.firstTime = first * kSecond;
    capture.lastTime = last * kSecond;
    return capture;
}

TEST(Stretches, JoinCapturesThatFollowEachOther) {
    const std::vector<SurveyedCapture> captures = {captureOf(1000, 1100), captureOf(0, 10),
                                                   SurveyedCapture(), captureOf(5, 20),
                                                   captureOf(60, 90)};
    const auto stretches = stretchesOf(captures);
    ASSERT_EQ(stretches.size(), 2u);
    EXPECT_EQ(stretches[0].begin, 0);
    EXPECT_EQ(stretches[0].end, 90 * kSecond);
    EXPECT_EQ(stretches[0].captures, (std::vector<std::size_t>{1, 3, 4}));
    EXPECT_EQ(stretches[1].captures, (std::vector<std::size_t>{0}));
    EXPECT_EQ(binsOf(stretches[0]), 60);
    EXPECT_EQ(binsOf({0, 59 * kSecond, {}}), 30);
}

TEST(SignalPoints, AreWhatWasHeardInABin) {
    SignalHistory history;
    history.add(0, -40);
    history.add(kSecond / 2, -60);
    history.add(29 * kSecond, -70);
    history.add(100 * kSecond, -10);
    const auto points = pointsOf(history, {0, 30 * kSecond, {}});
    ASSERT_EQ(points.size(), 2u);
    EXPECT_EQ(points[0].bin, 0);
    EXPECT_DOUBLE_EQ(points[0].mean, -50);
    EXPECT_EQ(points[0].least, -60);
    EXPECT_EQ(points[0].greatest, -40);
    EXPECT_EQ(points[0].count, 2u);
    EXPECT_EQ(points[1].bin, 29);
}

TEST(SignalPoints, StandAStretchWithoutLength) {
    SignalHistory history;
    history.add(5, -40);
    EXPECT_EQ(pointsOf(history, {5, 5, {}}).size(), 1u);
    EXPECT_TRUE(pointsOf(SignalHistory(), {5, 5, {}}).empty());
}

TEST(SignalPoints, AreOfTheStretchAlone) {
    SignalHistory history;
    for (int second = 0; second < 100; ++second) history.add(second * kSecond, -40 - second);
    const auto points = pointsOf(history, {50 * kSecond, 52 * kSecond, {}});
    ASSERT_FALSE(points.empty());
    std::uint64_t count = 0;
    for (const auto& point : points) count += point.count;
    // Slots at both ends reach beyond the stretch.
    EXPECT_GE(count, 3u);
    EXPECT_LE(count, 5u);
    EXPECT_TRUE(pointsOf(history, {500 * kSecond, 600 * kSecond, {}}).empty());
}

TEST(SignalChart, SaysWhyThereIsNothing) {
    ReportMaker timeless;
    timeless.add({.name = "x", .signal = -50});
    timeless.captures.resize(1);
    ReportMaker signalless;
    signalless.add({.name = "x"});
    signalless.captures.push_back(captureOf(0, 10));
    ReportMaker seldom;
    seldom.add({.name = "x", .signal = -50});
    seldom.captures.push_back(captureOf(0, 10));
    const auto textOf = [](const ReportMaker& maker) {
        return ParsedPart(written(writeSignals, maker.data())).text("//p");
    };
    EXPECT_EQ(textOf(timeless), "The captures tell no times.");
    EXPECT_EQ(textOf(signalless), "The captures tell no signals.");
    EXPECT_EQ(textOf(seldom), "No network was measured 8 times or more.");
}

// Networks that were measured ten times a second apart in each capture, the first the strongest.
class MeasuredNetworks {
  public:
    MeasuredNetworks(int networks, int captures) {
        for (int capture = 0; capture < captures; ++capture) {
            maker_.captures.push_back(captureOf(1000 * capture, 1000 * capture + 9));
            maker_.files.push_back(std::to_string(capture) + ".pcap");
        }
        for (int i = 0; i < networks; ++i) add(i, captures);
    }

    ParsedPart signals(ReportOptions options, ReportLimits limits) const {
        return ParsedPart(written(writeSignals, maker_.data(std::move(options), limits)));
    }

  private:
    void add(int number, int captures) {
        const std::string name = "net " + std::to_string(number);
        NetworkStatistics& statistics = statistics_.emplace_back(HeardFrame{});
        for (int capture = 0; capture < captures; ++capture) {
            for (int i = 0; i < 10; ++i) {
                statistics.add({.time = (1000 * capture + i) * kSecond,
                                .signal = -40 - 2 * number - i,
                                .isForHistory = true});
            }
        }
        auto& network = maker_.add({.name = name, .lastOctet = static_cast<std::uint8_t>(number)});
        network.statistics = &statistics;
        network.heard = &heard_;
    }

    ReportMaker maker_;
    std::deque<NetworkStatistics> statistics_;
    halvane::capture::FoldedSighting heard_{
        {.record = halvane::HalvaneMAC::initWithMAC({2, 0, 0, 0, 0, 1})}};
};

TEST(SignalChart, DrawsCurveAndShade) {
    const auto part = MeasuredNetworks(1, 1).signals({}, {});
    ASSERT_TRUE(part.isWellFormed());
    EXPECT_EQ(part.text("//h3"), "0.pcap 1970-01-01 00:00:00 UTC, 9 s");
    EXPECT_EQ(part.text("//p[@class='mh']"), "net 0\u221245 dBm");
    EXPECT_EQ(part.text("//p[@class='mf']"), "\u221249 to \u22124010 times \u00B7 ch 1");
    const std::string curve =
        part.root().select_node("//polyline").node().attribute("points").value();
    EXPECT_TRUE(curve.starts_with("4.0,20.8 28.0,21.5 ")) << curve;
    EXPECT_TRUE(curve.ends_with(" 236.0,27.5 ")) << curve;
    EXPECT_EQ(part.all("//polygon").size(), 1u);
}

TEST(SignalChart, DrawsOwnAndStrongOnesUpToItsLimit) {
    ReportLimits limits;
    limits.pictures = 2;
    limits.morePictures = 1;
    const auto part = MeasuredNetworks(5, 1).signals(ownNamed("net 4"), limits);
    std::vector<std::string> names;
    for (const auto& link : part.all("//li//a")) names.push_back(textOf(link));
    EXPECT_EQ(names, (std::vector<std::string>{"net 4", "net 0", "net 1"}));
    EXPECT_EQ(part.text("//details/summary"), "1 weaker one");
    EXPECT_EQ(part.text("//p[@class='foot']"), "2 networks without a picture, for want of room.");
}

TEST(SignalChart, DrawsNoMoreStretchesThanItsLimit) {
    ReportLimits limits;
    limits.stretches = 2;
    const auto part = MeasuredNetworks(1, 5).signals({}, limits);
    EXPECT_EQ(part.all("//h3").size(), 2u);
    EXPECT_EQ(part.text("//p[@class='foot']"), "3 captures without pictures, for want of room.");
}

}  // namespace
