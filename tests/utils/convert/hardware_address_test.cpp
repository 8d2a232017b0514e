#include "halvane/utils/convert/hardware_address.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes kAddress = {0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};

struct Parsed {
    HalvaneStatus status;
    Bytes bytes;

    bool operator==(const Parsed&) const = default;
};

// Reads a text that ends at an inaccessible page, into bytes that also do.
Parsed parsed(std::string_view text, std::size_t count) {
    GuardedBytes guarded(text);
    GuardedBytes bytes(count, 0xEE);
    const HalvaneStatus status =
        TextToHardwareAddress(guarded.chars(), text.size(), count, bytes.data());
    EXPECT_EQ(TextToHardwareAddress(guarded.chars(), text.size(), count, nullptr), status);
    return {status, {bytes.data(), bytes.data() + count}};
}

TEST(TextToHardwareAddress, ReadsTheFormsThatPeopleWrite) {
    for (const char* text : {
             "00:1A:2B:3C:4D:5E",
             "00-1a-2b-3c-4d-5e",
             "0:1a:2b:3c:4d:5e",
             "001a2b3c4d5e",
             "001A.2B3C.4D5E",
             "00 1a 2b 3c 4d 5e",
             "0/1a_2b\n3c|4d*5e",       // any character separates
             "  00: 1a - 2b::3c4d 5e",  // before a byte there may be many of the usual ones
             "00:1a:2b:3c:4d:5e:6f",    // the rest is left
             "00:1a:2b:3c:4d:5ezzz",
         }) {
        EXPECT_EQ(parsed(text, 6), (Parsed{kStatusOK, kAddress})) << text;
    }
    EXPECT_EQ(parsed("1:2:3:4:5:6", 6), (Parsed{kStatusOK, {1, 2, 3, 4, 5, 6}}));
    EXPECT_EQ(parsed("1:2:3:4:5:F", 6), (Parsed{kStatusOK, {1, 2, 3, 4, 5, 15}}));
    EXPECT_EQ(parsed("anything", 0), (Parsed{kStatusOK, {}}));
    EXPECT_EQ(parsed("", 0), (Parsed{kStatusOK, {}}));
    EXPECT_EQ(parsed(std::string_view("1\0"
                                      "2",
                                      3),
                     2),
              (Parsed{kStatusOK, {1, 2}}));
}

TEST(TextToHardwareAddress, RefusesWithoutTouchingTheAddress) {
    for (const char* text : {
             "",
             "   ",
             "00:1a:2b:3c:4d",
             "00:1a:2b:3c:4d:",
             "001a2b3c4d",
             "00:1a:2b:3c:4d:x",
             "x00:1a:2b:3c:4d:5e",
             "00..1a:2b:3c:4d:5e",  // the second '.' stands before a byte
             "\t00:1a:2b:3c:4d:5e",
         }) {
        EXPECT_EQ(parsed(text, 6), (Parsed{kStatusMalformed, Bytes(6, 0xEE)})) << text;
    }
    EXPECT_EQ(TextToHardwareAddress(nullptr, SIZE_MAX, 6, nullptr), kStatusUnsupported);
    EXPECT_EQ(TextToHardwareAddress(nullptr, 0, 0, nullptr), kStatusUnsupported);
}

TEST(TextToHardwareAddress, TakesANulTerminatedText) {
    auto text = GuardedBytes::terminated("0:1a:2b:3c:4d:5e");
    Bytes bytes(6);
    EXPECT_EQ(TextToHardwareAddress(text.chars(), SIZE_MAX, 6, bytes.data()), kStatusOK);
    EXPECT_EQ(bytes, kAddress);
    EXPECT_EQ(TextToHardwareAddress(text.chars(), SIZE_MAX, 7, nullptr), kStatusMalformed);
    EXPECT_EQ(TextToHardwareAddress(text.chars(), SIZE_MAX, SIZE_MAX, nullptr), kStatusMalformed);
}

TEST(TextToHardwareAddress, ReadsNoMoreThanTheLength) {
    const std::string text = "00:1A:2B:3C:4D:5E";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const bool isWhole = size >= 16;  // "5" is a byte as well
        EXPECT_EQ(parsed(text.substr(0, size), 6).status == kStatusOK, isWhole) << size;
    }
}

TEST(TextToHardwareAddressScalar, GivesSixOrEightBytes) {
    struct Row {
        const char* text;
        std::size_t count;
        std::uint64_t value;
    };
    const std::vector<Row> rows = {
        {"00:1A:2B:3C:4D:5E", 6, 0x001A2B3C4D5E},
        {"ff:ff:ff:ff:ff:ff", 6, 0xFFFFFFFFFFFF},
        {"01:23:45:67:89:AB:CD:EF", 8, 0x0123456789ABCDEF},
        {"ffffffffffffffff", 8, UINT64_MAX},
        {"00:1A:2B:3C:4D", 6, 0},
        {"00:1A:2B:3C:4D:5E", 8, 0},
        {"01:02:03:04", 4, 0},
        {"01:02:03:04:05:06:07", 7, 0},
        {"01", 0, 0},
        {nullptr, 6, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(TextToHardwareAddressScalar(row.text, SIZE_MAX, row.count), row.value);
    }
    EXPECT_EQ(TextToHardwareAddressScalar("01020304050607", 12, 6), 0x010203040506u);
}

std::string textOf(const Bytes& bytes, int count) {
    GuardedBytes guarded(bytes);
    GuardedBytes buffer(HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(count));
    EXPECT_EQ(HardwareAddressToCString(guarded.data(), count, buffer.chars()), buffer.chars());
    return buffer.chars();
}

TEST(HardwareAddressToCString, WritesUpperCasePairs) {
    EXPECT_EQ(textOf(kAddress, 6), "00:1A:2B:3C:4D:5E");
    EXPECT_EQ(textOf({0xFF, 0x0A}, 2), "FF:0A");
    EXPECT_EQ(textOf({0x09}, 1), "09");
    EXPECT_EQ(textOf({}, 0), "");
    EXPECT_EQ(textOf({}, -1), "");
    EXPECT_EQ(HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(kMACAddressSize),
              std::size_t{kMACAddressTextSize});
}

TEST(HardwareAddress, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        Bytes bytes(random() % 40);
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
        const std::string text = textOf(bytes, static_cast<int>(bytes.size()));
        EXPECT_EQ(parsed(text, bytes.size()), (Parsed{kStatusOK, bytes}));
    }
}

}  // namespace
