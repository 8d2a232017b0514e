#include "halvane/capture/bss_table.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/mac.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/replaced_system.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::Number;
using halvane::capture::BSSTable;
using halvane::capture::Sighting;
using namespace halvane::testing;

namespace {

Sighting sighting(std::uint8_t last, int rssi, const Bytes& elements = {}) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, last});
    record.setRSSI(Number(rssi));
    record.setInformationElements(ByteBuffer(elements));
    return {record};
}

TEST(BSSTable, KeepsTheOrderOfFirstSighting) {
    BSSTable table;
    for (const std::uint8_t last : Bytes{9, 1, 5, 1, 9}) table.add(sighting(last, -50));
    ASSERT_EQ(table.size(), 3u);
    EXPECT_EQ(table.at(0).record.mac(), (ByteBuffer{2, 0, 0, 0, 0, 9}));
    EXPECT_EQ(table.at(1).record.mac(), (ByteBuffer{2, 0, 0, 0, 0, 1}));
    EXPECT_EQ(table.at(2).record.mac(), (ByteBuffer{2, 0, 0, 0, 0, 5}));
}

TEST(BSSTable, FoldsLaterSightingsIn) {
    BSSTable table;
    table.add(sighting(1, -50, element(0, {})));
    table.add(sighting(1, -70, ssidElement("revealed")));
    table.add(sighting(1, -60, ssidElement("other")));
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table.at(0).record.RSSI(), Number(-60));
    EXPECT_EQ(table.at(0).record.SSID(), ByteBuffer::fromText("revealed"));
}

// The text of a record, without its exact time stamps.
std::string tellingOf(const HalvaneMAC& record) {
    auto skeleton = record.skeletonRepresentation();
    skeleton.erase("FirstUpdated");
    skeleton.erase("LastUpdated");
    const auto orNone = [](const auto& value) { return value ? value->description() : "none"; };
    return halvane::xmlPropertyList(skeleton).value_or("") + record.description() +
           orNone(record.invalidIEs()) + orNone(record.SSID()) + orNone(record.maxPHYRate()) +
           orNone(record.channelWidth()) + record.securityFriendlyName().value_or("none");
}

// Every sequence of four of these sightings gives what merging the records gives.
TEST(BSSTable, FoldsAsRecordsDo) {
    const halvane::ScopedUpTime clock;  // a description states the age in seconds
    std::vector<Sighting> sightings;
    for (const Bytes& elements :
         {Bytes{}, element(0, {}), joined({element(0, {0, 0}), element(1, {0x82, 0x96})}),
          joined({ssidElement("home"), htOperationElement(44, 1)}), ssidElement("other"),
          Bytes{0, 4, 'c', 'u', 't'}}) {
        const auto number = static_cast<std::uint16_t>(sightings.size());
        Sighting next = sighting(1, -50 - number, elements);
        next.record.setCapabilityField(number % 2 == 0 ? 0x0011 : 0x0001);
        next.record.setInformationElements(ByteBuffer(elements));
        if (number % 3 == 0) next.record.setRSSI(std::nullopt);
        if (number % 3 == 1) next.record.setNoise(Number(-90 - number));
        if (number > 2) next.record.setBeaconInterval(Number(number * 100));
        sightings.push_back(next);
    }
    const std::size_t count = sightings.size();
    for (std::size_t i = 0; i < count * count * count * count; ++i) {
        BSSTable table;
        std::optional<HalvaneMAC> folded;
        for (std::size_t rest = i, k = 0; k < 4; ++k, rest /= count) {
            const Sighting& next = sightings[rest % count];
            table.add(next);
            if (folded) folded->mergeEntries(next.record);
            if (!folded) folded = next.record;
        }
        ASSERT_EQ(table.size(), 1u);
        ASSERT_EQ(tellingOf(table.at(0).record), tellingOf(*folded)) << i;
    }
}

TEST(BSSTable, KeepsWhenABSSWasFirstSeen) {
    BSSTable table;
    const Sighting first = sighting(1, -50);
    table.add(first);
    table.add(sighting(1, -60));
    EXPECT_EQ(table.at(0).record.firstAdded(), first.record.firstAdded());
}

TEST(BSSTable, KeepsTheChannelThatTheBSSTold) {
    BSSTable table;
    const auto see = [&](int channel, std::optional<Number> radioChannel, bool isOfRadio) {
        Sighting next = sighting(1, -50);
        next.record.setChannel(Number(channel));
        next.radioChannel = radioChannel;
        next.isChannelOfRadio = isOfRadio;
        table.add(next);
        return table.at(0);
    };
    EXPECT_EQ(see(1, Number(1), true).record.channel(), Number(1));
    EXPECT_EQ(see(2, Number(2), true).record.channel(), Number(2));
    EXPECT_EQ(see(149, Number(3), false).record.channel(), Number(149));
    EXPECT_EQ(see(4, Number(4), true).record.channel(), Number(149));
    EXPECT_EQ(table.at(0).otherRadioChannel(), Number(4));
    EXPECT_EQ(see(153, std::nullopt, false).record.channel(), Number(153));
    EXPECT_EQ(table.at(0).otherRadioChannel(), Number(4));
}

TEST(BSSTable, IsEmptyAtFirstAndOnceItWasMovedFrom) {
    BSSTable table;
    EXPECT_TRUE(table.empty());
    table.add(sighting(1, -50));
    table.add(sighting(2, -60));
    BSSTable other = std::move(table);
    EXPECT_EQ(other.size(), 2u);
    EXPECT_EQ(other.at(1).record.RSSI(), Number(-60));
    EXPECT_EQ(table.size(), 0u);  // NOLINT: it is the point
    table.add(sighting(3, -70));
    EXPECT_EQ(table.at(0).record.RSSI(), Number(-70));
    other = std::move(table);
    EXPECT_EQ(other.size(), 1u);
}

TEST(BSSTable, TakesRecordsWithoutAnAddressForOneBSS) {
    BSSTable table;
    for (const int rssi : {-50, -60}) {
        auto record = HalvaneMAC::initWithMAC(ByteBuffer());
        record.setRSSI(Number(rssi));
        table.add({record});
    }
    ASSERT_EQ(table.size(), 1u);
    EXPECT_EQ(table.at(0).record.RSSI(), Number(-60));
}

}  // namespace
