#include "halvane/air/erp.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirErp, TellsEveryBit) {
    const auto tell = [](std::uint8_t octet) { return Erp{.parameters = {{octet}}}; };
    EXPECT_TRUE(tell(1).isNonErpPresent());
    EXPECT_FALSE(tell(1).isProtectionUsed() || tell(1).isLongPreambleNeeded());
    EXPECT_TRUE(tell(2).isProtectionUsed());
    EXPECT_TRUE(tell(4).isLongPreambleNeeded());
    EXPECT_FALSE(tell(0xF8).isNonErpPresent() || tell(0xF8).isLongPreambleNeeded());
    EXPECT_FALSE(Erp::decode({}));
    EXPECT_EQ(tell(5).encode(), bytesOf("05"));
}

}  // namespace
