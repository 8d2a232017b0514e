#include "tools/halvane/output/element_list.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "halvane/air/element_range.h"
#include "halvane/air/field_sink.h"

namespace halvane::tool {

namespace {

using Bytes = std::vector<std::uint8_t>;

// DS of channel 6, then Vendor Specific with one octet of its own before the element SSID "a".
const Bytes kBuffer = {3, 1, 6, 221, 4, 9, 0, 1, 'a'};

air::ElementOctets fieldOf(const air::Element& holder) {
    return {.octets = holder.body, .fixedSize = 1, .offset = 0};
}

TEST(ElementList, CountsTheOctetsOfABuffer) {
    const ElementList list(kBuffer, "02:00:00:00:00:01");
    EXPECT_EQ(list.offsetOf(4), 4u);
    EXPECT_EQ(list.depth(), 0u);
    EXPECT_EQ(list.bssid(), "02:00:00:00:00:01");
    EXPECT_EQ(list.he(), nullptr);
}

TEST(ElementList, PlacesTheElementsOfAFieldInTheBuffer) {
    const ElementList outer(kBuffer);
    const air::Element holder = *++outer.range().begin();
    const air::ElementOctets field = fieldOf(holder);
    const ElementList inner(outer, holder, 0, field);
    const air::Element ssid = *inner.range().begin();
    EXPECT_EQ(ssid.body.size(), 1u);
    EXPECT_EQ(inner.offsetOf(ssid.offset), 6u);
    EXPECT_EQ(inner.offsetOf(ssid.offsetOfBody(0)), 8u);
    EXPECT_EQ(inner.depth(), 1u);
    EXPECT_TRUE(inner.bssid().empty());
}

TEST(ElementList, HoldsListsToItsDepth) {
    const ElementList outer(kBuffer);
    const air::Element holder = *++outer.range().begin();
    const air::ElementOctets field = fieldOf(holder);
    const ElementList first(outer, holder, 0, field);
    const ElementList second(first, holder, 0, field);
    const ElementList third(second, holder, 0, field);
    const ElementList last(third, holder, 0, field);
    EXPECT_TRUE(third.mayHoldLists());
    EXPECT_EQ(last.depth(), ElementList::kMaxDepth);
    EXPECT_FALSE(last.mayHoldLists());
}

TEST(ElementList, InheritsHeCapabilities) {
    Bytes buffer = {255, 22, 35};
    buffer.resize(24);
    buffer[9] = 0x04;  // 40 and 80 MHz in 5 GHz
    buffer.insert(buffer.end(), kBuffer.begin(), kBuffer.end());
    const ElementList outer(buffer);
    ASSERT_NE(outer.he(), nullptr);
    const air::Element holder = *++ ++outer.range().begin();
    const air::ElementOctets field = fieldOf(holder);
    const ElementList inner(outer, holder, 0, field);
    ASSERT_NE(inner.he(), nullptr);
    EXPECT_EQ(*inner.he(), *outer.he());
}

}  // namespace

}  // namespace halvane::tool
