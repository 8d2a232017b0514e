#include "tools/halvane/output/air_text.h"

#include <gtest/gtest.h>
#include <string>

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
using halvane::testing::joined;
using halvane::testing::rsnElement;
using halvane::testing::ssidElement;
using namespace halvane::air;
using namespace halvane::tool;

namespace {

constexpr FixedFields kFixed = {MacAddress({2, 0, 0, 0, 8, 0x20}), 0x0011, 100};

TEST(AirText, ListsValuesAlone) {
    const std::string text =
        airText(profileOf(joined({ssidElement("net"), rsnElement(2)}), kFixed));
    EXPECT_NE(text.find("    Security         WPA2-Personal\n"), std::string::npos) << text;
    EXPECT_EQ(text.find('@'), std::string::npos) << text;
}

// The name of a network that shares the beacon, and the country, come from the air.
TEST(AirText, EscapesWhatComesFromTheAir) {
    const Bytes octets = joined({ssidElement("net"), element(7, {0x1B, 0x5B, 0x20, 1, 13, 20}),
                                 element(71, bytesOf("02 00 0E 53020100 00051B5B6DE280 550102"))});
    const std::string text = airText(profileOf(octets, kFixed));
    EXPECT_NE(text.find("\\x1B[m\\xE2\\x80, 02:00:00:00:08:22, Open\n"), std::string::npos) << text;
    for (const std::string& each : {text, findingLines(profileOf(octets, kFixed))}) {
        EXPECT_EQ(each.find('\x1B'), std::string::npos) << each;
        EXPECT_EQ(each.find('\xE2'), std::string::npos) << each;
    }
}

TEST(AirText, WritesAddressesInCapitals) {
    const Bytes octets =
        joined({ssidElement("net"), element(255, bytesOf("6B 0000 07 020000000A01")),
                element(71, bytesOf("04 00 0C 53020100 0003616263 55010B"))});
    const std::string text = airText(profileOf(octets, kFixed));
    EXPECT_NE(text.find("    MLD              02:00:00:00:0A:01\n"), std::string::npos) << text;
    EXPECT_NE(text.find("abc, 02:00:00:00:08:2B, "), std::string::npos) << text;
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
