#include "halvane/ie/fancy_formatting.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

using halvane::ByteBuffer;
using namespace halvane::FancyFormatting;

namespace {

TEST(FormattedMAC, PrintsSixUpperCaseOctetsWithColons) {
    EXPECT_EQ(formattedMAC({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}), "02:1A:2B:3C:4D:5E");
    EXPECT_EQ(formattedMAC({0x00, 0x00, 0x00, 0x00, 0x00, 0x0F}), "00:00:00:00:00:0F");
}

TEST(FormattedMAC, PrintsOnlyTheFirstSixBytes) {
    EXPECT_EQ(formattedMAC({1, 2, 3, 4, 5, 6, 7, 8}), "01:02:03:04:05:06");
}

TEST(FormattedMAC, PrintsWhatAShortBufferHas) {
    EXPECT_EQ(formattedMAC({}), "");
    EXPECT_EQ(formattedMAC({0xAB}), "AB");
    EXPECT_EQ(formattedMAC({0xAB, 0xCD}), "AB:CD");
}

TEST(FormattedData, PrintsUnprintableBytesAsDots) {
    EXPECT_EQ(formattedData_includeHex(ByteBuffer{'a', 'b', 0x00}, true), "616200  |  ab.");
    EXPECT_EQ(formattedData_includeHex(ByteBuffer{'a', 'b', 0x00}, false), "ab.");
    EXPECT_EQ(formattedData_includeHex(ByteBuffer{31, 32, 126, 127, 0x80, 0xFF}, false), ". ~...");
}

TEST(FormattedData, PrintsThePrintableBytesOfASCIIAsThemselves) {
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool isPrintable = byte >= 32 && byte <= 126;
        EXPECT_EQ(formattedData_includeHex(ByteBuffer{static_cast<std::uint8_t>(byte)}, false),
                  std::string(1, isPrintable ? static_cast<char>(byte) : '.'))
            << byte;
    }
}

TEST(FormattedData, OfNothingIsEmptyOrTheBareSeparator) {
    EXPECT_EQ(formattedData_includeHex(ByteBuffer(), false), "");
    EXPECT_EQ(formattedData_includeHex(ByteBuffer(), true), "  |  ");
}

TEST(FormattedHexData, EndsEveryByteWithASpace) {
    EXPECT_EQ(formattedHexData(ByteBuffer()), "");
    EXPECT_EQ(formattedHexData(ByteBuffer{0x00}), "00 ");
    EXPECT_EQ(formattedHexData(ByteBuffer{0xDD, 0x0a}), "DD 0A ");
}

TEST(FormattedHexData, BreaksTheLineBetweenRunsOf32Bytes) {
    const auto newlinesOf = [](std::size_t size) {
        const auto text = formattedHexData(ByteBuffer(std::vector<std::uint8_t>(size, 0xAA)));
        EXPECT_EQ(text.back(), ' ');
        return std::ranges::count(text, '\n');
    };
    EXPECT_EQ(newlinesOf(31), 0);
    EXPECT_EQ(newlinesOf(32), 0);
    EXPECT_EQ(newlinesOf(33), 1);
    EXPECT_EQ(newlinesOf(64), 1);
    EXPECT_EQ(newlinesOf(65), 2);

    const auto text = formattedHexData(ByteBuffer(std::vector<std::uint8_t>(33, 0xAA)));
    EXPECT_EQ(text.find('\n'), 32u * 3);
}

TEST(FormattedHexData, OfAnAbsentBufferIsNull) {
    EXPECT_EQ(formattedHexData(std::optional<ByteBuffer>()), "(null)");
    EXPECT_EQ(formattedHexData(std::optional(ByteBuffer{0x01})), "01 ");
}

}  // namespace
