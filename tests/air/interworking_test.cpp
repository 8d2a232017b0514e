#include "halvane/air/interworking.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirInterworking, DecodesEveryField) {
    const auto whole = Interworking::decode(bytesOf("D3 0208 020000000001 77"));
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->networkType(), AccessNetworkType::FreePublic);
    EXPECT_TRUE(whole->hasInternet());
    EXPECT_FALSE(whole->needsAdditionalStep());
    EXPECT_TRUE(whole->areEmergencyServicesReachable());
    EXPECT_TRUE(whole->isUnauthenticatedEmergencyAccess());
    EXPECT_EQ(whole->venue, (VenueInfo{2, 8}));
    EXPECT_EQ(whole->hessid.value().text(), "02:00:00:00:00:01");
    EXPECT_EQ(whole->rest, ByteBuffer({0x77}));
}

// 9.4.2.91: bodies of 1, 3, 7 and 9 octets.
TEST(AirInterworking, HasWhatItsLengthTells) {
    const auto bare = Interworking::decode(bytesOf("0F"));
    ASSERT_TRUE(bare);
    EXPECT_FALSE(bare->venue || bare->hessid);
    EXPECT_EQ(bare->networkType(), AccessNetworkType::Wildcard);
    const auto venue = Interworking::decode(bytesOf("00 0701"));
    EXPECT_TRUE(venue->venue && !venue->hessid);
    const auto hessid = Interworking::decode(bytesOf("00 020000000001"));
    EXPECT_TRUE(!hessid->venue && hessid->hessid);
    EXPECT_FALSE(Interworking::decode({}));
}

}  // namespace
