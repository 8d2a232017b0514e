#include "halvane/utils/convert/uuid.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/printf.h"

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

using UUID = std::array<std::uint8_t, kUUIDSize>;

constexpr UUID kBytes = {0x6B, 0xA7, 0xB8, 0x10, 0x9D, 0xAD, 0x11, 0xD1,
                         0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8};
constexpr UUID kReversedFields = {0x10, 0xB8, 0xA7, 0x6B, 0xAD, 0x9D, 0xD1, 0x11,
                                  0x80, 0xB4, 0x00, 0xC0, 0x4F, 0xD4, 0x30, 0xC8};
constexpr char kText[] = "6ba7b810-9dad-11d1-80b4-00c04fd430c8";  // RFC 4122 appendix C

std::string textOf(const UUID& uuid, bool isLittleEndian) {
    GuardedBytes bytes(uuid);
    GuardedBytes buffer(kUUIDTextSize);
    EXPECT_EQ(UUIDtoCString(bytes.data(), isLittleEndian, buffer.chars()), buffer.chars());
    return buffer.chars();
}

TEST(UUIDtoCString, WritesFieldsOfEitherOrder) {
    EXPECT_EQ(textOf(kBytes, false), kText);
    EXPECT_EQ(textOf(kReversedFields, true), kText);
    EXPECT_EQ(textOf(kBytes, true), "10b8a76b-ad9d-d111-80b4-00c04fd430c8");
}

TEST(UUIDtoCString, IsTheTextOfTheFormattingEngine) {
    char text[64];
    SNPrintF(text, sizeof(text), "%U", kBytes.data());
    EXPECT_EQ(textOf(kBytes, true), text);
    SNPrintF(text, sizeof(text), "%#U", kBytes.data());
    EXPECT_EQ(textOf(kBytes, false), text);
}

struct Parsed {
    HalvaneStatus status;
    UUID uuid;

    bool operator==(const Parsed&) const = default;
};

Parsed parsed(std::string_view text, bool isLittleEndian = false) {
    GuardedBytes guarded(text);
    GuardedBytes uuid(kUUIDSize, 0xEE);
    Parsed result{};
    result.status = StringToUUID(guarded.chars(), text.size(), isLittleEndian, uuid.data());
    std::ranges::copy(uuid.bytes(), result.uuid.begin());
    return result;
}

Parsed refused(HalvaneStatus status) {
    Parsed result{status, {}};
    result.uuid.fill(0xEE);
    return result;
}

TEST(StringToUUID, ReadsFieldsOfEitherOrder) {
    EXPECT_EQ(parsed(kText), (Parsed{kStatusOK, kBytes}));
    EXPECT_EQ(parsed("6BA7B810-9DAD-11D1-80B4-00C04FD430C8"), (Parsed{kStatusOK, kBytes}));
    EXPECT_EQ(parsed(kText, true), (Parsed{kStatusOK, kReversedFields}));
    UUID uuid;
    EXPECT_EQ(StringToUUID(kText, SIZE_MAX, false, uuid.data()), kStatusOK);
    EXPECT_EQ(uuid, kBytes);
    auto tail = std::string(kText) + "tail";
    EXPECT_EQ(StringToUUID(tail.c_str(), 36, false, uuid.data()), kStatusOK);
}

TEST(StringToUUID, RefusesWithoutTouchingTheBytes) {
    const std::string text = kText;
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_EQ(parsed(text.substr(0, size)), refused(kStatusWrongLength)) << size;
    }
    EXPECT_EQ(parsed(text + "0"), refused(kStatusWrongLength));
    EXPECT_EQ(parsed("{" + text + "}"), refused(kStatusWrongLength));
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (const char stray : {'g', '_', '\0', '.'}) {
            std::string spoilt = text;
            spoilt[at] = stray;
            EXPECT_EQ(parsed(spoilt), refused(kStatusMalformed)) << at;
        }
    }
    EXPECT_EQ(parsed("6ba7b8109dad-11d1-80b4-00c04fd430c80"), refused(kStatusMalformed));
    EXPECT_EQ(StringToUUID(nullptr, 36, false, nullptr), kStatusUnsupported);
    EXPECT_EQ(StringToUUID(nullptr, SIZE_MAX, false, nullptr), kStatusUnsupported);
}

// Each pair of digits is one field of the scan.
TEST(StringToUUID, TakesASignForADigit) {
    UUID expected = kBytes;
    expected[0] = 0x0B;
    EXPECT_EQ(parsed("+ba7b810-9dad-11d1-80b4-00c04fd430c8"), (Parsed{kStatusOK, expected}));
}

TEST(UUID, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        UUID uuid;
        for (auto& byte : uuid) byte = static_cast<std::uint8_t>(random());
        const bool isLittleEndian = random() % 2 == 0;
        ASSERT_EQ(parsed(textOf(uuid, isLittleEndian), isLittleEndian), (Parsed{kStatusOK, uuid}));
    }
}

TEST(EndianSwapUUIDMove, ReversesTheFirstThreeFields) {
    GuardedBytes source(kBytes);
    GuardedBytes destination(kUUIDSize);
    EndianSwapUUIDMove(source.data(), destination.data());
    EXPECT_TRUE(std::ranges::equal(destination.bytes(), kReversedFields));
    EXPECT_TRUE(std::ranges::equal(source.bytes(), kBytes));
}

TEST(EndianSwapUUIDMove, WorksInPlaceAndOverlapping) {
    UUID uuid = kBytes;
    EndianSwapUUIDMove(uuid.data(), uuid.data());
    EXPECT_EQ(uuid, kReversedFields);
    std::vector<std::uint8_t> bytes(kBytes.begin(), kBytes.end());
    bytes.resize(kUUIDSize + 3);
    EndianSwapUUIDMove(bytes.data(), bytes.data() + 3);
    EXPECT_TRUE(std::equal(bytes.begin() + 3, bytes.end(), kReversedFields.begin()));
}

}  // namespace
