// What a record makes when it is first asked for it, and its creation in one step.
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <vector>

#include "halvane/ie/mac.h"
#include "halvane/ie/mcs.h"

#include "tests/support/elements.h"
#include "tests/support/replaced_system.h"
#include "tests/support/scarce_memory.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::HalvaneMCS;
using halvane::Number;
using namespace halvane::testing;

namespace {

const ByteBuffer kAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
constexpr std::uint16_t kESSAndPrivacy = 0x0011;
constexpr std::uint8_t kWide = 1 << 2;  // any channel width

Bytes htCapabilities(std::uint8_t information, const Bytes& set) {
    Bytes body = {information, 0, 0};
    body.insert(body.end(), set.begin(), set.end());
    body.resize(26);
    return element(45, body);
}

// A record with all that is made late.
Bytes fullElements() {
    Bytes set(16);
    set[0] = 0xFF;
    set[9] = 0xFF;  // MCS 72 to 76, and three that do not exist
    return joined({ssidElement("a name of more than 16 bytes"),
                   {1, 4, 0x82, 0x84, 0x8B, 0x96},
                   element(7, {'D', 'E', ' ', 1, 13, 20, 36, 4, 23, 201, 1, 2}),
                   {50, 2, 0x0C, 0x84},
                   rsnElement(2),
                   htCapabilities(0x62, set),
                   htOperationElement(6, kWide),
                   {9}});
}

HalvaneMAC sighting(const Bytes& elements) {
    return HalvaneMAC::initWithMAC_withCapabilityField_withInformationElements(
        kAddress, kESSAndPrivacy, ByteBuffer(elements));
}

TEST(MACSighting, IsWhatTheThreeCallsMake) {
    for (const Bytes& elements : {Bytes(), fullElements(), Bytes{0}, Bytes{1, 0}}) {
        halvane::ScopedUpTime clock;
        clock.set(5'000'000'000);
        auto other = HalvaneMAC::initWithMAC(kAddress);
        other.setCapabilityField(kESSAndPrivacy);
        other.setInformationElements(ByteBuffer(elements));
        const auto record = sighting(elements);
        EXPECT_EQ(record, other);
        EXPECT_EQ(record.firstAdded(), 5'000'000u);
        EXPECT_EQ(record.lastUpdated(), 5'000'000u);
        EXPECT_EQ(record.invalidIEs(), other.invalidIEs());
        EXPECT_EQ(record.description(), other.description());
    }
}

TEST(MACLists, AreMadeWhenTheyAreAskedFor) {
    const auto record = sighting(fullElements());
    const auto copy = record;  // before
    EXPECT_EQ(record.IEs().size(), 7u);
    EXPECT_EQ(*record.supportedRates(),
              (std::vector<Number>{Number(1.0), Number(2.0), Number(2.0), Number(5.5), Number(6.0),
                                   Number(11.0)}));
    EXPECT_EQ(record.countryIE()->channelTuples()->size(), 2u);
    EXPECT_EQ(record.countryIE()->regulatoryTuples()->size(), 1u);
    EXPECT_EQ(record.HTCaps()->mcsRates()->size(), 13u);
    const auto copyOfAsked = record;
    for (const auto& other : {copy, copyOfAsked}) {
        EXPECT_EQ(other, record);
        EXPECT_EQ(other.supportedRates(), record.supportedRates());
        EXPECT_EQ(other.HTCaps()->mcsRates(), record.HTCaps()->mcsRates());
        EXPECT_EQ(other.skeletonRepresentation(), record.skeletonRepresentation());
        EXPECT_EQ(other.description(), record.description());
    }
}

TEST(MACLists, KeepTheirPlace) {
    const auto record = sighting(fullElements());
    const auto* const elements = &record.IEs();
    const auto* const rates = &record.supportedRates();
    EXPECT_EQ(elements->data(), record.IEs().data());
    EXPECT_EQ(rates, &record.supportedRates());
    EXPECT_EQ((*rates)->data(), record.supportedRates()->data());
}

TEST(MACLists, AreThoseOfTheNewestElements) {
    auto record = sighting(fullElements());
    EXPECT_EQ(record.IEs().size(), 7u);
    EXPECT_EQ(record.supportedRates()->size(), 6u);
    record.setInformationElements(ByteBuffer(joined({ssidElement("a"), {1, 1, 0x0C}})));
    EXPECT_EQ(record.IEs().size(), 2u);
    EXPECT_EQ(*record.supportedRates(), std::vector<Number>{Number(6.0)});
    record.setInformationElements(ByteBuffer(ssidElement("b")));
    EXPECT_FALSE(record.supportedRates());
    record.setInformationElements(ByteBuffer{1, 0});
    EXPECT_TRUE(record.supportedRates() && record.supportedRates()->empty());
}

TEST(MACLists, AreMadeAgainWhereMemoryWasShort) {
    const auto whole = sighting(fullElements());
    const auto record = sighting(fullElements());
    const auto nothing = [] {};
    EXPECT_GT(withEachAllocationFailing([&] { record.IEs(); }, nothing), 0u);
    EXPECT_EQ(record.IEs(), whole.IEs());
    EXPECT_GT(withEachAllocationFailing([&] { record.supportedRates(); }, nothing), 0u);
    EXPECT_EQ(record.supportedRates(), whole.supportedRates());
    EXPECT_GT(withEachAllocationFailing([&] { record.HTCaps()->mcsRates(); }, nothing), 0u);
    EXPECT_EQ(record.HTCaps()->mcsRates(), whole.HTCaps()->mcsRates());
    EXPECT_GT(withEachAllocationFailing([&] { record.countryIE()->channelTuples(); }, nothing), 1u);
    EXPECT_EQ(record.countryIE()->description(), whole.countryIE()->description());
}

// The rate is found without a list of indices.
TEST(MACRate, IsTheBestOfTheListedIndices) {
    std::mt19937 random(7);
    const auto expectBest = [](const Bytes& set) {
        for (const std::uint8_t information : Bytes{0x00, 0x02, 0x20, 0x42, 0x62}) {
            for (const bool isWide : {false, true}) {
                const auto record = sighting(joined(
                    {htCapabilities(information, set), htOperationElement(6, isWide ? kWide : 0)}));
                const auto& caps = *record.HTCaps();
                const auto width = record.channelWidth()->int64();
                const bool isShort =
                    width == 40 ? caps.supports40MHzShortGI() : caps.supports20MHzShortGI();
                const auto best = HalvaneMCS::sharedSystem().rateForMCSSet_withChannelWidth_shortGI(
                    *caps.mcsRates(), width, isShort);
                EXPECT_EQ(record.maxPHYRate(), best) << ByteBuffer(set).hex();
                EXPECT_EQ(record.maxPHYRate()->isReal(), best.isReal());
            }
        }
    };
    expectBest(Bytes(16));
    for (std::size_t bit = 0; bit < 128; ++bit) {
        Bytes set(16);
        set[bit / 8] = static_cast<std::uint8_t>(1u << bit % 8);
        expectBest(set);
    }
    for (int i = 0; i < 300; ++i) {
        Bytes set(16);
        for (auto& octet : set) octet = static_cast<std::uint8_t>(random() & random());
        if (i % 2 == 0) set.assign({0xFF, 0xFF, set[2]});
        set.resize(16);
        expectBest(set);
    }
}

}  // namespace
