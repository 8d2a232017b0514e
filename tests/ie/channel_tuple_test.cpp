#include "halvane/ie/channel_tuple.h"

#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"

using halvane::HalvaneChannelTuple;
using halvane::testing::Bytes;

namespace {

TEST(ChannelTuple, IsZeroAtFirst) {
    const HalvaneChannelTuple tuple;
    EXPECT_EQ(tuple.firstChannel(), 0);
    EXPECT_EQ(tuple.numChannels(), 0);
    EXPECT_EQ(tuple.maxTxPower(), 0);
}

TEST(ChannelTuple, HoldsTheThreeBytes) {
    const Bytes bytes = {1, 11, 30};
    const auto tuple = HalvaneChannelTuple::initWithTuple_withLength(bytes.data(), bytes.size());
    EXPECT_EQ(tuple.firstChannel(), 1);
    EXPECT_EQ(tuple.numChannels(), 11);
    EXPECT_EQ(tuple.maxTxPower(), 30);
}

TEST(ChannelTuple, PrintsItsFieldsUnsigned) {
    const Bytes bytes = {200, 128, 255};
    const auto tuple = HalvaneChannelTuple::initWithTuple_withLength(bytes.data(), bytes.size());
    EXPECT_EQ(tuple.description(), "First Channel <200>, Num Channels  <128>, Max Tx Power <255>");
}

TEST(ChannelTuple, TakesOnlyTheBytesThatThereAre) {
    halvane::testing::forEachPrefix({36, 4, 17, 99}, [](const halvane::ByteBuffer& prefix) {
        const auto bytes = prefix.bytes();
        const auto tuple =
            HalvaneChannelTuple::initWithTuple_withLength(bytes.data(), bytes.size());
        EXPECT_EQ(tuple.firstChannel(), prefix.size() > 0 ? 36 : 0);
        EXPECT_EQ(tuple.numChannels(), prefix.size() > 1 ? 4 : 0);
        EXPECT_EQ(tuple.maxTxPower(), prefix.size() > 2 ? 17 : 0);
    });
}

}  // namespace
