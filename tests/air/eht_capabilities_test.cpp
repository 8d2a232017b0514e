#include "halvane/air/eht_capabilities.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <optional>
#include <string_view>

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::forEachPrefix;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

// 802.11be-2024, 9.4.2.313.2 and 9.4.2.313.3: bits counted by hand.
TEST(AirEhtCapabilities, DecodesTheCapabilities) {
    const auto eht = EhtCapabilities::decode(bytesOf("4B31 E2DBB618 0040 E08070 04 222222"));
    ASSERT_TRUE(eht);
    EXPECT_TRUE(eht->mac.has(EhtMacCapability::EpcsPriorityAccess));
    EXPECT_TRUE(eht->mac.has(EhtMacCapability::OmControl));
    EXPECT_FALSE(eht->mac.has(EhtMacCapability::TriggeredTxopSharingMode1));
    EXPECT_TRUE(eht->mac.has(EhtMacCapability::TriggeredTxopSharingMode2));
    EXPECT_FALSE(eht->mac.has(EhtMacCapability::RestrictedTwt));
    EXPECT_EQ(eht->mac.maximumMpduLength(), 7991);
    EXPECT_TRUE(eht->mac.has(EhtMacCapability::MaximumAmpduLengthExponentExtension));
    EXPECT_EQ(eht->mac.linkAdaptation(), 3);
    EXPECT_TRUE(eht->phy.has(EhtPhyCapability::Width320));
    EXPECT_FALSE(eht->phy.has(EhtPhyCapability::Ru242InWiderBw));
    EXPECT_TRUE(eht->phy.has(EhtPhyCapability::SuBeamformer));
    EXPECT_TRUE(eht->phy.has(EhtPhyCapability::SuBeamformee));
    EXPECT_EQ(eht->phy.beamformeeStreams80(), 8);
    EXPECT_EQ(eht->phy.beamformeeStreams160(), 7);
    EXPECT_EQ(eht->phy.beamformeeStreams320(), 7);
    EXPECT_EQ(eht->phy.soundingDimensions80(), 7);
    EXPECT_EQ(eht->phy.soundingDimensions160(), 7);
    EXPECT_EQ(eht->phy.soundingDimensions320(), 3);
    EXPECT_EQ(eht->phy.maximumColumns(), 1);
    EXPECT_FALSE(eht->phy.has(EhtPhyCapability::PpeThresholdsPresent));
    EXPECT_EQ(eht->phy.nominalPacketPadding(), 0);
    EXPECT_EQ(eht->phy.maximumLtfs(), 1);
    EXPECT_EQ(eht->phy.mcs15(), 12);
    EXPECT_TRUE(eht->phy.has(EhtPhyCapability::DupIn6Ghz));
    EXPECT_TRUE(eht->phy.has(EhtPhyCapability::TbSoundingFeedbackRateLimit));
    EXPECT_FALSE(eht->phy.has(EhtPhyCapability::MuBeamformer80));
    EXPECT_FALSE(eht->phy.has(EhtPhyCapability::Only20Limited));
    EXPECT_TRUE(eht->phy.has(EhtPhyCapability::Only20Mru));
    EXPECT_EQ(eht->sets, ByteBuffer({0x04, 0x22, 0x22, 0x22}));
}

HePhyCapabilities heWith(std::initializer_list<HePhyCapability> flags) {
    HePhyCapabilities he;
    for (const auto flag : flags) he.bits.setBit(static_cast<std::size_t>(flag), true);
    return he;
}

EhtCapabilities ehtWith(std::initializer_list<EhtPhyCapability> flags, std::string_view sets) {
    EhtCapabilities eht;
    for (const auto flag : flags) eht.phy.bits.setBit(static_cast<std::size_t>(flag), true);
    eht.sets = ByteBuffer(bytesOf(sets));
    return eht;
}

// 9.4.2.313.4: one map for each width that the HE Capabilities and the bit of 320 MHz name.
TEST(AirEhtCapabilities, HasTheMapsOfItsWidths) {
    const auto he80 = heWith({HePhyCapability::Width40And80});
    const auto he160 = heWith({HePhyCapability::Width40And80, HePhyCapability::Width160});
    const auto only80 = ehtWith({}, "443322").mcsSets(he80);
    ASSERT_TRUE(only80 && only80->upTo80);
    EXPECT_FALSE(only80->at160 || only80->at320 || only80->only20 || only80->ppe);
    EXPECT_EQ(only80->upTo80->rxStreams(0), 4);
    EXPECT_EQ(only80->upTo80->rxStreams(9), 4);
    EXPECT_EQ(only80->upTo80->rxStreams(10), 3);
    EXPECT_EQ(only80->upTo80->rxStreams(11), 3);
    EXPECT_EQ(only80->upTo80->rxStreams(12), 2);
    EXPECT_EQ(only80->upTo80->rxStreams(13), 2);
    EXPECT_EQ(only80->upTo80->highestRxMcs(3), 11);
    EXPECT_EQ(only80->upTo80->highestRxMcs(4), 9);
    EXPECT_FALSE(only80->upTo80->highestRxMcs(5));

    const auto all =
        ehtWith({EhtPhyCapability::Width320}, "444444 333333 122112 99").mcsSets(he160);
    ASSERT_TRUE(all && all->at160 && all->at320);
    EXPECT_EQ(all->at160->rxStreams(), 3);
    EXPECT_EQ(all->at320->rxStreams(0), 2);
    EXPECT_EQ(all->at320->txStreams(0), 1);
    EXPECT_EQ(all->at320->rxStreams(10), 1);
    EXPECT_EQ(all->at320->txStreams(13), 1);
    EXPECT_EQ(all->at320->txStreams(), 2);
    EXPECT_EQ(all->rest, ByteBuffer({0x99}));
    EXPECT_FALSE(ehtWith({EhtPhyCapability::Width320}, "444444 333333 1221").mcsSets(he160));
    EXPECT_FALSE(ehtWith({}, "4444").mcsSets(he80));
}

// A station of 20 MHz alone has a map of four octets; an access point of 20 MHz has the usual one.
TEST(AirEhtCapabilities, HasAMapOfItsOwnForStationsOf20MhzAlone) {
    const auto he = heWith({HePhyCapability::Ru242At5Ghz});
    const auto eht = ehtWith({}, "44332211");
    const auto station = eht.mcsSets(he, EhtSender::Station);
    ASSERT_TRUE(station && station->only20);
    EXPECT_FALSE(station->upTo80);
    EXPECT_EQ(station->only20->rxStreams(7), 4);
    EXPECT_EQ(station->only20->rxStreams(8), 3);
    EXPECT_EQ(station->only20->rxStreams(9), 3);
    EXPECT_EQ(station->only20->rxStreams(10), 2);
    EXPECT_EQ(station->only20->rxStreams(13), 1);
    const auto accessPoint = eht.mcsSets(he, EhtSender::AccessPoint);
    ASSERT_TRUE(accessPoint && accessPoint->upTo80);
    EXPECT_EQ(accessPoint->rest, ByteBuffer({0x11}));
    EXPECT_FALSE(ehtWith({}, "443322").mcsSets(he, EhtSender::Station));
}

// 9.4.2.313.5: one stream, 242 and 4x996 tones: 9 + 2 * 6 = 21 bits.
TEST(AirEhtCapabilities, DecodesPpeThresholds) {
    const std::uint32_t bits = 0x11 << 4 | 1 << 9 | 5 << 12 | 3 << 15 | 7 << 18;
    Bytes octets = bytesOf("444444");
    for (int i = 0; i < 3; ++i) octets.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
    auto eht = ehtWith({EhtPhyCapability::PpeThresholdsPresent}, "");
    eht.sets = ByteBuffer(octets);
    const auto sets = eht.mcsSets({});
    ASSERT_TRUE(sets && sets->ppe);
    EXPECT_EQ(sets->ppe->streams(), 1);
    EXPECT_EQ(sets->ppe->thresholds(1, 0), (EhtPpeThresholds::Pair{1, 5}));
    EXPECT_EQ(sets->ppe->thresholds(1, 4), (EhtPpeThresholds::Pair{3, 7}));
    EXPECT_FALSE(sets->ppe->thresholds(1, 2));
    EXPECT_TRUE(sets->rest.empty());
    EXPECT_EQ(sets->encode(), octets);
    octets.pop_back();
    eht.sets = ByteBuffer(octets);
    EXPECT_FALSE(eht.mcsSets({}));
}

TEST(AirEhtCapabilities, HoldsTheLargestPpeThresholds) {
    Bytes octets = bytesOf("444444");
    octets.resize(octets.size() + 62, 0xFF);
    auto eht = ehtWith({EhtPhyCapability::PpeThresholdsPresent}, "");
    eht.sets = ByteBuffer(octets);
    const auto sets = eht.mcsSets({});
    ASSERT_TRUE(sets && sets->ppe);
    EXPECT_EQ(sets->ppe->octets.size(), 62u);
    EXPECT_EQ(sets->ppe->thresholds(16, 4), (EhtPpeThresholds::Pair{7, 7}));
}

// Whatever the context is, each prefix either decodes to the same octets or is damaged.
TEST(AirEhtCapabilities, TellsTheMapsOfEveryPrefix) {
    const auto he = heWith({HePhyCapability::Width160});
    const Bytes body = bytesOf("0B00 020000000008000000 444444 333333 222222 1302 FFFFFFFF 99");
    forEachPrefix(body, [&](const ByteBuffer& prefix) {
        for (const auto sender : {EhtSender::AccessPoint, EhtSender::Station}) {
            ToldFields fields;
            const auto damage = EhtCapabilities::describe(prefix.bytes(), fields, he, sender);
            const auto eht = EhtCapabilities::decode(prefix.bytes());
            const auto sets = eht ? eht->mcsSets(he, sender) : std::nullopt;
            EXPECT_EQ(damage.has_value(), !sets) << prefix.hex();
            if (sets) {
                EXPECT_EQ(ByteBuffer(sets->encode()), eht->sets);
            }
            EXPECT_LE(fields.end_, prefix.size());
        }
    });
    ToldFields fields;
    EXPECT_FALSE(EhtCapabilities::describe(body, fields, he, EhtSender::AccessPoint));
    EXPECT_EQ(fields.end_, body.size());
}

}  // namespace
