#include "halvane/utils/convert/version_number.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/printf.h"

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

std::string numText(std::uint32_t version) {
    GuardedBytes buffer(kNumVersionTextSize);
    EXPECT_EQ(NumVersionToCString(version, buffer.chars()), buffer.chars());
    return buffer.chars();
}

std::uint32_t num(std::string_view text) {
    GuardedBytes guarded(text);
    return TextToNumVersion(guarded.chars(), text.size());
}

struct Row {
    std::uint32_t version;
    const char* text;
};

TEST(NumVersion, IsWrittenAndReadBack) {
    const std::vector<Row> rows = {
        {0x01008000, "1.0"},     {0x01238000, "1.2.3"},         {0x01232004, "1.2.3d4"},
        {0x01234004, "1.2.3a4"}, {0x01236004, "1.2.3b4"},       {0x01238004, "1.2.3f4"},
        {0x01202000, "1.2d0"},   {0x00008000, "0.0"},           {0x0A058001, "10.0.5f1"},
        {0x01006000, "1.0b0"},   {0xFFFF20FF, "255.15.15d255"},  // fills the buffer
        {0x00F080FF, "0.15f255"}};
    for (const Row& row : rows) {
        EXPECT_EQ(numText(row.version), row.text);
        EXPECT_EQ(num(row.text), row.version) << row.text;
    }
}

TEST(NumVersionToCString, LeavesOutAnUnknownStage) {
    for (const std::uint32_t stage : {0x00u, 0x01u, 0x10u, 0x21u, 0x70u, 0x81u, 0xA0u, 0xFFu}) {
        EXPECT_EQ(numText(0x01230004 | stage << 8), "1.2.3") << stage;
    }
}

TEST(NumVersionToCString, IsTheTextOfTheFormattingEngine) {
    for (std::uint32_t i = 0; i < 2000; ++i) {
        const std::uint32_t stage = 0x20 * (1 + i % 4);
        const std::uint32_t version = (i * 2654435761u & 0xFFFF00FF) | stage << 8;
        char text[32];
        SNPrintF(text, sizeof(text), "%v", version);
        ASSERT_EQ(numText(version), text);
        ASSERT_EQ(num(text), version) << text;
    }
}

TEST(TextToNumVersion, TakesWhatIsThere) {
    const std::vector<Row> rows = {
        {0x01008000, "1"},       {0x01008000, " \t1"},      {0x01208000, "1.2 "},
        {0x01208000, "1.2."},    {0x01208000, "1.2.x"},     {0x01238000, "1.2.3.4"},
        {0x01006000, "1b"},      {0x01006002, "1B2"},       {0x01202003, "1.2D3"},
        {0x01204003, "1.2A3"},   {0x01208003, "1.2F3"},     {0x01208000, "1.2e3"},
        {0x01206003, "1.2b3.4"}, {0x01208000, "01.002.00"}, {0x01208000, "1.2 b3"},
    };
    for (const Row& row : rows) EXPECT_EQ(num(row.text), row.version) << row.text;
    EXPECT_EQ(TextToNumVersion("1.2.3b4", SIZE_MAX), 0x01236004u);
    EXPECT_EQ(TextToNumVersion("1.2.3b45", 7), 0x01236004u);
    EXPECT_EQ(TextToNumVersion("1.2.3b45", 3), 0x01208000u);
}

TEST(TextToNumVersion, GivesZeroForNoneAndForTooLargeParts) {
    for (const char* text : {"", " ", "x", "-1", ".1", "v1", "256", "1.16", "1.2.16", "1.2.3b256",
                             "99999999999999999999", "1.99999999999999999999"}) {
        EXPECT_EQ(num(text), 0u) << text;
    }
    EXPECT_EQ(TextToNumVersion(nullptr, SIZE_MAX), 0u);
    EXPECT_EQ(TextToNumVersion(nullptr, 5), 0u);
}

std::string sourceText(std::uint32_t version) {
    GuardedBytes buffer(kSourceVersionTextSize);
    EXPECT_EQ(SourceVersionToCString(version, buffer.chars()), buffer.chars());
    return buffer.chars();
}

std::uint32_t source(std::string_view text) {
    GuardedBytes guarded(text);
    return TextToSourceVersion(guarded.chars(), text.size());
}

TEST(SourceVersion, IsWrittenAndReadBack) {
    const std::vector<Row> rows = {
        {0, "0"},         {1, "0.0.1"},           {100, "0.1"},
        {20000, "2"},     {20100, "2.1"},         {20001, "2.0.1"},
        {20101, "2.1.1"}, {1239999, "123.99.99"}, {2147479999, "214747.99.99"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(sourceText(row.version), row.text);
        EXPECT_EQ(source(row.text), row.version) << row.text;
    }
    EXPECT_EQ(sourceText(UINT32_MAX), "429496.72.95");
    for (std::uint32_t version = 0; version < 2147480000; version += 99991) {
        ASSERT_EQ(source(sourceText(version)), version);
    }
}

TEST(TextToSourceVersion, TakesWhatIsThere) {
    const std::vector<Row> rows = {{20000, "  2"},
                                   {20000, "2."},
                                   {20100, "2.1.x"},
                                   {20103, "2.01.03"},
                                   {20103, "2.1.3.4"},
                                   {20000, "2-beta"},
                                   {20000, "2 .1"},
                                   {20100, "\n2.1"},
                                   {0, ""},
                                   {0, "x"},
                                   {0, ".1"},
                                   {0, "-2"},
                                   {0, "214748"},
                                   {0, "2.100"},
                                   {0, "2.1.100"},
                                   {0, "99999999999999999999"},
                                   {0, "2.4294967297"}};
    for (const Row& row : rows) EXPECT_EQ(source(row.text), row.version) << row.text;
    EXPECT_EQ(TextToSourceVersion("2.1.3", SIZE_MAX), 20103u);
    EXPECT_EQ(TextToSourceVersion("2.1.3", 3), 20100u);
    EXPECT_EQ(TextToSourceVersion(nullptr, SIZE_MAX), 0u);
}

}  // namespace
