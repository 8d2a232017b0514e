#include "halvane/air/multi_link.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/element_range.h"
#include "halvane/air/element_writer.h"

#include "tests/air/element_samples.h"
#include "tests/air/told_elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::ToldElements;
using namespace halvane::air;

namespace {

constexpr MacAddress kMld({0x02, 0, 0, 0, 0x0A, 0x01});
constexpr MacAddress kLinkAddress({0x02, 0, 0, 0, 0x0A, 0x11});

Bytes bytesIn(Octets octets) {
    return {octets.begin(), octets.end()};
}

// 9.4.2.312.2.3: every field of the common info of the type Basic.
TEST(AirMultiLink, DecodesTheCommonInfoOfTheTypeBasic) {
    const auto element =
        MultiLink::decode(bytesOf("F007 12 020000000A01 02 05 0805 D722 F271 00 E500"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->type(), MultiLinkType::Basic);
    const MultiLinkCommonInfo& common = element->common;
    EXPECT_EQ(common.mldAddress, kMld);
    EXPECT_EQ(common.linkId(), 2);
    EXPECT_EQ(common.bssParametersChangeCount, 5);
    EXPECT_EQ(common.apMldId, 0);
    ASSERT_TRUE(common.mediumSynchronizationDelay);
    EXPECT_EQ(common.mediumSynchronizationDelay->durationMicroseconds(), 256u);
    EXPECT_EQ(common.mediumSynchronizationDelay->thresholdDbm(), -67);
    EXPECT_EQ(common.mediumSynchronizationDelay->maxTxops(), 1);
    ASSERT_TRUE(common.emlCapabilities);
    EXPECT_TRUE(common.emlCapabilities->isEmlsrSupported());
    EXPECT_EQ(common.emlCapabilities->emlsrPaddingDelay(), 128);
    EXPECT_EQ(common.emlCapabilities->emlsrTransitionDelay(), 256);
    EXPECT_TRUE(common.emlCapabilities->isEmlmrSupported());
    EXPECT_EQ(common.emlCapabilities->emlmrDelay(), 64);
    EXPECT_EQ(common.emlCapabilities->transitionTimeout(), 1024);
    ASSERT_TRUE(common.mldCapabilities);
    EXPECT_EQ(common.mldCapabilities->maxSimultaneousLinks(), 3);
    EXPECT_TRUE(common.mldCapabilities->isSrsSupported());
    EXPECT_EQ(common.mldCapabilities->tidToLinkNegotiation(), TidToLinkNegotiation::AnyLinks);
    EXPECT_EQ(common.mldCapabilities->frequencySeparationMhz(), 160);
    EXPECT_TRUE(common.mldCapabilities->isAarSupported());
    EXPECT_TRUE(common.mldCapabilities->isLinkReconfigurationSupported());
    EXPECT_TRUE(common.mldCapabilities->isAlignedTwtSupported());
    ASSERT_TRUE(common.extendedMldCapabilities);
    EXPECT_TRUE(common.extendedMldCapabilities->isOperationParameterUpdateSupported());
    EXPECT_EQ(common.extendedMldCapabilities->recommendedMaxSimultaneousLinks(), 2);
    EXPECT_TRUE(common.extendedMldCapabilities->isNstrStatusUpdateSupported());
    EXPECT_TRUE(common.extendedMldCapabilities->isEmlsrOnOneLinkSupported());
    EXPECT_TRUE(common.extendedMldCapabilities->isBtmRecommendationForSeveralApsSupported());
    EXPECT_TRUE(element->subelements.empty());
    EXPECT_TRUE(element->rest.empty());
}

TEST(AirMultiLink, HasOnlyTheFieldsOfThePresenceBits) {
    const auto element = MultiLink::decode(bytesOf("1000 08 020000000A01 0F"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->common.linkId(), 15);
    EXPECT_FALSE(element->common.bssParametersChangeCount || element->common.emlCapabilities ||
                 element->common.mldCapabilities || element->common.apMldId);
}

// Reserved values and values of no limit.
TEST(AirMultiLink, TellsCapabilitiesThatAreNoNumbers) {
    MediumSynchronizationDelay delay;
    delay.fields.octets = {0, 0xFB};
    EXPECT_FALSE(delay.thresholdDbm());
    EXPECT_FALSE(delay.maxTxops());
    delay.fields.octets = {0, 0xEA};
    EXPECT_EQ(delay.thresholdDbm(), -62);
    EXPECT_EQ(delay.maxTxops(), 15);
    EmlCapabilities eml;
    EXPECT_EQ(eml.emlsrPaddingDelay(), 0);
    EXPECT_EQ(eml.transitionTimeout(), 0);
    eml.fields.setBits(1, 3, 1);
    eml.fields.setBits(4, 3, 1);
    eml.fields.setBits(11, 4, 11);
    EXPECT_EQ(eml.emlsrPaddingDelay(), 32);
    EXPECT_EQ(eml.emlsrTransitionDelay(), 16);
    EXPECT_EQ(eml.transitionTimeout(), 128 * 1024);
    eml.fields.octets = {0x7E, 0x7F};
    EXPECT_FALSE(eml.emlsrPaddingDelay());
    EXPECT_FALSE(eml.emlsrTransitionDelay());
    EXPECT_FALSE(eml.emlmrDelay());
    EXPECT_FALSE(eml.transitionTimeout());
    MldCapabilities mld;
    EXPECT_EQ(mld.maxSimultaneousLinks(), 1);
    EXPECT_FALSE(mld.frequencySeparationMhz());
    EXPECT_FALSE(ExtendedMldCapabilities().recommendedMaxSimultaneousLinks());
}

// The length of the common info finds the link info, whatever the known fields add up to.
TEST(AirMultiLink, FindsTheLinkInfoByTheLengthOfTheCommonInfo) {
    const auto element = MultiLink::decode(bytesOf("0000 0A 020000000A01 AABBCC 00 03 0500 01"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->common.rest, ByteBuffer({0xAA, 0xBB, 0xCC}));
    ASSERT_EQ(element->subelements.size(), 1u);
    EXPECT_FALSE(element->common.linkId());
}

TEST(AirMultiLink, IsAbsentForACommonInfoThatLacksAField) {
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000 06 020000000A01")));
    EXPECT_FALSE(MultiLink::decode(bytesOf("1000 07 020000000A01 01")));
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000 00 020000000A01")));
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000 08 020000000A01")));
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000")));
}

// 9.4.2.312.2.4: every field of a Per-STA Profile subelement.
TEST(AirMultiLink, DecodesALink) {
    const auto element = MultiLink::decode(
        bytesOf("0000 07 020000000A01 "
                "00 1D F10F 16 020000000A11 6400 FEFFFFFFFFFFFFFF 0103 0502 07 1104 000161"));
    ASSERT_TRUE(element);
    const PerStaProfile* link = element->link(1);
    ASSERT_TRUE(link);
    EXPECT_EQ(element->link(2), nullptr);
    EXPECT_TRUE(link->isComplete());
    EXPECT_EQ(link->address, kLinkAddress);
    EXPECT_EQ(link->beaconInterval, 100);
    EXPECT_EQ(link->tsfOffset, -2);
    EXPECT_EQ(link->dtim, (DtimInfo{1, 3}));
    EXPECT_EQ(link->nstrLinks, 0x0205);
    EXPECT_EQ(link->bssParametersChangeCount, 7);
    EXPECT_TRUE(link->infoRest.empty());
    ASSERT_TRUE(link->capabilities());
    EXPECT_TRUE(link->capabilities()->isEss());
    EXPECT_TRUE(link->capabilities()->hasPrivacy());
    EXPECT_TRUE(link->capabilities()->hasShortSlotTime());
    EXPECT_EQ(bytesIn(link->elements()), bytesOf("000161"));
    EXPECT_EQ(bytesIn(link->elements(4)), bytesOf("61"));
    EXPECT_EQ(bytesIn(link->elements(0)), bytesOf("1104000161"));
    EXPECT_TRUE(link->elements(6).empty());
}

std::string elementsIn(std::string_view hex) {
    ToldElements told;
    EXPECT_FALSE(MultiLink::describe(bytesOf(hex), told)) << hex;
    return told.list;
}

// 9.4.2.312.2.4 and 9.4.2.312.4: capabilities stand before the elements of an access point's link
// and of a link that is added; a probe request has the elements alone.
TEST(AirMultiLink, TellsWhichOctetsOfAProfileHoldElements) {
    EXPECT_EQ(elementsIn("0000 07 020000000A01 00 08 0100 01 1104 030106"),
              "STA Profile @14 1104|030106\n");
    EXPECT_EQ(elementsIn("0000 07 020000000A01 00 05 0100 01 1104"), "");
    EXPECT_EQ(elementsIn("0100 01 00 05 0100 030106"), "STA Profile @7 |030106\n");
    EXPECT_EQ(elementsIn("0200 01 00 08 0101 01 1104 030106"), "STA Profile @8 1104|030106\n");
    EXPECT_EQ(elementsIn("0200 01 00 06 8100 01 030106"), "STA Profile @8 |030106\n");
}

// The size of the bitmap is a bit of its own, and only a complete profile has one.
TEST(AirMultiLink, DecodesTheBitmapOfLinksThatExcludeEachOther) {
    const auto shortOne = MultiLink::decode(bytesOf("0000 07 020000000A01 00 04 1102 02 05"));
    ASSERT_TRUE(shortOne && shortOne->link(1));
    EXPECT_EQ(shortOne->link(1)->nstrLinks, 5);
    const auto incomplete = MultiLink::decode(bytesOf("0000 07 020000000A01 00 04 0102 01 05"));
    ASSERT_TRUE(incomplete && incomplete->link(1));
    EXPECT_FALSE(incomplete->link(1)->nstrLinks);
    EXPECT_EQ(incomplete->link(1)->profile, ByteBuffer({5}));
}

TEST(AirMultiLink, FindsTheProfileByTheLengthOfTheStaInfo) {
    const auto element = MultiLink::decode(bytesOf("0000 07 020000000A01 00 07 0300 03 AABB 1104"));
    ASSERT_TRUE(element && element->link(3));
    EXPECT_EQ(element->link(3)->infoRest, ByteBuffer({0xAA, 0xBB}));
    EXPECT_EQ(element->link(3)->profile, ByteBuffer({0x11, 0x04}));
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000 07 020000000A01 00 03 0300 00")));
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000 07 020000000A01 00 03 0300 02")));
    EXPECT_FALSE(MultiLink::decode(bytesOf("0000 07 020000000A01 00 05 2300 03 AABB")));
}

TEST(AirMultiLink, KeepsLinksBeforeOctetsThatMakeNone) {
    const auto element =
        MultiLink::decode(bytesOf("0000 07 020000000A01 00 03 0500 01 DD 01 AA 00 03 0600"));
    ASSERT_TRUE(element);
    ASSERT_EQ(element->subelements.size(), 2u);
    EXPECT_TRUE(element->link(5));
    EXPECT_EQ(element->subelements[1].id, 221);
    EXPECT_EQ(element->subelements[1].body, ByteBuffer({0xAA}));
    EXPECT_EQ(element->rest, ByteBuffer({0x00, 0x03, 0x06, 0x00}));
}

// 9.4.2.312.3: STA Control and the profile; no STA Info.
TEST(AirMultiLink, DecodesAProbeRequest) {
    const auto element = MultiLink::decode(bytesOf("1100 02 03 00 05 1400 0A010A 00 02 0500"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->type(), MultiLinkType::ProbeRequest);
    EXPECT_FALSE(element->common.mldAddress);
    EXPECT_EQ(element->common.apMldId, 3);
    ASSERT_TRUE(element->link(4));
    EXPECT_TRUE(element->link(4)->isComplete());
    EXPECT_EQ(bytesIn(element->link(4)->elements(0)), bytesOf("0A010A"));
    ASSERT_TRUE(element->link(5));
    EXPECT_FALSE(element->link(5)->isComplete());
    EXPECT_TRUE(element->link(5)->elements(0).empty());
}

// 9.4.2.312.4: an access point that goes after 100 beacons.
TEST(AirMultiLink, DecodesAReconfiguration) {
    const auto element = MultiLink::decode(
        bytesOf("F200 0D 020000000A01 D722 F271 E500 00 0B 6100 09 020000000A11 6400"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->type(), MultiLinkType::Reconfiguration);
    EXPECT_EQ(element->common.mldAddress, kMld);
    EXPECT_EQ(element->common.emlCapabilities->emlmrDelay(), 64);
    EXPECT_EQ(element->common.mldCapabilities->maxSimultaneousLinks(), 3);
    EXPECT_TRUE(element->common.extendedMldCapabilities);
    const PerStaProfile* link = element->link(1);
    ASSERT_TRUE(link);
    EXPECT_EQ(link->operation(), ReconfigurationOperation::ApRemoval);
    EXPECT_EQ(link->address, kLinkAddress);
    EXPECT_EQ(link->apRemovalTimer, 100);
    const auto added = MultiLink::decode(bytesOf("0200 01 00 03 0201 01"));
    ASSERT_TRUE(added && added->link(2));
    EXPECT_EQ(added->link(2)->operation(), ReconfigurationOperation::AddLink);
    EXPECT_FALSE(added->common.mldAddress);
}

TEST(AirMultiLink, DecodesTdlsAndPriorityAccess) {
    const auto tdls = MultiLink::decode(bytesOf("0300 07 020000000A01 00 02 0100"));
    ASSERT_TRUE(tdls);
    EXPECT_EQ(tdls->common.mldAddress, kMld);
    ASSERT_EQ(tdls->subelements.size(), 1u);
    EXPECT_FALSE(tdls->subelements[0].link);
    const auto access = MultiLink::decode(bytesOf("0400 07 020000000A01 00 05 0200 0C0101"));
    ASSERT_TRUE(access && access->link(2));
    EXPECT_EQ(access->common.mldAddress, kMld);
    EXPECT_EQ(bytesIn(access->link(2)->elements(0)), bytesOf("0C0101"));
}

TEST(AirMultiLink, KeepsAReservedTypeWhole) {
    const auto element = MultiLink::decode(bytesOf("0700 01 AA"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->rest, ByteBuffer({0x01, 0xAA}));
    EXPECT_EQ(element->encode(), bytesOf("0700 01 AA"));
}

MultiLink withProfileOf(std::size_t size) {
    MultiLink element;
    element.common.mldAddress = kMld;
    auto& link = element.subelements.emplace_back().link.emplace();
    link.control.setBits(0, 4, 12);
    link.address = kLinkAddress;
    Bytes profile(size);
    for (std::size_t i = 0; i < size; ++i) profile[i] = static_cast<std::uint8_t>(i);
    link.profile = ByteBuffer(profile);
    return element;
}

// STA Control and STA Info take 9 octets here, so that 246 octets of profile fill one subelement.
TEST(AirMultiLink, FragmentsALongProfile) {
    const std::size_t head = 2 + 7;
    EXPECT_EQ(withProfileOf(246).encode().size(), head + 2 + 255);
    const Bytes longer = withProfileOf(247).encode();
    ASSERT_EQ(longer.size(), head + 2 + 255 + 2 + 1);
    EXPECT_EQ(longer[head + 1], 255);
    EXPECT_EQ(longer[head + 2 + 255], 254);
    EXPECT_EQ(longer[head + 2 + 255 + 1], 1);
    for (const std::size_t size : {0u, 245u, 246u, 247u, 443u, 500u, 501u, 502u, 1500u}) {
        const MultiLink element = withProfileOf(size);
        const auto read = MultiLink::decode(element.encode());
        ASSERT_TRUE(read) << size;
        ASSERT_EQ(read->subelements.size(), 1u) << size;
        ASSERT_TRUE(read->link(12)) << size;
        EXPECT_EQ(read->link(12)->profile, element.link(12)->profile) << size;
        EXPECT_EQ(read->encode(), element.encode()) << size;
        EXPECT_TRUE(read->rest.empty());
    }
}

TEST(AirMultiLink, KeepsAnEmptyFragment) {
    Bytes octets = withProfileOf(246).encode();
    octets.insert(octets.end(), {254, 0});
    auto read = MultiLink::decode(octets);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->subelements.size(), 1u);
    EXPECT_TRUE(read->subelements[0].endsEmpty);
    EXPECT_EQ(read->encode(), octets);
    read->subelements[0].link->profile = ByteBuffer({1});
    MultiLink edited = withProfileOf(0);
    edited.subelements[0].link->profile = ByteBuffer({1});
    EXPECT_EQ(read->encode(), edited.encode());
}

// The element's own fragments are joined first, then those of the subelements.
TEST(AirMultiLink, IsReadThroughBothKindsOfFragments) {
    const MultiLink element = withProfileOf(900);
    Bytes octets;
    appendElement(octets, MultiLink::kId, element.encode());
    const auto found = ElementRange(octets).begin();
    EXPECT_TRUE(found->isFragmented());
    const auto read = MultiLink::decode(found->body);
    ASSERT_TRUE(read && read->link(12));
    EXPECT_EQ(read->link(12)->profile, element.link(12)->profile);
}

TEST(AirMultiLink, MarksTheFieldsThatAreThere) {
    MultiLink element = withProfileOf(2);
    element.common.linkIdInfo.emplace().setBits(0, 4, 1);
    element.common.apMldId = 0;
    PerStaProfile& link = *element.subelements[0].link;
    link.dtim = DtimInfo{0, 2};
    link.nstrLinks = 0x101;
    EXPECT_EQ(element.encode(), bytesOf("1002 09 020000000A01 01 00 "
                                        "00 0F 3C07 0B 020000000A11 0002 0101 0001"));
    element.common.apMldId.reset();
    link.nstrLinks.reset();
    link.dtim.reset();
    const auto read = MultiLink::decode(element.encode());
    ASSERT_TRUE(read && read->link(12));
    EXPECT_FALSE(read->common.apMldId);
    EXPECT_FALSE(read->link(12)->dtim);
    EXPECT_EQ(read->link(12)->profile, link.profile);
}

TEST(AirMultiLink, AlwaysWritesTheAddressOfTheTypeBasic) {
    EXPECT_EQ(MultiLink().encode(), bytesOf("0000 07 000000000000"));
}

// Every prefix and every length of an element with fragments.
TEST(AirMultiLink, ReadsNothingPastTheEnd) {
    const Bytes octets = withProfileOf(300).encode();
    halvane::testing::forEachHostileForm(octets, {0, 1, 2, 9, 10, 11, 12, 13, 266, 267},
                                         [](const auto& body) {
                                             const auto read = MultiLink::decode(body.bytes());
                                             if (read) {
                                                 EXPECT_EQ(ByteBuffer(read->encode()), body);
                                             }
                                         });
}

}  // namespace
