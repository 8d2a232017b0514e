#include <cstddef>
#include <gtest/gtest.h>
#include <span>

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

TEST(AirElementIndex, FindsTheFirstOfEachNumber) {
    const Bytes octets = joined({element(0, {'a'}), element(11, {1, 0, 2, 3, 0}),
                                 element(11, {9, 0, 2, 3, 0}), element(255, {35, 7})});
    const ElementIndex index(octets);
    EXPECT_EQ(index.count(), 4u);
    EXPECT_TRUE(index.has(ElementId::Ssid) && index.has(ElementId::HeCapabilities));
    EXPECT_FALSE(index.has(ElementId::Rsn));
    EXPECT_EQ(index.decode<BssLoad>()->stationCount, 1);
    EXPECT_EQ(index.sourceOf(ElementId::BssLoad).offset, 3u);
    EXPECT_EQ(index.find(ElementId::HeCapabilities)->body.size(), 1u);
    EXPECT_FALSE(index.decode<Rsn>());
    EXPECT_FALSE(index.find(ElementId::Rsn));
    EXPECT_TRUE(index.trailing().empty());
}

TEST(AirElementIndex, FindsVendorElementsByTheirType) {
    const Bytes octets =
        joined({element(221, {0x00, 0x50, 0xF2}), element(221, {0x00, 0x50, 0xF2, 9, 9}),
                element(221, {0x00, 0x50, 0xF2, 4, 7}), element(221, {0x50, 0x6F, 0x9A, 28, 8})});
    const ElementIndex index(octets);
    EXPECT_TRUE(index.has(VendorKind::Wps));
    EXPECT_FALSE(index.has(VendorKind::Wpa));
    EXPECT_EQ(index.sourceOf(VendorKind::Wps).offset, 12u);
    const auto element = index.find(VendorKind::OweTransition);
    ASSERT_TRUE(element);
    EXPECT_EQ(ElementIndex::vendorBody(*element).size(), 1u);
    EXPECT_EQ(ElementIndex::vendorBody(*element)[0], 8);
}

TEST(AirElementIndex, FindsElementsBehindAnyNumberOfOthers) {
    Bytes octets;
    for (int i = 0; i < 5000; ++i) octets.insert(octets.end(), {221, 0});
    const Bytes load = element(11, {1, 0, 2, 3, 0});
    octets.insert(octets.end(), load.begin(), load.end());
    octets.push_back(7);
    const ElementIndex index(octets);
    EXPECT_EQ(index.count(), 5001u);
    EXPECT_TRUE(index.decode<BssLoad>());
    EXPECT_EQ(index.trailing().offset, 10007u);
}

TEST(AirElementIndex, IsEmptyForNoElements) {
    const ElementIndex index(Octets{});
    EXPECT_EQ(index.count(), 0u);
    EXPECT_FALSE(index.has(ElementId::Ssid));
}

}  // namespace
