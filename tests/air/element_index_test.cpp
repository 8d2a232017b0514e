#include <cstddef>
#include <gtest/gtest.h>
#include <vector>

#include "halvane/air/bss_load.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/rsn.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::element;
using halvane::testing::joined;
using namespace halvane::air;

namespace {

std::vector<Element> elementsOf(const Bytes& octets) {
    std::vector<Element> elements;
    for (const Element& element : ElementRange(octets)) elements.push_back(element);
    return elements;
}

TEST(AirElementIndex, FindsTheFirstOfEachNumber) {
    const Bytes octets = joined({element(0, {'a'}), element(11, {1, 0, 2, 3, 0}),
                                 element(11, {9, 0, 2, 3, 0}), element(255, {35, 7})});
    const auto elements = elementsOf(octets);
    const ElementIndex index(elements);
    EXPECT_TRUE(index.has(ElementId::Ssid) && index.has(ElementId::HeCapabilities));
    EXPECT_FALSE(index.has(ElementId::Rsn));
    EXPECT_EQ(index.decode<BssLoad>()->stationCount, 1);
    EXPECT_EQ(index.sourceOf(ElementId::BssLoad).offset, 3u);
    EXPECT_EQ(index.find(ElementId::HeCapabilities)->body.size(), 1u);
    EXPECT_FALSE(index.decode<Rsn>());
    EXPECT_EQ(index.find(ElementId::Rsn), nullptr);
}

TEST(AirElementIndex, FindsVendorElementsByTheirType) {
    const Bytes octets =
        joined({element(221, {0x00, 0x50, 0xF2}), element(221, {0x00, 0x50, 0xF2, 9, 9}),
                element(221, {0x00, 0x50, 0xF2, 4, 7}), element(221, {0x50, 0x6F, 0x9A, 28, 8})});
    const auto elements = elementsOf(octets);
    const ElementIndex index(elements);
    EXPECT_TRUE(index.has(VendorKind::Wps));
    EXPECT_FALSE(index.has(VendorKind::Wpa));
    EXPECT_EQ(index.sourceOf(VendorKind::Wps).offset, 12u);
    const Element* const element = index.find(VendorKind::OweTransition);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(ElementIndex::vendorBody(*element).size(), 1u);
    EXPECT_EQ(ElementIndex::vendorBody(*element)[0], 8);
}

TEST(AirElementIndex, FindsElementsBehindAnyNumberOfOthers) {
    Bytes octets;
    for (int i = 0; i < 5000; ++i) octets.insert(octets.end(), {221, 0});
    const Bytes load = element(11, {1, 0, 2, 3, 0});
    octets.insert(octets.end(), load.begin(), load.end());
    octets.push_back(7);
    const auto elements = elementsOf(octets);
    const ElementIndex index(elements);
    EXPECT_TRUE(index.decode<BssLoad>());
}

TEST(AirElementIndex, RemembersWhatItHasFoundWhole) {
    const Bytes octets = joined({element(11, {1, 0, 2, 3, 0}), element(48, {1})});
    const auto elements = elementsOf(octets);
    const ElementIndex index(elements);
    EXPECT_FALSE(index.isKnownWhole(elements[0]));
    EXPECT_TRUE(index.decode<BssLoad>());
    EXPECT_FALSE(index.decode<Rsn>());
    EXPECT_TRUE(index.isKnownWhole(elements[0]));
    EXPECT_FALSE(index.isKnownWhole(elements[1]));
}

TEST(AirElementIndex, TakesOverWhatTheSenderHasFoundWhole) {
    const Bytes octets =
        joined({element(11, {1, 0, 2, 3, 0}), element(48, {1}), element(11, {1, 0, 2, 3, 0})});
    const auto elements = elementsOf(octets);
    const std::size_t damaged[] = {elements[1].offset};
    const ElementIndex index(elements, 1, damaged);
    EXPECT_FALSE(index.isKnownWhole(elements[0]));
    EXPECT_FALSE(index.isKnownWhole(elements[1]));
    EXPECT_TRUE(index.isKnownWhole(elements[2]));
}

TEST(AirElementIndex, IsEmptyForNoElements) {
    const ElementIndex index({});
    EXPECT_FALSE(index.has(ElementId::Ssid));
}

}  // namespace
