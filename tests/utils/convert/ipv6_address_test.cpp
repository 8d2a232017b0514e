#include "halvane/utils/convert/ipv6_address.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <net/if.h>
#include <netinet/in.h>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <sys/socket.h>
#include <vector>

#include "halvane/utils/printf.h"

#include "tests/support/guarded_bytes.h"

using halvane::testing::GuardedBytes;

namespace {

using Address = std::array<std::uint8_t, kIPv6AddressSize>;
using Groups = std::array<std::uint16_t, 8>;

constexpr std::uint32_t kUnknownScope = 4000000000;  // an index beyond those that systems give

Address addressOf(const Groups& groups) {
    Address address;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        address[2 * i] = static_cast<std::uint8_t>(groups[i] >> 8);
        address[2 * i + 1] = static_cast<std::uint8_t>(groups[i]);
    }
    return address;
}

Address untouched() {
    Address address;
    address.fill(0xEE);
    return address;
}

struct Parsed {
    HalvaneStatus status = 0;
    Address address = untouched();
    std::uint32_t scope = 0xEEEEEEEE;
    int prefix = -1;
    int port = -1;
    std::string rest = "(untouched)";

    bool operator==(const Parsed&) const = default;
};

std::string textOf(const Address& address, std::uint32_t scope = 0, int port = 0) {
    GuardedBytes buffer(kIPv6AddressTextSize);
    EXPECT_EQ(IPv6AddressToCString(address.data(), scope, port, buffer.chars()), buffer.chars());
    return buffer.chars();
}

std::ostream& operator<<(std::ostream& stream, const Parsed& parsed) {
    return stream << parsed.status << " " << textOf(parsed.address) << " %" << parsed.scope << " /"
                  << parsed.prefix << " :" << parsed.port << " '" << parsed.rest << "'";
}

Parsed parsed(const char* text, std::uint32_t flags = 0) {
    Parsed result;
    const char* end = nullptr;
    result.status = StringToIPv6Address(text, flags, result.address.data(), &result.scope,
                                        &result.prefix, &result.port, &end);
    if (end != nullptr) result.rest = end;
    return result;
}

Parsed read(const Groups& groups, const std::string& rest = "") {
    Parsed result;
    result.address = addressOf(groups);
    result.rest = rest;
    return result;
}

Parsed refused(HalvaneStatus status) {
    Parsed result;
    result.status = status;
    return result;
}

TEST(StringToIPv6Address, ReadsGroups) {
    struct Row {
        const char* text;
        Groups groups;
        const char* rest;
    };
    const std::vector<Row> rows = {
        {"1:2:3:4:5:6:7:8", {1, 2, 3, 4, 5, 6, 7, 8}, ""},
        {"2001:DB8:0:ffFF::1", {0x2001, 0xDB8, 0, 0xFFFF, 0, 0, 0, 1}, ""},
        {"::", {}, ""},
        {"::1", {0, 0, 0, 0, 0, 0, 0, 1}, ""},
        {"1::", {1}, ""},
        {"1::8", {1, 0, 0, 0, 0, 0, 0, 8}, ""},
        {"1:2:3::5:6:7:8", {1, 2, 3, 0, 5, 6, 7, 8}, ""},  // a run of one group
        {"::2:3:4:5:6:7:8", {0, 2, 3, 4, 5, 6, 7, 8}, ""},
        {"1:2:3:4:5:6:7::", {1, 2, 3, 4, 5, 6, 7, 0}, ""},
        {"0001:0002::", {1, 2}, ""},
        {"::1.2.3.4", {0, 0, 0, 0, 0, 0, 0x102, 0x304}, ""},
        {"::ffff:10.0.1.5", {0, 0, 0, 0, 0, 0xFFFF, 0xA00, 0x105}, ""},
        {"1:2:3:4:5:6:255.255.255.255", {1, 2, 3, 4, 5, 6, 0xFFFF, 0xFFFF}, ""},
        {"1::3:4:5:6:1.2.3.4", {1, 0, 3, 4, 5, 6, 0x102, 0x304}, ""},
        {"1::5:6:1.2.3.4", {1, 0, 0, 0, 5, 6, 0x102, 0x304}, ""},
        {"::1 and more", {0, 0, 0, 0, 0, 0, 0, 1}, " and more"},
        {"::g", {}, "g"},
        {"1::]", {1}, "]"},  // no '[' leads
        {"::1.2.3.4:80", {0, 0, 0, 0, 0, 0, 0x102, 0x304}, ":80"},
    };
    for (const Row& row : rows) EXPECT_EQ(parsed(row.text), read(row.groups, row.rest)) << row.text;
}

TEST(StringToIPv6Address, RefusesGroupsWithoutTouchingTheOutputs) {
    struct Row {
        const char* text;
        HalvaneStatus status;
    };
    const std::vector<Row> rows = {
        {nullptr, kStatusUnsupported},
        {"", kStatusTooFew},
        {"x", kStatusTooFew},
        {" ::1", kStatusTooFew},
        {"1", kStatusTooFew},
        {"1:2:3:4:5:6:7", kStatusTooFew},
        {"1:2:3:4:5:1.2.3.4", kStatusTooFew},
        {"::1.2.3", kStatusTooFew},
        {"::a.2.3.4", kStatusTooFew},
        {":", kStatusMalformed},
        {":1::", kStatusMalformed},
        {":1:2:3:4:5:6:7", kStatusMalformed},
        {"1:", kStatusMalformed},
        {"1:2:3:4:5:6:7:", kStatusMalformed},
        {"1:2:3:4:5:6:7:8:", kStatusMalformed},
        {"1:2:3:4:5:6:7:8:9", kStatusMalformed},
        {"1::2::3", kStatusMalformed},
        {"1::2::", kStatusMalformed},
        {":::", kStatusMalformed},
        {"1:::2", kStatusMalformed},
        {"1:2:3:4:5:6:7:8::", kStatusMalformed},  // no group is left for the run
        {"::1:2:3:4:5:6:7:8", kStatusMalformed},
        {"1:2:3:4:5:6:7:1.2.3.4", kStatusMalformed},
        {"1::2:3:4:5:6:7.8.9.10", kStatusMalformed},
        {"::1.2.3.4.5", kStatusMalformed},
        {"00001::", kStatusMalformed},
        {"::12345", kStatusOutOfRange},
        {"::1ffff", kStatusOutOfRange},
        {"::256.1.1.1", kStatusOutOfRange},
        {"::1.2.3.999", kStatusOutOfRange},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(parsed(row.text), refused(row.status)) << (row.text ? row.text : "");
    }
}

TEST(StringToIPv6Address, ReadsScopePrefixAndPortInAnyOrder) {
    struct Row {
        const char* text;
        std::uint32_t scope;
        int prefix;
        int port;
        const char* rest;
    };
    constexpr std::uint32_t kNone = 0xEEEEEEEE;
    const std::vector<Row> rows = {
        {"[fe80::1]", kNone, -1, -1, ""},
        {"[fe80::1]:80", kNone, -1, 80, ""},
        {"[fe80::1]:0", kNone, -1, 0, ""},
        {"[fe80::1]:65535", kNone, -1, 65535, ""},
        {"fe80::1/64", kNone, 64, -1, ""},
        {"fe80::1/0", kNone, 0, -1, ""},
        {"fe80::1/128", kNone, 128, -1, ""},
        {"fe80::1%4000000000", kUnknownScope, -1, -1, ""},
        {"fe80::1%4294967295", UINT32_MAX, -1, -1, ""},
        {"fe80::1%000", 0, -1, -1, ""},
        {"fe80::1%4000000000/10", kUnknownScope, 10, -1, ""},
        {"fe80::1/10%4000000000", kUnknownScope, 10, -1, ""},
        {"[fe80::1%4000000000]:80", kUnknownScope, -1, 80, ""},
        {"[fe80::1]%4000000000:80", kUnknownScope, -1, 80, ""},
        {"[fe80::1]%4000000000/10:80", kUnknownScope, 10, 80, ""},
        {"[fe80::1]:80/10", kNone, 10, 80, ""},
        {"[fe80::1/10]:80", kNone, 10, 80, ""},
        {"fe80::1%4000000000 x", kUnknownScope, -1, -1, " x"},
        {"fe80::1%4000000000:80", kUnknownScope, -1, -1, ":80"},  // no ']' is before the ':'
        {"fe80::1/10/11", kNone, 10, -1, "/11"},
        {"[fe80::1]:80:81", kNone, -1, 80, ":81"},
        {"[fe80::1]]", kNone, -1, -1, "]"},
    };
    for (const Row& row : rows) {
        Parsed expected = read({0xFE80, 0, 0, 0, 0, 0, 0, 1}, row.rest);
        expected.scope = row.scope;
        expected.prefix = row.prefix;
        expected.port = row.port;
        EXPECT_EQ(parsed(row.text), expected) << row.text;
    }
}

TEST(StringToIPv6Address, RefusesSuffixesWithoutTouchingTheOutputs) {
    constexpr std::uint32_t kNoPort = kIPv6AddressFlagNoPort;
    constexpr std::uint32_t kNoPrefix = kIPv6AddressFlagNoPrefix;
    constexpr std::uint32_t kNoScope = kIPv6AddressFlagNoScope;
    struct Row {
        const char* text;
        std::uint32_t flags;
        HalvaneStatus status;
    };
    const std::vector<Row> rows = {
        {"[::1", 0, kStatusMalformed},
        {"[::1:80", 0, kStatusMalformed},
        {"[::1/64", 0, kStatusMalformed},
        {"[::1 ]", 0, kStatusMalformed},
        {"[]", 0, kStatusTooFew},
        {"[[::1]]", 0, kStatusTooFew},
        {"[::1]:", 0, kStatusMalformed},
        {"[::1]:x", 0, kStatusMalformed},
        {"[::1]:65536", 0, kStatusOutOfRange},
        {"[::1]:18446744073709551617", 0, kStatusOutOfRange},
        {"::1/", 0, kStatusMalformed},
        {"::1/-1", 0, kStatusMalformed},
        {"::1/129", 0, kStatusOutOfRange},
        {"::1%", 0, kStatusMalformed},
        {"::1%/64", 0, kStatusMalformed},
        {"[::1%]:80", 0, kStatusMalformed},
        {"::1%4294967296", 0, kStatusOutOfRange},
        {"::1%no-such-if", 0, kStatusUnsupported},
        {"::1%a-name-that-is-longer-than-any", 0, kStatusUnsupported},
        {"::1%1x", 0, kStatusUnsupported},
        {"[::1]:80", kNoPort, kStatusForbidden},
        {"::1/64", kNoPrefix, kStatusForbidden},
        {"::1%1", kNoScope, kStatusForbidden},
        {"[::1%1/64]:80", kNoPort, kStatusForbidden},
    };
    for (const Row& row : rows) {
        Parsed result = parsed(row.text, row.flags);
        EXPECT_EQ(result, refused(row.status)) << row.text;
    }
    EXPECT_EQ(parsed("[::1%1/64]:80", kNoPort | kNoPrefix | kNoScope).status, kStatusForbidden);
    EXPECT_EQ(parsed("[::1]", kNoPort | kNoPrefix | kNoScope).status, kStatusOK);
}

// Examples are "(see fe80::1%5)" and "fe80::1%5,fe80::2%6".
TEST(StringToIPv6Address, ReadsAnIndexBeforePunctuation) {
    for (const std::string rest : {")", ",", ",fe80::2%6", ";x", "\"", "!", "'s", "\xE2\x80\x99"}) {
        const Parsed result = parsed(("fe80::1%4000000000" + rest).c_str());
        EXPECT_EQ(result.status, kStatusOK) << rest;
        EXPECT_EQ(result.scope, 4000000000u) << rest;
        EXPECT_EQ(result.rest, rest);
    }
    EXPECT_EQ(parsed("[fe80::1%5,]").status, kStatusMalformed);
    EXPECT_EQ(parsed("fe80::1%5)/64").rest, ")/64");
    EXPECT_EQ(parsed("fe80::1%,5").status, kStatusUnsupported);
    for (const char* text : {"fe80::1%5x", "fe80::1%5.", "fe80::1%5-1", "fe80::1%5_"}) {
        EXPECT_EQ(parsed(text).status, kStatusUnsupported) << text;
    }
}

TEST(StringToIPv6Address, NeedsNoOutputs) {
    EXPECT_EQ(StringToIPv6Address("[::1%7/8]:9", 0, nullptr, nullptr, nullptr, nullptr, nullptr),
              kStatusOK);
}

TEST(StringToIPv6Address, KeepsErrno) {
    errno = EPIPE;
    EXPECT_EQ(parsed("::1%no-such-if").status, kStatusUnsupported);
    EXPECT_EQ(errno, EPIPE);
    EXPECT_EQ(textOf(Address{}, kUnknownScope), "::%4000000000");
    EXPECT_EQ(errno, EPIPE);
}

TEST(IPv6Address, NamesInterfacesAsScopes) {
    char name[IF_NAMESIZE] = {};
    if (if_indextoname(1, name) == nullptr) GTEST_SKIP() << "no interface of index 1";
    const Address address = addressOf({0xFE80, 0, 0, 0, 0, 0, 0, 1});
    EXPECT_EQ(textOf(address, 1), std::string("fe80::1%") + name);
    EXPECT_EQ(textOf(address, 1, 443), std::string("[fe80::1%") + name + "]:443");
    for (const std::string& text : {textOf(address, 1), textOf(address, 1, 443)}) {
        EXPECT_EQ(parsed(text.c_str()).scope, 1u);
        EXPECT_EQ(parsed(text.c_str()).rest, "");
    }
    EXPECT_EQ(parsed((textOf(address, 1) + ")").c_str()).scope, 1u);
    EXPECT_EQ(parsed((textOf(address, 1) + "),").c_str()).rest, "),");
}

TEST(IPv6AddressToCString, ShortensTheFirstLongestRun) {
    struct Row {
        Groups groups;
        const char* text;
    };
    const std::vector<Row> rows = {
        {{}, "::"},
        {{0, 0, 0, 0, 0, 0, 0, 1}, "::1"},
        {{1}, "1::"},
        {{0x2001, 0xDB8, 0, 1, 0, 0, 0, 1}, "2001:db8:0:1::1"},
        {{0x2001, 0xDB8, 0, 1, 1, 1, 0, 1}, "2001:db8::1:1:1:0:1"},  // a single group
        {{1, 0, 0, 4, 5, 0, 0, 8}, "1::4:5:0:0:8"},
        {{0, 2, 3, 4, 5, 6, 7, 0}, "::2:3:4:5:6:7:0"},
        {{1, 2, 3, 4, 5, 6, 7, 0}, "1:2:3:4:5:6:7::"},
        {{1, 0x12, 0x123, 0x1234, 0xA, 0xBC, 0xDEF, 0xFFFF}, "1:12:123:1234:a:bc:def:ffff"},
        {{0, 0, 0, 0, 0, 0xFFFF, 0xA00, 0x105}, "::ffff:10.0.1.5"},
        {{0, 0, 0, 0, 0, 0xFFFF, 0, 0}, "::ffff:0.0.0.0"},
        {{0, 0, 0, 0, 0, 0, 0xA00, 0x105}, "::10.0.1.5"},
        {{0, 0, 0, 0, 0, 0, 0, 2}, "::0.0.0.2"},
        {{0, 0, 0, 0, 1, 0xFFFF, 0xA00, 0x105}, "::1:ffff:a00:105"},
    };
    for (const Row& row : rows) EXPECT_EQ(textOf(addressOf(row.groups)), row.text);
}

TEST(IPv6AddressToCString, BracketsAnAddressWithAPort) {
    const Address address = addressOf({0xFE80, 0, 0, 0, 0, 0, 0, 1});
    EXPECT_EQ(textOf(address, 0, 80), "[fe80::1]:80");
    EXPECT_EQ(textOf(address, kUnknownScope), "fe80::1%4000000000");
    EXPECT_EQ(textOf(address, kUnknownScope, 80), "[fe80::1%4000000000]:80");
    EXPECT_EQ(textOf(address, 0, -1), "fe80::1");
    EXPECT_EQ(textOf(addressOf({1, 2, 3, 4, 5, 6, 7, 8}), 0, INT_MAX),
              "[1:2:3:4:5:6:7:8]:2147483647");
}

// Half of the groups are 0, so that runs of every length and place occur.
Groups anyGroups(std::mt19937& random) {
    Groups groups;
    for (auto& group : groups) {
        group = static_cast<std::uint16_t>(random() % 2 == 0 ? 0 : random() >> random() % 16);
    }
    if (random() % 8 == 0) groups = {0, 0, 0, 0, 0, 0xFFFF, groups[6], groups[7]};
    if (random() % 8 == 0) groups = {0, 0, 0, 0, 0, 0, groups[6], groups[7]};
    return groups;
}

std::size_t longestZeroRun(const Groups& groups) {
    std::size_t longest = 0;
    std::size_t run = 0;
    for (const auto group : groups) {
        run = group == 0 ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

// The departures from inet_ntop: a run of a single zero group is shortened, and "::0.0.0.2" to
// "::0.0.255.255" are written as IPv4 addresses.
TEST(IPv6AddressToCString, AgreesWithTheSystemButForTwoForms) {
    std::mt19937 random(3);
    int compared = 0;
    for (int i = 0; i < 100000; ++i) {
        const Groups groups = anyGroups(random);
        const Address address = addressOf(groups);
        const bool isSmall =
            std::all_of(groups.begin(), groups.end() - 1, [](auto group) { return group == 0; }) &&
            groups[7] > 1;
        char expected[INET6_ADDRSTRLEN];
        ASSERT_NE(inet_ntop(AF_INET6, address.data(), expected, sizeof(expected)), nullptr);
        const std::string text = textOf(address);
        if (longestZeroRun(groups) == 1 || isSmall) {
            ASSERT_NE(text, expected);
        } else {
            ASSERT_EQ(text, expected);
            ++compared;
        }
        Address back;
        ASSERT_EQ(inet_pton(AF_INET6, text.c_str(), back.data()), 1) << text;
        ASSERT_EQ(back, address) << text;
    }
    EXPECT_GT(compared, 50000);
}

TEST(IPv6AddressToCString, IsTheTextOfTheFormattingEngine) {
    std::mt19937 random(4);
    for (int i = 0; i < 1000; ++i) {
        const Address address = addressOf(anyGroups(random));
        char text[64];
        SNPrintF(text, sizeof(text), "%.16a", address.data());
        ASSERT_EQ(textOf(address), text);
    }
}

TEST(IPv6Address, SurvivesTheWayToTextAndBack) {
    std::mt19937 random(5);
    for (int i = 0; i < 20000; ++i) {
        const Address address = addressOf(anyGroups(random));
        const auto scope =
            static_cast<std::uint32_t>(random() % 2 == 0 ? 0 : kUnknownScope + random() % 1000);
        const int port = static_cast<int>(random() % 2 == 0 ? 0 : random() % 65536);
        const Parsed back = parsed(textOf(address, scope, port).c_str());
        ASSERT_EQ(back.status, kStatusOK);
        ASSERT_EQ(back.address, address);
        ASSERT_EQ(back.scope, scope == 0 ? 0xEEEEEEEE : scope);
        ASSERT_EQ(back.port, port == 0 ? -1 : port);
        ASSERT_EQ(back.rest, "");
    }
}

// An address, or pieces of one in any order, sometimes with a stray character.
std::string anyText(std::mt19937& random) {
    constexpr std::string_view kPieces[] = {":",  "::", "0", "1",       "ab",      "FFFF", "12345",
                                            "::", ":",  ".", "1.2.3.4", "1.2.300", "g"};
    std::string text;
    if (random() % 4 == 0) {
        for (auto count = random() % 18; count > 0; --count) {
            text += kPieces[random() % std::size(kPieces)];
            if (random() % 2 == 0) text += ":";
        }
    } else {
        const Address address = addressOf(anyGroups(random));
        char buffer[INET6_ADDRSTRLEN];
        text = inet_ntop(AF_INET6, address.data(), buffer, sizeof(buffer));
    }
    if (random() % 3 == 0 && !text.empty()) {
        constexpr std::string_view kStray = "0123456789abcdefABCDEFg:::...";
        const auto at = random() % text.size();
        const char stray = kStray[random() % kStray.size()];
        switch (random() % 3) {
            case 0:
                text[at] = stray;
                break;
            case 1:
                text.insert(at, 1, stray);
                break;
            default:
                text.erase(at, 1);
        }
    }
    return text;
}

bool hasDottedPartWithLeadingZero(const std::string& text) {
    const auto isDecimal = [](char character) { return character >= '0' && character <= '9'; };
    if (text.find('.') == std::string::npos) return false;
    const auto colon = text.rfind(':');
    for (std::size_t i = colon == std::string::npos ? 0 : colon + 1; i + 1 < text.size(); ++i) {
        const bool isFirst = i == 0 || !isDecimal(text[i - 1]);
        if (isFirst && text[i] == '0' && isDecimal(text[i + 1])) return true;
    }
    return false;
}

// The only difference from inet_pton, apart from text that may follow or surround an address: the
// parts of a dotted address may have leading zeros.
TEST(StringToIPv6Address, AgreesWithTheSystemButForLeadingZeros) {
    std::mt19937 random(6);
    int accepted = 0;
    int refusedCount = 0;
    for (int i = 0; i < 300000; ++i) {
        const std::string text = anyText(random);
        if (hasDottedPartWithLeadingZero(text)) continue;
        Address expected;
        const bool isExpected = inet_pton(AF_INET6, text.c_str(), expected.data()) == 1;
        const Parsed result = parsed(text.c_str());
        ASSERT_EQ(result.status == kStatusOK && result.rest.empty(), isExpected) << text;
        if (isExpected) {
            ASSERT_EQ(result.address, expected) << text;
        }
        ++(isExpected ? accepted : refusedCount);
    }
    EXPECT_GT(accepted, 100000);
    EXPECT_GT(refusedCount, 50000);
}

TEST(StringToIPv6Address, ReadsNothingPastTheTerminator) {
    for (const std::string text : {"[1:2:3::ffff:10.0.1.5%4000000000/64]:8080", "fe80::1%x"}) {
        for (std::size_t size = 0; size <= text.size(); ++size) {
            auto guarded = GuardedBytes::terminated(text.substr(0, size));
            const char* end = guarded.chars();
            StringToIPv6Address(guarded.chars(), 0, nullptr, nullptr, nullptr, nullptr, &end);
            EXPECT_LE(end, guarded.chars() + size);
        }
    }
}

TEST(StringToIPv6Address, EndsOnTextsOfAnyLength) {
    EXPECT_EQ(parsed(std::string(100000, '0').c_str()), refused(kStatusMalformed));
    EXPECT_EQ(parsed(std::string(100000, ':').c_str()), refused(kStatusMalformed));
    EXPECT_EQ(parsed((std::string("::%") + std::string(100000, '1')).c_str()),
              refused(kStatusOutOfRange));
}

}  // namespace
