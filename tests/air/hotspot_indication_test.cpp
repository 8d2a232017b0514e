#include "halvane/air/hotspot_indication.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirHotspotIndication, DecodesEveryField) {
    const auto all = HotspotIndication::decode(bytesOf("27 0102 3412 99"));
    ASSERT_TRUE(all);
    EXPECT_EQ(all->release(), 3);
    EXPECT_TRUE(all->isDgafDisabled());
    EXPECT_EQ(all->ppsMoId, 0x0201);
    EXPECT_EQ(all->anqpDomainId, 0x1234);
    EXPECT_EQ(all->rest, ByteBuffer({0x99}));
    const auto domain = HotspotIndication::decode(bytesOf("14 3412"));
    ASSERT_TRUE(domain);
    EXPECT_EQ(domain->release(), 2);
    EXPECT_FALSE(domain->ppsMoId || domain->isDgafDisabled());
    EXPECT_EQ(domain->anqpDomainId, 0x1234);
    EXPECT_EQ(HotspotIndication::decode(bytesOf("00"))->release(), 1);
    EXPECT_FALSE(HotspotIndication::decode(bytesOf("26 0102 34")));
    EXPECT_FALSE(HotspotIndication::decode({}));
}

}  // namespace
