#include "tools/halvaned/radio/device_records.h"

#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <optional>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

#include "tests/halvaned/radio/device_samples.h"
#include "tools/halvaned/radio/device_list.h"

using halvane::HalvaneChannel;
using halvane::HalvaneDevice;
using halvane::HalvaneInterface;
using halvane::MacAddress;
using halvane::testing::sampleDevices;
using ::testing::IsEmpty;
using namespace halvane::hosting;

namespace {

TEST(DeviceRecords, AreThoseOfRadiosAndWiredInterfaces) {
    const auto records = deviceRecords(sampleDevices());
    ASSERT_EQ(records.size(), 3U);
    // The first radio has the address of its interface, the second one of its own.
    EXPECT_EQ(records[0].MACAddress(), MacAddress({2, 0, 0, 0, 0, 1}).buffer());
    EXPECT_EQ(records[0].deviceIndex(), 0U);
    EXPECT_EQ(records[0].numRadioChains(), 2U);
    EXPECT_EQ(records[1].MACAddress(), MacAddress({2, 0, 0, 0, 4, 0}).buffer());
    EXPECT_EQ(records[1].deviceIndex(), 4U);
    EXPECT_EQ(records[1].numRadioChains(), 1U);
    EXPECT_EQ(records[2].MACAddress(), MacAddress({2, 0, 0, 0, 0, 3}).buffer());
    EXPECT_EQ(records[2].deviceIndex(), 9U);
    EXPECT_EQ(records[2].numRadioChains(), 0U);
    DeviceList without = sampleDevices();
    without.interfaces.clear();
    EXPECT_EQ(deviceRecords(without)[0].MACAddress(), std::nullopt);
}

TEST(ChannelRecords, HaveNumbersAndWhatIsAllowed) {
    const DeviceList list = sampleDevices();
    const auto records = channelRecords(list, *list.find("wlan0"));
    struct Expected {
        std::int64_t number, frequency;
        bool isRadarProne, isDisabled, supports40, supports80;
    };
    const Expected expected[] = {
        {1, 2412, false, false, true, false},
        {14, 2484, false, true, false, false},
        {36, 5180, false, true, true, true},  // passive: nobody may begin to send
        {52, 5260, true, false, true, true},
    };
    ASSERT_EQ(records.size(), std::size(expected));  // 5261 MHz has no number
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(records[i].channelNumber(), expected[i].number);
        EXPECT_EQ(records[i].channelFrequency(), expected[i].frequency);
        EXPECT_EQ(records[i].isRadarProne(), expected[i].isRadarProne);
        EXPECT_EQ(records[i].isDisabled(), expected[i].isDisabled) << expected[i].number;
        EXPECT_EQ(records[i].supports40MHz(), expected[i].supports40) << expected[i].number;
        EXPECT_EQ(records[i].supports80MHz(), expected[i].supports80) << expected[i].number;
    }
    EXPECT_THAT(channelRecords(list, *list.find("eth0")), IsEmpty());
}

TEST(InterfaceRecord, ReadsBackAsAClientReadsIt) {
    const DeviceList list = sampleDevices();
    for (const DeviceInterface& interface : list.interfaces) {
        const HalvaneInterface record = interfaceRecord(list, interface, "AP", "nl80211");
        EXPECT_EQ(record.ifName(), interface.name);
        EXPECT_EQ(record.ifRole(), "AP");
        EXPECT_EQ(record.ifSubsystem(), "nl80211");
        EXPECT_EQ(record.ifMAC(), interface.address->buffer());
        EXPECT_EQ(record.availableChannels(), channelRecords(list, interface));
        const auto read =
            HalvaneInterface::initWithSkeletonRepresentation(record.skeletonRepresentation());
        EXPECT_EQ(read, record);
    }
    const HalvaneInterface first = interfaceRecord(list, list.interfaces[0], "AP", "nl80211");
    EXPECT_EQ(*first.wifiDevice(), deviceRecords(list)[0]);
    const HalvaneInterface wired = interfaceRecord(list, list.interfaces[2], "AP", "wired");
    EXPECT_EQ(*wired.wifiDevice(), deviceRecords(list)[2]);
    EXPECT_EQ(interfaceRecord(list, {.name = "x"}, "AP", "wired").ifMAC(), std::nullopt);
}

}  // namespace
