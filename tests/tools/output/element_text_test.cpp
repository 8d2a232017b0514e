#include "tools/halvane/output/element_text.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::kElementSamples;
using halvane::testing::kVendorSamples;
using namespace halvane::air;
using namespace halvane::tool;

namespace {

std::string textOf(const Bytes& octets, DamageReport& report, const ElementWish& wish = {}) {
    const ElementList list(octets);
    std::string text;
    for (const Element& element : list.range()) {
        text += elementText(list, element, wish, report);
    }
    return text;
}

std::string textOf(std::string_view hex, const ElementWish& wish = {}) {
    DamageReport report;
    return textOf(bytesOf(hex), report, wish);
}

TEST(ElementText, BeginsWithOctetNumberAndLength) {
    EXPECT_EQ(elementTitles(), "OCTET ID      LEN");
    EXPECT_EQ(textOf("0003636166 030106"),
              "    0 0         3 SSID: caf\n"
              "    5 3         1 DS Parameter Set: channel 6\n");
    EXPECT_EQ(textOf("FF023B00").substr(0, 19), "    0 255/59    1 H");
}

TEST(ElementText, ShowsTheOctetsOfUnknownElements) {
    EXPECT_EQ(textOf("02020A0B"),
              "    0 2         2 Reserved (2)\n"
              "                  0A 0B\n");
    EXPECT_EQ(textOf("0200"), "    0 2         0 Reserved (2)\n");
    EXPECT_EQ(textOf("0212" + std::string(36, '0')),
              "    0 2        18 Reserved (2)\n"
              "                  00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00\n"
              "                  00 00\n");
}

TEST(ElementText, ShowsTheOctetsOfKnownElementsIfAsked) {
    EXPECT_EQ(textOf("030106", {.hasOctets = true}),
              "    0 3         1 DS Parameter Set: channel 6\n"
              "                  06\n");
}

// BSS Load has five octets; the third is not followed by the last two.
TEST(ElementText, PointsAtTheOctetThatIsDamaged) {
    EXPECT_EQ(textOf("030106 0B03 0100 80"),
              "    0 3         1 DS Parameter Set: channel 6\n"
              "    3 11        3 BSS Load: Station Count 1; Channel Utilization 128 /255\n"
              "x   8             the element ends inside the field that begins here\n"
              "                  0B 03 01 00 80\n"
              "                                 ^^ octet 8\n");
}

TEST(ElementText, PointsIntoVendorElements) {
    const std::string text = textOf("DD06 0050F201 0100");
    EXPECT_EQ(text.find("x "), std::string::npos) << text;
    const std::string damaged = textOf("DD05 0050F201 01");
    EXPECT_NE(damaged.find("x   6 "), std::string::npos) << damaged;
}

TEST(ElementText, TellsOfOctetsThatMakeNoElement) {
    const auto told = [](std::string_view hex) {
        const Bytes octets = bytesOf(hex);
        const ElementList list(octets);
        return trailingText(list, list.range().trailing(), {});
    };
    EXPECT_EQ(told("030106 3014 0100"),
              "x   3 48       20 RSN: 20 octets are told, 2 are left\n"
              "                  30 14 01 00\n"
              "                     ^^ octet 4: length\n");
    EXPECT_EQ(told("3003 0100"),
              "x   0 48        3 RSN: 3 octets are told, 2 are left\n"
              "                  30 03 01 00\n"
              "                     ^^ octet 1: length\n");
    EXPECT_EQ(told("030106 30"),
              "x   3             one octet is left, which makes no element\n"
              "                  30\n"
              "                  ^^ octet 3\n");
}

TEST(ElementText, NotesDamage) {
    DamageReport report;
    textOf(bytesOf("030106"), report);
    EXPECT_EQ(report.count, 0u);
    textOf(bytesOf("030106 0B03 0100 80 0B03 0100 80"), report);
    EXPECT_EQ(report.count, 2u);
    EXPECT_EQ(report.firstOctet, 8u);
    EXPECT_EQ(report.firstProblem,
              "octet 8: the element BSS Load ends inside the field that begins there");
}

TEST(ElementText, ExplainsTheElementsOfProfiles) {
    EXPECT_EQ(textOf("030106 470F 02 000C 53021104 0003616263 550101"),
              "    0 3         1 DS Parameter Set: channel 6\n"
              "    3 71       15 Multiple BSSID: MaxBSSID Indicator 2\n"
              "                      Subelement: Subelement ID 0 (Nontransmitted BSSID\n"
              "                        Profile); Length 12\n"
              "    8     83        2 Nontransmitted BSSID Capability\n"
              "                          Nontransmitted BSSID Capability: ESS; Reserved 0;\n"
              "                            Privacy; Short Slot Time; Reserved 0\n"
              "   12     0         3 SSID: abc\n"
              "   17     85        1 Multiple BSSID-Index: BSSID Index 1\n");
    EXPECT_EQ(textOf("FF196B 0000 07 020000000A01 000D 0100 01 1104 030124 0003616263"),
              "    0 255/107  24 Multi-Link\n"
              "                      Multi-Link Control: Type 0 (Basic); Reserved 0\n"
              "                      Common Info: Common Info Length 7; MLD MAC Address\n"
              "                        02:00:00:00:0A:01\n"
              "                      Link Info: Subelement ID 0 (Per-STA Profile); Length 13\n"
              "                        STA Control: Link ID 1; Reserved 0\n"
              "                        STA Info: STA Info Length 1\n"
              "                      STA Profile begins with 1104\n"
              "   19     3         1 DS Parameter Set: channel 36\n"
              "   22     0         3 SSID: abc\n");
}

TEST(ElementText, PointsAtDamageInProfiles) {
    DamageReport report;
    EXPECT_EQ(textOf(bytesOf("030106 470C 02 0009 0B03 0100 80 0104 82 96"), report),
              "    0 3         1 DS Parameter Set: channel 6\n"
              "    3 71       12 Multiple BSSID: MaxBSSID Indicator 2\n"
              "                      Subelement: Subelement ID 0 (Nontransmitted BSSID\n"
              "                        Profile); Length 9\n"
              "    8     11        3 BSS Load: Station Count 1; Channel Utilization 128 /255\n"
              "x  13                 the element ends inside the field that begins here\n"
              "                      0B 03 01 00 80\n"
              "                                     ^^ octet 13\n"
              "x  13     1         4 Supported Rates and BSS Membership Selectors: 4 octets are\n"
              "                        told, 2 are left\n"
              "                      01 04 82 96\n"
              "                         ^^ octet 14: length\n");
    EXPECT_EQ(report.count, 2u);
    EXPECT_EQ(report.firstOctet, 13u);
    EXPECT_EQ(report.firstProblem,
              "octet 13: the element BSS Load ends inside the field that begins there");
}

// ESC, a right-to-left override, an octet that is no UTF-8, a line feed, a C1 control, a backslash.
TEST(ElementText, EscapesNamesOnce) {
    EXPECT_EQ(textOf("000E 1B5B6D E280AE B2 0A C285 5C61 C3A9"),
              "    0 0        14 SSID: "
              "\\x1B[m\\u{202E}\\xB2\\x0A\\u{0085}\\\\a\xC3\xA9\n");
    const std::string device = textOf("DD0A 000B86010300 1B5B 5C E9");
    EXPECT_NE(device.find(" \\x1B[\\\\\\xE9\n"), std::string::npos) << device;
}

// Whatever the octets are, the lines hold neither control characters nor lines that are too long
// for the words in them.
void expectPrintable(const std::string& text) {
    for (const char character : text) {
        const auto octet = static_cast<unsigned char>(character);
        EXPECT_TRUE(octet == '\n' || (octet >= 0x20 && octet != 0x7F)) << text;
    }
    EXPECT_TRUE(text.ends_with('\n'));
}

std::vector<Bytes> sampleElements() {
    std::vector<Bytes> elements;
    for (const auto& sample : kElementSamples) {
        Bytes body = bytesOf(sample.hex);
        if (const auto extension = extensionOf(sample.id)) body.insert(body.begin(), *extension);
        elements.push_back(element(idOctetOf(sample.id), body));
    }
    for (const auto& sample : kVendorSamples) {
        Bytes body = {sample.oui[0], sample.oui[1], sample.oui[2], sample.type};
        const Bytes rest = bytesOf(sample.hex);
        body.insert(body.end(), rest.begin(), rest.end());
        elements.push_back(element(221, body));
    }
    return elements;
}

TEST(ElementText, OfEverySampleIsPrintable) {
    for (Bytes octets : sampleElements()) {
        for (Bytes::size_type place = 2; place < octets.size(); ++place) {
            for (const std::uint8_t octet : Bytes{0x00, 0x1B, 0x9B, 0xFF}) {
                const auto before = std::exchange(octets[place], octet);
                DamageReport report;
                expectPrintable(textOf(octets, report));
                octets[place] = before;
            }
        }
    }
}

// Whether a line could have been broken: behind the margin and the name, or the label of a group,
// it has more than one word. Four octets stay together.
bool couldBeShorter(const std::string& line) {
    constexpr std::size_t kMargin = 18;
    constexpr std::size_t kFourOctets = 11;
    const auto text = line.find_first_not_of(' ');
    const auto label = line.find(": ");
    if (label != std::string::npos) return line.find(' ', label + 2) != std::string::npos;
    const bool isHead = text < kMargin;
    return !isHead && line.size() - text > kFourOctets && line.find(' ', text) != std::string::npos;
}

TEST(ElementText, OfEverySampleFitsEveryWidth) {
    for (const Bytes& octets : sampleElements()) {
        for (std::size_t width = 20; width <= 240; width += width < 84 ? 1 : 12) {
            for (const bool isWhole : {false, true}) {
                DamageReport report;
                std::istringstream lines(textOf(
                    octets, report, {.hasOctets = isWhole, .hasFields = isWhole, .width = width}));
                for (std::string line; std::getline(lines, line);) {
                    if (line.size() <= width) continue;
                    EXPECT_FALSE(couldBeShorter(line)) << width << ": " << line;
                }
            }
        }
    }
}

TEST(ElementText, PutsFewerOctetsInARowWhereTheWidthAsksForIt) {
    const auto rows = [](std::size_t width) {
        return textOf("0208" + std::string(16, 'A'), {.width = width});
    };
    EXPECT_EQ(rows(41), "    0 2         8 Reserved (2)\n" + std::string(18, ' ') +
                            "AA AA AA AA AA AA AA AA\n");
    const std::string four = std::string(18, ' ') + "AA AA AA AA\n";
    EXPECT_EQ(rows(40), "    0 2         8 Reserved (2)\n" + four + four);
    EXPECT_EQ(rows(20), "    0 2         8 Reserved (2)\n" + four + four);
}

TEST(ElementText, ListsNamesWithOctets) {
    const Bytes octets = bytesOf("0003636166 030106 0200");
    EXPECT_EQ(elementNames(ElementRange(octets)),
              "    @0 SSID: 636166\n"
              "    @5 DSSS Parameter Set: 06\n"
              "    @8 Reserved (2): \n");
}

}  // namespace
