#include "halvane/air/wpa.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

constexpr Suite wpaSuite(std::uint8_t type) {
    return {halvane::kWPAOUI, type};
}

TEST(AirWpa, DecodesEveryField) {
    const auto wpa =
        Wpa::decode(bytesOf("0100 0050F202 0200 0050F202 0050F204 0200 0050F201 0050F202 0C00 77"));
    ASSERT_TRUE(wpa);
    EXPECT_EQ(wpa->version, 1);
    EXPECT_EQ(wpa->group, wpaSuite(2));
    EXPECT_EQ(wpa->pairwise, (Rsn::Suites{wpaSuite(2), wpaSuite(4)}));
    EXPECT_EQ(wpa->akms, (Rsn::Suites{wpaSuite(1), wpaSuite(2)}));
    EXPECT_EQ(wpa->capabilities, BitOctets<2>({0x0C, 0x00}));
    EXPECT_EQ(wpa->rest, ByteBuffer({0x77}));
}

// The octets after the capabilities are no PMKIDs, which WPA lacks.
TEST(AirWpa, LacksPmkids) {
    const auto wpa = Wpa::decode(bytesOf("0100 0050F202 0000 0000 0000 FFFF"));
    ASSERT_TRUE(wpa);
    EXPECT_EQ(wpa->rest, ByteBuffer({0xFF, 0xFF}));
}

TEST(AirWpa, EndsAfterAnyField) {
    EXPECT_TRUE(Wpa::decode(bytesOf("0100")));
    EXPECT_FALSE(Wpa::decode(bytesOf("01")));
    EXPECT_FALSE(Wpa::decode(bytesOf("0100 0050F2")));
    EXPECT_FALSE(Wpa::decode(bytesOf("0100 0050F202 0200 0050F202")));
}

}  // namespace
