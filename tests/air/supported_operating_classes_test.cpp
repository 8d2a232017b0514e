#include "halvane/air/supported_operating_classes.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirSupportedOperatingClasses, TellsTheClasses) {
    const auto element = SupportedOperatingClasses::decode(bytesOf("80 51 73 80 82 00 7C7D"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->currentClass, 128);
    for (int number = 0; number < 256; ++number) {
        EXPECT_EQ(element->supports(static_cast<std::uint8_t>(number)),
                  number == 81 || number == 115 || number == 128 || number == 130)
            << number;
    }
    EXPECT_EQ(element->classes.size(), 7u);
}

TEST(AirSupportedOperatingClasses, NeedsTheCurrentClass) {
    EXPECT_FALSE(SupportedOperatingClasses::decode({}));
    EXPECT_TRUE(SupportedOperatingClasses::decode(bytesOf("51"))->classes.empty());
    SupportedOperatingClasses built;
    built.currentClass = 131;
    built.classes = {131, 132};
    EXPECT_EQ(built.encode(), bytesOf("838384"));
}

}  // namespace
