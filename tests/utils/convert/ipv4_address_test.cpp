#include "halvane/utils/convert/ipv4_address.h"

#include <arpa/inet.h>
#include <array>
#include <cctype>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <vector>

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

using Address = std::array<std::uint8_t, kIPv4AddressSize>;

constexpr std::uint8_t kUntouchedByte = 0xEE;
constexpr Address kUntouched = {kUntouchedByte, kUntouchedByte, kUntouchedByte, kUntouchedByte};

TEST(ParseIPv4Address, EndsBeforeWhatIsNoPartOfIt) {
    struct Row {
        const char* text;
        Address address;
        std::size_t end;
    };
    const std::vector<Row> rows = {
        {"10.0.1.5", {10, 0, 1, 5}, 8},
        {"0.0.0.0", {0, 0, 0, 0}, 7},
        {"255.255.255.255", {255, 255, 255, 255}, 15},
        {"1.2.3.4x", {1, 2, 3, 4}, 7},
        {"1.2.3.4:80", {1, 2, 3, 4}, 7},
        {"1.2.3.4 ", {1, 2, 3, 4}, 7},
        {"001.02.3.0000004", {1, 2, 3, 4}, 16},  // zeros lead, and the base stays 10
        {"010.1.1.1", {10, 1, 1, 1}, 9},
    };
    for (const Row& row : rows) {
        Address address = kUntouched;
        const char* end = nullptr;
        EXPECT_EQ(ParseIPv4Address(row.text, address.data(), &end), kStatusOK) << row.text;
        EXPECT_EQ(address, row.address) << row.text;
        EXPECT_EQ(end, row.text + row.end) << row.text;
    }
}

TEST(ParseIPv4Address, RefusesWithoutTouchingTheOutputs) {
    struct Row {
        const char* text;
        HalvaneStatus status;
    };
    const std::vector<Row> rows = {
        {"256.1.1.1", kStatusOutOfRange},
        {"1.1.1.256", kStatusOutOfRange},
        {"1.1.1.4294967297", kStatusOutOfRange},
        {"1.1.99999999999999999999999.1", kStatusOutOfRange},
        {"1.2.3.4.", kStatusMalformed},
        {"1.2.3.4.5", kStatusMalformed},
        {"1.2.3", kStatusTooFew},
        {"1.2.3.", kStatusTooFew},
        {"1.2.3.x", kStatusTooFew},
        {"1..2.3", kStatusTooFew},
        {".1.2.3.4", kStatusTooFew},
        {" 1.2.3.4", kStatusTooFew},
        {"-1.2.3.4", kStatusTooFew},
        {"1", kStatusTooFew},
        {"", kStatusTooFew},
        {nullptr, kStatusUnsupported},
    };
    for (const Row& row : rows) {
        Address address = kUntouched;
        const char* end = nullptr;
        EXPECT_EQ(ParseIPv4Address(row.text, address.data(), &end), row.status);
        EXPECT_EQ(address, kUntouched);
        EXPECT_EQ(end, nullptr);
    }
}

TEST(ParseIPv4Address, NeedsNoOutputs) {
    EXPECT_EQ(ParseIPv4Address("1.2.3.4", nullptr, nullptr), kStatusOK);
    EXPECT_EQ(ParseIPv4Address("1.2.3.256", nullptr, nullptr), kStatusOutOfRange);
}

struct Parsed {
    HalvaneStatus status = 0;
    std::uint32_t address = 0xEEEEEEEE;
    int port = -1;
    std::uint32_t mask = 0xEEEEEEEE;
    std::uint32_t router = 0xEEEEEEEE;
    std::string rest = "(untouched)";

    bool operator==(const Parsed&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Parsed& parsed) {
    return stream << parsed.status << std::hex << " " << parsed.address << " " << std::dec
                  << parsed.port << std::hex << " " << parsed.mask << " " << parsed.router << " '"
                  << parsed.rest << "'" << std::dec;
}

Parsed parsed(const char* text, std::uint32_t flags = 0) {
    Parsed result;
    const char* end = nullptr;
    result.status = StringToIPv4Address(text, flags, &result.address, &result.port, &result.mask,
                                        &result.router, &end);
    if (end != nullptr) result.rest = end;
    return result;
}

Parsed refused(HalvaneStatus status) {
    Parsed result;
    result.status = status;
    return result;
}

TEST(StringToIPv4Address, WritesThePartsThatAreThere) {
    constexpr std::uint32_t kNone = 0xEEEEEEEE;
    struct Row {
        const char* text;
        Parsed expected;
    };
    const std::vector<Row> rows = {
        {"10.0.1.5:8080/24", {0, 0x0A000105, 8080, 0xFFFFFF00, 0x0A000101, ""}},
        {"10.0.1.5", {0, 0x0A000105, -1, kNone, kNone, ""}},
        {"10.0.1.5:0", {0, 0x0A000105, 0, kNone, kNone, ""}},
        {"10.0.1.5:65535", {0, 0x0A000105, 65535, kNone, kNone, ""}},
        {"10.0.1.5:00080", {0, 0x0A000105, 80, kNone, kNone, ""}},
        {"10.0.1.5/8", {0, 0x0A000105, -1, 0xFF000000, 0x0A000001, ""}},
        {"10.0.1.5/1", {0, 0x0A000105, -1, 0x80000000, 0x00000001, ""}},
        {"10.0.1.5/31", {0, 0x0A000105, -1, 0xFFFFFFFE, 0x0A000105, ""}},
        {"10.0.1.4/32", {0, 0x0A000104, -1, 0xFFFFFFFF, 0x0A000105, ""}},
        {"10.0.1.4/0", {0, 0x0A000104, -1, 0xFFFFFFFF, 0x0A000105, ""}},  // 32 modulo 32 is 0
        {"10.0.1.5/24:80", {0, 0x0A000105, -1, 0xFFFFFF00, 0x0A000101, ":80"}},
        {"10.0.1.5:80, next", {0, 0x0A000105, 80, kNone, kNone, ", next"}},
    };
    for (const Row& row : rows) EXPECT_EQ(parsed(row.text), row.expected) << row.text;
}

TEST(StringToIPv4Address, RefusesWithoutTouchingTheOutputs) {
    constexpr std::uint32_t kNoPort = kIPv4AddressFlagNoPort;
    constexpr std::uint32_t kNoPrefix = kIPv4AddressFlagNoPrefix;
    EXPECT_EQ(kNoPort, 1u);
    EXPECT_EQ(kNoPrefix, 2u);
    struct Row {
        const char* text;
        std::uint32_t flags;
        HalvaneStatus status;
    };
    const std::vector<Row> rows = {
        {"256.1.1.1", 0, kStatusOutOfRange},
        {"1.2.3", 0, kStatusTooFew},
        {"1.2.3.4.5", 0, kStatusMalformed},
        {"1.2.3.4:65536", 0, kStatusOutOfRange},
        {"1.2.3.4:99999999999999999999", 0, kStatusOutOfRange},
        {"1.2.3.4/33", 0, kStatusOutOfRange},
        {"1.2.3.4:80/33", 0, kStatusOutOfRange},
        {"1.2.3.4:", 0, kStatusMalformed},
        {"1.2.3.4:x", 0, kStatusMalformed},
        {"1.2.3.4:-1", 0, kStatusMalformed},
        {"1.2.3.4/", 0, kStatusMalformed},
        {"1.2.3.4:80", kNoPort, kStatusForbidden},
        {"1.2.3.4:x", kNoPort, kStatusForbidden},
        {"1.2.3.4:80/8", kNoPort, kStatusForbidden},
        {"1.2.3.4/8", kNoPrefix, kStatusForbidden},
        {"1.2.3.4:80/8", kNoPrefix, kStatusForbidden},
        {nullptr, 0, kStatusUnsupported},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parsed(row.text, row.flags), refused(row.status)) << (row.text ? row.text : "");
    }
}

TEST(StringToIPv4Address, FlagsForbidOnePartEach) {
    EXPECT_EQ(parsed("1.2.3.4/8", kIPv4AddressFlagNoPort).mask, 0xFF000000);
    EXPECT_EQ(parsed("1.2.3.4:80", kIPv4AddressFlagNoPrefix).port, 80);
}

TEST(StringToIPv4Address, NeedsNoOutputs) {
    EXPECT_EQ(StringToIPv4Address("1.2.3.4:5/6", 0, nullptr, nullptr, nullptr, nullptr, nullptr),
              kStatusOK);
}

std::string textOf(std::uint32_t address, int port = 0) {
    GuardedBytes buffer(kIPv4AddressTextSize);
    EXPECT_EQ(IPv4AddressToCString(address, port, buffer.chars()), buffer.chars());
    return buffer.chars();
}

TEST(StringToIPv4Address, WritesMaskAndRouterEachForItself) {
    std::uint32_t mask = 0;
    std::uint32_t router = 0;
    const char* const text = "10.0.1.5/24";
    EXPECT_EQ(StringToIPv4Address(text, 0, nullptr, nullptr, &mask, nullptr, nullptr), kStatusOK);
    EXPECT_EQ(mask, 0xFFFFFF00u);
    EXPECT_EQ(StringToIPv4Address(text, 0, nullptr, nullptr, nullptr, &router, nullptr), kStatusOK);
    EXPECT_EQ(router, 0x0A000101u);
}

TEST(IPv4AddressToCString, WritesAPortAboveZero) {
    EXPECT_EQ(textOf(0x0A000105), "10.0.1.5");
    EXPECT_EQ(textOf(0), "0.0.0.0");
    EXPECT_EQ(textOf(0x0A000105, 1), "10.0.1.5:1");
    EXPECT_EQ(textOf(0x0A000105, 65535), "10.0.1.5:65535");
    EXPECT_EQ(textOf(0x0A000105, -1), "10.0.1.5");
    EXPECT_EQ(textOf(UINT32_MAX, INT_MAX), "255.255.255.255:2147483647");  // fills the buffer
}

TEST(IPv4Address, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const auto address = static_cast<std::uint32_t>(random());
        const auto port = static_cast<int>(random() % 65536);
        in_addr system{htonl(address)};
        char expected[INET_ADDRSTRLEN];
        ASSERT_NE(inet_ntop(AF_INET, &system, expected, sizeof(expected)), nullptr);
        ASSERT_EQ(textOf(address), expected);
        const Parsed back = parsed(textOf(address, port).c_str());
        ASSERT_EQ(back.address, address);
        ASSERT_EQ(back.port, port == 0 ? -1 : port);
        ASSERT_EQ(back.rest, "");
    }
}

// Texts of one to five parts up to 299. A stray character spoils some of them.
std::string anyText(std::mt19937& random) {
    std::string text;
    const auto parts = random() % 8 == 0 ? 1 + random() % 5 : 4;
    for (unsigned i = 0; i < parts; ++i) {
        if (i > 0) text += '.';
        text += std::to_string(random() % (random() % 4 == 0 ? 300 : 256));
    }
    if (random() % 4 == 0) {
        constexpr std::string_view kStray = "0123456789.. x:/-";
        text[random() % text.size()] = kStray[random() % kStray.size()];
    }
    return text;
}

bool hasLeadingZero(const std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const bool isFirst = i == 0 || text[i - 1] == '.';
        if (isFirst && text[i] == '0' && std::isdigit(static_cast<unsigned char>(text[i + 1]))) {
            return true;
        }
    }
    return false;
}

// The only difference from inet_pton, apart from the text that may follow: leading zeros are
// allowed.
TEST(ParseIPv4Address, AgreesWithTheSystemButForLeadingZeros) {
    std::mt19937 random(2);
    int accepted = 0;
    int refusedCount = 0;
    for (int i = 0; i < 100000; ++i) {
        const std::string text = anyText(random);
        if (hasLeadingZero(text)) continue;
        Address expected{};
        Address address{};
        const char* end = nullptr;
        const bool isExpected = inet_pton(AF_INET, text.c_str(), expected.data()) == 1;
        const bool isRead = ParseIPv4Address(text.c_str(), address.data(), &end) == kStatusOK;
        ASSERT_EQ(isRead && *end == '\0', isExpected) << text;
        if (isExpected) {
            ASSERT_EQ(address, expected) << text;
        }
        ++(isExpected ? accepted : refusedCount);
    }
    EXPECT_GT(accepted, 20000);
    EXPECT_GT(refusedCount, 20000);
}

TEST(StringToIPv4Address, ReadsNothingPastTheTerminator) {
    const std::string text = "10.0.1.5:8080/24";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        auto guarded = GuardedBytes::terminated(text.substr(0, size));
        const bool isWhole = size == 8 || (size > 9 && size != 14);
        EXPECT_EQ(parsed(guarded.chars()).status == kStatusOK, isWhole) << size;
    }
}

}  // namespace
