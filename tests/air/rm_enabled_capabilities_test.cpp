#include "halvane/air/rm_enabled_capabilities.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.44: bits 0, 1, 4, 5, 6, 12, 33 and 35; durations 5 and 3, pilot 2.
TEST(AirRmEnabledCapabilities, DecodesEveryField) {
    const auto rm = RmEnabledCapabilities::decode(bytesOf("7310 74 02 0A 01"));
    ASSERT_TRUE(rm);
    EXPECT_TRUE(rm->has(RmCapability::LinkMeasurement));
    EXPECT_TRUE(rm->has(RmCapability::NeighborReport));
    EXPECT_FALSE(rm->has(RmCapability::ParallelMeasurements));
    EXPECT_TRUE(rm->has(RmCapability::BeaconPassive));
    EXPECT_TRUE(rm->has(RmCapability::BeaconTable));
    EXPECT_TRUE(rm->has(RmCapability::Lci));
    EXPECT_TRUE(rm->has(RmCapability::Antenna));
    EXPECT_TRUE(rm->has(RmCapability::CivicLocation));
    EXPECT_FALSE(rm->has(RmCapability::FtmRangeReport));
    EXPECT_EQ(rm->operatingChannelDuration(), 5);
    EXPECT_EQ(rm->nonoperatingChannelDuration(), 3);
    EXPECT_EQ(rm->measurementPilotCapability(), 2);
    EXPECT_EQ(rm->rest, ByteBuffer({1}));
    EXPECT_FALSE(RmEnabledCapabilities::decode(bytesOf("7310 7402")));
}

}  // namespace
