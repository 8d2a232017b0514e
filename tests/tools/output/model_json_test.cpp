#include "tools/halvane/output/model_json.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/regulatory/channel.h"

#include "tests/support/replaced_system.h"
#include "tests/support/written_json.h"

using namespace halvane;
using namespace halvane::testing;
using JSON = nlohmann::ordered_json;

namespace {

const ByteBuffer kAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};

HalvaneDevice deviceOfThreeChains() {
    auto device = HalvaneDevice::initWithMACAddress_withIndex(kAddress, UINT64_MAX);
    device.setNumRadioChains(3);
    return device;
}

TEST(ModelJSON, OfADeviceHasItsProperties) {
    EXPECT_EQ(
        jsonText(deviceOfThreeChains()),
        R"({"MACAddress":"02:1A:2B:3C:4D:5E","deviceIndex":18446744073709551615,"numRadioChains":3})");
}

TEST(ModelJSON, LeavesAnAbsentOrEmptyAddressOut) {
    const std::string expected = R"({"deviceIndex":0,"numRadioChains":0})";
    EXPECT_EQ(jsonText(HalvaneDevice::initWithMACAddress_withIndex(std::nullopt, 0)), expected);
    EXPECT_EQ(jsonText(HalvaneDevice::initWithSkeletonRepresentation({})), expected);
}

TEST(ModelJSON, OfAnInterfaceHoldsItsDeviceAndChannels) {
    PropertyListDictionary skeleton;
    skeleton.set("MAC", kAddress);
    skeleton.set("InterfaceName", "wlan0");
    skeleton.set("Role", "infrastructure");
    skeleton.set("Subsystem", "ieee80211");
    skeleton.set("Device", deviceOfThreeChains().skeletonRepresentation());
    auto interface = HalvaneInterface::initWithSkeletonRepresentation(skeleton);
    ASSERT_TRUE(interface);
    interface->setAvailableChannels(
        {HalvaneChannel::initWithChannel_withFrequency_isRadarProne(52, 5260, true)});
    const JSON expected = {
        {"ifMAC", "02:1A:2B:3C:4D:5E"},
        {"ifName", "wlan0"},
        {"ifRole", "infrastructure"},
        {"ifSubsystem", "ieee80211"},
        {"wifiDevice", jsonOf(deviceOfThreeChains())},
        {"availableChannels", JSON::array({{{"channelNumber", 52},
                                            {"channelFrequency", 5260},
                                            {"isRadarProne", true},
                                            {"isDisabled", false},
                                            {"supports40MHz", false},
                                            {"supports80MHz", false}}})},
    };
    EXPECT_EQ(jsonOf(*interface), expected);
}

TEST(ModelJSON, OfAnInterfaceOfNothingIsAnEmptyListOfChannels) {
    EXPECT_EQ(jsonText(HalvaneInterface::initWithDevice_withMAC_withBSDName(nullptr, std::nullopt,
                                                                            std::nullopt)),
              R"({"availableChannels":[]})");
}

TEST(ModelJSON, OfAClientAddsToThatOfItsRecord) {
    const ScopedUpTime clock(7'000'000'000);
    auto client = HalvaneClient::initWithMAC(kAddress);
    client.setRSSI(Number(-61));
    client.setIsAssociated(true);
    client.setJoinTime(8);
    client.setLeftTime(UINT64_MAX);
    EXPECT_EQ(jsonText(client),
              R"({"mac":"02:1A:2B:3C:4D:5E","RSSI":-61,"capabilities":0,"isAssociated":true,)"
              R"("createTime":7000000,"joinTime":8,"leftTime":18446744073709551615,)"
              R"("deauthReason":1})");
}

}  // namespace
