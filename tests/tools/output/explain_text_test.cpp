#include "tools/halvane/output/explain_text.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

#include "halvane/air/bss_profile.h"
#include "halvane/air/profile.h"
#include "halvane/base/mac_address.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::htOperationElement;
using halvane::testing::joined;
using halvane::testing::rsnElement;
using halvane::testing::ssidElement;
using halvane::testing::wpaElement;
using namespace halvane::air;
using namespace halvane::tool;

namespace {

constexpr FixedFields kFixed = {MacAddress({2, 0, 0, 0, 8, 0x20}), 0x0011, 100};

std::string explained(const Bytes& elements) {
    return explainText(profileOf(elements, kFixed), elements);
}

// The lines that begin with `head`, and those that go on.
std::string rowOf(const std::string& text, std::string_view head) {
    std::istringstream lines(text);
    std::string row;
    for (std::string line; std::getline(lines, line);) {
        const bool isNew = line.starts_with(head) && row.empty();
        const bool isOn = !row.empty() && line.starts_with(' ');
        if (!row.empty() && !isOn) break;
        if (isNew || isOn) row += line + '\n';
    }
    return row;
}

TEST(ExplainText, AlignsValuesAndReasons) {
    const std::string text =
        explained(joined({ssidElement("net"), htOperationElement(36, 5), rsnElement(2)}));
    EXPECT_EQ(rowOf(text, "Band"),
              "Band        5 GHz                       HT Operation @5: The channel number: up\n"
              "                                        to 14 at 2.4 GHz, above at 5 GHz. No\n"
              "                                        element speaks of 6 GHz.\n");
    EXPECT_EQ(rowOf(text, "Channel"),
              "Channel     36, 5180 MHz                HT Operation @5: The primary channel of\n"
              "                                        HT Operation.\n");
    EXPECT_EQ(rowOf(text, "Width"),
              "Width       40 MHz, centre 5190         HT Operation @5: The secondary channel\n"
              "                                        offset of HT Operation.\n");
    EXPECT_EQ(rowOf(text, "Keys"), "Keys        PSK                         RSN @29\n");
    EXPECT_EQ(rowOf(text, "Ciphers"), "Ciphers     CCMP-128; group CCMP-128    RSN @29\n");
}

TEST(ExplainText, KeepsLinesWithin80Columns) {
    for (const std::string& text :
         {explained({}), explained(joined({ssidElement("net"), rsnElement(8), wpaElement(2),
                                           element(71, bytesOf("0200 0B 53020100 000167 550101"
                                                               ""))}))}) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
    }
}

TEST(ExplainText, NamesVendorElementsByTheirKind) {
    const std::string text = explained(joined({ssidElement("net"), wpaElement(2)}));
    EXPECT_EQ(rowOf(text, "Security"),
              "Security    WPA-Personal                WPA @5: The key management suites of\n"
              "                                        WPA; there is no RSN element.\n");
    EXPECT_NE(text.find("wpa-only, clause 12.5.2; WPA @5\n"), std::string::npos) << text;
}

TEST(ExplainText, NamesSourcesThatAreNoElements) {
    EXPECT_EQ(rowOf(explained(ssidElement("net")), "Security"),
              "Security    WEP                         capabilities: The privacy bit is set,\n"
              "                                        and no element tells of keys: WEP.\n");
}

TEST(ExplainText, EndsWithFindingsAndTheirAdvice) {
    const std::string text = explained(joined({ssidElement(""), rsnElement(2)}));
    const auto findings = text.find("\n\n");
    ASSERT_NE(findings, std::string::npos);
    EXPECT_EQ(text.substr(findings + 2),
              "note        Management frames are not protected: anybody can send stations away.\n"
              "            Set PMF to capable, or to required with WPA3.\n"
              "            pmf-off, clause 9.4.2.24.4; RSN @2\n"
              "note        A hidden name protects nothing: stations call it out instead.\n"
              "            Show the name.\n"
              "            hidden-name, clause 9.4.2.2; SSID @0\n");
}

// The name of a network that shares the beacon, and the country, come from the air.
TEST(ExplainText, EscapesWhatComesFromTheAir) {
    const Bytes octets = joined({ssidElement("net"), element(7, {0x1B, 0x5B, 0x20, 1, 13, 20}),
                                 element(71, bytesOf("02 00 0E 53020100 00051B5B6DE280 550101"))});
    const std::string text = explained(octets);
    EXPECT_NE(text.find("\\x1B["), std::string::npos) << text;
    EXPECT_NE(text.find("Also        \\x1B[m\\xE2\\x80, 02:00:00:00:08:21, "), std::string::npos)
        << text;
    for (const std::string& each :
         {text, airText(profileOf(octets, kFixed)), findingLines(profileOf(octets, kFixed))}) {
        EXPECT_EQ(each.find('\x1B'), std::string::npos) << each;
        EXPECT_EQ(each.find('\xE2'), std::string::npos) << each;
    }
}

TEST(ExplainText, PutsAReasonBelowALongValue) {
    const Bytes octets = joined(
        {ssidElement("net"),
         element(71, bytesOf("02 00 19 53020100 0010 61616161616161616161616161616161 550101"))});
    EXPECT_EQ(rowOf(explained(octets), "Also"),
              "Also        aaaaaaaaaaaaaaaa, 02:00:00:00:08:21, Open\n"
              "                                        The transmitted BSSID with its low bits\n"
              "                                        advanced by the index, without a carry.\n");
}

TEST(ExplainText, WrapsALongValue) {
    // RM Enabled Capabilities, Extended Capabilities (BSS Transition), Mobility Domain,
    // Interworking, Mesh ID; WMM with U-APSD, Wi-Fi Direct, WPS.
    const std::string text = explained(joined(
        {ssidElement("net"), element(70, bytesOf("7200000000")), element(54, bytesOf("010200")),
         element(107, bytesOf("00")), element(114, bytesOf("61")),
         element(127, bytesOf("0000080000000000")), element(221, bytesOf("0050F204 1044000102")),
         element(221, bytesOf("0050F202 0101 80 00 03A40000 27A40000 42435E00 62322F00")),
         element(221, bytesOf("506F9A09 020200 0000"))}));
    EXPECT_EQ(rowOf(text, "Features"),
              "Features    802.11k, 802.11v, WMM, U-APSD, Wi-Fi Direct, WPS, WPS configured,\n"
              "            mesh, Interworking\n");
}

TEST(AirText, ListsValuesAlone) {
    const std::string text =
        airText(profileOf(joined({ssidElement("net"), rsnElement(2)}), kFixed));
    EXPECT_NE(text.find("    Security         WPA2-Personal\n"), std::string::npos) << text;
    EXPECT_EQ(text.find('@'), std::string::npos) << text;
}

TEST(FindingLines, HasALineForEach) {
    EXPECT_EQ(
        findingLines(profileOf(joined({ssidElement(""), rsnElement(2)}), kFixed)),
        "    note     pmf-off: Management frames are not protected: anybody can send stations "
        "away.\n"
        "    note     hidden-name: A hidden name protects nothing: stations call it out "
        "instead.\n");
}

}  // namespace
