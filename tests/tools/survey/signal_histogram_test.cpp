#include "tools/halvane/survey/signal_histogram.h"

#include <gtest/gtest.h>
#include <initializer_list>

using halvane::tool::SignalHistogram;

namespace {

SignalHistogram histogramOf(std::initializer_list<int> signals) {
    SignalHistogram histogram;
    for (const int signal : signals) histogram.add(signal);
    return histogram;
}

TEST(SignalHistogram, TellsNothingWithoutFrames) {
    const SignalHistogram none;
    EXPECT_FALSE(none.median() || none.least() || none.greatest() || none.mean());
    EXPECT_EQ(none.count(), 0u);
}

TEST(SignalHistogram, TellsMedianMeanAndEnds) {
    const auto histogram = histogramOf({-90, -50, -52});
    EXPECT_EQ(histogram.median(), -52);
    EXPECT_EQ(histogram.least(), -90);
    EXPECT_EQ(histogram.greatest(), -50);
    EXPECT_DOUBLE_EQ(histogram.mean().value_or(0), -64);
    EXPECT_EQ(histogramOf({-90, -84}).median(), -84);
    EXPECT_EQ(histogramOf({-90, -88, -86, -84}).median(), -86);
}

TEST(SignalHistogram, DoesNotBelieveWhatNoCardReceives) {
    const auto histogram = histogramOf({1, 127, 0, -60});
    EXPECT_EQ(histogram.implausibleCount(), 2u);
    EXPECT_EQ(histogram.count(), 2u);
    EXPECT_EQ(histogram.greatest(), 0);
    EXPECT_EQ(histogramOf({-128, -1000}).least(), -127);
}

TEST(SignalHistogram, AddsAnother) {
    auto histogram = histogramOf({-40, 5});
    histogram.add(histogramOf({-60, -80, 7}));
    EXPECT_EQ(histogram.count(), 3u);
    EXPECT_EQ(histogram.implausibleCount(), 2u);
    EXPECT_EQ(histogram.median(), -60);
    EXPECT_DOUBLE_EQ(histogram.mean().value_or(0), -60);
}

}  // namespace
