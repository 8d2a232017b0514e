#include "halvane/air/security.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <vector>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

constexpr halvane::OUI kWfa = {0x50, 0x6F, 0x9A};

SuiteSet rsnSet(std::initializer_list<int> types) {
    SuiteSet set;
    for (const int type : types) set.push_back({halvane::kRSNOUI, static_cast<std::uint8_t>(type)});
    return set;
}

SuiteSet wpaSet(std::initializer_list<int> types) {
    SuiteSet set;
    for (const int type : types) set.push_back({halvane::kWPAOUI, static_cast<std::uint8_t>(type)});
    return set;
}

std::string_view nameOf(const SecurityOffer& offer) {
    return securityName(securityOf(offer));
}

std::string_view rsnNameOf(std::initializer_list<int> types, Pmf pmf = Pmf::None) {
    return nameOf({.rsn = Reading::Whole, .rsnAkms = rsnSet(types), .pmf = pmf, .isPrivacy = true});
}

TEST(AirSecurity, NamesAnRsnByItsKeyManagement) {
    struct Row {
        std::initializer_list<int> akms;
        Pmf pmf;
        std::string_view name;
    };
    const Row rows[] = {
        {{1}, Pmf::None, "WPA2-Enterprise"},
        {{1}, Pmf::Required, "WPA2-Enterprise"},
        {{2}, Pmf::None, "WPA2-Personal"},
        {{2}, Pmf::Required, "WPA2-Personal"},
        {{4}, Pmf::None, "WPA2-Personal"},
        {{2, 6}, Pmf::Capable, "WPA2-Personal"},
        {{19, 20}, Pmf::Capable, "WPA2-Personal"},
        {{8}, Pmf::Required, "WPA3-Personal"},
        {{8}, Pmf::None, "WPA3-Personal"},
        {{24}, Pmf::Required, "WPA3-Personal"},
        {{9, 25}, Pmf::Required, "WPA3-Personal"},
        {{2, 8}, Pmf::Capable, "WPA2/WPA3-Personal"},
        {{6, 24}, Pmf::Capable, "WPA2/WPA3-Personal"},
        {{3}, Pmf::None, "WPA2-Enterprise"},
        {{1, 3}, Pmf::None, "WPA2-Enterprise"},
        {{1, 5}, Pmf::Capable, "WPA2/WPA3-Enterprise"},
        {{5}, Pmf::Required, "WPA3-Enterprise"},
        {{3, 5}, Pmf::Required, "WPA3-Enterprise"},
        {{5}, Pmf::Capable, "WPA2-Enterprise"},
        {{14, 15}, Pmf::Required, "WPA2-Enterprise"},
        {{5, 16}, Pmf::Required, "WPA3-Enterprise"},
        {{22, 23}, Pmf::Required, "WPA3-Enterprise"},
        {{12}, Pmf::Required, "WPA3-Enterprise 192-bit"},
        {{13}, Pmf::Required, "WPA3-Enterprise 192-bit"},
        {{18}, Pmf::Required, "Enhanced Open"},
        {{1, 2}, Pmf::None, "WPA2-Personal"},
        {{2, 18}, Pmf::None, "WPA2-Personal"},
        {{7}, Pmf::None, "Unknown"},
        {{99}, Pmf::Required, "Unknown"},
        {{99, 8}, Pmf::Required, "WPA3-Personal"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(rsnNameOf(row.akms, row.pmf), row.name) << *row.akms.begin();
    }
}

TEST(AirSecurity, KnowsTheSuitesOfTheWiFiAlliance) {
    EXPECT_EQ(nameOf({.rsn = Reading::Whole, .rsnAkms = {{kWfa, 1}}}), "OSEN");
    EXPECT_EQ(nameOf({.rsn = Reading::Whole, .rsnAkms = {{kWfa, 2}}}), "DPP");
    EXPECT_EQ(nameOf({.rsn = Reading::Whole, .rsnAkms = {{kWfa, 9}}}), "Unknown");
    EXPECT_EQ(nameOf({.rsn = Reading::Whole, .rsnAkms = {{kWfa, 2}, {halvane::kRSNOUI, 8}}}),
              "WPA3-Personal");
    EXPECT_EQ(nameOf({.rsn = Reading::Whole, .rsnAkms = {{{0x00, 0x40, 0x96}, 0}}}),
              "WPA2-Enterprise");
}

TEST(AirSecurity, NamesWpaAloneAndBesideWpa2) {
    EXPECT_EQ(nameOf({.wpa = Reading::Whole, .wpaAkms = wpaSet({2})}), "WPA-Personal");
    EXPECT_EQ(nameOf({.wpa = Reading::Whole, .wpaAkms = wpaSet({1})}), "WPA-Enterprise");
    EXPECT_EQ(nameOf({.wpa = Reading::Whole, .wpaAkms = wpaSet({7})}), "Unknown");
    const auto both = [](std::initializer_list<int> rsn, std::initializer_list<int> wpa) {
        return nameOf({.rsn = Reading::Whole,
                       .wpa = Reading::Whole,
                       .rsnAkms = rsnSet(rsn),
                       .wpaAkms = wpaSet(wpa)});
    };
    EXPECT_EQ(both({2}, {2}), "WPA/WPA2-Personal");
    EXPECT_EQ(both({1}, {1}), "WPA/WPA2-Enterprise");
    EXPECT_EQ(both({2}, {1}), "WPA2-Personal");
    EXPECT_EQ(both({8}, {2}), "WPA3-Personal");
}

TEST(AirSecurity, NeverCallsAProtectedNetworkOpen) {
    EXPECT_EQ(nameOf({.rsn = Reading::Broken}), "Broken");
    EXPECT_EQ(nameOf({.rsn = Reading::Broken, .wpa = Reading::Whole, .wpaAkms = wpaSet({2})}),
              "Broken");
    EXPECT_EQ(nameOf({.wpa = Reading::Broken, .isPrivacy = true}), "Broken");
    EXPECT_EQ(nameOf({.rsn = Reading::Whole,
                      .wpa = Reading::Broken,
                      .rsnAkms = rsnSet({2}),
                      .isPrivacy = true}),
              "WPA2-Personal");
    EXPECT_EQ(nameOf({.isPrivacy = true}), "WEP");
    EXPECT_EQ(nameOf({.isPrivacy = true, .hasWapi = true}), "WAPI");
    EXPECT_EQ(nameOf({.isPrivacy = true, .hasOsen = true}), "OSEN");
    EXPECT_EQ(nameOf({.isPrivacy = true, .hasOweTransition = true}), "WEP");
}

TEST(AirSecurity, TellsOpenNetworks) {
    EXPECT_EQ(nameOf({}), "Open");
    EXPECT_EQ(nameOf({.hasOweTransition = true}), "Enhanced Open transition");
}

TEST(AirSecurity, TakesTheSuitesOfAnElement) {
    const auto akmsIn = [](std::string_view hex) {
        return akmsOf(Rsn::decode(bytesOf(hex)).value());
    };
    EXPECT_EQ(akmsIn("0100"), rsnSet({1}));
    EXPECT_EQ(akmsIn("0100 000FAC04 0100 000FAC04 0300 000FAC08 000FAC02 000FAC08"),
              rsnSet({8, 2}));
    EXPECT_FALSE(akmsIn("0200"));
    EXPECT_FALSE(akmsIn("0100 000FAC04 0000 0100 000FAC02"));
    EXPECT_FALSE(akmsIn("0100 000FAC04 0100 000FAC04 0000"));
}

TEST(AirSecurity, ReadsTheProtectionOfManagementFrames) {
    const auto pmfIn = [](unsigned bits) {
        Rsn rsn;
        rsn.capabilities.emplace().setBits(6, 2, bits);
        return pmfName(pmfOf(rsn));
    };
    EXPECT_EQ(pmfName(pmfOf(Rsn())), "none");
    EXPECT_EQ(pmfIn(0), "none");
    EXPECT_EQ(pmfIn(1), "none");  // required without capable
    EXPECT_EQ(pmfIn(2), "capable");
    EXPECT_EQ(pmfIn(3), "required");
}

}  // namespace
