#include "tools/halvane/survey/network_statistics.h"

#include <gtest/gtest.h>

using namespace halvane::tool;
using halvane::capture::BeaconSubtype;

namespace {

TEST(NetworkStatistics, CountFrames) {
    NetworkStatistics heard({.number = 7, .signal = -40});
    heard.add({.subtype = BeaconSubtype::ProbeResponse, .number = 9, .signal = -60, .isCut = true});
    EXPECT_EQ(heard.beacons, 1u);
    EXPECT_EQ(heard.probeResponses, 1u);
    EXPECT_EQ(heard.frames(), 2u);
    EXPECT_EQ(heard.cutFrames, 1u);
    EXPECT_EQ(heard.firstCutFrame, 9u);
    EXPECT_EQ(heard.firstFrame, 7u);
    EXPECT_EQ(heard.signal.count(), 2u);
    EXPECT_FALSE(heard.firstTime || heard.lastTime);
}

TEST(NetworkStatistics, KeepTheEndsOfTheTime) {
    NetworkStatistics heard({.capture = 3, .time = 200});
    heard.add({.capture = 3, .time = 100});
    heard.add({.capture = 3});
    EXPECT_EQ(heard.firstTime, 100);
    EXPECT_EQ(heard.lastTime, 200);
    EXPECT_EQ(heard.lastCapture, 3u);
    EXPECT_EQ(heard.lastTimeInCapture, 200);
    heard.add({.capture = 4, .time = 50});
    EXPECT_EQ(heard.lastTime, 200);
    EXPECT_EQ(heard.lastCapture, 4u);
    EXPECT_EQ(heard.lastTimeInCapture, 50);
    heard.add({.capture = 5});
    EXPECT_FALSE(heard.lastTimeInCapture);
}

TEST(NetworkStatistics, AddWhatWasHeardLater) {
    NetworkStatistics heard({.number = 1, .capture = 0, .time = 300, .signal = -50});
    NetworkStatistics later({.number = 4, .capture = 1, .time = 100, .signal = -70, .isCut = true});
    later.add({.subtype = BeaconSubtype::ProbeResponse, .capture = 1, .time = 400});
    heard.add(later);
    EXPECT_EQ(heard.frames(), 3u);
    EXPECT_EQ(heard.cutFrames, 1u);
    EXPECT_EQ(heard.firstCutFrame, 4u);
    EXPECT_EQ(heard.firstCutCapture, 1u);
    EXPECT_EQ(heard.firstFrame, 1u);
    EXPECT_EQ(heard.firstTime, 100);
    EXPECT_EQ(heard.lastTime, 400);
    EXPECT_EQ(heard.lastCapture, 1u);
    EXPECT_EQ(heard.lastTimeInCapture, 400);
    EXPECT_EQ(heard.signal.count(), 2u);
}

TEST(NetworkStatistics, KeepTheSignalOverTimeWhereItIsAskedFor) {
    NetworkStatistics heard({.time = 100, .signal = -50});
    EXPECT_TRUE(heard.history.slots().empty());
    heard.add({.time = 100, .isForHistory = true});
    heard.add({.signal = -50, .isForHistory = true});
    EXPECT_TRUE(heard.history.slots().empty());
    heard.add({.time = 100, .signal = -50, .isForHistory = true});
    EXPECT_EQ(heard.history.slots().size(), 1u);
    heard.add(NetworkStatistics({.time = 100, .signal = -60, .isForHistory = true}));
    ASSERT_EQ(heard.history.slots().size(), 1u);
    EXPECT_EQ(heard.history.slots()[0].count, 2u);
}

}  // namespace
