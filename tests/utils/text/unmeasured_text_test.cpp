// A function that reads the start of a NUL-terminated text reads only that start. If each call
// measured the whole text, a walk through a long text would take quadratic time. Each text here
// ends at an inaccessible page, without a terminator.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/convert.h"
#include "halvane/utils/scan_time.h"
#include "halvane/utils/strings.h"

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

struct Reader {
    const char* name;
    std::string_view text;  // all that the reader may look at
    std::uint64_t value;
    std::size_t consumed;
    std::uint64_t (*read)(const char* text, const char** end);
};

std::uint64_t hexBytes(const char* text, const char** end, std::uint32_t flags) {
    std::uint8_t bytes[4] = {};
    HexToData(text, SIZE_MAX, flags, bytes, sizeof(bytes), nullptr, nullptr, end);
    return std::uint64_t{bytes[0]} << 8 | bytes[1];
}

template <int kBase>
std::uint64_t integer(const char* text, const char** end) {
    return static_cast<std::uint64_t>(strtoi(text, SIZE_MAX, end, kBase));
}

std::uint64_t scanned(const char* text, const char** end, const char* format) {
    std::uint32_t value = 0;
    std::int32_t count = 0;
    SNScanF(text, SIZE_MAX, format, &value, &count);
    *end = text + count;
    return value;
}

const std::vector<Reader> kReaders = {
    {"strtoi", "12,", 12, 2, integer<10>},
    {"strtoi without a digit", " -,", 0, 0, integer<10>},
    {"strtoi in base 0", "0x1F ", 31, 4, integer<0>},
    {"strtoi of a 0", "0,", 0, 1, integer<0>},
    {"strtoi of no prefix", "0xg", 0, 1, integer<16>},
    {"ParseIPv4Address", "1.2.3.4 ", 0x04, 7,
     [](const char* text, const char** end) {
         std::uint8_t address[kIPv4AddressSize] = {};
         EXPECT_EQ(ParseIPv4Address(text, address, end), kStatusOK);
         return std::uint64_t{address[3]};
     }},
    {"StringToIPv4Address", "1.2.3.4:80/24,", 0x01020304, 13,
     [](const char* text, const char** end) {
         std::uint32_t address = 0;
         EXPECT_EQ(StringToIPv4Address(text, 0, &address, nullptr, nullptr, nullptr, end),
                   kStatusOK);
         return std::uint64_t{address};
     }},
    {"StringToIPv6Address", "fe80::7,", 0x07, 7,
     [](const char* text, const char** end) {
         std::uint8_t address[kIPv6AddressSize] = {};
         EXPECT_EQ(StringToIPv6Address(text, 0, address, nullptr, nullptr, nullptr, end),
                   kStatusOK);
         return std::uint64_t{address[15]};
     }},
    {"StringToIPv6Address with all parts", "[::1%1/64]:80 ", 80, 13,
     [](const char* text, const char** end) {
         int port = 0;
         EXPECT_EQ(StringToIPv6Address(text, 0, nullptr, nullptr, nullptr, &port, end), kStatusOK);
         return static_cast<std::uint64_t>(port);
     }},
    {"HexToData", "1234,", 0x1234, 4,
     [](const char* text, const char** end) { return hexBytes(text, end, 0); }},
    {"HexToData past what it skips", " 0x12-34 ,", 0x1234, 9,
     [](const char* text, const char** end) {
         return hexBytes(text, end, kHexToDataFlagSkipSpace | kHexToDataFlagSkipSeparators);
     }},
    {"HexToDataCopy", "12 34", 0x12, 2,
     [](const char* text, const char** end) {
         std::uint8_t* data = nullptr;
         std::size_t size = 0;
         EXPECT_EQ(HexToDataCopy(text, SIZE_MAX, 0, &data, &size, end), kStatusOK);
         const std::uint64_t first = size == 1 ? data[0] : 0;
         std::free(data);
         return first;
     }},
    {"BCDTextToInt", "153,", 99, 3,
     [](const char* text, const char** end) { return BCDTextToInt(text, SIZE_MAX, end); }},
    {"TextToInt32", "-0x10,", UINT64_MAX - 15, 0,
     [](const char* text, const char**) {
         return static_cast<std::uint64_t>(std::int64_t{TextToInt32(text, SIZE_MAX, 10)});
     }},
    {"TextToHardwareAddressScalar", "0:1a:2b:3c:4d:5e ", 0x1A2B3C4D5E, 0,
     [](const char* text, const char**) { return TextToHardwareAddressScalar(text, SIZE_MAX, 6); }},
    {"TextToNumVersion", "1.2b3 ", 0x01206003, 0,
     [](const char* text, const char**) {
         return std::uint64_t{TextToNumVersion(text, SIZE_MAX)};
     }},
    {"TextToSourceVersion", "1.2.3,", 10203, 0,
     [](const char* text, const char**) {
         return std::uint64_t{TextToSourceVersion(text, SIZE_MAX)};
     }},
    {"TextToFourCharCode", "what", 0x77686174, 0,
     [](const char* text, const char**) {
         return std::uint64_t{TextToFourCharCode(text, SIZE_MAX)};
     }},
    {"BitListString_Parse", "1,2;", static_cast<std::uint64_t>(kStatusMalformed), 0,
     [](const char* text, const char**) {
         return static_cast<std::uint64_t>(BitListString_Parse(text, SIZE_MAX, nullptr));
     }},
    {"StringToUUID", "00112233-4455-6677-8899-aabbccddeeffX",
     static_cast<std::uint64_t>(kStatusWrongLength), 0,
     [](const char* text, const char**) {
         std::uint8_t uuid[kUUIDSize];
         return static_cast<std::uint64_t>(StringToUUID(text, SIZE_MAX, false, uuid));
     }},
    {"TextCompareNatural", "ab12,c", static_cast<std::uint64_t>(-1), 0,
     [](const char* text, const char**) {
         return static_cast<std::uint64_t>(TextCompareNatural(text, SIZE_MAX, "AB12,d", 6, false));
     }},
    {"IsASCII7PrintableString", "ab\n", 0, 0,
     [](const char* text, const char**) {
         return std::uint64_t{IsASCII7PrintableString(text, SIZE_MAX)};
     }},
    {"SNScanF of an integer", "12,", 12, 2,
     [](const char* text, const char** end) { return scanned(text, end, "%d%n"); }},
    {"SNScanF of a prefix", " 0x1f,", 31, 5,
     [](const char* text, const char** end) { return scanned(text, end, "%i%n"); }},
    {"SNScanF with a width", "1234", 1234, 4,
     [](const char* text, const char** end) { return scanned(text, end, "%4u%n"); }},
    {"SNScanF of a character", "a", 'a', 1,
     [](const char* text, const char** end) { return scanned(text, end, "%c%n"); }},
    {"SNScanF of a word", "x ", 'x', 1,
     [](const char* text, const char** end) { return scanned(text, end, "%s%n"); }},
    {"SNScanF of a set", "x=", 'x', 1,
     [](const char* text, const char** end) { return scanned(text, end, "%[^=]%n"); }},
    {"SNScanF up to a mismatch", "a-", 0, 0,
     [](const char* text, const char** end) { return scanned(text, end, "a=%d%n"); }},
};

TEST(UnmeasuredText, IsReadNoFurtherThanNeedBe) {
    for (const Reader& reader : kReaders) {
        SCOPED_TRACE(reader.name);
        GuardedBytes guarded(reader.text);
        const char* end = guarded.chars();
        EXPECT_EQ(reader.read(guarded.chars(), &end), reader.value);
        EXPECT_EQ(end - guarded.chars(), static_cast<std::ptrdiff_t>(reader.consumed));
    }
}

}  // namespace
