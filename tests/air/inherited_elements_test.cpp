// Networks of one beacon take over what its sender tells, without a copy for each.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string_view>
#include <vector>

#include "halvane/air/inherited_elements_internal.h"
#include "halvane/air/profile.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"

using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::joined;
using halvane::testing::ssidElement;
using namespace halvane::air;

namespace {

constexpr FixedFields kFixed = {MacAddress({0x02, 0, 0, 0, 0x08, 0x20}), 0x0011, 100};

// One access point of channel 36, by its link and its MLD alone.
const Bytes kReport = element(201, bytesOf("0103 73 24 000000"));
// Two access points of channel 6.
const Bytes kOtherReport = element(201, bytesOf("1103 51 06 000000 000100"));
// Says that Reduced Neighbor Report is not inherited.
const Bytes kNoReport = element(255, bytesOf("38 01C9 00"));
// Its suite count goes past its end.
const Bytes kDamagedRsn = element(48, bytesOf("0100 000FAC04 0500 000FAC04"));

// The profile of a network: capabilities, index, name, and what else it has.
Bytes network(std::uint8_t index, const Bytes& more = {}) {
    const Bytes profile =
        joined({element(83, {0x11, 0}), element(85, {index, 1, 0}), ssidElement("guest"), more});
    return element(0, profile);
}

Bytes beacon(const Bytes& own, const std::vector<Bytes>& networks) {
    Bytes body = {3};
    for (const Bytes& network : networks) body.insert(body.end(), network.begin(), network.end());
    return joined({ssidElement("main"), own, element(71, body)});
}

bool isCut(const BssProfile& profile) {
    const auto isTooShort = [](const Finding& finding) {
        return finding.kind == FindingKind::ElementTooShort;
    };
    return std::ranges::any_of(profile.findings, isTooShort);
}

TEST(AirInheritedElements, ShareTheNeighboursAmongNetworks) {
    const auto profile = profileOf(beacon(kReport, {network(1), network(2)}), kFixed);
    ASSERT_EQ(profile.nontransmitted.size(), 2u);
    const Neighbors& first = profile.nontransmitted[0].profile.neighbors;
    const Neighbors& second = profile.nontransmitted[1].profile.neighbors;
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first, profile.neighbors);
    EXPECT_EQ(first.begin(), second.begin());
}

TEST(AirInheritedElements, LeaveTheNeighboursOfANetworkToIt) {
    const auto profile = profileOf(
        beacon(kReport, {network(1, kOtherReport), network(2, kNoReport), network(3)}), kFixed);
    ASSERT_EQ(profile.nontransmitted.size(), 3u);
    ASSERT_EQ(profile.nontransmitted[0].profile.neighbors.size(), 2u);
    EXPECT_EQ(profile.nontransmitted[0].profile.neighbors[1].linkId, 1);
    EXPECT_TRUE(profile.nontransmitted[1].profile.neighbors.empty());
    EXPECT_EQ(profile.nontransmitted[2].profile.neighbors.size(), 1u);
}

TEST(AirInheritedElements, TellTheSendersDamageOfEachNetworkThatInheritsIt) {
    const Bytes whole = halvane::testing::rsnElement(2);
    const auto profile = profileOf(beacon(kDamagedRsn, {network(1), network(2, whole)}), kFixed);
    ASSERT_EQ(profile.nontransmitted.size(), 2u);
    EXPECT_TRUE(isCut(profile));
    EXPECT_TRUE(isCut(profile.nontransmitted[0].profile));
    EXPECT_FALSE(isCut(profile.nontransmitted[1].profile));
}

TEST(AirInheritedElements, TellTheDamageOfANetworksOwn) {
    const Bytes whole = halvane::testing::rsnElement(2);
    const auto profile = profileOf(beacon(whole, {network(1, kDamagedRsn), network(2)}), kFixed);
    ASSERT_EQ(profile.nontransmitted.size(), 2u);
    EXPECT_FALSE(isCut(profile));
    EXPECT_TRUE(isCut(profile.nontransmitted[0].profile));
    EXPECT_FALSE(isCut(profile.nontransmitted[1].profile));
}

// A network's own elements come first in the list, whatever their place in a beacon would be.
TEST(AirInheritedElements, StandInNoOrderWithANetworksOwn) {
    const Bytes rates = element(1, {0x8C, 0x12});
    const Bytes rsn = halvane::testing::rsnElement(8);
    const auto profile = profileOf(beacon(rates, {network(1, rsn)}), kFixed);
    ASSERT_EQ(profile.nontransmitted.size(), 1u);
    const auto isOrder = [](const Finding& finding) {
        return finding.kind == FindingKind::ElementOrder;
    };
    EXPECT_TRUE(std::ranges::none_of(profile.nontransmitted[0].profile.findings, isOrder));
}

}  // namespace
