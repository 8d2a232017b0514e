#include "halvane/air/quiet.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirQuiet, DecodesEveryField) {
    const auto element = Quiet::decode(bytesOf("05 02 2C01 0A00"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->count, 5);
    EXPECT_EQ(element->period, 2);
    EXPECT_EQ(element->duration, 300);
    EXPECT_EQ(element->offset, 10);
    EXPECT_FALSE(Quiet::decode(bytesOf("05 02 2C01 0A")));
    EXPECT_EQ((Quiet{.duration = 0x1234}.encode()), bytesOf("01 00 3412 0000"));
}

}  // namespace
