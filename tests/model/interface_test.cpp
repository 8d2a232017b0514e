#include "halvane/model/interface.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "halvane/base/skeleton_internal.h"

#include "tests/model/test_support.h"
#include "tests/support/skeletons.h"

using namespace halvane;
using namespace halvane::testing;

namespace {

const ByteBuffer kDeviceAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
const ByteBuffer kAddress = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5F};

std::shared_ptr<HalvaneDevice> sharedDevice() {
    auto device = HalvaneDevice::initWithMACAddress_withIndex(kDeviceAddress, 1);
    device.setNumRadioChains(UINT64_MAX);
    return std::make_shared<HalvaneDevice>(device);
}

HalvaneChannel channelOf(int number, int frequency, bool isRadarProne) {
    return HalvaneChannel::initWithChannel_withFrequency_isRadarProne(number, frequency,
                                                                      isRadarProne);
}

HalvaneInterface bareInterface() {
    return HalvaneInterface::initWithDevice_withMAC_withBSDName(sharedDevice(), kAddress, "wlan0");
}

PropertyListDictionary wholeSkeleton(const std::string& text = "text") {
    PropertyListDictionary skeleton = bareInterface().skeletonRepresentation();
    skeleton.set("InterfaceName", "wlan0");
    skeleton.set("Role", text);
    skeleton.set("Subsystem", "80211-" + text);
    skeleton.set("Channels", PropertyListArray{channelOf(36, 5180, false).skeletonRepresentation(),
                                               channelOf(6, 2437, false).skeletonRepresentation(),
                                               channelOf(52, 5260, true).skeletonRepresentation()});
    return skeleton;
}

HalvaneInterface read(const PropertyListDictionary& skeleton) {
    auto interface = HalvaneInterface::initWithSkeletonRepresentation(skeleton);
    EXPECT_TRUE(interface.has_value());
    return interface ? *interface : bareInterface();
}

TEST(Interface, SharesTheDeviceItIsGiven) {
    const auto device = sharedDevice();
    const auto interface =
        HalvaneInterface::initWithDevice_withMAC_withBSDName(device, kAddress, "wlan0");
    const HalvaneInterface copy = interface;
    EXPECT_EQ(interface.wifiDevice(), device);
    device->setNumRadioChains(4);
    EXPECT_EQ(interface.wifiDevice()->numRadioChains(), 4u);
    copy.wifiDevice()->setNumRadioChains(2);
    EXPECT_EQ(device->numRadioChains(), 2u);
}

TEST(Interface, StartsWithoutRoleSubsystemAndChannels) {
    const auto interface = bareInterface();
    EXPECT_EQ(interface.ifMAC(), kAddress);
    EXPECT_EQ(interface.ifName(), "wlan0");
    EXPECT_FALSE(interface.ifRole());
    EXPECT_FALSE(interface.ifSubsystem());
    EXPECT_TRUE(interface.availableChannels().empty());
}

TEST(Interface, ItsChannelsCanBeSetAndChanged) {
    auto interface = bareInterface();
    interface.setAvailableChannels({channelOf(1, 2412, false)});
    interface.availableChannels().push_back(channelOf(6, 2437, false));
    ASSERT_EQ(interface.availableChannels().size(), 2u);
    EXPECT_EQ(interface.availableChannels()[1].channelNumber(), 6);
}

TEST(InterfaceSkeleton, LeavesOutWhatIsAbsentButWritesNoChannelsAsAnEmptyArray) {
    PropertyListDictionary expected;
    expected.set("MAC", kAddress);
    expected.set("InterfaceName", "wlan0");
    expected.set("Device", sharedDevice()->skeletonRepresentation());
    expected.set("Channels", PropertyListArray());
    EXPECT_EQ(bareInterface().skeletonRepresentation(), expected);
}

TEST(InterfaceSkeleton, OfNothingHoldsNoChannelsAlone) {
    PropertyListDictionary expected;
    expected.set("Channels", PropertyListArray());
    const auto interface =
        HalvaneInterface::initWithDevice_withMAC_withBSDName(nullptr, std::nullopt, std::nullopt);
    EXPECT_EQ(interface.skeletonRepresentation(), expected);
}

TEST(InterfaceSkeleton, IsReadAndWrittenKeyByKey) {
    const auto interface = read(wholeSkeleton());
    EXPECT_EQ(interface.ifMAC(), kAddress);
    EXPECT_EQ(interface.ifName(), "wlan0");
    EXPECT_EQ(interface.ifRole(), "text");
    EXPECT_EQ(interface.ifSubsystem(), "80211-text");
    ASSERT_NE(interface.wifiDevice(), nullptr);
    EXPECT_EQ(*interface.wifiDevice(), *sharedDevice());
    ASSERT_EQ(interface.availableChannels().size(), 3u);
    EXPECT_EQ(interface.availableChannels()[0], channelOf(36, 5180, false));
    EXPECT_EQ(interface.availableChannels()[1], channelOf(6, 2437, false));
    EXPECT_EQ(interface.availableChannels()[2], channelOf(52, 5260, true));
    EXPECT_EQ(interface.skeletonRepresentation(), wholeSkeleton());
}

TEST(InterfaceSkeleton, ComesThroughXmlEqualWhateverItsTextsHold) {
    for (const std::string& text : {std::string(), std::string("infra"), awkwardText()}) {
        const auto interface = read(wholeSkeleton(text));
        const auto skeleton = throughXml(interface.skeletonRepresentation());
        EXPECT_EQ(skeleton, interface.skeletonRepresentation());
        EXPECT_EQ(read(skeleton), interface);
        EXPECT_EQ(read(skeleton).ifRole(), text);
    }
}

TEST(InterfaceSkeleton, WithoutOneOfItsTextsIsNoInterface) {
    for (const char* key : {"InterfaceName", "Role", "Subsystem"}) {
        auto skeleton = wholeSkeleton();
        skeleton.erase(key);
        EXPECT_FALSE(HalvaneInterface::initWithSkeletonRepresentation(skeleton)) << key;
    }
    EXPECT_FALSE(HalvaneInterface::initWithSkeletonRepresentation({}));
}

TEST(InterfaceSkeleton, WithATextOfTheWrongKindIsNoInterface) {
    for (const char* key : {"InterfaceName", "Role", "Subsystem"}) {
        for (const auto& value : valuesOfOtherKinds<std::string>()) {
            auto skeleton = wholeSkeleton();
            skeleton.set(key, value);
            EXPECT_FALSE(HalvaneInterface::initWithSkeletonRepresentation(skeleton)) << key;
        }
    }
}

TEST(InterfaceSkeleton, WithoutOneOfItsTextsIsPassedOverInAList) {
    PropertyListArray array = {"text"};
    for (const char* missing : {"none", "InterfaceName", "also none", "Role", "Subsystem", ""}) {
        auto skeleton = wholeSkeleton(missing);
        skeleton.erase(missing);
        array.emplace_back(skeleton);
    }
    PropertyListDictionary list;
    list.set("Interfaces", array);
    const auto interfaces = skeleton::recordsFor<HalvaneInterface>(list, "Interfaces");
    ASSERT_EQ(interfaces.size(), 3u);
    EXPECT_EQ(interfaces[0], read(wholeSkeleton("none")));
    EXPECT_EQ(interfaces[1], read(wholeSkeleton("also none")));
    EXPECT_EQ(interfaces[2], read(wholeSkeleton("")));
    EXPECT_EQ(skeleton::recordsOf<HalvaneInterface>(array), interfaces);
}

TEST(InterfaceSkeleton, OfItsTextsAloneReadsTheRestAsNothing) {
    auto skeleton = wholeSkeleton();
    for (const char* key : {"MAC", "Device", "Channels"}) skeleton.erase(key);
    const auto interface = read(skeleton);
    EXPECT_EQ(interface.ifMAC(), ByteBuffer());
    ASSERT_NE(interface.wifiDevice(), nullptr);
    EXPECT_EQ(*interface.wifiDevice(), HalvaneDevice::initWithSkeletonRepresentation({}));
    EXPECT_TRUE(interface.availableChannels().empty());
}

TEST(InterfaceSkeleton, ReadsOtherValuesOfTheWrongKindAsMissing) {
    const auto readWith = [](const char* key, const PropertyListValue& value) {
        auto skeleton = wholeSkeleton();
        skeleton.set(key, value);
        return read(skeleton);
    };
    for (const auto& value : valuesOfOtherKinds<ByteBuffer>()) {
        EXPECT_EQ(readWith("MAC", value).ifMAC(), ByteBuffer());
    }
    for (const auto& value : valuesOfOtherKinds<PropertyListDictionary>()) {
        EXPECT_EQ(*readWith("Device", value).wifiDevice(),
                  HalvaneDevice::initWithSkeletonRepresentation({}));
    }
    for (const auto& value : valuesOfOtherKinds<PropertyListArray>()) {
        EXPECT_TRUE(readWith("Channels", value).availableChannels().empty());
    }
}

TEST(InterfaceSkeleton, PassesOverWhatIsNoChannelInItsList) {
    auto skeleton = wholeSkeleton();
    PropertyListArray channels = valuesOfOtherKinds<PropertyListDictionary>();
    channels.insert(channels.begin() + 2, channelOf(11, 2462, false).skeletonRepresentation());
    channels.emplace_back(PropertyListDictionary());  // a channel of nothing
    skeleton.set("Channels", channels);
    const auto interface = read(skeleton);
    ASSERT_EQ(interface.availableChannels().size(), 2u);
    EXPECT_EQ(interface.availableChannels()[0], channelOf(11, 2462, false));
    EXPECT_EQ(interface.availableChannels()[1], channelOf(0, 0, false));
}

TEST(InterfaceDescription, WithoutChannelsHasNoChannelsLine) {
    EXPECT_EQ(bareInterface().description(),
              "MAC Address    : 02:1A:2B:3C:4D:5F\n"
              "Interface Name : wlan0\n"
              "Role           : (null)\n"
              "Subsystem      : (null)\n");
}

TEST(InterfaceDescription, ListsItsChannelsOneALine) {
    EXPECT_EQ(read(wholeSkeleton()).description(),
              "MAC Address    : 02:1A:2B:3C:4D:5F\n"
              "Interface Name : wlan0\n"
              "Role           : text\n"
              "Subsystem      : 80211-text\n"
              "Channels       : \n"
              "[\n"
              "    Channel <36> Frequency <5180> Radar Prone <NO> Supports HT40 <NO>\n"
              "    Channel <6> Frequency <2437> Radar Prone <NO> Supports HT40 <NO>\n"
              "    Channel <52> Frequency <5260> Radar Prone <YES> Supports HT40 <NO>\n"
              "]\n"
              "\n");
}

TEST(InterfaceDescription, OfNothingIsAllNull) {
    EXPECT_EQ(
        HalvaneInterface::initWithDevice_withMAC_withBSDName(nullptr, std::nullopt, std::nullopt)
            .description(),
        "MAC Address    : (null)\n"
        "Interface Name : (null)\n"
        "Role           : (null)\n"
        "Subsystem      : (null)\n");
}

TEST(InterfaceDescription, KeepsTextsWhole) {
    const std::string name("a\0b", 3);
    const auto interface =
        HalvaneInterface::initWithDevice_withMAC_withBSDName(nullptr, kAddress, name);
    EXPECT_NE(interface.description().find(std::string("Interface Name : ") + name + "\n"),
              std::string::npos);
}

TEST(InterfaceEquality, TakesDevicesByValue) {
    EXPECT_EQ(bareInterface(), bareInterface());
    const auto other = bareInterface();
    other.wifiDevice()->setNumRadioChains(1);
    EXPECT_NE(bareInterface(), other);

    const auto without =
        HalvaneInterface::initWithDevice_withMAC_withBSDName(nullptr, kAddress, "wlan0");
    EXPECT_NE(bareInterface(), without);
    EXPECT_NE(without, bareInterface());
    EXPECT_EQ(without, HalvaneInterface(without));
}

TEST(InterfaceEquality, SeesEveryField) {
    const auto changed = [](const char* key, const PropertyListValue& value) {
        auto skeleton = wholeSkeleton();
        skeleton.set(key, value);
        return read(skeleton);
    };
    const auto interface = read(wholeSkeleton());
    EXPECT_EQ(interface, changed("Role", "text"));
    EXPECT_NE(interface, changed("MAC", kDeviceAddress));
    EXPECT_NE(interface, changed("InterfaceName", "wlan1"));
    EXPECT_NE(interface, changed("Role", "other"));
    EXPECT_NE(interface, changed("Subsystem", "other"));
    EXPECT_NE(interface, changed("Device", PropertyListDictionary()));
    EXPECT_NE(interface, changed("Channels", PropertyListArray()));
}

}  // namespace
