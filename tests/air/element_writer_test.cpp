#include "halvane/air/element_writer.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/air/element_range.h"

#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using namespace halvane::air;

namespace {

Bytes counting(std::size_t size) {
    Bytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7);
    return bytes;
}

// The body of the first of two elements, of which the second is DSSS Parameter Set.
Bytes bodyReadBack(Bytes octets, ElementId id) {
    appendElement(octets, ElementId::DsParameterSet, Bytes{6});
    auto element = ElementRange(octets).begin();
    EXPECT_EQ(element->id, id);
    Bytes body(element->body.begin(), element->body.end());
    ++element;
    EXPECT_EQ(element->id, ElementId::DsParameterSet);
    EXPECT_EQ(element->octets.size(), 3u);
    EXPECT_TRUE(ElementRange(octets).trailing().empty());
    return body;
}

TEST(AirElementWriter, IsReadBackForEverySize) {
    for (std::size_t size = 0; size <= 1100; ++size) {
        SCOPED_TRACE(size);
        const Bytes body = counting(size);
        Bytes plain;
        appendElement(plain, ElementId::Rsn, body);
        EXPECT_EQ(bodyReadBack(plain, ElementId::Rsn), body);
        Bytes extended;
        appendElement(extended, ElementId::MultiLink, body);
        EXPECT_EQ(bodyReadBack(extended, ElementId::MultiLink), body);
        Bytes vendor;
        appendVendorElement(vendor, {0x50, 0x6F, 0x9A}, 28, body);
        Bytes whole = {0x50, 0x6F, 0x9A, 28};
        whole.insert(whole.end(), body.begin(), body.end());
        EXPECT_EQ(bodyReadBack(vendor, ElementId::Vendor), whole);
    }
}

TEST(AirElementWriter, WritesHeaders) {
    Bytes octets = {0xAA};
    appendElement(octets, ElementId::DsParameterSet, Bytes{11});
    appendElement(octets, ElementId::MultiLinkTraffic, Bytes{1, 2});
    appendVendorElement(octets, {1, 2, 3}, 4, Bytes{5});
    appendElement(octets, ElementId::ExtensionMissing, {});
    EXPECT_EQ(octets, (Bytes{0xAA, 3, 1, 11, 255, 3, 110, 1, 2, 221, 5, 1, 2, 3, 4, 5, 255, 0}));
}

// 10.28.11: each piece but the last has 255 octets; the extension counts in the first.
TEST(AirElementWriter, SplitsWhatIsTooLong) {
    Bytes octets;
    appendElement(octets, ElementId::Ssid, Bytes(255));
    EXPECT_EQ(octets.size(), 257u);
    octets.clear();
    appendElement(octets, ElementId::Ssid, Bytes(256));
    EXPECT_EQ(octets.size(), 257u + 3);
    EXPECT_EQ(octets[257], 242);
    EXPECT_EQ(octets[258], 1);
    octets.clear();
    appendElement(octets, ElementId::MultiLink, Bytes(254));
    EXPECT_EQ(octets.size(), 257u);
    octets.clear();
    appendElement(octets, ElementId::MultiLink, Bytes(255));
    EXPECT_EQ(octets.size(), 260u);
}

}  // namespace
