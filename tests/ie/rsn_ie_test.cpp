#include "halvane/ie/rsn_ie.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "halvane/base/oui.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneRSNIE;
using halvane::testing::Bytes;

namespace {

const ByteBuffer kRSN(halvane::kRSNOUI);
const ByteBuffer kWPA(halvane::kWPAOUI);

HalvaneRSNIE decodeRSN(const Bytes& bytes) {
    return HalvaneRSNIE::initWithIE_withOUI(ByteBuffer(bytes), kRSN);
}

HalvaneRSNIE decodeWPA(const Bytes& bytes) {
    return HalvaneRSNIE::initWithIE_withOUI(ByteBuffer(bytes), kWPA);
}

struct Flag {
    const char* name;
    bool (HalvaneRSNIE::*isSet)() const;
};
constexpr Flag kFlags[] = {
    {"allowUnicastCipherTKIP", &HalvaneRSNIE::allowUnicastCipherTKIP},
    {"allowUnicastCipherCCMP", &HalvaneRSNIE::allowUnicastCipherCCMP},
    {"allowUnicastCipherUseGroup", &HalvaneRSNIE::allowUnicastCipherUseGroup},
    {"allowMulticastCipherWEP40", &HalvaneRSNIE::allowMulticastCipherWEP40},
    {"allowMulticastCipherWEP104", &HalvaneRSNIE::allowMulticastCipherWEP104},
    {"allowMulticastCipherTKIP", &HalvaneRSNIE::allowMulticastCipherTKIP},
    {"allowMulticastCipherCCMP", &HalvaneRSNIE::allowMulticastCipherCCMP},
    {"allowKeyManagementPSK", &HalvaneRSNIE::allowKeyManagementPSK},
    {"allowKeyManagement8021X", &HalvaneRSNIE::allowKeyManagement8021X},
    {"supportsPreAuthentication", &HalvaneRSNIE::supportsPreAuthentication},
    {"hasNoPairwise", &HalvaneRSNIE::hasNoPairwise},
    {"isPeerKeyEnabled", &HalvaneRSNIE::isPeerKeyEnabled},
};

// The names of the flags that are set. One comparison thus also shows that no other flag is set.
std::set<std::string> flagsOf(const HalvaneRSNIE& ie) {
    std::set<std::string> names;
    for (const auto& [name, isSet] : kFlags) {
        if ((ie.*isSet)()) names.insert(name);
    }
    return names;
}

using Flags = std::set<std::string>;

// IEEE 802.11-2020, 9.4.2.24.1: "802.1X authentication, CCMP pairwise and group cipher suites".
const Bytes kStandardCCMP = {
    0x30,                    // element ID 48
    0x14,                    // length 20
    0x01, 0x00,              // version 1
    0x00, 0x0F, 0xAC, 0x04,  // group cipher CCMP
    0x01, 0x00,              // one pairwise cipher
    0x00, 0x0F, 0xAC, 0x04,  // CCMP
    0x01, 0x00,              // one AKM
    0x00, 0x0F, 0xAC, 0x01,  // 802.1X
    0x00, 0x00,              // no capabilities
};

// The same clause: "... CCMP pairwise, ... preauthentication supported".
const Bytes kStandardPreAuthentication = {
    0x30, 0x14, 0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04, 0x01, 0x00, 0x00,
    0x0F, 0xAC, 0x04, 0x01, 0x00, 0x00, 0x0F, 0xAC, 0x01, 0x01, 0x00,
};

// The same clause: "802.1X authentication, CCMP pairwise, WEP-104 group", without capabilities.
const Bytes kStandardWEP104Group = {
    0x30, 0x12, 0x01, 0x00, 0x00, 0x0F, 0xAC, 0x05, 0x01, 0x00,
    0x00, 0x0F, 0xAC, 0x04, 0x01, 0x00, 0x00, 0x0F, 0xAC, 0x01,
};

// The same clause: an element "with a single PMKID", 38 octets long.
const Bytes kStandardPMKID = {
    0x30, 0x26, 0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04, 0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04,
    0x01, 0x00, 0x00, 0x0F, 0xAC, 0x01, 0x00, 0x00, 0x01, 0x00, 0x01, 0x02, 0x03, 0x04,
    0x05, 0x06, 0x07, 0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x10,
};

// A WPA element as an access point with TKIP and CCMP sends it.
const Bytes kMixedWPA = {
    0xDD, 0x1A,              // vendor element, length 26
    0x00, 0x50, 0xF2, 0x01,  // OUI and type of WPA
    0x01, 0x00,              // version 1
    0x00, 0x50, 0xF2, 0x02,  // group cipher TKIP
    0x02, 0x00,              // two pairwise ciphers
    0x00, 0x50, 0xF2, 0x04,  // CCMP
    0x00, 0x50, 0xF2, 0x02,  // TKIP
    0x01, 0x00,              // one AKM
    0x00, 0x50, 0xF2, 0x02,  // PSK
};

Bytes withSuites(std::uint8_t group, std::uint8_t pairwise, std::uint8_t akm) {
    return {0x30, 0x14, 0x01,     0x00, 0x00, 0x0F, 0xAC, group, 0x01, 0x00, 0x00,
            0x0F, 0xAC, pairwise, 0x01, 0x00, 0x00, 0x0F, 0xAC,  akm,  0x00, 0x00};
}

Bytes withCapabilities(std::uint8_t low, std::uint8_t high) {
    Bytes bytes = kStandardCCMP;
    bytes[20] = low;
    bytes[21] = high;
    return bytes;
}

TEST(RSNIE, IsEmptyAtFirst) {
    const HalvaneRSNIE ie;
    EXPECT_EQ(ie.version(), 1);
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.oui());
    EXPECT_FALSE(ie.rawIE());
    EXPECT_FALSE(ie.pmkids());
    EXPECT_EQ(flagsOf(ie), Flags{});
}

TEST(RSNIE, WithoutAnElementKeepsItsOUIOnly) {
    const auto ie = HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kRSN);
    EXPECT_EQ(ie.oui(), kRSN);
    EXPECT_EQ(ie.version(), 1);
    EXPECT_FALSE(ie.isValid());
    EXPECT_FALSE(ie.rawIE());
}

TEST(RSNIE, DecodesTheStandardsExamples) {
    const auto ccmp = decodeRSN(kStandardCCMP);
    EXPECT_TRUE(ccmp.isValid());
    EXPECT_EQ(ccmp.rawIE(), ByteBuffer(kStandardCCMP));
    EXPECT_EQ(ccmp.version(), 1);
    EXPECT_EQ(flagsOf(ccmp), (Flags{"allowMulticastCipherCCMP", "allowUnicastCipherCCMP",
                                    "allowKeyManagement8021X"}));
    EXPECT_FALSE(ccmp.pmkids());

    const auto preAuthentication = decodeRSN(kStandardPreAuthentication);
    EXPECT_TRUE(preAuthentication.isValid());
    EXPECT_TRUE(preAuthentication.supportsPreAuthentication());

    const auto wep104 = decodeRSN(kStandardWEP104Group);
    EXPECT_TRUE(wep104.isValid());
    EXPECT_EQ(flagsOf(wep104), (Flags{"allowMulticastCipherWEP104", "allowUnicastCipherCCMP",
                                      "allowKeyManagement8021X"}));

    const auto pmkid = decodeRSN(kStandardPMKID);
    EXPECT_TRUE(pmkid.isValid());
    ASSERT_TRUE(pmkid.pmkids());
    ASSERT_EQ(pmkid.pmkids()->size(), 1u);
    EXPECT_EQ(pmkid.pmkids()->front(),
              (ByteBuffer{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
}

TEST(RSNIE, ReadsAndWritesTheVersion) {
    Bytes bytes = kStandardCCMP;
    bytes[2] = 0x01;
    bytes[3] = 0x02;
    auto ie = decodeRSN(bytes);
    EXPECT_EQ(ie.version(), 0x0201);
    ie.generateIE();
    EXPECT_EQ(ie.rawIE(), ByteBuffer(bytes));
}

TEST(RSNIE, ListsThePMKIDsAnewWhenParsedAgain) {
    auto ie = decodeRSN(kStandardPMKID);
    ie.parseIE();
    EXPECT_EQ(ie.pmkids()->size(), 1u);
}

TEST(RSNIE, DecodesAWPAElement) {
    const auto ie = decodeWPA(kMixedWPA);
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(flagsOf(ie), (Flags{"allowMulticastCipherTKIP", "allowUnicastCipherCCMP",
                                  "allowUnicastCipherTKIP", "allowKeyManagementPSK"}));
}

TEST(RSNIE, DecodesCapabilitiesOfAWPAElementToo) {
    Bytes bytes = kMixedWPA;
    bytes.insert(bytes.end(), {0x3D, 0x02});
    const auto ie = decodeWPA(bytes);
    EXPECT_TRUE(ie.isValid());
    EXPECT_TRUE(ie.supportsPreAuthentication());
    EXPECT_FALSE(ie.hasNoPairwise());
    EXPECT_EQ(ie.replayCounterPTKSA(), 3u);
    EXPECT_EQ(ie.replayCounterGTKSA(), 3u);
    EXPECT_TRUE(ie.isPeerKeyEnabled());
}

TEST(RSNIE, MapsEachSuiteTypeToItsFlag) {
    struct Row {
        std::uint8_t group, pairwise, akm;
        Flags flags;
    };
    const std::vector<Row> rows = {
        {1, 9, 9, {"allowMulticastCipherWEP40"}},
        {2, 9, 9, {"allowMulticastCipherTKIP"}},
        {4, 9, 9, {"allowMulticastCipherCCMP"}},
        {5, 9, 9, {"allowMulticastCipherWEP104"}},
        {0, 9, 9, {}},  // "use group" is no group cipher
        {3, 9, 9, {}},  // reserved
        {6, 9, 9, {}},  // BIP-CMAC-128
        {0, 0, 9, {"allowUnicastCipherUseGroup"}},
        {0, 2, 9, {"allowUnicastCipherTKIP"}},
        {0, 4, 9, {"allowUnicastCipherCCMP"}},
        {0, 1, 9, {}},  // WEP-40 is no pairwise cipher here
        {0, 5, 9, {}},
        {0, 8, 9, {}},  // GCMP-128
        {0, 9, 1, {"allowKeyManagement8021X"}},
        {0, 9, 2, {"allowKeyManagementPSK"}},
        {0, 9, 0, {}},
        {0, 9, 8, {}},  // SAE is counted and skipped
    };
    for (const Row& row : rows) {
        const auto ie = decodeRSN(withSuites(row.group, row.pairwise, row.akm));
        EXPECT_TRUE(ie.isValid());
        EXPECT_EQ(flagsOf(ie), row.flags)
            << int{row.group} << " " << int{row.pairwise} << " " << int{row.akm};
    }
}

TEST(RSNIE, SkipsSuitesOfAnotherOUI) {
    Bytes bytes = kMixedWPA;
    for (const std::size_t suite : {8u, 14u, 18u, 24u}) {
        std::ranges::copy(halvane::kRSNOUI, bytes.begin() + static_cast<std::ptrdiff_t>(suite));
    }
    const auto ie = decodeWPA(bytes);
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(flagsOf(ie), Flags{});
}

TEST(RSNIE, AcceptsCountsOfZero) {
    const auto ie = decodeRSN({0x30, 10, 1, 0, 0x00, 0x0F, 0xAC, 4, 0, 0, 0, 0});
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(flagsOf(ie), Flags{"allowMulticastCipherCCMP"});
}

TEST(RSNIE, DecodesEachCapabilityBit) {
    EXPECT_TRUE(decodeRSN(withCapabilities(0x01, 0)).supportsPreAuthentication());
    EXPECT_TRUE(decodeRSN(withCapabilities(0x02, 0)).hasNoPairwise());
    EXPECT_TRUE(decodeRSN(withCapabilities(0, 0x02)).isPeerKeyEnabled());
    for (std::uint8_t counter = 0; counter < 4; ++counter) {
        const auto ptksa = decodeRSN(withCapabilities(static_cast<std::uint8_t>(counter << 2), 0));
        EXPECT_EQ(ptksa.replayCounterPTKSA(), counter);
        EXPECT_EQ(ptksa.replayCounterGTKSA(), 0u);
        const auto gtksa = decodeRSN(withCapabilities(static_cast<std::uint8_t>(counter << 4), 0));
        EXPECT_EQ(gtksa.replayCounterPTKSA(), 0u);
        EXPECT_EQ(gtksa.replayCounterGTKSA(), counter);
    }
    const auto others = decodeRSN(withCapabilities(0xC0, 0xFD));
    EXPECT_FALSE(others.supportsPreAuthentication() || others.hasNoPairwise() ||
                 others.isPeerKeyEnabled());
    EXPECT_EQ(others.replayCounterPTKSA() + others.replayCounterGTKSA(), 0u);
}

// Lists the cut points that leave a valid element, and what the decoder has read at each.
TEST(RSNIE, IsValidOnlyWhenCutAtTheEndOfAnOptionalField) {
    const std::set<std::size_t> validSizes = {
        20,  // after the AKM suites: no capabilities
        21,  // half a capability field counts as none
        22,  // after the capabilities
        23,  // half a PMKID count counts as none
        40,  // whole
    };
    halvane::testing::forEachPrefix(kStandardPMKID, [&](const ByteBuffer& prefix) {
        const auto ie = HalvaneRSNIE::initWithIE_withOUI(prefix, kRSN);
        EXPECT_EQ(ie.isValid(), validSizes.contains(prefix.size())) << prefix.size();
        EXPECT_EQ(ie.rawIE(), prefix);
        EXPECT_EQ(ie.allowMulticastCipherCCMP(), prefix.size() >= 8) << prefix.size();
        EXPECT_EQ(ie.allowUnicastCipherCCMP(), prefix.size() >= 14) << prefix.size();
        EXPECT_EQ(ie.allowKeyManagement8021X(), prefix.size() >= 20) << prefix.size();
        EXPECT_EQ(ie.pmkids().has_value(), prefix.size() >= 24) << prefix.size();
    });
}

TEST(RSNIE, ThatEndsAfterItsGroupSuiteKeepsTheGroupCipherButIsNotValid) {
    const auto ie = decodeRSN({0x30, 6, 1, 0, 0x00, 0x0F, 0xAC, 4});
    EXPECT_FALSE(ie.isValid());
    EXPECT_TRUE(ie.allowMulticastCipherCCMP());
}

TEST(RSNIE, WithMissingPMKIDsIsNotValidAndListsNone) {
    Bytes bytes = kStandardPMKID;
    bytes[22] = 2;
    const auto ie = decodeRSN(bytes);
    EXPECT_FALSE(ie.isValid());
    ASSERT_TRUE(ie.pmkids());
    EXPECT_TRUE(ie.pmkids()->empty());
}

TEST(RSNIE, IgnoresBytesAfterThePMKIDs) {
    Bytes bytes = kStandardPMKID;
    bytes.insert(bytes.end(), {0x00, 0x0F, 0xAC, 0x06});
    const auto ie = decodeRSN(bytes);
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.pmkids()->size(), 1u);
}

TEST(RSNIE, UnderAnyOtherOUIDecodesNothingAndStaysValid) {
    const auto ie =
        HalvaneRSNIE::initWithIE_withOUI(ByteBuffer(kStandardCCMP), ByteBuffer{0x50, 0x6F, 0x9A});
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(flagsOf(ie), Flags{});
}

TEST(RSNIE, SurvivesEveryTruncationAndEveryCount) {
    halvane::testing::forEachHostileForm(
        kStandardPMKID, {1, 8, 9, 14, 15, 22, 23}, [](const ByteBuffer& bytes) {
            const auto ie = HalvaneRSNIE::initWithIE_withOUI(bytes, kRSN);
            EXPECT_EQ(ie.rawIE(), bytes);
            EXPECT_FALSE(ie.description().empty());
        });
    halvane::testing::forEachHostileForm(
        kMixedWPA, {1, 12, 13, 22, 23}, [](const ByteBuffer& bytes) {
            const auto ie = HalvaneRSNIE::initWithIE_withOUI(bytes, kWPA);
            EXPECT_EQ(ie.rawIE(), bytes);
            EXPECT_FALSE(ie.description().empty());
        });
}

TEST(RSNIEStages, ReturnTheCountLeftAfterThem) {
    auto ie = decodeRSN(kStandardPMKID);
    EXPECT_EQ(ie.parseVersion_withLength(2, 38), 36u);
    EXPECT_EQ(ie.parseGroupCipher_withLength(4, 36), 32u);
    EXPECT_EQ(ie.parsePairwiseCipher_withLength(8, 32), 26u);
    EXPECT_EQ(ie.parseAKM_withLength(14, 26), 20u);
    EXPECT_EQ(ie.parseCapabilities_withLength(20, 20), 18u);
    EXPECT_EQ(ie.parsePMKIDs_withLength(22, 18), 0u);
    EXPECT_TRUE(ie.isValid());
}

TEST(RSNIEStages, ReadNothingBeyondTheElement) {
    auto ie = decodeRSN(kStandardCCMP);
    EXPECT_EQ(ie.parseVersion_withLength(22, 100), 0u);
    EXPECT_FALSE(ie.isValid());
    auto again = decodeRSN(kStandardCCMP);
    EXPECT_EQ(again.parseGroupCipher_withLength(SIZE_MAX, SIZE_MAX), 0u);
    EXPECT_FALSE(again.isValid());
}

TEST(RSNIESetters, OnlySetFlagsOfKnownCiphers) {
    HalvaneRSNIE ie;
    for (unsigned type = 0; type < 256; ++type)
        ie.setUnicastCipher(static_cast<std::uint8_t>(type));
    EXPECT_EQ(flagsOf(ie), (Flags{"allowUnicastCipherCCMP", "allowUnicastCipherTKIP",
                                  "allowUnicastCipherUseGroup"}));
    EXPECT_EQ(ie.countUnicastCiphers(), 3u);

    HalvaneRSNIE group;
    for (unsigned type = 0; type < 256; ++type) {
        group.setMulticastCipher(static_cast<std::uint8_t>(type));
    }
    EXPECT_EQ(flagsOf(group), (Flags{"allowMulticastCipherWEP40", "allowMulticastCipherTKIP",
                                     "allowMulticastCipherCCMP", "allowMulticastCipherWEP104"}));
}

TEST(RSNIESetters, ChoosingPSKOnlyClears8021X) {
    HalvaneRSNIE ie;
    ie.setAKM(1);
    EXPECT_EQ(flagsOf(ie), Flags{"allowKeyManagement8021X"});
    ie.setAKM(3);
    EXPECT_EQ(flagsOf(ie), Flags{"allowKeyManagement8021X"});
    ie.setAKM(2);
    EXPECT_EQ(flagsOf(ie), Flags{});
    ie.setAllowKeyManagementPSK(true);
    ie.setAKM(2);
    EXPECT_EQ(flagsOf(ie), Flags{"allowKeyManagementPSK"});
    EXPECT_EQ(ie.countAKMs(), 1u);
}

TEST(RSNIEGenerator, WritesTheStandardsExample) {
    auto ie = HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kRSN);
    ie.setAllowMulticastCipherCCMP(true);
    ie.setAllowUnicastCipherCCMP(true);
    ie.setAllowKeyManagement8021X(true);
    ie.generateIE();
    EXPECT_TRUE(ie.isValid());
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kStandardCCMP));
    EXPECT_EQ(ie.rawIE()->size(), 22u);

    ie.setPmkids(std::vector{ByteBuffer{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}});
    ie.generateIE();
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kStandardPMKID));
}

TEST(RSNIEGenerator, WritesAWPAElementWithoutCapabilities) {
    auto ie = HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kWPA);
    ie.setAllowMulticastCipherTKIP(true);
    ie.setAllowUnicastCipherCCMP(true);
    ie.setAllowUnicastCipherTKIP(true);
    ie.setAllowKeyManagementPSK(true);
    ie.setSupportsPreAuthentication(true);
    ie.generateIE();
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kMixedWPA));

    ie.setAllowUnicastCipherTKIP(false);
    ie.generateIE();
    EXPECT_EQ(ie.rawIE()->size(), 24u);
    EXPECT_EQ(ie.rawIE()->slice(0, 2), (ByteBuffer{221, 22}));
}

TEST(RSNIEGenerator, OrdersSuitesCCMPTKIPUseGroupAnd8021XBeforePSK) {
    auto ie = HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kRSN);
    for (const std::uint8_t type : Bytes{0, 2, 4}) ie.setUnicastCipher(type);
    ie.setAllowKeyManagementPSK(true);
    ie.setAllowKeyManagement8021X(true);
    ie.generateIE();
    EXPECT_EQ(ie.rawIE()->slice(8),
              (ByteBuffer{3, 0, 0x00, 0x0F, 0xAC, 4, 0x00, 0x0F, 0xAC, 2, 0x00, 0x0F, 0xAC, 0,  //
                          2, 0, 0x00, 0x0F, 0xAC, 1, 0x00, 0x0F, 0xAC, 2,                       //
                          0, 0}));
}

TEST(RSNIEGenerator, WritesTheWeakestGroupCipherAllowed) {
    const auto groupOf = [](std::initializer_list<std::uint8_t> types) {
        auto ie = HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kRSN);
        ie.setUnicastCipher(4);
        ie.setAllowKeyManagementPSK(true);
        for (const std::uint8_t type : types) ie.setMulticastCipher(type);
        ie.generateIE();
        return ie.rawIE()->slice(7, 1);
    };
    EXPECT_EQ(groupOf({2, 4}), ByteBuffer{2});
    EXPECT_EQ(groupOf({1, 4}), ByteBuffer{1});
    EXPECT_EQ(groupOf({5, 2}), ByteBuffer{5});
    EXPECT_EQ(groupOf({1, 5, 2, 4}), ByteBuffer{1});
    EXPECT_EQ(groupOf({4}), ByteBuffer{4});
    EXPECT_EQ(groupOf({}), ByteBuffer{0});
}

TEST(RSNIEGenerator, WritesCapabilitiesButNotThePeerKeyBit) {
    auto ie = HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kRSN);
    ie.setUnicastCipher(4);
    ie.setAllowKeyManagementPSK(true);
    ie.setSupportsPreAuthentication(true);
    ie.setHasNoPairwise(true);
    ie.setReplayCounterPTKSA(7);  // cut to its low two bits
    ie.setReplayCounterGTKSA(2);
    ie.setIsPeerKeyEnabled(true);
    ie.generateIE();
    EXPECT_EQ(ie.rawIE()->slice(20), (ByteBuffer{0x2F, 0x00}));
}

TEST(RSNIEGenerator, ProducesNothingWithoutOUIPairwiseOrAKM) {
    const auto generates = [](std::function<void(HalvaneRSNIE&)> change) {
        auto ie = decodeRSN(kStandardCCMP);
        change(ie);
        ie.generateIE();
        EXPECT_EQ(ie.isValid(), ie.rawIE().has_value());
        return ie.isValid();
    };
    EXPECT_TRUE(generates([](HalvaneRSNIE&) {}));
    EXPECT_FALSE(generates([](HalvaneRSNIE& ie) { ie.setOui(std::nullopt); }));
    EXPECT_FALSE(generates([](HalvaneRSNIE& ie) { ie.setOui(ByteBuffer{1, 2, 3}); }));
    EXPECT_FALSE(generates([](HalvaneRSNIE& ie) { ie.setAllowUnicastCipherCCMP(false); }));
    EXPECT_FALSE(generates([](HalvaneRSNIE& ie) { ie.setAllowKeyManagement8021X(false); }));
}

TEST(RSNIEGenerator, WritesNoCountOfNoPMKIDs) {
    auto ie = decodeRSN(kStandardCCMP);
    ie.setPmkids(std::vector<ByteBuffer>());
    ie.generateIE();
    EXPECT_EQ(ie.rawIE(), ByteBuffer(kStandardCCMP));
}

TEST(RSNIEGenerator, WritesThePMKIDsOfAWPAElementAfterItsAKMs) {
    auto ie = decodeWPA(kMixedWPA);
    ie.setPmkids(std::vector{ByteBuffer(Bytes(16, 0xAA))});
    ie.generateIE();
    Bytes expected = kMixedWPA;
    expected.insert(expected.end(), {1, 0});
    expected.insert(expected.end(), 16, 0xAA);
    expected[1] = static_cast<std::uint8_t>(expected.size() - 2);
    EXPECT_EQ(ie.rawIE(), ByteBuffer(expected));
}

TEST(RSNIEGenerator, KeepsTheLengthByteModulo256) {
    auto ie = decodeRSN(kStandardCCMP);
    ie.setPmkids(std::vector<ByteBuffer>(15, ByteBuffer(Bytes(16, 0xAA))));
    ie.generateIE();
    EXPECT_EQ(ie.rawIE()->size(), 22u + 2 + 15 * 16);
    EXPECT_EQ(ie.rawIE()->slice(1, 1), ByteBuffer{(264 - 2) % 256});
}

TEST(RSNIE, AppendsASuiteUnderItsOUI) {
    Bytes bytes = {0xFF};
    HalvaneRSNIE::initWithIE_withOUI(std::nullopt, kWPA).appendSuite_cipher(bytes, 4);
    EXPECT_EQ(bytes, (Bytes{0xFF, 0x00, 0x50, 0xF2, 0x04}));
}

TEST(RSNIE, DescribesEveryField) {
    Bytes bytes = kStandardPMKID;
    bytes[20] = 0x2B;
    bytes[21] = 0x02;
    EXPECT_EQ(
        decodeRSN(bytes).description(),
        "    IE                    : 30 26 01 00 00 0F AC 04 01 00 00 0F AC 04 01 00 00 0F AC "
        "01 2B 02 01 00 01 02 03 04 05 06 07 08 \n09 0A 0B 0C 0D 0E 0F 10 \n"
        "    Version               : 1\n"
        "    Unicast Cipher(s)     : CCMP \n"
        "    Group Cipher          : CCMP \n"
        "    Key Management        : 802.1X \n"
        "    Pre-Authentication    : YES\n"
        "    No Pairwise Cipher    : YES\n"
        "    PTKSA Replay Counters : 2\n"
        "    GTKSA Replay Counters : 2\n"
        "    Peer Key Enabled      : YES\n"
        "    PMKIDs                : 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10  \n");
}

TEST(RSNIE, DescribesEachCapabilityUnderItsLabel) {
    const std::pair<std::pair<std::uint8_t, std::uint8_t>, const char*> rows[] = {
        {{0x01, 0}, "    Pre-Authentication    : YES\n"},
        {{0x02, 0}, "    No Pairwise Cipher    : YES\n"},
        {{0x08, 0}, "    PTKSA Replay Counters : 2\n"},
        {{0x30, 0}, "    GTKSA Replay Counters : 3\n"},
        {{0, 0x02}, "    Peer Key Enabled      : YES\n"},
    };
    for (const auto& [field, line] : rows) {
        const auto text = decodeRSN(withCapabilities(field.first, field.second)).description();
        EXPECT_NE(text.find(line), std::string::npos) << line;
        EXPECT_EQ(text.find("YES"), text.rfind("YES")) << line;
    }
}

TEST(RSNIE, DescribesCiphersInTheirOwnOrder) {
    HalvaneRSNIE ie;
    for (const std::uint8_t type : Bytes{0, 2, 4}) ie.setUnicastCipher(type);
    for (const std::uint8_t type : Bytes{1, 2, 4, 5}) ie.setMulticastCipher(type);
    ie.setAKM(1);
    ie.setAllowKeyManagementPSK(true);
    ie.setPmkids(std::vector<ByteBuffer>());
    EXPECT_EQ(ie.description(),
              "    Version               : 1\n"
              "    Unicast Cipher(s)     : TKIP CCMP UseGroup \n"
              "    Group Cipher          : WEP40 WEP104 TKIP CCMP \n"
              "    Key Management        : PSK 802.1X \n"
              "    Pre-Authentication    : NO\n"
              "    No Pairwise Cipher    : NO\n"
              "    PTKSA Replay Counters : 0\n"
              "    GTKSA Replay Counters : 0\n"
              "    Peer Key Enabled      : NO\n"
              "    PMKIDs                : \n");
}

}  // namespace
