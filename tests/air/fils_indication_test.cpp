#include "halvane/air/fils_indication.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.177: 0x0F92 says 2 public keys, 2 realms, a cache identifier, a HESSID, and all three kinds
// of authentication.
TEST(AirFilsIndication, DecodesEveryField) {
    const auto body = bytesOf("920F 1122 020000000001 AABB CCDD 0103414243 0200 99");
    const auto fils = FilsIndication::decode(body);
    ASSERT_TRUE(fils);
    EXPECT_EQ(fils->publicKeyCount(), 2u);
    EXPECT_EQ(fils->realmCount(), 2u);
    EXPECT_FALSE(fils->has(FilsFlag::IpAddressConfiguration));
    EXPECT_TRUE(fils->has(FilsFlag::SharedKeyWithoutPfs));
    EXPECT_TRUE(fils->has(FilsFlag::SharedKeyWithPfs));
    EXPECT_TRUE(fils->has(FilsFlag::PublicKey));
    EXPECT_EQ(fils->cacheIdentifier, (FilsIndication::Pair{0x11, 0x22}));
    EXPECT_EQ(fils->hessid.value().text(), "02:00:00:00:00:01");
    ASSERT_EQ(fils->realms.size(), 2u);
    EXPECT_EQ(fils->realms[1], (FilsIndication::Pair{0xCC, 0xDD}));
    ASSERT_EQ(fils->publicKeys.size(), 2u);
    EXPECT_EQ(fils->publicKeys[0].keyType, 1);
    EXPECT_EQ(fils->publicKeys[0].indicator, ByteBuffer::fromText("ABC"));
    EXPECT_TRUE(fils->publicKeys[1].indicator.empty());
    EXPECT_EQ(fils->rest, ByteBuffer({0x99}));
}

TEST(AirFilsIndication, NeedsWhatItNames) {
    const auto bare = FilsIndication::decode(bytesOf("0000"));
    ASSERT_TRUE(bare);
    EXPECT_FALSE(bare->cacheIdentifier || bare->hessid);
    EXPECT_FALSE(FilsIndication::decode(bytesOf("8000 11")));
    EXPECT_FALSE(FilsIndication::decode(bytesOf("0001 0200000000")));
    EXPECT_FALSE(FilsIndication::decode(bytesOf("3800 1122 33")));
    EXPECT_FALSE(FilsIndication::decode(bytesOf("0100 0102 41")));
}

}  // namespace
