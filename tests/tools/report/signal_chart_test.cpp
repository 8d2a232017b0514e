#include "tools/halvane/report/signal_chart.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/tools/report/report_for_tests.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/survey/signal_history.h"

using namespace halvane::tool;
using halvane::testing::ReportMaker;
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

TEST(SignalChart, SaysThatThereIsNothing) {
    ReportMaker maker;
    maker.add({.name = "x", .signal = -50});
    EXPECT_NE(written(writeSignals, maker.data()).find("No network was measured often enough"),
              std::string::npos);
}

}  // namespace
