#include "halvane/utils/convert/hex_data.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t kZero = kHexToDataFlagZeroFill;
constexpr std::uint32_t kSpace = kHexToDataFlagSkipSpace;
constexpr std::uint32_t kSeparators = kHexToDataFlagSkipSeparators;
constexpr std::uint32_t kNoOdd = kHexToDataFlagNoOddDigit;
constexpr std::uint8_t kUntouched = 0xEE;

struct Parsed {
    Bytes buffer;  // all of it
    std::size_t written = 0;
    std::size_t total = 0;
    std::size_t end = 0;

    bool operator==(const Parsed&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Parsed& parsed) {
    for (const auto byte : parsed.buffer) stream << std::hex << int{byte} << ' ';
    return stream << std::dec << parsed.written << '/' << parsed.total << " @" << parsed.end;
}

// Reads a text that ends at an inaccessible page, into a buffer that also does.
Parsed parsed(std::string_view text, std::uint32_t flags, std::size_t capacity) {
    GuardedBytes guarded(text);
    GuardedBytes buffer(capacity, kUntouched);
    Parsed result;
    const char* end = nullptr;
    EXPECT_EQ(HexToData(guarded.chars(), text.size(), flags, buffer.data(), capacity,
                        &result.written, &result.total, &end),
              kStatusOK);
    result.buffer.assign(buffer.data(), buffer.data() + capacity);
    result.end = static_cast<std::size_t>(end - guarded.chars());
    return result;
}

// The result of reading the whole text into a buffer of the exact size.
Parsed whole(std::string_view text, const Bytes& bytes) {
    return {bytes, bytes.size(), bytes.size(), text.size()};
}

TEST(HexToData, ReadsPairsOfDigits) {
    struct Row {
        std::string_view text;
        std::uint32_t flags;
        Bytes bytes;
    };
    const std::vector<Row> rows = {
        {"0123456789abcdefABCDEF",
         0,
         {0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF, 0xAB, 0xCD, 0xEF}},
        {"0x1234", 0, {0x12, 0x34}},
        {"0X1234", 0, {0x12, 0x34}},
        {" \t\n\v\f\r0x12", 0, {0x12}},
        {"", 0, {}},
        {"  ", 0, {}},
        {"0x", 0, {}},
        {"123", 0, {0x12, 0x30}},
        {"123", kNoOdd, {0x12}},
        {"0x1234 5", kSpace, {0x12, 0x34, 0x50}},
        {"0x1234 5", kSpace | kNoOdd, {0x12, 0x34}},
        {"1 2\t3 4 ", kSpace, {0x12, 0x34}},  // within pairs, and at the end
        {"12-34:56_78", kSeparators, {0x12, 0x34, 0x56, 0x78}},
        {"1:2:3", kSeparators, {0x12, 0x30}},
        {"0x--12__", kSeparators, {0x12}},
        {"12 - 34", kSpace | kSeparators, {0x12, 0x34}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parsed(row.text, row.flags, row.bytes.size()), whole(row.text, row.bytes))
            << row.text;
    }
}

TEST(HexToData, EndsBeforeAnyOtherCharacter) {
    struct Row {
        std::string_view text;
        std::uint32_t flags;
        std::size_t end;
        std::size_t total;
    };
    const std::vector<Row> rows = {
        {"12x34", 0, 2, 1},
        {"12 34", 0, 2, 1},
        {"12:34", kSpace, 2, 1},
        {"12 34", kSeparators, 2, 1},
        {"12 x", kSpace, 3, 1},
        {"1g", 0, 1, 1},
        {"1g", kNoOdd, 1, 0},
        {"g", 0, 0, 0},
        {"0x0x12", 0, 3, 1},  // one prefix
        {"0x 12", 0, 2, 0},
        {"12.34", kSpace | kSeparators, 2, 1},
        {std::string_view("12\0"
                          "34",
                          5),
         kSpace | kSeparators, 2, 1},
        {"12\xC3\xA9", 0, 2, 1},
    };
    for (const Row& row : rows) {
        const Parsed result = parsed(row.text, row.flags, 8);
        EXPECT_EQ(result.end, row.end) << row.text;
        EXPECT_EQ(result.total, row.total) << row.text;
        EXPECT_EQ(result.written, row.total) << row.text;
    }
}

TEST(HexToData, CountsWhatTheBufferCannotTake) {
    EXPECT_EQ(parsed("11223344", 0, 3), (Parsed{{0x11, 0x22, 0x33}, 3, 4, 8}));
    EXPECT_EQ(parsed("11223344", 0, 0), (Parsed{{}, 0, 4, 8}));
    EXPECT_EQ(parsed("112", 0, 1), (Parsed{{0x11}, 1, 2, 3}));
    const std::string longText(200, 'a');
    for (std::size_t capacity = 0; capacity <= 110; ++capacity) {
        Bytes expected(capacity, kUntouched);
        std::fill_n(expected.begin(), std::min<std::size_t>(capacity, 100), std::uint8_t{0xAA});
        EXPECT_EQ(parsed(longText, 0, capacity),
                  (Parsed{expected, std::min<std::size_t>(capacity, 100), 100, 200}));
    }
}

TEST(HexToData, FillsTheRestWithZerosIfAsked) {
    EXPECT_EQ(parsed("1122", 0, 4), (Parsed{{0x11, 0x22, kUntouched, kUntouched}, 2, 2, 4}));
    EXPECT_EQ(parsed("1122", kZero, 4), (Parsed{{0x11, 0x22, 0, 0}, 2, 2, 4}));
    EXPECT_EQ(parsed("x", kZero, 2), (Parsed{{0, 0}, 0, 0, 0}));
    EXPECT_EQ(parsed("112233", kZero, 2), (Parsed{{0x11, 0x22}, 2, 3, 6}));
}

TEST(HexToData, TakesNullsAndTerminatedTexts) {
    EXPECT_EQ(HexToData("1122", SIZE_MAX, 0, nullptr, 0, nullptr, nullptr, nullptr), kStatusOK);
    auto text = GuardedBytes::terminated("1122");
    std::size_t total = 0;
    EXPECT_EQ(HexToData(text.chars(), SIZE_MAX, 0, nullptr, 0, nullptr, &total, nullptr),
              kStatusOK);
    EXPECT_EQ(total, 2u);

    Bytes bytes(2, kUntouched);
    std::size_t written = 7;
    const char* end = "";
    const char* const untouchedEnd = end;
    EXPECT_EQ(HexToData(nullptr, 4, kZero, bytes.data(), 2, &written, &total, &end),
              kStatusUnsupported);
    EXPECT_EQ(bytes, Bytes(2, kUntouched));
    EXPECT_EQ(written, 7u);
    EXPECT_EQ(total, 2u);
    EXPECT_EQ(end, untouchedEnd);
}

// Does what HexToData does, digit by digit.
Parsed plainly(std::string_view text, std::uint32_t flags, std::size_t capacity) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    constexpr std::string_view kSpaces = " \t\n\v\f\r";
    std::size_t at = std::min(text.find_first_not_of(kSpaces), text.size());
    if (text.substr(at, 2) == "0x" || text.substr(at, 2) == "0X") at += 2;
    std::vector<unsigned> digits;
    for (; at < text.size(); ++at) {
        const char character = text[at];
        const auto digit =
            kDigits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(character))));
        if (digit != std::string_view::npos && character != '\0') {
            digits.push_back(static_cast<unsigned>(digit));
            continue;
        }
        const bool isSkipped =
            ((flags & kSpace) && kSpaces.find(character) != std::string_view::npos) ||
            ((flags & kSeparators) &&
             std::string_view("-:_").find(character) != std::string_view::npos);
        if (!isSkipped) break;
    }
    if (digits.size() % 2 != 0 && (flags & kNoOdd)) digits.pop_back();
    if (digits.size() % 2 != 0) digits.push_back(0);
    Parsed result;
    result.buffer.assign(capacity, kUntouched);
    result.total = digits.size() / 2;
    result.written = std::min(result.total, capacity);
    result.end = at;
    for (std::size_t i = 0; i < result.written; ++i) {
        result.buffer[i] = static_cast<std::uint8_t>(digits[2 * i] << 4 | digits[2 * i + 1]);
    }
    if (flags & kZero) {
        std::fill(result.buffer.begin() + static_cast<std::ptrdiff_t>(result.written),
                  result.buffer.end(), std::uint8_t{0});
    }
    return result;
}

TEST(HexToData, AgreesWithReadingDigitByDigit) {
    constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
    constexpr std::string_view kStrays = "  ::--__xgG/@`\t.\x80\xFF";
    std::mt19937 random(1);
    for (int i = 0; i < 50000; ++i) {
        std::string text(random() % 120, '0');
        for (char& character : text) character = kDigits[random() % kDigits.size()];
        for (auto strays = random() % 4; strays > 0 && !text.empty(); --strays) {
            text[random() % text.size()] = kStrays[random() % kStrays.size()];
        }
        const auto flags = static_cast<std::uint32_t>(random() % 16);
        const std::size_t capacity = random() % 70;
        ASSERT_EQ(parsed(text, flags, capacity), plainly(text, flags, capacity)) << text;
    }
}

// Puts every byte value at every place of a block of digits.
TEST(HexToData, KnowsEveryCharacterAtEveryPlace) {
    for (const std::size_t length : {40u, 130u}) {
        for (std::size_t at = 0; at < length; at += length / 16) {
            for (int value = 0; value < 256; ++value) {
                std::string text(length, '5');
                text[at] = static_cast<char>(value);
                if (at == 0 && std::isspace(value)) continue;
                const std::uint32_t flags = at % 2 == 0 ? 0 : kSpace | kSeparators;
                ASSERT_EQ(parsed(text, flags, 65), plainly(text, flags, 65)) << at << " " << value;
            }
        }
    }
}

// These numbers are compiled into callers.
TEST(HexToData, KeepsTheValuesOfItsFlags) {
    EXPECT_EQ((std::array{kZero, kSpace, kSeparators, kNoOdd}),
              (std::array<std::uint32_t, 4>{1, 2, 4, 8}));
}

TEST(HexToData, StoresNothingWithoutABuffer) {
    for (const std::string text : {"1", "12", "1:2", "0x1 2"}) {
        std::size_t written = 7;
        EXPECT_EQ(HexToData(text.c_str(), SIZE_MAX, kZero | kSpace | kSeparators, nullptr, 4,
                            &written, nullptr, nullptr),
                  kStatusOK);
        EXPECT_EQ(written, 0u) << text;
    }
    const std::string block(64, '5');
    EXPECT_EQ(HexToData(block.c_str(), SIZE_MAX, 0, nullptr, 40, nullptr, nullptr, nullptr),
              kStatusOK);
}

using Heap = std::unique_ptr<std::uint8_t, decltype(&std::free)>;

TEST(HexToDataCopy, AllocatesTheRightSize) {
    std::uint8_t* bytes = nullptr;
    std::size_t size = 0;
    const char* end = nullptr;
    const char* const text = "0x11 22 3 rest";
    ASSERT_EQ(HexToDataCopy(text, SIZE_MAX, kSpace, &bytes, &size, &end), kStatusOK);
    const Heap heap(bytes, &std::free);
    EXPECT_EQ(Bytes(bytes, bytes + size), (Bytes{0x11, 0x22, 0x30}));
    EXPECT_EQ(end, text + 10);
}

TEST(HexToDataCopy, AllocatesForNothingToo) {
    std::uint8_t* bytes = nullptr;
    std::size_t size = 7;
    ASSERT_EQ(HexToDataCopy("", 0, 0, &bytes, &size, nullptr), kStatusOK);
    const Heap heap(bytes, &std::free);
    EXPECT_NE(bytes, nullptr);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(HexToDataCopy(nullptr, 0, 0, &bytes, &size, nullptr), kStatusUnsupported);
}

TEST(HexTextToData, TakesAWholeTextAsPeopleWriteIt) {
    for (const char* text :
         {"00:1a:2b", "00-1A-2B", "001a2b", "0x001a2b", " 00 1a 2b\n", "00_1a_2b"}) {
        Bytes bytes(3);
        std::size_t size = 0;
        EXPECT_EQ(HexTextToData(text, SIZE_MAX, bytes.data(), bytes.size(), &size), kStatusOK);
        EXPECT_EQ(bytes, (Bytes{0x00, 0x1A, 0x2B})) << text;
        EXPECT_EQ(size, 3u) << text;
        std::uint8_t* copy = nullptr;
        size = 0;
        EXPECT_EQ(HexTextToDataCopy(text, SIZE_MAX, &copy, &size), kStatusOK);
        const Heap heap(copy, &std::free);
        EXPECT_EQ(Bytes(copy, copy + size), bytes) << text;
    }
}

TEST(HexTextToData, RefusesWithoutTouchingTheOutputs) {
    struct Row {
        const char* text;
        std::size_t capacity;
        HalvaneStatus status;
        HalvaneStatus copyStatus;
    };
    const std::vector<Row> rows = {
        {"11 22 x", 4, kStatusMalformed, kStatusMalformed},
        {"x", 4, kStatusMalformed, kStatusMalformed},
        {"11.22", 4, kStatusMalformed, kStatusMalformed},
        {"11223344x", 2, kStatusMalformed, kStatusMalformed},
        {nullptr, 4, kStatusUnsupported, kStatusUnsupported},
    };
    for (const Row& row : rows) {
        Bytes bytes(4, kUntouched);
        std::size_t size = 7;
        std::uint8_t* copy = nullptr;
        EXPECT_EQ(HexTextToData(row.text, SIZE_MAX, bytes.data(), row.capacity, &size), row.status);
        EXPECT_EQ(HexTextToDataCopy(row.text, SIZE_MAX, &copy, &size), row.copyStatus);
        EXPECT_EQ(bytes, Bytes(4, kUntouched));
        EXPECT_EQ(size, 7u);
        EXPECT_EQ(copy, nullptr);
    }
    Bytes bytes(1, kUntouched);
    EXPECT_EQ(HexTextToData("1122", SIZE_MAX, bytes.data(), 1, nullptr), kStatusNoRoom);
    EXPECT_EQ(bytes, Bytes(1, kUntouched));
}

std::string textOf(const Bytes& bytes, const char* digits) {
    GuardedBytes guarded(bytes);
    GuardedBytes buffer(HALVANE_HEX_TEXT_SIZE(bytes.size()));
    EXPECT_EQ(DataToHexCStringEx(guarded.data(), bytes.size(), buffer.chars(), digits),
              buffer.chars());
    return buffer.chars();
}

TEST(DataToHexCStringEx, TakesDigitsFromTheTable) {
    const Bytes bytes = {0x00, 0x1A, 0xFF};
    EXPECT_EQ(textOf(bytes, kHexDigitsLowercase), "001aff");
    EXPECT_EQ(textOf(bytes, kHexDigitsUppercase), "001AFF");
    EXPECT_EQ(textOf(bytes, "abcdefghijklmnop"), "aabkpp");
    EXPECT_EQ(textOf({}, kHexDigitsLowercase), "");
    char buffer[1] = {'x'};
    EXPECT_STREQ(DataToHexCStringEx(nullptr, 0, buffer, kHexDigitsLowercase), "");
}

TEST(DataToHexCStringEx, WritesEveryByteOfEveryLength) {
    const std::string tables[] = {kHexDigitsLowercase,
                                  kHexDigitsUppercase,
                                  "abcdefghijklmnop",
                                  "fedcba9876543210",
                                  "0123456789ABCDEf",
                                  "\xF0\xF1\xF2\xF3\xF4"
                                  "\xF5\xF6\xF7\xF8\xF9\x7C\x7D\x7E\x7F\x80\x81"};
    for (const std::string& table : tables) {
        Bytes bytes;
        std::string expected;
        for (int i = 0; i < 300; ++i) {
            ASSERT_EQ(textOf(bytes, table.c_str()), expected) << table << " " << i;
            const auto byte = static_cast<std::uint8_t>(i * 7);
            bytes.push_back(byte);
            expected += table[byte >> 4];
            expected += table[byte & 0x0F];
        }
    }
}

TEST(HexData, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(2);
    for (int i = 0; i < 2000; ++i) {
        Bytes bytes(random() % 200);
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
        const std::string text =
            textOf(bytes, random() % 2 == 0 ? kHexDigitsLowercase : kHexDigitsUppercase);
        ASSERT_EQ(parsed(text, 0, bytes.size()), whole(text, bytes));
    }
}

}  // namespace
