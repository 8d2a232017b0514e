#include "halvane/utils/convert/four_char_code.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

std::string textOf(std::uint32_t code) {
    GuardedBytes buffer(kFourCharCodeTextSize);
    EXPECT_EQ(FourCharCodeToCString(code, buffer.chars()), buffer.chars());
    return buffer.chars();
}

std::uint32_t codeOf(std::string_view text) {
    GuardedBytes guarded(text);
    return TextToFourCharCode(guarded.chars(), text.size());
}

TEST(FourCharCodeToCString, WritesASpaceForAZeroByte) {
    EXPECT_EQ(textOf(0x61626364), "abcd");
    EXPECT_EQ(textOf(0x61620064), "ab d");
    EXPECT_EQ(textOf(0), "    ");
    EXPECT_EQ(textOf(0x00000001), "   \x01");
    EXPECT_EQ(textOf(0xFFFEFDFC), "\xFF\xFE\xFD\xFC");
}

TEST(TextToFourCharCode, TakesSpacesForWhatIsMissing) {
    EXPECT_EQ(codeOf("abcd"), 0x61626364u);
    EXPECT_EQ(codeOf("abcde"), 0x61626364u);
    EXPECT_EQ(codeOf("ab"), 0x61622020u);
    EXPECT_EQ(codeOf(""), 0x20202020u);
    EXPECT_EQ(codeOf(std::string_view("a\0c", 3)), 0x61206320u);
    EXPECT_EQ(codeOf("\xFF\xFE\xFD\xFC"), 0xFFFEFDFCu);
    EXPECT_EQ(TextToFourCharCode("abcd", 2), 0x61622020u);
    auto terminated = GuardedBytes::terminated("abc");
    EXPECT_EQ(TextToFourCharCode(terminated.chars(), SIZE_MAX), 0x61626320u);
    EXPECT_EQ(TextToFourCharCode(nullptr, SIZE_MAX), 0x20202020u);
    EXPECT_EQ(TextToFourCharCode(nullptr, 4), 0x20202020u);
}

TEST(FourCharCode, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        // The code has no byte 0, because that would come back as a space.
        const auto code = static_cast<std::uint32_t>(random()) | 0x01010101;
        ASSERT_EQ(codeOf(textOf(code)), code);
    }
}

}  // namespace
