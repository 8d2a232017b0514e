#include "halvane/air/multiple_bssid_profiles.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_writer.h"
#include "halvane/air/multi_link.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::element;
using halvane::testing::joined;
using halvane::testing::rsnElement;
using halvane::testing::ssidElement;
using namespace halvane::air;

namespace {

constexpr MacAddress kTransmitted({0x02, 0, 0, 0, 0x10, 0x0E});

const Bytes kOpen = element(83, {0x01, 0x04});
const Bytes kPrivate = element(83, {0x11, 0x04});

Bytes indexElement(std::uint8_t index) {
    return element(85, {index, 2, 1});
}

Bytes container(std::uint8_t maxIndicator, std::initializer_list<Bytes> profiles) {
    Bytes body = {maxIndicator};
    for (const Bytes& profile : profiles) {
        const Bytes subelement = element(0, profile);
        body.insert(body.end(), subelement.begin(), subelement.end());
    }
    return element(71, body);
}

// "0 85 221": the elements by their numbers.
std::string numbersOf(std::span<const Element> elements) {
    std::string text;
    for (const Element& element : elements) {
        if (!text.empty()) text += ' ';
        text += std::to_string(static_cast<unsigned>(element.id));
    }
    return text;
}

// A frame with its elements and profiles.
struct Frame {
    explicit Frame(const Bytes& bytes, const MacAddress& transmitted = kTransmitted)
        : octets(halvane::testing::exactHeapCopy(bytes)),
          elements(elementsIn(octets.bytes())),
          found(elements, transmitted) {}
    Frame(const Frame&) = delete;

    const NontransmittedProfile& profile(std::size_t index) const {
        return found.profiles().at(index);
    }
    std::string held(std::size_t index = 0) const {
        return numbersOf(found.elementsOf(profile(index)).elements);
    }

    halvane::ByteBuffer octets;
    std::vector<Element> elements;
    MultipleBssidProfiles found;
};

// 9.4.2.45: the n low bits count up within themselves.
TEST(AirNontransmittedBssid, IsComputedWithinTheLowBits) {
    const auto last = [](std::uint8_t octet, std::uint8_t maxIndicator, std::uint8_t index) {
        const MacAddress transmitted({2, 0, 0, 0, 0xFF, octet});
        const auto bssid = nontransmittedBssid(transmitted, maxIndicator, index);
        return bssid ? bssid->text() : "none";
    };
    EXPECT_EQ(last(0x00, 3, 1), "02:00:00:00:ff:01");
    EXPECT_EQ(last(0x0E, 4, 1), "02:00:00:00:ff:0f");
    EXPECT_EQ(last(0x0E, 4, 3), "02:00:00:00:ff:01");
    EXPECT_EQ(last(0x1F, 4, 1), "02:00:00:00:ff:10");
    EXPECT_EQ(last(0xFF, 8, 255), "02:00:00:00:ff:fe");
    EXPECT_EQ(last(0xFF, 8, 1), "02:00:00:00:ff:00");
    EXPECT_EQ(last(0xFF, 9, 1), "02:00:00:00:fe:00");
    EXPECT_EQ(last(0x0E, 4, 0), "none");
    EXPECT_EQ(last(0x0E, 4, 16), "none");
    EXPECT_EQ(last(0x0E, 4, 17), "02:00:00:00:ff:0f");
    EXPECT_EQ(last(0x0E, 0, 1), "none");
    EXPECT_EQ(last(0x0E, 47, 1), "none");
}

TEST(AirMultipleBssidProfiles, AreNoneWithoutTheElement) {
    EXPECT_TRUE(Frame({}).found.profiles().empty());
    EXPECT_TRUE(Frame(ssidElement("a")).found.profiles().empty());
    EXPECT_TRUE(Frame(element(71, {})).found.profiles().empty());
}

TEST(AirMultipleBssidProfiles, TellEachNetwork) {
    const Frame frame(
        joined({ssidElement("main"),
                container(4, {joined({kOpen, ssidElement("guest"), indexElement(1)}),
                              joined({kPrivate, ssidElement("iot"), indexElement(2)})}),
                rsnElement(2)}));
    ASSERT_EQ(frame.found.profiles().size(), 2u);
    EXPECT_EQ(frame.profile(0).bssid.text(), "02:00:00:00:10:0f");
    EXPECT_EQ(frame.profile(0).index.index, 1);
    EXPECT_EQ(frame.profile(0).index.dtimPeriod, 2);
    EXPECT_FALSE(frame.profile(0).capabilities.hasPrivacy());
    EXPECT_EQ(frame.profile(1).bssid.text(), "02:00:00:00:10:00");
    EXPECT_TRUE(frame.profile(1).capabilities.hasPrivacy());
    EXPECT_EQ(numbersOf(frame.profile(1).elements), "83 0 85");
}

// Offsets and octets are those of the frame.
TEST(AirMultipleBssidProfiles, PointIntoTheFrame) {
    const Frame frame(
        joined({ssidElement("main"),
                container(4, {joined({kOpen, ssidElement("guest"), indexElement(1)})})}));
    ASSERT_EQ(frame.found.profiles().size(), 1u);
    const Element& ssid = frame.profile(0).elements[1];
    EXPECT_EQ(ssid.offset, 6u + 3 + 2 + 4);
    EXPECT_EQ(ssid.octets.data(), frame.octets.begin() + ssid.offset);
    EXPECT_EQ(std::string(ssid.body.begin(), ssid.body.end()), "guest");
}

TEST(AirMultipleBssidProfiles, GoOnInTheNextElement) {
    const Frame frame(
        joined({container(4, {joined({kOpen, ssidElement("guest")})}), ssidElement("main"),
                container(4, {indexElement(1), joined({kOpen, indexElement(2)}), rsnElement(2)})}));
    ASSERT_EQ(frame.found.profiles().size(), 2u);
    EXPECT_EQ(numbersOf(frame.profile(0).elements), "83 0 85");
    EXPECT_EQ(frame.profile(0).index.index, 1);
    EXPECT_EQ(numbersOf(frame.profile(1).elements),
              "83 85");  // not its first: goes on with nothing
}

TEST(AirMultipleBssidProfiles, GoOnThroughSeveralElements) {
    const Frame frame(joined({container(4, {kOpen}), container(4, {ssidElement("guest")}),
                              container(4, {indexElement(1)})}));
    ASSERT_EQ(frame.found.profiles().size(), 1u);
    EXPECT_EQ(numbersOf(frame.profile(0).elements), "83 0 85");
}

TEST(AirMultipleBssidProfiles, LeaveOutWhatIsNone) {
    EXPECT_TRUE(Frame(container(4, {joined({ssidElement("a"), indexElement(1)})}))
                    .found.profiles()
                    .empty());
    EXPECT_TRUE(Frame(container(4, {joined({kOpen, ssidElement("a")})})).found.profiles().empty());
    EXPECT_TRUE(Frame(container(4, {joined({kOpen, indexElement(0)})})).found.profiles().empty());
    EXPECT_TRUE(Frame(container(0, {joined({kOpen, indexElement(1)})})).found.profiles().empty());
    EXPECT_TRUE(Frame(container(4, {joined({element(83, {1}), indexElement(1)})}))
                    .found.profiles()
                    .empty());
    const Frame twice(
        container(4, {joined({kOpen, indexElement(1)}), joined({kPrivate, indexElement(1)})}));
    ASSERT_EQ(twice.found.profiles().size(), 1u);
    EXPECT_FALSE(twice.profile(0).capabilities.hasPrivacy());
}

TEST(AirMultipleBssidProfiles, SkipOtherSubelements) {
    Bytes body = {4, 221, 2, 0xAA, 0xBB};
    const Bytes profile = element(0, joined({kOpen, indexElement(3)}));
    body.insert(body.end(), profile.begin(), profile.end());
    EXPECT_EQ(Frame(element(71, body)).found.profiles().size(), 1u);
}

TEST(AirInheritance, TakesOverWhatTheProfileLacks) {
    const Frame frame(joined(
        {ssidElement("main"), element(5, {0, 1, 0, 0}), element(3, {6}), rsnElement(8),
         element(70, {1, 2, 3, 4, 5}),
         container(4, {joined({kPrivate, ssidElement("guest"), indexElement(1), rsnElement(2)})}),
         element(255, {107, 0, 0}), element(255, {108, 1})}));
    const BssElements held = frame.found.elementsOf(frame.profile(0));
    EXPECT_EQ(numbersOf(held.elements), "83 0 85 48 3 70 364");
    EXPECT_EQ(held.ownCount, 4u);
    ASSERT_TRUE(held.find(ElementId::Rsn));
    EXPECT_EQ(held.find(ElementId::Rsn)->body.data()[17], 2);
    EXPECT_FALSE(held.isInherited(*held.find(ElementId::Rsn)));
    ASSERT_TRUE(held.find(ElementId::EhtCapabilities));
    EXPECT_TRUE(held.isInherited(*held.find(ElementId::EhtCapabilities)));
    EXPECT_EQ(held.find(ElementId::Tim), nullptr);
}

// 9.4.2.240: an open guest network beside a protected one.
TEST(AirInheritance, LeavesOutWhatNonInheritanceNames) {
    const auto held = [](const Bytes& nonInheritance) {
        return Frame(joined({rsnElement(8), element(70, {1, 2, 3, 4, 5}), element(255, {108, 1}),
                             element(221, {1, 2, 3, 4}),
                             container(4, {joined({kOpen, indexElement(1), nonInheritance})})}))
            .held();
    };
    EXPECT_EQ(held({}), "83 85 48 70 364 221");
    EXPECT_EQ(held(element(255, {56, 1, 48})), "83 85 312 70 364 221");
    EXPECT_EQ(held(element(255, {56, 2, 48, 70, 1, 108})), "83 85 312 221");
    EXPECT_EQ(held(element(255, {56, 0, 1, 108})), "83 85 312 48 70 221");
    EXPECT_EQ(held(element(255, {56, 1, 221, 0})), "83 85 312 48 70 364");
    EXPECT_EQ(held(element(255, {56, 9, 48})), "83 85 312 48 70 364 221");  // damaged
}

TEST(AirInheritance, ReplacesVendorElementsOfTheSameType) {
    const Frame frame(joined(
        {element(221, {0, 0x50, 0xF2, 2, 9}), element(221, {0, 0x50, 0xF2, 4, 9}),
         element(221, {0, 0x50, 0xF2}), element(221, {0, 0x50}),
         container(4, {joined({kOpen, indexElement(1), element(221, {0, 0x50, 0xF2, 2, 7})})})}));
    const BssElements held = frame.found.elementsOf(frame.profile(0));
    EXPECT_EQ(numbersOf(held.elements), "83 85 221 221 221 221");
    EXPECT_EQ(held.elements[2].body.data()[4], 7);
    EXPECT_EQ(held.elements[3].body.data()[3], 4);
}

// 11.1.3.8.1: the channel is the transmitted BSSID's, whatever a profile has.
TEST(AirInheritance, KeepsTheChannelOfTheSender) {
    const Frame frame(joined({element(3, {6}), element(61, {6, 0}), element(255, {106, 0}),
                              container(4, {joined({kOpen, indexElement(1), element(3, {11}),
                                                    element(61, {11, 0})})})}));
    const BssElements held = frame.found.elementsOf(frame.profile(0));
    EXPECT_EQ(numbersOf(held.elements), "83 85 3 61 362");
    EXPECT_EQ(held.find(ElementId::DsParameterSet)->body.data()[0], 6);
}

PerStaProfile linkWith(const Bytes& elements, bool isComplete) {
    PerStaProfile link;
    link.control.setBit(4, isComplete);
    link.profile = halvane::ByteBuffer(joined({{0x11, 0x04}, elements}));
    return link;
}

TEST(AirInheritance, OfALinkIncludesTheNameAndNoChannelOfTheSender) {
    const Bytes octets = joined({ssidElement("main"), element(5, {0, 1, 0, 0}), element(3, {6}),
                                 element(201, {0}), rsnElement(8), element(255, {107, 0, 0})});
    const auto sender = elementsIn(octets);
    const PerStaProfile link = linkWith(joined({element(3, {11}), element(70, {1})}), true);
    const BssElements held = elementsOfLink(sender, link);
    EXPECT_EQ(numbersOf(held.elements), "3 70 0 48");
    EXPECT_EQ(held.ownCount, 2u);
    EXPECT_EQ(held.find(ElementId::DsParameterSet)->body.data()[0], 11);
    EXPECT_EQ(held.elements[1].offset, 2u + 3);
    const PerStaProfile without = linkWith(element(255, {56, 2, 3, 0}), true);
    EXPECT_EQ(numbersOf(elementsOfLink(sender, without).elements), "312 48");
}

TEST(AirInheritance, IsNoneForAnIncompleteLink) {
    const Bytes octets = joined({ssidElement("main"), rsnElement(8)});
    const auto sender = elementsIn(octets);
    const PerStaProfile link = linkWith(element(70, {1}), false);
    EXPECT_EQ(numbersOf(elementsOfLink(sender, link).elements), "70");
    EXPECT_EQ(elementsOfLink(sender, link).ownCount, 1u);
    EXPECT_TRUE(elementsOfLink(sender, PerStaProfile()).elements.empty());
}

// However many elements and profiles a frame has, a network holds a bounded number of its sender's.
TEST(AirInheritance, IsBounded) {
    Bytes octets;
    for (int i = 0; i < 1000; ++i) octets.insert(octets.end(), {200, 0});
    for (int i = 0; i < 600; ++i) {
        const Bytes profile =
            container(12, {joined({kOpen, indexElement(static_cast<std::uint8_t>(i))})});
        octets.insert(octets.end(), profile.begin(), profile.end());
    }
    const Frame frame(octets);
    EXPECT_EQ(frame.found.profiles().size(), kMaxNontransmittedProfiles);
    EXPECT_EQ(frame.found.elementsOf(frame.profile(0)).elements.size(), 2 + kMaxInheritedElements);
}

// The offset of an element that stands behind the header of a fragment.
TEST(AirMultipleBssidProfiles, AreReadFromAnElementWithFragments) {
    Bytes body = {8};
    for (std::uint8_t i = 1; i <= 30; ++i) {
        const Bytes profile = element(0, joined({kOpen, ssidElement("name"), indexElement(i)}));
        body.insert(body.end(), profile.begin(), profile.end());
    }
    Bytes octets = ssidElement("main");
    appendElement(octets, ElementId::MultipleBssid, body);
    const Frame frame(octets);
    ASSERT_EQ(frame.found.profiles().size(), 30u);
    for (const NontransmittedProfile& profile : frame.found.profiles()) {
        EXPECT_EQ(octets[profile.elements[0].offset], 83);
        EXPECT_EQ(std::string(profile.elements[1].body.begin(), profile.elements[1].body.end()),
                  "name");
    }
}

TEST(AirMultipleBssidProfiles, ReadNothingPastTheEnd) {
    const Bytes octets =
        joined({container(4, {joined({kOpen, ssidElement("a")})}),
                container(4, {indexElement(1),
                              joined({kOpen, indexElement(2), element(255, {56, 1, 3})})}),
                element(3, {6})});
    halvane::testing::forEachHostileForm(
        octets, {1, 4, 6, 15, 18, 20, 26, 35}, [](const auto& buffer) {
            const auto elements = elementsIn(buffer.bytes());
            const MultipleBssidProfiles found(elements, kTransmitted);
            for (const NontransmittedProfile& profile : found.profiles()) {
                EXPECT_GE(found.elementsOf(profile).elements.size(), 2u);
            }
        });
}

TEST(AirMultipleBssidProfiles, NamesTheElementWithAFaultyIndex) {
    const auto profile = [](std::uint8_t index) { return joined({kOpen, indexElement(index)}); };
    const auto faultOf = [](const Bytes& bytes) { return Frame(bytes).found.faultyElement(); };
    EXPECT_FALSE(faultOf(container(2, {profile(1), profile(2), profile(3)})));
    EXPECT_EQ(faultOf(container(2, {profile(0)})), 0u);
    EXPECT_EQ(faultOf(container(2, {profile(5)})), 0u);
    EXPECT_EQ(faultOf(container(2, {kOpen})), 0u);
    // The second element begins with index 1 again.
    const Bytes first = container(2, {profile(1)});
    EXPECT_EQ(faultOf(joined({first, container(2, {profile(1)})})), first.size());
    EXPECT_FALSE(faultOf(joined({first, container(2, {profile(2)})})));
    // The index goes on in the second element, but the profile begins in the first.
    EXPECT_EQ(faultOf(joined({container(2, {kOpen}), container(2, {indexElement(4)})})), 0u);
}

}  // namespace
