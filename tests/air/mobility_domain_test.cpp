#include "halvane/air/mobility_domain.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.46.
TEST(AirMobilityDomain, DecodesEveryField) {
    const auto domain = MobilityDomain::decode(bytesOf("A1B2 01 07"));
    ASSERT_TRUE(domain);
    EXPECT_EQ(ByteBuffer(domain->identifier).hex(), "a1b2");
    EXPECT_TRUE(domain->isOverDs());
    EXPECT_FALSE(domain->hasResourceRequests());
    EXPECT_EQ(domain->rest, ByteBuffer({7}));
    EXPECT_FALSE(MobilityDomain::decode(bytesOf("A1B2")));
    MobilityDomain own;
    own.identifier = {1, 2};
    own.capability.setBit(1, true);
    EXPECT_EQ(own.encode(), bytesOf("0102 02"));
}

}  // namespace
