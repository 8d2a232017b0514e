#include "halvane/air/twt.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.199: an individual agreement with all that 802.11ax and 802.11be add. The Request Type is
// 0xA86B: a request, setup 5, implicit, unannounced, flow 0, exponent 10, protected.
TEST(AirTwt, DecodesAnIndividualAgreement) {
    const auto twt = Twt::decode(bytesOf("41 6BA8 0807060504030201 40 0002 01 01020304 0300 AB"));
    ASSERT_TRUE(twt);
    EXPECT_FALSE(twt->isBroadcast());
    EXPECT_EQ(twt->negotiation(), TwtNegotiation::Individual);
    ASSERT_TRUE(twt->individual);
    const IndividualTwt& one = *twt->individual;
    EXPECT_TRUE(one.parameters.isRequest());
    EXPECT_EQ(one.parameters.setup(), TwtSetup::Alternate);
    EXPECT_FALSE(one.parameters.isTriggered());
    EXPECT_TRUE(one.isImplicit());
    EXPECT_TRUE(one.parameters.isUnannounced());
    EXPECT_EQ(one.flowId(), 0);
    EXPECT_TRUE(one.isProtected());
    EXPECT_EQ(one.targetWakeTime, 0x0102030405060708u);
    EXPECT_EQ(one.parameters.minWakeDuration, 64);
    EXPECT_EQ(one.parameters.wakeIntervalMicroseconds(), 512u << 10);
    EXPECT_EQ(one.channel, 1);
    ASSERT_TRUE(one.ndpPaging);
    EXPECT_EQ(one.ndpPaging->bits(0, 32), 0x04030201u);
    EXPECT_EQ(one.links, 3);
    EXPECT_EQ(twt->rest.size(), 1u);
}

TEST(AirTwt, HasAGroupInPlaceOfATimeIfItIsGrouping) {
    const auto longer = Twt::decode(bytesOf("00 0600 81010203040506 0708 40 0002 01"));
    ASSERT_TRUE(longer && longer->individual);
    EXPECT_FALSE(longer->individual->targetWakeTime);
    EXPECT_EQ(longer->individual->groupAssignment.size(), 9u);
    const auto shorter = Twt::decode(bytesOf("00 0600 010708 40 0002 01"));
    ASSERT_TRUE(shorter && shorter->individual);
    EXPECT_EQ(shorter->individual->groupAssignment.size(), 3u);
    EXPECT_EQ(shorter->individual->channel, 1);
}

// Schedules up to the one that says it is the last; the first is restricted.
TEST(AirTwt, DecodesBroadcastSchedules) {
    const auto twt =
        Twt::decode(bytesOf("08 8228 3412 10 0002 0905 03 0F F0 B228 3412 10 0004 10FF 01"));
    ASSERT_TRUE(twt);
    EXPECT_EQ(twt->negotiation(), TwtNegotiation::BroadcastSchedule);
    EXPECT_FALSE(twt->individual);
    ASSERT_EQ(twt->broadcast.size(), 2u);
    const BroadcastTwt& first = twt->broadcast[0];
    EXPECT_FALSE(first.isLast());
    EXPECT_EQ(first.parameters.setup(), TwtSetup::Suggest);
    EXPECT_FALSE(first.parameters.isTriggered());
    EXPECT_EQ(first.recommendation(), 1);
    EXPECT_EQ(first.targetWakeTime, 0x1234);
    EXPECT_EQ(first.id(), 1);
    EXPECT_EQ(first.persistence(), 5);
    EXPECT_EQ(first.restricted, (RestrictedTwtTraffic{{{3}}, 0x0F, 0xF0}));
    const BroadcastTwt& second = twt->broadcast[1];
    EXPECT_TRUE(second.isLast());
    EXPECT_TRUE(second.parameters.isTriggered());
    EXPECT_FALSE(second.restricted);
    EXPECT_EQ(second.id(), 2);
    EXPECT_EQ(second.persistence(), 255);
    EXPECT_EQ(second.parameters.wakeIntervalMicroseconds(), 1024u << 10);
    EXPECT_EQ(twt->rest.size(), 1u);
}

TEST(AirTwt, IsAbsentIfAScheduleIsCut) {
    EXPECT_FALSE(Twt::decode(bytesOf("08 2000 3412 10 0002 00")));
    EXPECT_FALSE(Twt::decode(bytesOf("00")));
    EXPECT_FALSE(Twt::decode(bytesOf("00 0000 01020304")));
    EXPECT_TRUE(Twt::decode(bytesOf("08")));
}

}  // namespace
