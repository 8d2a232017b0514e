#include "tools/halvane/bss_table.h"

#include <gtest/gtest.h>

#include "tests/support/elements.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::Number;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

HalvaneMAC sighting(std::uint8_t last, int rssi, const Bytes& elements = {}) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, last});
    record.setRSSI(Number(rssi));
    record.setInformationElements(ByteBuffer(elements));
    return record;
}

TEST(BSSTable, KeepsTheOrderOfFirstSighting) {
    BSSTable table;
    for (const std::uint8_t last : Bytes{9, 1, 5, 1, 9}) table.add(sighting(last, -50));
    ASSERT_EQ(table.records().size(), 3u);
    EXPECT_EQ(table.records()[0].mac(), (ByteBuffer{2, 0, 0, 0, 0, 9}));
    EXPECT_EQ(table.records()[1].mac(), (ByteBuffer{2, 0, 0, 0, 0, 1}));
    EXPECT_EQ(table.records()[2].mac(), (ByteBuffer{2, 0, 0, 0, 0, 5}));
}

TEST(BSSTable, FoldsLaterSightingsIn) {
    BSSTable table;
    table.add(sighting(1, -50, element(0, {})));
    table.add(sighting(1, -70, ssidElement("revealed")));
    table.add(sighting(1, -60, ssidElement("other")));
    ASSERT_EQ(table.records().size(), 1u);
    EXPECT_EQ(table.records()[0].RSSI(), Number(-60));
    EXPECT_EQ(table.records()[0].SSID(), ByteBuffer::fromText("revealed"));
}

}  // namespace
