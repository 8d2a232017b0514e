#include "halvane/air/osen.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// Hotspot 2.0: the fields of RSN without the version; the AKM is the Wi-Fi Alliance's.
TEST(AirOsen, IsAnRsnWithoutVersion) {
    const auto osen = Osen::decode(bytesOf("000FAC07 0100 000FAC04 0100 506F9A01 C000"));
    ASSERT_TRUE(osen);
    EXPECT_EQ(cipherText(osen->rsn.group.value()), "Group addressed traffic not allowed");
    EXPECT_EQ(akmText((*osen->rsn.akms)[0]), "OSEN");
    EXPECT_TRUE(osen->rsn.isPmfRequired());
    EXPECT_EQ(osen->rsn.version, 1);
    EXPECT_EQ(osen->encode().size(), 18u);
    EXPECT_TRUE(Osen::decode({}));
    EXPECT_FALSE(Osen::decode(bytesOf("0100")));
}

}  // namespace
