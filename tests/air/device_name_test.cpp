#include "halvane/air/device_name.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirDeviceName, OfCcxHasPadding) {
    const auto ccx = CcxDeviceName::decode(
        bytesOf("000102030405060708FF 61702D31000000000000000000000000 05 000037"));
    ASSERT_TRUE(ccx);
    EXPECT_EQ(ccx->name(), "ap-1");
    EXPECT_EQ(ccx->clients, 5);
    EXPECT_EQ(ccx->rest.size(), 3u);
    const auto full =
        CcxDeviceName::decode(bytesOf("000102030405060708FF 30313233343536373839303132333435"));
    ASSERT_TRUE(full);
    EXPECT_EQ(full->name(), "0123456789012345");
    EXPECT_FALSE(full->clients);
    EXPECT_FALSE(CcxDeviceName::decode(bytesOf("000102030405060708FF 61702D3100")));
}

TEST(AirDeviceName, OfArubaFollowsItsSubtype) {
    const auto aruba = ArubaDeviceName::decode(bytesOf("03 00 6170"));
    ASSERT_TRUE(aruba);
    EXPECT_EQ(aruba->name, ByteBuffer::fromText("ap"));
    const auto other = ArubaDeviceName::decode(bytesOf("04 00 6170"));
    ASSERT_TRUE(other);
    EXPECT_FALSE(other->name || other->reserved);
    EXPECT_EQ(other->rest.size(), 3u);
    EXPECT_FALSE(ArubaDeviceName::decode(bytesOf("03")));
}

TEST(AirDeviceName, IsTheWholeBodyForOthers) {
    EXPECT_EQ(AironetDeviceName::decode(bytesOf("6170"))->name, ByteBuffer::fromText("ap"));
    EXPECT_EQ(MistDeviceName::decode(bytesOf("6170"))->name, ByteBuffer::fromText("ap"));
}

}  // namespace
