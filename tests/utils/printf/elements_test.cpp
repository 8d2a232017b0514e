#include <algorithm>
#include <cstddef>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"
#include "tests/utils/printf/test_support.h"

namespace {

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::exactHeapCopy;
using halvane::testing::forEachHostileForm;
using halvane::testing::printed;

std::string elements(const Bytes& bytes, const char* format = "%{ie}") {
    const ByteBuffer copy = exactHeapCopy(bytes);
    return printed(format, copy.bytes().data(), copy.size());
}

TEST(PrintFElements, PrintsNothingForAnEmptyList) {
    EXPECT_EQ(elements({}), "");
    EXPECT_EQ(printed("%{ie}", static_cast<const void*>(nullptr), std::size_t{0}), "");
    EXPECT_EQ(printed("%{ie}", static_cast<const void*>(nullptr), std::size_t{4}), "<<NULL>>");
}

// The start of a beacon's element list.
TEST(PrintFElements, NamesTheElementsOfABeacon) {
    EXPECT_EQ(elements({
                  0x00, 0x04, 'H',  'o',  'm',  'e',                           // SSID
                  0x01, 0x08, 0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24,  // Supported Rates
                  0x03, 0x01, 0x06,                                            // DS Parameter Set
                  0x05, 0x04, 0x00, 0x01, 0x00, 0x00,                          // TIM
                  0x32, 0x04, 0x30, 0x48, 0x60, 0x6C,                          // Extended Rates
              }),
              "  0 SSID                        'Home'\n"
              "  1 Supported Rates             82848b96 0c121824                   "
              "|^^^^^^^$        | (8 bytes)\n\n"
              "  3 DS Parameter Set            06                                  "
              "|^               | (1 bytes)\n\n"
              "  5 <<UNKNOWN>>                 00010000                            "
              "|^^^^            | (4 bytes)\n\n"
              " 50 Extended Supported Rates    3048606c                            "
              "|0H`l            | (4 bytes)\n\n");
}

TEST(PrintFElements, IndentsByTheWidth) {
    EXPECT_EQ(elements({0, 1, 'a'}, "%2{ie}"), "          0 SSID                        'a'\n");
    EXPECT_EQ(elements({0, 0}, "%{IE}"), "  0 SSID                        ''\n");
}

TEST(PrintFElements, PrintsLongBodiesOnLinesOfTheirOwn) {
    Bytes element = {48, 20};
    element.insert(element.end(), 20, 'R');
    EXPECT_EQ(elements(element),
              " 48 <<UNKNOWN>>                 \n"
              "        +0000: 52525252 52525252 52525252 52525252 |RRRRRRRRRRRRRRRR| (20 bytes)\n"
              "        +0010: 52525252                            |RRRR            |\n\n");
    EXPECT_EQ(elements({70, 0}), " 70 <<UNKNOWN>>                 (0 bytes)\n\n");
}

TEST(PrintFElements, CutsAnSSIDAtACharacter) {
    EXPECT_EQ(elements({0, 2, 'a', 0xC3}), "  0 SSID                        'a'\n");
    EXPECT_EQ(elements({0, 3, 'a', 0xC3, 0xA9}), "  0 SSID                        'a\xC3\xA9'\n");
}

TEST(PrintFElements, StopsAtABrokenHeaderOrLength) {
    EXPECT_EQ(elements({0, 1, 'a', 1}),
              "  0 SSID                        'a'\n"
              "### bad IE header:\n"
              "        01                                  |^               | (1 bytes)\n\n");
    EXPECT_EQ(elements({0, 1, 'a', 1, 3, 4, 5}, "%1{ie}"),
              "      0 SSID                        'a'\n"
              "### bad IE length:\n"
              "        01030405                            |^^^^            | (4 bytes)\n\n");
}

TEST(PrintFElements, DecodesTheGeneralElement) {
    EXPECT_EQ(elements({221, 7, 0x0A, 0x7E, 0x56, 1, 115, 0x12, 0xAB}),
              "221 Tessic General IE           product ID 115 flags 0x12ab\n");
    EXPECT_EQ(elements({221, 9, 0x0A, 0x7E, 0x56, 1, 1, 0, 0, 9, 9}),
              "221 Tessic General IE           product ID 1 flags 0x0\n");
    EXPECT_EQ(elements({221, 6, 0x0A, 0x7E, 0x56, 1, 115, 0x12}),
              "### bad Tessic General IE:\n"
              "        7312                                |s^              | (2 bytes)\n\n");
}

TEST(PrintFElements, DecodesTheDWDSElement) {
    EXPECT_EQ(elements({221, 6, 0x0A, 0x7E, 0x55, 1, 0x41, 0x42}),
              "221 DWDS                        4142                                "
              "|AB              | (2 bytes)\n\n");
}

TEST(PrintFElements, DecodesTheEasyConnectElement) {
    EXPECT_EQ(elements({221, 41, 0x0A, 0x7E, 0x55, 3,  //
                        0,   3,  'B',  'o',  'b',      //
                        1,   2,  'M',  '1',            //
                        2,   1,  0x80,                 //
                        3,   1,  't',                  //
                        4,   1,  'x',                  //
                        5,   1,  's',                  //
                        6,   1,  0x01,                 //
                        7,   1,  0x02,                 //
                        8,   1,  0x03,                 //
                        9,   5,  1,    2,    3,    4, 5}),
              "221 EasyConnect                \n"
              "        Name                    'Bob'\n"
              "        Model                   'M1'\n"
              "        Flags                   80                                  "
              "|^               | (1 bytes)\n"
              "        OfferSubTypes           't'\n"
              "        OfferTXT                78                                  "
              "|x               | (1 bytes)\n"
              "        SearchTypes             's'\n"
              "        AuthorizedMACs          01                                  "
              "|^               | (1 bytes)\n"
              "        ConfigMethods           02                                  "
              "|^               | (1 bytes)\n"
              "        <<UNKNOWN>>             03                                  "
              "|^               | (1 bytes)\n"
              "        <<UNKNOWN>>             01020304 05                         "
              "|^^^^^           | (5 bytes)\n");
}

TEST(PrintFElements, IndentsSubElementsByEightMore) {
    EXPECT_EQ(elements({221, 7, 0x0A, 0x7E, 0x55, 3, 0, 1, 'B'}, "%1{ie}"),
              "    221 EasyConnect                \n"
              "            Name                    'B'\n");
    Bytes longFlags = {221, 24, 0x0A, 0x7E, 0x55, 3, 2, 18};
    longFlags.insert(longFlags.end(), 18, 'F');
    EXPECT_EQ(
        elements(longFlags, "%1{ie}"),
        "    221 EasyConnect                \n"
        "            Flags                   \n"
        "            +0000: 46464646 46464646 46464646 46464646 |FFFFFFFFFFFFFFFF| (18 bytes)\n"
        "            +0010: 4646                                |FF              |\n");
}

TEST(PrintFElements, ReportsBrokenEasyConnectElementsAndGoesOn) {
    EXPECT_EQ(elements({221, 5, 0x0A, 0x7E, 0x55, 3, 0, 0, 1, 'a'}),
              "221 EasyConnect                \n"
              "### EasyConnect IE too small for header:\n"
              "        00                                  |^               | (1 bytes)\n\n"
              "  0 SSID                        'a'\n");
    EXPECT_EQ(elements({221, 7, 0x0A, 0x7E, 0x55, 3, 0, 2, 'B', 0, 1, 'a'}),
              "221 EasyConnect                \n"
              "### EasyConnect IE bad length:\n"
              "        000242                              |^^B             | (3 bytes)\n\n"
              "  0 SSID                        'a'\n");
}

TEST(PrintFElements, DecodesTheWPSElement) {
    EXPECT_EQ(elements({221, 15, 0x00, 0x50, 0xF2, 4,          //
                        0x10, 0x4A, 0x00, 0x01, 0x10,          // Version
                        0x10, 0x08, 0x00, 0x02, 0x26, 0x88}),  // Config Methods
              "221 WPS                        \n"
              "        <<UNKNOWN>>             10                                  "
              "|^               | (1 bytes)\n"
              "        ConfigMethods           2688                                "
              "|&^              | (2 bytes)\n");
    EXPECT_EQ(elements({221, 7, 0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0x00}),
              "221 WPS                        \n"
              "### WPS TLV too small for header:\n"
              "        104a00                              |^J^             | (3 bytes)\n\n");
    EXPECT_EQ(elements({221, 9, 0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0x01, 0x01, 0x41}),
              "221 WPS                        \n"
              "### WPS TLV bad length:\n"
              "        104a0101 41                         |^J^^A           | (5 bytes)\n\n");
}

TEST(PrintFElements, PrintsOtherVendorsWhole) {
    for (const Bytes& start : {Bytes{0x00, 0x50, 0xF2, 1}, Bytes{0x0A, 0x7E, 0x55, 2},
                               Bytes{0x0A, 0x7E, 0x56, 3}, Bytes{0x00, 0x0F, 0xAC, 4}}) {
        Bytes element = {221, 4};
        element.insert(element.end(), start.begin(), start.end());
        const std::string text = elements(element);
        EXPECT_TRUE(text.starts_with("221 <<UNKNOWN VENDOR>           " +
                                     printed("%.3H ", start.data(), 4, 4)))
            << text;
    }
}

TEST(PrintFElements, ReportsAVendorElementThatIsTooShort) {
    EXPECT_EQ(elements({221, 3, 0x00, 0x50, 0xF2, 0, 0}),
              "### bad vendor IE:\n"
              "        0050f2                              |^P^             | (3 bytes)\n\n"
              "  0 SSID                        ''\n");
}

struct KnownVendor {
    Bytes start;  // OUI and type
    const char* name;
};
const std::vector<KnownVendor> kKnownVendors = {
    {{0x0A, 0x7E, 0x56, 1}, "Tessic General IE"},
    {{0x0A, 0x7E, 0x55, 1}, "DWDS"},
    {{0x0A, 0x7E, 0x55, 3}, "EasyConnect"},
    {{0x00, 0x50, 0xF2, 4}, "WPS"},
};

// The output for an element that is not a vendor element of four bytes or more.
std::string plainElement(int id, const Bytes& body) {
    const int size = static_cast<int>(body.size());
    if (id == 221) {
        return printed("### bad vendor IE:\n%2.1H\n", body.data(), size, size);
    }
    if (id == 0) return printed("  0 %-27s '%.*s'\n", "SSID", size, body.data());
    const char* name = id == 1    ? "Supported Rates"
                       : id == 3  ? "DS Parameter Set"
                       : id == 50 ? "Extended Supported Rates"
                                  : "<<UNKNOWN>>";
    return printed("%3d %-27s %2.2H\n", id, name, body.data(), size, size);
}

// A body that ends within its OUI has no type, whatever its first bytes are.
TEST(PrintFElements, PrintsEveryElementWithEveryShortBody) {
    constexpr std::size_t kLongestBody = 6;
    constexpr std::size_t kVendorStart = 4;
    for (const KnownVendor& vendor : kKnownVendors) {
        Bytes named = vendor.start;
        named.resize(kLongestBody);
        const Bytes repeated(kLongestBody, vendor.start.back());
        for (const Bytes& whole : {named, repeated}) {
            for (int id = 0; id <= 0xFF; ++id) {
                for (std::size_t size = 0; size <= kLongestBody; ++size) {
                    const Bytes body(whole.begin(), whole.begin() + static_cast<int>(size));
                    Bytes element = {static_cast<std::uint8_t>(id),
                                     static_cast<std::uint8_t>(size)};
                    element.insert(element.end(), body.begin(), body.end());
                    const std::string text = elements(element);
                    if (id != 221 || size < kVendorStart) {
                        EXPECT_EQ(text, plainElement(id, body)) << id << ' ' << size;
                    } else if (whole == repeated) {
                        EXPECT_TRUE(text.starts_with("221 <<UNKNOWN VENDOR>")) << text;
                    } else if (vendor.start == kKnownVendors[0].start) {  // no flags
                        EXPECT_TRUE(text.starts_with("### bad Tessic General IE:\n")) << text;
                    } else {
                        EXPECT_TRUE(text.starts_with(printed("221 %-27s", vendor.name))) << text;
                    }
                }
            }
        }
    }
}

TEST(PrintFElements, SurvivesHostileLists) {
    const Bytes beacon = {0, 2, 'a', 'b', 1, 1, 0x82, 221, 7, 0x0A, 0x7E, 0x56, 1, 1, 2, 3};
    const Bytes easyConnect = {221, 11, 0x0A, 0x7E, 0x55, 3, 0, 1, 'B', 2, 2, 1, 2};
    const Bytes wps = {221, 13, 0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0, 1, 0x10, 0x10, 0x08, 0, 0};
    const auto check = [](const ByteBuffer& bytes) {
        const std::string text = printed("%{ie}", bytes.bytes().data(), bytes.size());
        EXPECT_EQ(text.empty(), bytes.empty());
        EXPECT_LT(text.size(), 1000u);
    };
    forEachHostileForm(beacon, {1, 5, 8}, check);
    forEachHostileForm(easyConnect, {1, 7, 10}, check);
    forEachHostileForm(wps, {1, 8, 9, 13, 14}, check);
}

}  // namespace
