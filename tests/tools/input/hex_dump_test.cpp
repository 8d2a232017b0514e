#include "tools/halvane/input/hex_dump.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

using halvane::tool::readHexDump;

namespace {

using Octets = std::vector<std::uint8_t>;

Octets counting(std::size_t size) {
    Octets octets(size);
    for (std::size_t i = 0; i < size; ++i) octets[i] = static_cast<std::uint8_t>(0x61 + i);
    return octets;
}

struct Row {
    std::string_view format;
    std::string_view text;
    std::size_t size;
};

// 18 octets from 61 on in each of the forms.
const Row kRows[] = {
    {"", "6162636465666768696A6B6C6D6E6F707172", 18},
    {"", "61 62 63 64 65 66 67 68\n69 6a 6b 6c 6d 6e 6f 70\r\n71 72\n", 18},
    {"", "61:62:63:64", 4},
    {"", "0x61, 0x62, 0x63,\n0x64", 4},
    {"", "\"\\x61\\x62\" \\\n\"\\x63\\x64\"", 4},
    {"", "{0x61,0x62}", 2},
    {"", "static const unsigned char f00d[2] = { /* face */\n0x61, /* a */ 0x62 // b\n};\n", 2},
    {"", "unsigned char beacon_bin[] = {\n  0x61, 0x62\n};\nunsigned int beacon_bin_len = 2;\n", 2},
    {"", "", 0},
    {"xxd",
     "00000000: 6162 6364 6566 6768 696a 6b6c 6d6e 6f70  abcdefghijklmnop\n"
     "00000010: 7172                                     qr\n",
     18},
    {"xxd", "00000000: 6162                                     ab\n", 2},
    {"hexdump",
     "00000000  61 62 63 64 65 66 67 68  69 6a 6b 6c 6d 6e 6f 70  |abcdefghijklmnop|\n"
     "00000010  71 72                                             |qr|\n"
     "00000012\n",
     18},
    {"hexdump",
     "0000   61 62 63 64 65 66 67 68 69 6a 6b 6c 6d 6e 6f 70   abcdefghijklmnop\n"
     "0010   71 72                                             qr\n",
     18},
    {"od",
     "0000000 61 62 63 64 65 66 67 68 69 6a 6b 6c 6d 6e 6f 70\n"
     "0000020 71 72\n"
     "0000022\n",
     18},
    {"od",  // -A x
     "000000 61 62 63 64 65 66 67 68 69 6a 6b 6c 6d 6e 6f 70\n"
     "000010 71 72\n"
     "000012\n",
     18},
    {"od", "000000 61 62 63 64  >abcd<\n000004\n", 4},  // -A x -t x1z
    {"od",                                              // -A d
     "0000000 61 62 63 64 65 66 67 68 69 6a 6b 6c 6d 6e 6f 70\n"
     "0000016 71 72\n"
     "0000018\n",
     18},
    {"od",  // wider columns
     "0000000    61  62  63  64  65  66  67  68  69  6a  6b  6c  6d  6e  6f  70\n"
     "0000020    71  72\n"
     "0000022\n",
     18},
    {"tcpdump -x",
     "10:11:12.131415 Beacon (ab) [1.0* Mbit] ESS CH: 6\n"
     "\t0x0000:  6162 6364 6566 6768 696a 6b6c 6d6e 6f70\n"
     "\t0x0010:  7172\n",
     18},
    {"tcpdump -x",
     "\t0x0000:  6162 6364 6566 6768 696a 6b6c 6d6e 6f70  abcdefghijklmnop\n"
     "\t0x0010:  7172                                     qr\n",
     18},
};

TEST(HexDump, ReadsWhatPeoplePaste) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.text);
        const auto dump = readHexDump(row.text);
        ASSERT_TRUE(dump) << dump.error();
        EXPECT_EQ(dump->octets, counting(row.size));
        EXPECT_EQ(dump->format, row.format);
    }
}

// Editors put a mark before the text, and end lines with a carriage return alone.
TEST(HexDump, ReadsAByteOrderMarkAndOtherEndsOfLines) {
    for (const Row& row : kRows) {
        for (const std::string_view end : {"\n", "\r\n", "\r"}) {
            std::string text = "\xEF\xBB\xBF";
            for (const char character : row.text) {
                if (character == '\n') {
                    text += end;
                } else if (character != '\r') {
                    text += character;
                }
            }
            SCOPED_TRACE(text);
            const auto dump = readHexDump(text);
            ASSERT_TRUE(dump) << dump.error();
            EXPECT_EQ(dump->octets, counting(row.size));
            EXPECT_EQ(dump->format, row.format);
        }
    }
    EXPECT_EQ(readHexDump("61\r\n6x").error(), "line 2: '6' has an odd number of digits");
    EXPECT_EQ(readHexDump("61\r6x").error(), "line 2: '6' has an odd number of digits");
}

// The order of the octets in a word is that of the machine which printed it.
TEST(HexDump, TakesNoWordsOfAnUnknownOrder) {
    for (const std::string_view text :
         {"0000000 6261 6463\n0000004\n", "000000 6261 6463\n000004\n", "000000 6261\n",
          "0000000 64636261\n"}) {
        const auto dump = readHexDump(text);
        ASSERT_FALSE(dump) << text;
        EXPECT_EQ(dump.error(), "line 1: words have no known order of octets; print single octets");
    }
}

TEST(HexDump, CountsTheLinesOfOctets) {
    EXPECT_EQ(readHexDump("\n61 62\n\n63\n")->lines, 2u);
    EXPECT_EQ(readHexDump("00000000: 6162\n00000002: 6364\n")->lines, 2u);
    EXPECT_EQ(readHexDump("00000000  61 62  |ab|\n00000002\n")->lines, 1u);
}

TEST(HexDump, ReadsTheElementsThatAScanPrintsUndecoded) {
    const auto dump = readHexDump(
        "BSS 02:00:00:00:00:01(on wlan0)\n"
        "\tSSID: cafe\n"
        "\tUnknown IE (216): 01 02 ff\n"
        "\tVendor specific: OUI 00:10:18, data: 02 00\n");
    ASSERT_TRUE(dump);
    EXPECT_EQ(dump->octets, (Octets{216, 3, 1, 2, 0xFF, 221, 5, 0x00, 0x10, 0x18, 2, 0}));
    EXPECT_EQ(dump->format, "iw -u");
    EXPECT_EQ(dump->lines, 2u);
}

// Extended elements and those of two well-known makers have lines of their own.
TEST(HexDump, ReadsEachLineOfAnUndecodedElement) {
    struct Line {
        std::string_view text;
        Octets octets;
    };
    const Line lines[] = {
        {"\tUnknown IE (68):", {68, 0}},
        {"\tUnknown Extension ID (108): 01 ff", {255, 3, 108, 1, 0xFF}},
        {"\tUnknown Extension ID (106):", {255, 1, 106}},
        {"\tMS/WiFi 0x11, data: 0a", {221, 5, 0x00, 0x50, 0xF2, 0x11, 0x0A}},
        {"\tWFA 0x1c, data: 0b 0c", {221, 6, 0x50, 0x6F, 0x9A, 0x1C, 0x0B, 0x0C}},
        {"\tVendor specific: OUI 8c:fd:f0, data:", {221, 3, 0x8C, 0xFD, 0xF0}},
    };
    for (const Line& line : lines) {
        SCOPED_TRACE(line.text);
        const auto dump = readHexDump(line.text);
        ASSERT_TRUE(dump) << dump.error();
        EXPECT_EQ(dump->octets, line.octets);
        EXPECT_EQ(dump->format, "iw -u");
    }
    for (const std::string_view text :
         {"Unknown IE (256): 01", "Unknown IE (0216): 01", "Unknown IE (): 01",
          "WFA 0x100, data: 01", "Unknown Extension ID (1) 01",
          "Vendor specific: OUI 8c:fd, data: 01"}) {
        EXPECT_FALSE(readHexDump(text)) << text;
    }
}

TEST(HexDump, TakesNoOctetsForOffsets) {
    EXPECT_EQ(readHexDump("00000001: 6162\n").has_value(), true);  // plain: the colon separates
    EXPECT_EQ(readHexDump("00000001: 6162\n")->octets, (Octets{0, 0, 0, 1, 0x61, 0x62}));
    EXPECT_EQ(readHexDump("0003  6162\n")->octets, (Octets{0, 3, 0x61, 0x62}));
}

TEST(HexDump, SaysWhatIsWrongWhere) {
    struct Fault {
        std::string_view text;
        std::string_view error;
    };
    const Fault faults[] = {
        {"61 6", "line 1: '6' has an odd number of digits"},
        {"61\n62 6g", "line 2: '6' has an odd number of digits"},
        {"61\nhello", "line 2: 'h' is no hexadecimal digit"},
        {"u[] = {0x61 /* }", "line 1: 'u' is no hexadecimal digit"},
        {"u[] = {0x61}; v[] = {0x62};", "line 1: 'u' is no hexadecimal digit"},
        {"0x", "line 1: ' ' is no hexadecimal digit"},
        {"00000000: 6162\n00000003: 63\n", "line 2: its offset is 3, but 2 octets stand before it"},
        {"00000000: 6162\n63\n", "line 2: has no offset"},
        {"00000000: 6162\n00000002: 6z\n", "line 2: holds something else than pairs of digits"},
        {"\t0x0000:  6162\nnext packet\n\t0x0000:  6162\n",
         "line 2: another packet begins here; give one"},
    };
    for (const Fault& fault : faults) {
        const auto dump = readHexDump(fault.text);
        ASSERT_FALSE(dump) << fault.text;
        EXPECT_EQ(dump.error(), fault.error);
    }
}

TEST(HexDump, SurvivesAnyCharacterAtEachPlace) {
    constexpr std::string_view kCharacters("\0\t\n\r 09afgx:|>-~\xFF", 18);
    for (const Row& row : kRows) {
        for (std::size_t place = 0; place < row.text.size(); ++place) {
            std::string text(row.text);
            for (const char character : kCharacters) {
                text[place] = character;
                const auto dump = readHexDump(text);
                EXPECT_TRUE(dump || !dump.error().empty());
            }
        }
    }
}

TEST(HexDump, TellsTheNetworksOfAScanApart) {
    using halvane::tool::HexPart;
    const auto partsOf = [](std::string_view text) { return readHexDump(text)->parts; };
    const std::string first = "BSS 02:00:00:00:00:0a(on wlan0)\n\tUnknown IE (3): 06\n";
    EXPECT_EQ(partsOf(first), (std::vector<HexPart>{{"02:00:00:00:00:0A", 0}}));
    EXPECT_EQ(partsOf(first + "BSS 02:00:00:00:00:0b(on wlan0)\n" + first +
                      "BSS 02:00:00:00:00:0c(on wlan0)\n"),
              (std::vector<HexPart>{{"02:00:00:00:00:0A", 0}, {"02:00:00:00:00:0A", 3}}));
    EXPECT_EQ(partsOf("Unknown IE (3): 01\n" + first),
              (std::vector<HexPart>{{"", 0}, {"02:00:00:00:00:0A", 3}}));
    EXPECT_TRUE(partsOf("\tBSS Load:\n\tUnknown IE (3): 01\n").empty());
    EXPECT_TRUE(partsOf("0x0000:  0301 06\n").empty());
}

// xxd -e prints 00 03 61 62 63 03 01 06 30 02 01 so.
TEST(HexDump, RefusesGroupsThatAreTurnedRound) {
    for (const std::string_view text :
         {"00000000: 62610300 06010363   010230           ..abc...0..\n",
          "00000000: 0300 6261 0363 0601 0230   01            ..abc...0..\n",
          "00000000: 0601036362610300           010230  ..abc...0..\n"}) {
        const auto dump = readHexDump(text);
        ASSERT_FALSE(dump.has_value()) << text;
        EXPECT_EQ(dump.error(),
                  "line 1: its groups are little-endian (xxd -e); print single octets");
    }
}

// The same octets by xxd, -g1, -g4 and -g8; and letters that end with a blank.
TEST(HexDump, ReadsGroupsOfEachSize) {
    const std::vector<std::uint8_t> octets = {0, 3, 'a', 'b', 'c', 3, 1, 6, '0', 2, 1};
    for (const std::string_view text :
         {"00000000: 0003 6162 6303 0106 3002 01              ..abc...0..\n",
          "00000000: 00 03 61 62 63 03 01 06 30 02 01                 ..abc...0..\n",
          "00000000: 00036162 63030106 300201              ..abc...0..\n",
          "00000000: 0003616263030106 300201             ..abc...0..\n"}) {
        const auto dump = readHexDump(text);
        ASSERT_TRUE(dump.has_value()) << text << dump.error();
        EXPECT_EQ(dump->octets, octets) << text;
    }
    const auto blank = readHexDump("00000000: 0001 2020                                ..  \n");
    ASSERT_TRUE(blank.has_value());
    EXPECT_EQ(blank->octets, (std::vector<std::uint8_t>{0, 1, 0x20, 0x20}));
}

}  // namespace
