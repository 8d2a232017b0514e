#include "halvane/air/rsn.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

constexpr Suite rsnSuite(std::uint8_t type) {
    return {halvane::kRSNOUI, type};
}

TEST(AirRsn, DecodesEveryField) {
    const auto rsn =
        Rsn::decode(bytesOf("0100 000FAC04 0200 000FAC04 000FAC02 0200 000FAC02 000FAC08 CC00 0100 "
                            "00112233445566778899AABBCCDDEEFF 000FAC06 AB"));
    ASSERT_TRUE(rsn);
    EXPECT_EQ(rsn->version, 1);
    EXPECT_EQ(rsn->group, rsnSuite(4));
    EXPECT_EQ(rsn->pairwise, (Rsn::Suites{rsnSuite(4), rsnSuite(2)}));
    EXPECT_EQ(rsn->akms, (Rsn::Suites{rsnSuite(2), rsnSuite(8)}));
    EXPECT_TRUE(rsn->isPmfCapable());
    EXPECT_TRUE(rsn->isPmfRequired());
    ASSERT_TRUE(rsn->pmkids);
    EXPECT_EQ((*rsn->pmkids)[0][15], 0xFF);
    EXPECT_EQ(rsn->groupManagement, rsnSuite(6));
    EXPECT_EQ(rsn->rest, ByteBuffer({0xAB}));
}

TEST(AirRsn, LacksWhatIsNotThere) {
    const auto rsn = Rsn::decode(bytesOf("0100"));
    ASSERT_TRUE(rsn);
    EXPECT_FALSE(rsn->group || rsn->pairwise || rsn->akms || rsn->capabilities || rsn->pmkids);
    EXPECT_FALSE(rsn->isPmfCapable() || rsn->isPmfRequired());
}

TEST(AirRsn, ReadsNoSuiteBeyondAWrongCount) {
    EXPECT_FALSE(Rsn::decode(bytesOf("0100 000FAC04 0200 000FAC04")));
    EXPECT_FALSE(Rsn::decode(bytesOf("0100 000FAC04 FFFF 000FAC04 0100 000FAC02")));
    const auto none = Rsn::decode(bytesOf("0100 000FAC04 0000 0100 000FAC02"));
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->pairwise->empty());
}

// 9.4.2.24.4: 0x502D.
TEST(AirRsn, NamesTheCapabilities) {
    const auto rsn = Rsn::decode(bytesOf("0100 000FAC04 0000 0000 2D50"));
    ASSERT_TRUE(rsn);
    EXPECT_TRUE(rsn->has(RsnCapability::Preauthentication));
    EXPECT_FALSE(rsn->has(RsnCapability::NoPairwise));
    EXPECT_EQ(rsn->ptksaReplayCounters(), 16);
    EXPECT_EQ(rsn->gtksaReplayCounters(), 4);
    EXPECT_FALSE(rsn->has(RsnCapability::PmfCapable));
    EXPECT_TRUE(rsn->has(RsnCapability::Pbac));
    EXPECT_TRUE(rsn->has(RsnCapability::Ocvc));
    EXPECT_EQ(Rsn().ptksaReplayCounters(), 1);
    EXPECT_FALSE(Rsn().has(RsnCapability::Ocvc));
}

TEST(AirRsn, IsEncodedFromItsFields) {
    Rsn rsn;
    rsn.group = rsnSuite(4);
    rsn.pairwise = Rsn::Suites{rsnSuite(4)};
    rsn.akms = Rsn::Suites{rsnSuite(8)};
    rsn.capabilities.emplace().setBits(6, 2, 3);
    EXPECT_EQ(rsn.encode(), bytesOf("0100 000FAC04 0100 000FAC04 0100 000FAC08 C000"));
    EXPECT_EQ(Rsn::decode(rsn.encode()), rsn);
}

}  // namespace
