#include "halvane/air/profile.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

namespace {

constexpr MacAddress kBssid({0x02, 0x00, 0x00, 0x00, 0x08, 0x20});
constexpr FixedFields kOpen = {kBssid, 0x0001, 100};
constexpr FixedFields kProtected = {kBssid, 0x0011, 100};

Bytes hexElement(std::uint8_t id, std::string_view hex) {
    return element(id, bytesOf(hex));
}
Bytes extended(std::uint8_t extension, std::string_view hex) {
    Bytes body = {extension};
    const Bytes rest = bytesOf(hex);
    body.insert(body.end(), rest.begin(), rest.end());
    return element(255, body);
}

std::vector<std::string> findingIds(const BssProfile& profile) {
    std::vector<std::string> ids;
    for (const Finding& finding : profile.findings) ids.emplace_back(finding.info().id);
    return ids;
}
bool hasFinding(const BssProfile& profile, std::string_view id) {
    const auto ids = findingIds(profile);
    return std::ranges::find(ids, id) != ids.end();
}

// --- Channel ---

// HT Capabilities: 40 MHz, short guard intervals of 20 and 40 MHz, two streams (9.4.2.55).
const Bytes kHt = hexElement(45, "6E00 00 FFFF0000000000000000000000000000 0000 00000000 00");
// VHT Capabilities: short guard interval of 80 MHz, MCS 0 to 9 with two streams (9.4.2.157).
const Bytes kVht = hexElement(191, "20000000 FAFF 0000 FAFF 0000");

Bytes htOperation(std::uint8_t primary, std::uint8_t offset) {
    Bytes body(22, 0);
    body[0] = primary;
    body[1] = offset;
    return element(61, body);
}

TEST(AirProfile, DerivesAChannelOf80Mhz) {
    const auto profile = profileOf(joined({ssidElement("net"), kHt, htOperation(36, 5), kVht,
                                           hexElement(192, "01 2A 00 FCFF")}),
                                   kOpen);
    EXPECT_EQ(**profile.channel.band, Band::Ghz5);
    EXPECT_EQ(profile.channel.band->rule, Rule::BandChannelNumber);
    EXPECT_EQ(**profile.channel.primaryChannel, 36);
    EXPECT_EQ(profile.channel.primaryFrequency, 5180);
    EXPECT_EQ(profile.channel.span->width, 80);
    EXPECT_EQ(profile.channel.span->center1, 5210);
    EXPECT_FALSE(profile.channel.span->center2);
    EXPECT_EQ(profile.channel.span.rule, Rule::WidthVht80);
    EXPECT_EQ(*profile.generation, Generation::WiFi5);
    EXPECT_DOUBLE_EQ((*profile.rates.ht)->mbps(), 300.0);
    EXPECT_DOUBLE_EQ((*profile.rates.vht)->mbps(), 866.7);
    EXPECT_EQ(profile.streams(), 2);
}

// The capabilities deny 160 MHz, but the network uses it: 2 streams, MCS 9, long guard interval.
TEST(AirProfile, TellsTheRateOfVhtAtTheWidthOfTheNetwork) {
    const auto profile =
        profileOf(joined({ssidElement("wide"), element(3, {36}), kHt, htOperation(36, 1), kVht,
                          hexElement(192, "01 2A 32 FCFF")}),
                  kOpen);
    EXPECT_EQ(profile.channel.span->width, 160);
    EXPECT_DOUBLE_EQ((*profile.rates.vht)->mbps(), 1560.0);
}

// Tables 11-23 and 11-24: |CCFS1 - CCFS0| decides, and CCFS2 of HT Operation stands in for CCFS1.
TEST(AirProfile, DerivesWiderChannelsFromTwoCentres) {
    struct Row {
        std::string_view vht;
        std::uint8_t ccfs2;
        int width;
        std::optional<int> center1, center2;
    };
    const Row rows[] = {
        {"00 00 00", 0, 40, 5190, {}},     {"00 2A 00", 0, 40, 5190, {}},
        {"01 2A 00", 0, 80, 5210, {}},     {"01 2A 32", 0, 160, 5250, {}},
        {"01 2A 9B", 0, 160, 5210, 5775},  {"01 2A 3A", 0, 80, 5210, {}},
        {"02 32 00", 0, 160, 5250, {}},    {"03 2A 9B", 0, 160, 5210, 5775},
        {"01 2A 00", 0x32, 160, 5250, {}}, {"01 2A 00", 0x9B, 160, 5210, 5775},
        {"04 2A 32", 0, 40, 5190, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.vht);
        Bytes ht(22, 0);
        ht[0] = 36;
        ht[1] = 5;
        ht[2] = static_cast<std::uint8_t>(row.ccfs2 << 5);
        ht[3] = static_cast<std::uint8_t>(row.ccfs2 >> 3);
        const auto profile = profileOf(
            joined({kHt, element(61, ht), kVht, hexElement(192, std::string(row.vht) + "FCFF")}),
            kOpen);
        EXPECT_EQ(profile.channel.span->width, row.width);
        EXPECT_EQ(profile.channel.span->center1, row.center1);
        EXPECT_EQ(profile.channel.span->center2, row.center2);
    }
}

TEST(AirProfile, TakesNoWidthFromVhtAt2Ghz) {
    const auto profile =
        profileOf(joined({kHt, htOperation(6, 0), kVht, hexElement(192, "01 2A 00 FCFF")}), kOpen);
    EXPECT_EQ(profile.channel.span->width, 20);
    EXPECT_EQ(profile.channel.span->center1, 2437);
    EXPECT_TRUE(hasFinding(profile, "vht-on-2.4"));
}

// HE Operation with 6 GHz Operation Information: primary 57, control 3, CCFS0 55, CCFS1 47.
const Bytes kHeOperation6 = extended(36, "000002 00 FCFF 39 03 37 2F 06");

TEST(AirProfile, DerivesAChannelAt6Ghz) {
    const auto profile = profileOf(joined({ssidElement("six"), kHeOperation6}), kOpen);
    EXPECT_EQ(**profile.channel.band, Band::Ghz6);
    EXPECT_EQ(**profile.channel.primaryChannel, 57);
    EXPECT_EQ(profile.channel.primaryFrequency, 6235);
    EXPECT_EQ(profile.channel.span->width, 160);
    EXPECT_EQ(profile.channel.span->center1, 6185);
    EXPECT_EQ(profile.channel.span.rule, Rule::WidthHe6Ghz);
    EXPECT_TRUE(hasFinding(profile, "6ghz-security"));
}

// EHT Operation: control 4 (320 MHz), CCFS0 47 (the primary 160), CCFS1 63, bits 2 and 3 punctured.
TEST(AirProfile, DerivesAPuncturedChannelOf320Mhz) {
    const auto profile =
        profileOf(joined({kHeOperation6, extended(106, "03 44444444 04 2F 3F 0C00")}), kOpen);
    EXPECT_EQ(profile.channel.span->width, 320);
    EXPECT_EQ(profile.channel.span->center1, 6265);
    EXPECT_EQ(**profile.channel.punctured, 0x000C);
    EXPECT_TRUE(hasFinding(profile, "eht-he-width"));
    EXPECT_FALSE(hasFinding(profile, "puncturing"));
    EXPECT_FALSE(hasFinding(profile, "punctured-primary"));
    // Channel 57 is the seventh 20 MHz from the lowest, 33.
    const auto primaryOut =
        profileOf(joined({kHeOperation6, extended(106, "03 44444444 04 2F 3F 4000")}), kOpen);
    EXPECT_TRUE(hasFinding(primaryOut, "punctured-primary"));
    EXPECT_TRUE(hasFinding(primaryOut, "puncturing"));
}

TEST(AirProfile, KnowsNoChannelWithoutABand) {
    const auto profile = profileOf(extended(106, "01 44444444 04 0F 1F"), kOpen);
    EXPECT_FALSE(profile.channel.band || profile.channel.primaryChannel);
    EXPECT_EQ(profile.channel.span->width, 20);
    EXPECT_FALSE(profile.channel.span->center1);
}

TEST(AirProfile, TakesElementsBeforeTheRadio) {
    const auto heard = profileOf(hexElement(3, "06"), kOpen, {2432});
    EXPECT_EQ(**heard.channel.primaryChannel, 6);
    EXPECT_TRUE(hasFinding(heard, "heard-elsewhere"));
    const auto silent = profileOf(ssidElement("x"), kOpen, {6115});
    EXPECT_EQ(**silent.channel.band, Band::Ghz6);
    EXPECT_EQ(**silent.channel.primaryChannel, 33);
    EXPECT_EQ(silent.channel.primaryChannel->rule, Rule::PrimaryRadio);
}

// --- Security ---

TEST(AirProfile, DerivesSecurityWithItsReasons) {
    const auto profile = profileOf(joined({ssidElement("net"), rsnElement(2)}), kProtected);
    EXPECT_EQ(*profile.security.name, Security::Wpa2Personal);
    EXPECT_EQ(profile.security.name.rule, Rule::SecurityRsn);
    ASSERT_EQ(profile.security.name.sources.size(), 1u);
    EXPECT_EQ(profile.security.name.sources[0].id, ElementId::Rsn);
    EXPECT_EQ(profile.security.name.sources[0].offset, 5u);
    EXPECT_EQ(cipherText(*profile.security.groupCipher), "CCMP-128");
    EXPECT_TRUE(hasFinding(profile, "pmf-off"));
}

TEST(AirProfile, JoinsRsnAndWpa) {
    const auto profile =
        profileOf(joined({rsnElement(2), halvane::testing::wpaElement(2)}), kProtected);
    EXPECT_EQ(*profile.security.name, Security::WpaWpa2Personal);
    EXPECT_EQ(profile.security.akms.size(), 1u);
    EXPECT_EQ(profile.security.pairwiseCiphers.size(), 2u);
    EXPECT_TRUE(hasFinding(profile, "wpa-allowed"));
    EXPECT_TRUE(hasFinding(profile, "tkip-allowed"));
}

TEST(AirProfile, NeverCallsABrokenElementOpen) {
    const auto profile = profileOf(hexElement(48, "0100 000FAC04 FF00 000FAC04"), kOpen);
    EXPECT_EQ(*profile.security.name, Security::Broken);
    EXPECT_TRUE(hasFinding(profile, "suite-count"));
    EXPECT_EQ(profile.findings.front().info().severity, Severity::Error);
    const auto version = profileOf(hexElement(48, "0200"), kProtected);
    EXPECT_EQ(*version.security.name, Security::Broken);
    EXPECT_TRUE(hasFinding(version, "rsn-version"));
}

// RSN offers PSK alone; stations of Wi-Fi 7 take SAE-EXT-KEY from RSN Override 2.
TEST(AirProfile, CountsWhatAnOverrideOffers) {
    const auto profile = profileOf(
        joined({rsnElement(2),
                hexElement(221, "506F9A2A 0100 000FAC09 0100 000FAC09 0100 000FAC18 C000")}),
        kProtected);
    EXPECT_EQ(*profile.security.name, Security::Wpa2Wpa3Personal);
    EXPECT_EQ(profile.security.name.rule, Rule::SecurityRsnOverride);
    EXPECT_TRUE(hasFinding(profile, "rsn-override"));
}

// Each element is judged by its own capabilities: stations that know the override take them from
// there, and hash-to-element from RSNX Override (244 may be missing).
TEST(AirProfile, JudgesAnOverrideByItself) {
    const auto overridden = [](std::string_view capabilities, std::string_view rsnx) {
        return profileOf(
            joined({rsnElement(2),
                    hexElement(221, "506F9A29 0100 000FAC04 0100 000FAC04 0100 000FAC08" +
                                        std::string(capabilities)),
                    hexElement(221, "506F9A2B" + std::string(rsnx))}),
            kProtected);
    };
    const auto whole = overridden("C000", "20");
    EXPECT_EQ(findingIds(whole), (std::vector<std::string>{"ssid-missing", "pmf-off",
                                                           "wpa3-transition", "rsn-override"}));
    EXPECT_EQ(whole.features, Features{Feature::SaeHashToElement});
    const auto faulty = overridden("0000", "00");
    ASSERT_EQ(faulty.findings.front().info().id, "pmf-missing");
    EXPECT_EQ(faulty.findings.front().sources, (Sources{{Origin::Element, ElementId::Vendor, 22}}));
    EXPECT_TRUE(hasFinding(faulty, "sae-without-h2e"));
    EXPECT_TRUE(hasFinding(overridden("8000", "20"), "pmf-not-required"));
    const auto both =
        profileOf(joined({rsnElement(2),
                          hexElement(221, "506F9A29 0100 000FAC04 0100 000FAC04 0100 000FAC06")}),
                  kProtected);
    EXPECT_EQ(findingIds(both),
              (std::vector<std::string>{"ssid-missing", "pmf-off", "rsn-override"}));
    EXPECT_TRUE(hasFinding(overridden("4000", "20"), "pmf-invalid"));
    EXPECT_TRUE(faulty.features.empty());
}

// What OSEN offers is that of the network where there is no RSN element.
TEST(AirProfile, TakesTheSuitesOfOsen) {
    const auto profile = profileOf(
        hexElement(221, "506F9A12 000FAC07 0100 000FAC04 0100 506F9A01 0000"), kProtected);
    EXPECT_EQ(*profile.security.name, Security::Osen);
    EXPECT_EQ(profile.security.akms, (SuiteSet{{{0x50, 0x6F, 0x9A}, 1}}));
    EXPECT_EQ(profile.security.pairwiseCiphers, (SuiteSet{{halvane::kRSNOUI, 4}}));
    EXPECT_EQ(profile.security.groupCipher, (Suite{halvane::kRSNOUI, 7}));
    const auto beside =
        profileOf(joined({rsnElement(2),
                          hexElement(221, "506F9A12 000FAC07 0100 000FAC04 0100 506F9A01 0000")}),
                  kProtected);
    EXPECT_EQ(beside.security.akms, (SuiteSet{{halvane::kRSNOUI, 2}}));
}

// GB 15629.11: a pre-shared key, an unknown AKM, and WPI-SMS4 twice.
TEST(AirProfile, TakesTheSuitesOfWapi) {
    constexpr std::string_view kSuites =
        "0100 0200 00147202 00147263 0200 00147201 00147201 00147201 0000";
    const Bytes wapi = hexElement(68, kSuites);
    const auto security = profileOf(joined({ssidElement("net"), wapi}), kProtected).security;
    EXPECT_EQ(*security.name, Security::Wapi);
    ASSERT_EQ(security.akms.size(), 2u);
    EXPECT_EQ(akmText(security.akms[0]), "WAI-PSK");
    EXPECT_EQ(akmText(security.akms[1]), "00-14-72:99");
    ASSERT_EQ(security.pairwiseCiphers.size(), 1u);
    EXPECT_EQ(cipherText(security.pairwiseCiphers[0]), "WPI-SMS4");
    ASSERT_TRUE(security.groupCipher);
    EXPECT_EQ(cipherText(*security.groupCipher), "WPI-SMS4");
    // RSN comes before it, and brings suites of its own.
    const auto both = profileOf(joined({rsnElement(2), wapi}), kProtected).security;
    EXPECT_EQ(*both.name, Security::Wpa2Personal);
    EXPECT_EQ(both.akms.size(), 1u);
}

TEST(AirProfile, TakesNoSuitesOfADamagedWapi) {
    const Bytes cut = hexElement(68, "0100 0100 00147202 0900 00147201 00147201 0000");
    const auto security = profileOf(cut, kProtected).security;
    EXPECT_EQ(*security.name, Security::Wapi);
    EXPECT_TRUE(security.akms.empty() && security.pairwiseCiphers.empty());
    EXPECT_FALSE(security.groupCipher);
}

TEST(AirProfile, TellsTheOpenHalfOfEnhancedOpen) {
    const auto profile = profileOf(hexElement(221, "506F9A1C 020000000001 03 6F7765"), kOpen);
    EXPECT_EQ(*profile.security.name, Security::EnhancedOpenTransition);
    EXPECT_TRUE(hasFinding(profile, "owe-transition"));
}

TEST(AirProfile, FindsFaultsOfPmf) {
    const auto rsn = [](std::string_view akm, std::string_view capabilities) {
        return profileOf(hexElement(48, "0100 000FAC04 0100 000FAC04 0100 000FAC" +
                                            std::string(akm) + std::string(capabilities)),
                         kProtected);
    };
    EXPECT_TRUE(hasFinding(rsn("08", "8000"), "pmf-not-required"));
    EXPECT_TRUE(hasFinding(rsn("08", "0000"), "pmf-missing"));
    EXPECT_TRUE(hasFinding(rsn("08", "4000"), "pmf-invalid"));
    EXPECT_FALSE(hasFinding(rsn("08", "C000"), "pmf-not-required"));
    EXPECT_TRUE(hasFinding(rsn("02", "0000"), "pmf-off"));
    EXPECT_TRUE(hasFinding(rsn("04", "0000"), "ft-without-domain"));
}

// --- Names and form ---

TEST(AirProfile, TellsHiddenAndMissingNames) {
    EXPECT_TRUE(profileOf(ssidElement(""), kOpen).isHidden);
    EXPECT_TRUE(profileOf(hexElement(0, "000000"), kOpen).isHidden);
    EXPECT_TRUE(hasFinding(profileOf(ssidElement(""), kOpen), "hidden-name"));
    EXPECT_TRUE(hasFinding(profileOf({}, kOpen), "ssid-missing"));
    const auto tooLong = profileOf(element(0, Bytes(33, 'x')), kOpen);
    EXPECT_FALSE(tooLong.ssid);
    EXPECT_TRUE(hasFinding(tooLong, "ssid-too-long"));
}

TEST(AirProfile, TakesTheFirstOfTwoElements) {
    const auto profile = profileOf(joined({ssidElement("one"), ssidElement("two")}), kOpen);
    EXPECT_EQ((*profile.ssid)->text(), "one");
    EXPECT_TRUE(hasFinding(profile, "element-duplicated"));
}

// A buffer may be longer than the elements of one frame.
TEST(AirProfile, NamesPlacesPast64Kilobytes) {
    Bytes octets;
    while (octets.size() <= 0x10000) {
        const Bytes filler = element(221, Bytes(255, 0));
        octets.insert(octets.end(), filler.begin(), filler.end());
    }
    const auto place = static_cast<std::uint32_t>(octets.size());
    const Bytes end =
        joined({ssidElement("x"), hexElement(3, "06"), hexElement(45, ""), hexElement(71, "00")});
    octets.insert(octets.end(), end.begin(), end.end());
    const auto trailing = static_cast<std::uint32_t>(octets.size());
    octets.push_back(48);
    const auto profile = profileOf(octets, kOpen);
    EXPECT_EQ(profile.ssid->sources[0].offset, place);
    EXPECT_EQ(profile.channel.primaryChannel->sources[0].offset, place + 3);
    for (const Finding& finding : profile.findings) {
        if (finding.info().id == "element-too-short") {
            EXPECT_EQ(finding.sources[0].offset, place + 6);
        }
        if (finding.info().id == "profile-index") {
            EXPECT_EQ(finding.sources[0].offset, place + 8);
        }
        if (finding.info().id == "frame-cut") {
            EXPECT_EQ(finding.sources[0].offset, trailing);
        }
    }
    EXPECT_TRUE(hasFinding(profile, "element-too-short"));
    EXPECT_TRUE(hasFinding(profile, "frame-cut"));
    EXPECT_TRUE(hasFinding(profile, "profile-index"));
}

TEST(AirProfile, FindsDamage) {
    Bytes octets = joined({ssidElement("x"), hexElement(11, "0100"), element(255, {}),
                           hexElement(242, "01"), hexElement(3, "06"), hexElement(1, "82")});
    octets.insert(octets.end(), {48, 20, 1});
    const auto profile = profileOf(octets, kOpen);
    for (const char* id : {"element-too-short", "extension-missing", "fragment-alone", "frame-cut",
                           "element-order"}) {
        EXPECT_TRUE(hasFinding(profile, id)) << id;
    }
}

TEST(AirProfile, FindsWhatTakesAirTime) {
    const auto profile = profileOf(
        joined({hexElement(1, "82848B96"), hexElement(11, "0500 C8 0000")}), {kBssid, 1, 20});
    for (const char* id : {"slow-basic-rates", "load-high", "short-beacon-interval"}) {
        EXPECT_TRUE(hasFinding(profile, id)) << id;
    }
    EXPECT_EQ((*profile.load)->stations, 5);
    EXPECT_TRUE(hasFinding(profileOf(hexElement(1, "02040B16"), kOpen), "no-basic-rates"));
}

// --- Other networks ---

// One profile: index 1, its own name, an open network beside a protected one.
TEST(AirProfile, TellsTheNetworksThatShareABeacon) {
    const auto profile = profileOf(
        joined({ssidElement("main"), hexElement(3, "06"),
                hexElement(71, "03 00 10 53020100 00056775657374 5503010300"), rsnElement(2)}),
        kProtected);
    EXPECT_EQ(profile.maxBssidIndicator, 3);
    ASSERT_EQ(profile.nontransmitted.size(), 1u);
    const auto& bss = profile.nontransmitted[0];
    EXPECT_EQ(bss.bssid.text(), "02:00:00:00:08:21");
    EXPECT_EQ(bss.index, 1);
    EXPECT_EQ((*bss.profile.ssid)->text(), "guest");
    EXPECT_EQ(**bss.profile.channel.primaryChannel, 6);
    EXPECT_EQ(**bss.profile.dtimPeriod, 3);
    EXPECT_EQ(*bss.profile.security.name, Security::Wpa2Personal);  // inherited
}

// Basic Multi-Link: MLD address, link 2 of the sender, the profile of link 5.
// Table 9-338: with 7 octets an offset and a BSSID, with 8 the BSS parameters too.
TEST(AirProfile, LeavesOutWhatNothingTellsOfANeighbour) {
    const auto neighborOf = [](std::string_view report) {
        const auto profile = profileOf(hexElement(201, report), kOpen);
        return profile.neighbors.empty() ? Neighbor() : profile.neighbors[0];
    };
    const Neighbor bare = neighborOf("0007 73 24 01 020000000A01");
    EXPECT_TRUE(bare.bssid);
    EXPECT_FALSE(bare.isSameSsid.has_value());
    EXPECT_FALSE(bare.isCoLocated.has_value());
    const Neighbor told = neighborOf("0008 73 24 01 020000000A01 02");
    EXPECT_EQ(told.isSameSsid, true);
    EXPECT_EQ(told.isCoLocated, false);
}

TEST(AirProfile, TellsTheLinksOfAnMld) {
    const auto profile = profileOf(
        extended(107, "1000 08 020000000A01 02 00 0A 3500 07 020000000A11 00"), kProtected);
    ASSERT_TRUE(profile.mld);
    EXPECT_EQ(profile.mld->address.text(), "02:00:00:00:0a:01");
    ASSERT_EQ(profile.mld->links.size(), 2u);
    EXPECT_EQ(profile.mld->links[0].id, 2);
    EXPECT_TRUE(profile.mld->links[0].isReporting);
    EXPECT_EQ(profile.mld->links[0].address, kBssid);
    EXPECT_EQ(profile.mld->links[1].id, 5);
    EXPECT_EQ(profile.mld->links[1].address->text(), "02:00:00:00:0a:11");
}

// Reduced Neighbor Report: link 5 with an address, link 3; each of the sender's own MLD.
TEST(AirProfile, TellsLinksOfAnMldThatStandBesideIt) {
    const auto profile =
        profileOf(joined({hexElement(201, "0010 51 06 00 020000000A33 00000000 00 00 000300"),
                          hexElement(201, "0010 51 06 00 020000000A55 00000000 00 00 000500"),
                          extended(107, "1000 08 020000000A01 02 00 03 1500 01")}),
                  kProtected);
    ASSERT_TRUE(profile.mld);
    ASSERT_EQ(profile.mld->links.size(), 3u);
    EXPECT_EQ(profile.mld->links[1].id, 5);
    EXPECT_EQ(profile.mld->links[1].address->text(), "02:00:00:00:0a:55");
    EXPECT_EQ(profile.mld->links[2].id, 3);
    EXPECT_EQ(profile.mld->links[2].address->text(), "02:00:00:00:0a:33");
}

TEST(AirProfile, TellsTheWorstFindingsFirst) {
    const auto profile =
        profileOf(joined({hexElement(45, "00"), hexElement(48, "0100 000FAC04 0500"),
                          hexElement(1, "82"), hexElement(11, "0500 C8 0000")}),
                  {kBssid, 1, 20});
    ASSERT_GE(profile.findings.size(), 4u);
    const auto isOrdered = [](const Finding& a, const Finding& b) {
        return a.info().severity != b.info().severity ? a.info().severity > b.info().severity
                                                      : a.kind < b.kind;
    };
    EXPECT_TRUE(std::ranges::is_sorted(profile.findings, isOrdered));
    EXPECT_NE(profile.findings.front().info().severity, profile.findings.back().info().severity);
}

TEST(AirProfile, SurvivesEveryPrefixAndOctet) {
    const Bytes octets =
        joined({ssidElement("main"), hexElement(3, "06"), kHt, htOperation(6, 0), rsnElement(8),
                hexElement(71, "03 00 10 53020100 00056775657374 5503010300"), kHeOperation6,
                extended(107, "1000 08 020000000A01 02 00 0A 3500 07 020000000A11 00")});
    const auto check = [](const auto& buffer) {
        const auto profile = profileOf(buffer.bytes(), kProtected);
        for (const Finding& finding : profile.findings) {
            EXPECT_FALSE(finding.info().sentence.empty());
        }
    };
    halvane::testing::forEachPrefix(octets, check);
    std::vector<std::size_t> offsets(octets.size());
    for (std::size_t i = 0; i < offsets.size(); ++i) offsets[i] = i;
    halvane::testing::forEachValueAt(octets, offsets, check);
}

// --- Cut frames ---

constexpr FixedFields kPrivateAccessPoint = {.capabilities = 0x0011};
constexpr char kWpaPsk[] = "0050F2010100 0050F202 0100 0050F202 0100 0050F202";

void expectUnknown(const BssProfile& profile) {
    EXPECT_EQ(securityName(*profile.security.name), "Unknown");
    EXPECT_EQ(profile.security.name.rule, Rule::FrameCut);
    EXPECT_FALSE(profile.security.pmf.isTold());
    EXPECT_FALSE(hasFinding(profile, "wep"));
    EXPECT_FALSE(hasFinding(profile, "wpa-only"));
}

TEST(AirProfile, ConcludesNoWeakSecurityFromACut) {
    Bytes octets = ssidElement("x");
    EXPECT_EQ(securityName(*profileOf(octets, kPrivateAccessPoint).security.name), "WEP");
    expectUnknown(profileOf(octets, kPrivateAccessPoint, {.isCut = true}));
    octets.push_back(48);
    expectUnknown(profileOf(octets, kPrivateAccessPoint));

    const Bytes wpa = joined({ssidElement("x"), hexElement(221, kWpaPsk)});
    EXPECT_EQ(securityName(*profileOf(wpa, kPrivateAccessPoint).security.name), "WPA-Personal");
    expectUnknown(profileOf(wpa, kPrivateAccessPoint, {.isCut = true}));
}

TEST(AirProfile, TellsOfACutFrameWhatItProves) {
    const Bytes octets = ssidElement("x");
    EXPECT_EQ(securityName(*profileOf(octets, kOpen, {.isCut = true}).security.name), "Open");
    const Bytes rsn = hexElement(48, "0100 000FAC04 0100 000FAC04 0100 000FAC02 8000");
    const auto profile = profileOf(rsn, kPrivateAccessPoint, {.isCut = true});
    EXPECT_EQ(securityName(*profile.security.name), "WPA2-Personal");
    EXPECT_TRUE(profile.security.name.isTold());
    EXPECT_TRUE(profile.security.pmf.isTold());
}

TEST(AirProfile, TellsNeitherGenerationNorWidthNorRateOfACutFrame) {
    const Bytes octets = joined({ssidElement("x"), hexElement(1, "82848B96"), hexElement(3, "06")});
    const auto whole = profileOf(octets, kOpen);
    EXPECT_TRUE(whole.generation.isTold());
    EXPECT_TRUE(whole.channel.span.isTold());
    EXPECT_FALSE(whole.isCut);
    const auto cut = profileOf(octets, kOpen, {.isCut = true});
    EXPECT_TRUE(cut.isCut);
    EXPECT_FALSE(cut.generation.isTold());
    EXPECT_FALSE(cut.channel.span.isTold());
    EXPECT_EQ(cut.rates.latest(), nullptr);
}

}  // namespace
