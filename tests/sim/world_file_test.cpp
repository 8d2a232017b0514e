// A simulated daemon's world, read from a property list.
#include "tools/halvaned-sim/world_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/platform/plist/xml_property_list.h"

#include "tests/support/replaced_new.h"
#include "tests/support/skeletons.h"
#include "tools/halvaned-sim/default_world.h"

namespace halvane::sim {

namespace {

PropertyListDictionary fileOf(const char* key, PropertyListValue value) {
    PropertyListDictionary file = propertyListOf(defaultWorld());
    file.set(key, std::move(value));
    return file;
}

PropertyListDictionary forWlan0(PropertyListArray list) {
    PropertyListDictionary lists;
    lists.set("wlan0", std::move(list));
    return lists;
}

PropertyListDictionary withData(const char* key, std::initializer_list<std::uint8_t> bytes) {
    PropertyListDictionary skeleton;
    skeleton.set(key, ByteBuffer(bytes));
    return skeleton;
}

// The message for a refused file.
std::string refusalOf(const PropertyListValue& file) {
    const auto world = worldFromPropertyList(file);
    return world ? "none" : world.error();
}

TEST(WorldFile, ReadsBackWhatItWrites) {
    World world = defaultWorld();
    world.disable("wlan1");
    const auto text = xmlPropertyList(propertyListOf(world));
    ASSERT_TRUE(text);
    const auto read = worldFromText(*text);
    ASSERT_TRUE(read);
    const World& copy = *read;
    EXPECT_EQ(xmlPropertyList(propertyListOf(copy)), text);
    EXPECT_EQ(copy.devices(), world.devices());
    ASSERT_EQ(copy.interfaces().size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(copy.interfaces()[i].record, world.interfaces()[i].record);
        EXPECT_EQ(copy.interfaces()[i].configs, world.interfaces()[i].configs);
        EXPECT_EQ(copy.interfaces()[i].stations, world.interfaces()[i].stations);
        EXPECT_EQ(copy.interfaces()[i].isEnabled, i == 0);
    }
}

TEST(WorldFile, NeedsInterfacesAlone) {
    PropertyListDictionary file;
    file.set("Interfaces", PropertyListArray());
    EXPECT_EQ(worldFromPropertyList(file)->interfaces().size(), 0u);
    EXPECT_EQ(refusalOf(PropertyListDictionary()), "Interfaces: is missing");
}

TEST(WorldFile, SaysWhatIsWrongAndWhere) {
    const auto wlan0 =
        PropertyListValue(defaultWorld().interfaces()[0].record.skeletonRepresentation());
    EXPECT_EQ(refusalOf("text"), "the whole: is not a dictionary");
    EXPECT_EQ(refusalOf(fileOf("Clients", 1)), "Clients: there is no such key");
    EXPECT_EQ(refusalOf(fileOf("Interfaces", 1)), "Interfaces: is not an array");
    EXPECT_EQ(refusalOf(fileOf("Interfaces", PropertyListArray{wlan0, 1})),
              "Interfaces: element 2: is not a dictionary");
    EXPECT_EQ(refusalOf(fileOf("Interfaces", PropertyListArray{PropertyListDictionary()})),
              "Interfaces: element 1: InterfaceName: is missing");
    EXPECT_EQ(refusalOf(fileOf("Interfaces", PropertyListArray{wlan0, wlan0})),
              "Interfaces: element 2: InterfaceName: another has the same");
    EXPECT_EQ(refusalOf(fileOf("Devices", PropertyListArray{"x"})),
              "Devices: element 1: is not a dictionary");
    EXPECT_EQ(refusalOf(fileOf("Disabled", PropertyListArray{"wlan0", "wlan7"})),
              "Disabled: element 2: there is no interface wlan7");
    EXPECT_EQ(refusalOf(fileOf("Disabled", PropertyListArray{7})),
              "Disabled: element 1: is not a string");
    EXPECT_EQ(refusalOf(fileOf("Configs", PropertyListArray())), "Configs: is not a dictionary");
    EXPECT_EQ(refusalOf(fileOf("Configs", forWlan0({1}))),
              "Configs: wlan0: element 1: is not a dictionary");
}

// Returns the default file with one changed value of the first interface.
PropertyListDictionary withInterface(const char* key, PropertyListValue value) {
    auto wlan0 = defaultWorld().interfaces()[0].record.skeletonRepresentation();
    wlan0.set(key, std::move(value));
    return fileOf("Interfaces", PropertyListArray{wlan0});
}

TEST(WorldFile, SaysWhichKeyOfARecordIsWrong) {
    const PropertyListValue text = "text";
    const PropertyListValue one = 1;
    EXPECT_EQ(refusalOf(withInterface("InterfaceName", "")),
              "Interfaces: element 1: InterfaceName: is empty");
    EXPECT_EQ(refusalOf(withInterface("Role", "")), "Interfaces: element 1: Role: is empty");
    EXPECT_EQ(refusalOf(withInterface("Subsystem", one)),
              "Interfaces: element 1: Subsystem: is not a string");
    EXPECT_EQ(refusalOf(withInterface("MAC", ByteBuffer{2, 0})),
              "Interfaces: element 1: MAC: does not have 6 bytes");
    EXPECT_EQ(refusalOf(withInterface("MAC", text)), "Interfaces: element 1: MAC: is not data");
    EXPECT_EQ(refusalOf(withInterface("role", "AP")),
              "Interfaces: element 1: role: there is no such key");
    EXPECT_EQ(refusalOf(withInterface("Device", text)),
              "Interfaces: element 1: Device: is not a dictionary");
    EXPECT_EQ(refusalOf(withInterface("Device", withData("MAC", {2}))),
              "Interfaces: element 1: Device: MAC: does not have 6 bytes");
    EXPECT_EQ(refusalOf(withInterface("Channels", one)),
              "Interfaces: element 1: Channels: is not an array");
    PropertyListDictionary channel;
    channel.set("isDisabled", text);
    EXPECT_EQ(
        refusalOf(withInterface("Channels", PropertyListArray{PropertyListDictionary(), channel})),
        "Interfaces: element 1: Channels: element 2: isDisabled: is not a boolean");
}

TEST(WorldFile, SaysWhichKeyIsWrongInEveryList) {
    auto station = withData("MAC", {2, 0, 0, 0, 0, 1});
    station.set("IEs", PropertyListArray{ByteBuffer{0, 0}, 1});
    EXPECT_EQ(refusalOf(fileOf("Stations", forWlan0({station}))),
              "Stations: wlan0: element 1: IEs: element 2: is not data");
    auto config = withData("SSID", {'x'});
    config.set("channel", "6");
    EXPECT_EQ(refusalOf(fileOf("Configs", forWlan0({withData("SSID", {'y'}), config}))),
              "Configs: wlan0: element 2: channel: is not an integer");
    EXPECT_EQ(refusalOf(fileOf("Devices", PropertyListArray{withData("Index", {1})})),
              "Devices: element 1: Index: is not an integer");
}

// A record would change any other number.
TEST(WorldFile, TakesNumbersThatTheirRecordsHold) {
    constexpr auto kMinimum = std::numeric_limits<std::int64_t>::min();
    constexpr auto kMaximum = std::numeric_limits<std::int64_t>::max();
    constexpr auto kLargest = std::numeric_limits<std::uint64_t>::max();
    const std::string beyondSigned = "is not from -9223372036854775808 to 9223372036854775807";
    const std::string beyondUnsigned = "is not from 0 to 18446744073709551615";
    const auto problemOf = [](const char* list, const char* key, const PropertyListValue& value) {
        auto record =
            withData(std::string_view(list) == "Configs" ? "SSID" : "MAC", {2, 0, 0, 0, 0, 1});
        record.set(key, value);
        const std::string refusal = refusalOf(fileOf(list, forWlan0({record})));
        const std::string place = std::string(list) + ": wlan0: element 1: " + key + ": ";
        EXPECT_TRUE(refusal == "none" || refusal.starts_with(place)) << refusal;
        return refusal == "none" ? refusal : refusal.substr(place.size());
    };
    EXPECT_EQ(problemOf("Stations", "Capabilities", 65535), "none");
    EXPECT_EQ(problemOf("Stations", "Capabilities", true), "none");
    EXPECT_EQ(problemOf("Stations", "Capabilities", 65536), "is not from 0 to 65535");
    EXPECT_EQ(problemOf("Stations", "Capabilities", -1), "is not from 0 to 65535");
    for (const char* key :
         {"LastUpdated", "FirstUpdated", "createTime", "joinTime", "leftTime", "deauthReason"}) {
        EXPECT_EQ(problemOf("Stations", key, kLargest), "none");
        EXPECT_EQ(problemOf("Stations", key, -1), beyondUnsigned);
        EXPECT_EQ(problemOf("Stations", key, 1.0), "is not an integer");
    }
    for (const auto& [list, key] : {std::pair("Stations", "Channel"),
                                    {"Stations", "Noise"},
                                    {"Stations", "RSSI"},
                                    {"Stations", "BeaconInterval"},
                                    {"Configs", "channel"},
                                    {"Configs", "wpsPIN"}}) {
        EXPECT_EQ(problemOf(list, key, kMinimum), "none");
        EXPECT_EQ(problemOf(list, key, kMaximum), "none");
        EXPECT_EQ(problemOf(list, key, kLargest), beyondSigned);
        EXPECT_EQ(problemOf(list, key, 6.0), "is not an integer");
    }
    EXPECT_EQ(problemOf("Stations", "isAssociated", 0.5), "is not a boolean");
    EXPECT_EQ(problemOf("Configs", "SecurityWPA2", 1.0), "is not a boolean");
}

TEST(WorldFile, TakesNumbersThatChannelsAndDevicesHold) {
    constexpr auto kLargest = std::numeric_limits<std::uint64_t>::max();
    const auto channel = [](const char* key, const PropertyListValue& value) {
        PropertyListDictionary skeleton;
        skeleton.set(key, value);
        return refusalOf(withInterface("Channels", PropertyListArray{skeleton}));
    };
    const std::string place = "Interfaces: element 1: Channels: element 1: ";
    for (const std::string key : {"ChannelNumber", "ChannelFrequency"}) {
        EXPECT_EQ(channel(key.c_str(), kLargest),
                  place + key + ": is not from -9223372036854775808 to 9223372036854775807");
    }
    EXPECT_EQ(channel("isDisabled", 0.5), place + "isDisabled: is not a boolean");
    for (const std::string key : {"Index", "NumberSpatialStreams"}) {
        const auto device = [&](const PropertyListValue& value) {
            PropertyListDictionary skeleton;
            skeleton.set(key, value);
            return refusalOf(fileOf("Devices", PropertyListArray{skeleton}));
        };
        EXPECT_EQ(device(kLargest), "none");
        EXPECT_EQ(device(-1),
                  "Devices: element 1: " + key + ": is not from 0 to 18446744073709551615");
        EXPECT_EQ(device(1.5), "Devices: element 1: " + key + ": is not an integer");
    }
}

// The simulation prints such a file if the records in its own file lack addresses.
TEST(WorldFile, TakesAddressesThatAreNotThere) {
    PropertyListDictionary interface;
    for (const char* key : {"InterfaceName", "Role", "Subsystem"}) interface.set(key, "x");
    PropertyListDictionary file;
    file.set("Interfaces", PropertyListArray{interface});
    const auto printed = propertyListOf(*worldFromPropertyList(file));
    EXPECT_EQ(propertyListOf(*worldFromPropertyList(printed)), printed);
}

TEST(WorldFile, TakesNumbersForBooleans) {
    PropertyListDictionary config = withData("SSID", {'x'});
    config.set("SecurityWPA2", 1);
    const World world = *worldFromPropertyList(fileOf("Configs", forWlan0({config})));
    EXPECT_TRUE(world.interfaces()[0].configs.begin()->allowSecurityWPA2());
}

TEST(WorldFile, RefusesRecordsThatCannotBeToldApart) {
    const auto ssid = withData("SSID", {'x'});
    const auto mac = withData("MAC", {2, 0, 0, 0, 0, 1});
    EXPECT_EQ(refusalOf(fileOf("Configs", forWlan0({PropertyListDictionary()}))),
              "Configs: wlan0: element 1: SSID: does not have 1 to 32 bytes");
    EXPECT_EQ(refusalOf(fileOf("Configs", forWlan0({ssid, ssid}))),
              "Configs: wlan0: element 2: SSID: another has the same");
    EXPECT_EQ(refusalOf(fileOf("Stations", forWlan0({withData("MAC", {1})}))),
              "Stations: wlan0: element 1: MAC: does not have 6 bytes");
    EXPECT_EQ(refusalOf(fileOf("Stations", forWlan0({mac, mac}))),
              "Stations: wlan0: element 2: MAC: another has the same");
    EXPECT_EQ(refusalOf(fileOf("Stations", forWlan0({PropertyListDictionary()}))),
              "Stations: wlan0: element 1: MAC: does not have 6 bytes");
    EXPECT_EQ(refusalOf(fileOf("Stations", forWlan0({mac}))), "none");
}

// The list has to fit into a reply, together with stations that come later.
TEST(WorldFile, TakesStationsUpToASizeInAll) {
    const auto stations = [](std::size_t elements) {
        auto station = withData("MAC", {2, 0, 0, 0, 0, 1});
        station.set("RawIEBuffer", ByteBuffer::fromText(std::string(elements, 'x')));
        return fileOf("Stations", forWlan0({station}));
    };
    EXPECT_EQ(refusalOf(stations(6'000'000)), "none");
    EXPECT_EQ(refusalOf(stations(6'300'000)),
              "Stations: they are longer than 8388608 bytes as one property list");
}

TEST(WorldFile, TakesNoValueOfTheWrongKind) {
    for (const auto& value : testing::valuesOfEveryKind()) {
        for (const char* key : {"Devices", "Interfaces", "Disabled"}) {
            if (value.as<PropertyListArray>() != nullptr) continue;
            EXPECT_EQ(refusalOf(fileOf(key, value)), std::string(key) + ": is not an array");
        }
        for (const char* key : {"Configs", "Stations"}) {
            if (value.as<PropertyListDictionary>() != nullptr) continue;
            EXPECT_EQ(refusalOf(fileOf(key, value)), std::string(key) + ": is not a dictionary");
        }
    }
}

// What a thread asks operator new for.
class CountedMemory {
  public:
    CountedMemory() {
        bytes() = 0;
        testing::memoryHooks().mayAllocate = [](std::size_t size) {
            bytes() += size;
            return true;
        };
    }
    ~CountedMemory() { testing::memoryHooks().mayAllocate = nullptr; }
    CountedMemory(const CountedMemory&) = delete;
    CountedMemory& operator=(const CountedMemory&) = delete;

    static std::size_t& bytes() {
        thread_local std::size_t count;
        return count;
    }
};

TEST(WorldFile, CopiesALongNameForNoneOfTheRecordsUnderIt) {
    constexpr std::size_t kNameSize = 100000;
    const std::string name(kNameSize, 'w');
    PropertyListDictionary interface =
        defaultWorld().interfaces()[0].record.skeletonRepresentation();
    interface.set("InterfaceName", name);
    PropertyListArray stations;
    for (std::uint8_t i = 0; i < 200; ++i)
        stations.emplace_back(withData("MAC", {2, 0, 0, 0, 0, i}));
    PropertyListDictionary lists;
    lists.set(name, stations);
    PropertyListDictionary file;
    file.set("Interfaces", PropertyListArray{interface});
    file.set("Stations", lists);

    const CountedMemory memory;
    EXPECT_EQ(worldFromPropertyList(file)->interfaces()[0].stations.size(), 200u);
    EXPECT_LT(memory.bytes(), 50 * kNameSize);
}

TEST(WorldFile, NamesTheByteWhereXMLEnds) {
    const auto world = worldFromText("<plist><dict>");
    ASSERT_FALSE(world);
    EXPECT_THAT(world.error(), ::testing::StartsWith("byte 13: is not a property list: "));
}

}  // namespace

}  // namespace halvane::sim
