// The simulated devices, interfaces and stations, and their events.
#include "tools/halvaned-sim/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_status.h"

#include "tools/halvaned-sim/default_world.h"

namespace halvane::sim {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const ByteBuffer kFirst = {0x02, 0, 0, 0, 1, 1};
const ByteBuffer kSecond = {0x02, 0, 0, 0, 1, 2};
const ByteBuffer kStranger = {0x02, 0, 0, 0, 9, 9};

HalvaneBSSConfig config(const char* ssid, std::int64_t order = 0) {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error(ssid);
    config.setPreferredOrder(order);
    return config;
}

std::vector<std::string> namesOf(const SimulatedInterface& interface) {
    std::vector<std::string> names;
    for (const HalvaneBSSConfig& config : interface.configs) {
        const auto bytes = config.ssid()->bytes();
        names.emplace_back(bytes.begin(), bytes.end());
    }
    return names;
}

Notification on0(Happening happening, const ByteBuffer& mac) {
    return {happening, "wlan0", mac};
}

// Returns the default world with the BSS of wlan0 up. Its earlier notifications are taken.
World worldWithBSS() {
    World world = defaultWorld();
    EXPECT_EQ(world.startBSS("wlan0"), DaemonStatus::Done);
    world.takeNotifications();
    return world;
}

HalvaneClient clientOf(const World& world, const ByteBuffer& mac) {
    for (const HalvaneClient& client : world.clients()) {
        if (client.mac() == mac) return client;
    }
    ADD_FAILURE() << mac.hex();
    return HalvaneClient::initWithMAC(mac);
}

TEST(World, HasTwoDevicesWithAnInterfaceEach) {
    const World world = defaultWorld();
    ASSERT_EQ(world.devices().size(), 2u);
    EXPECT_EQ(world.devices()[0].numRadioChains(), 2u);
    ASSERT_EQ(world.interfaces().size(), 2u);
    const SimulatedInterface& wlan0 = world.interfaces()[0];
    EXPECT_EQ(*wlan0.record.wifiDevice(), world.devices()[0]);
    EXPECT_EQ(wlan0.record.ifRole(), "AP");
    EXPECT_EQ(wlan0.record.availableChannels().size(), 11u);
    EXPECT_EQ(wlan0.record.availableChannels()[5].channelFrequency(), 2437);
    EXPECT_EQ(wlan0.configs.begin()->wifiSecurity(), kHalvaneSecurityWPAPSK);
    EXPECT_TRUE(wlan0.configs.begin()->keyMaterial());
    const auto& channels = world.interfaces()[1].record.availableChannels();
    ASSERT_EQ(channels.size(), 24u);
    EXPECT_EQ(channels[15].channelNumber(), 52);
    EXPECT_TRUE(channels[15].isRadarProne());
    EXPECT_FALSE(channels[14].isRadarProne());
    EXPECT_THAT(world.clients(), IsEmpty());
}

TEST(World, LetsStationsInRangeJoinWhenABSSStarts) {
    World world = defaultWorld();
    EXPECT_EQ(world.startBSS("wlan0"), DaemonStatus::Done);
    EXPECT_THAT(world.takeNotifications(),
                ElementsAre(on0(Happening::Joined, kFirst), on0(Happening::Authorized, kFirst),
                            on0(Happening::Joined, kSecond), on0(Happening::Authorized, kSecond)));
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
    const HalvaneClient client = clientOf(world, kFirst);
    EXPECT_TRUE(client.isAssociated());
    EXPECT_GT(client.joinTime(), 0u);
    EXPECT_EQ(client.leftTime(), 0u);
    EXPECT_EQ(client.channel(), Number(6));
    EXPECT_TRUE(client.HTCaps());
    EXPECT_TRUE(client.supportedRates());
}

TEST(World, DoesNothingWhereABSSIsUpAlready) {
    World world = worldWithBSS();
    EXPECT_EQ(world.startBSS("wlan0"), DaemonStatus::Done);
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
}

TEST(World, LetsStationsLeaveWhenTheBSSEnds) {
    using End = DaemonStatus (*)(World&);
    const End ends[] = {
        [](World& world) { return world.stopBSS("wlan0"); },
        [](World& world) { return world.disable("wlan0"); },
        [](World& world) { return world.changeRole("wlan0", "STA"); },
        [](World& world) {
            return world.removeConfig("wlan0", *world.interfaces()[0].configs.begin());
        },
    };
    for (const End& end : ends) {
        World world = worldWithBSS();
        EXPECT_EQ(end(world), DaemonStatus::Done);
        EXPECT_THAT(world.takeNotifications(),
                    ElementsAre(on0(Happening::Left, kFirst), on0(Happening::Left, kSecond)));
        EXPECT_FALSE(world.interfaces()[0].hostedSSID);
        EXPECT_FALSE(clientOf(world, kSecond).isAssociated());
        EXPECT_GT(clientOf(world, kSecond).leftTime(), 0u);
        EXPECT_EQ(clientOf(world, kSecond).deauthReason(), 3u);
    }
}

TEST(World, KeepsTheBSSOfARoleThatHostsToo) {
    World world = worldWithBSS();
    EXPECT_EQ(world.changeRole("wlan0", "ap"), DaemonStatus::Done);
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
    EXPECT_EQ(world.interfaces()[0].record.ifRole(), "ap");
    EXPECT_EQ(world.interfaces()[0].record.availableChannels().size(), 11u);
}

TEST(World, ListsAStationOnceHoweverOftenItComes) {
    World world = worldWithBSS();
    const std::uint64_t created = clientOf(world, kFirst).createTime();
    world.stopBSS("wlan0");
    world.startBSS("wlan0");
    EXPECT_EQ(world.clients().size(), 2u);
    EXPECT_EQ(clientOf(world, kFirst).createTime(), created);
    EXPECT_EQ(clientOf(world, kFirst).leftTime(), 0u);
    EXPECT_TRUE(clientOf(world, kFirst).isAssociated());
}

TEST(World, HasStationsOfAWPA2Network) {
    World world = worldWithBSS();
    const HalvaneClient station = clientOf(world, kFirst);
    EXPECT_EQ(station.securityFriendlyName(), "WPA Personal");
    ASSERT_TRUE(station.rsn());
    EXPECT_TRUE(station.rsn()->isValid());
    EXPECT_TRUE(station.rsn()->allowUnicastCipherCCMP());
    EXPECT_TRUE(station.rsn()->allowKeyManagementPSK());
    EXPECT_TRUE(station.HTCaps()->isValid());
    EXPECT_FALSE(station.invalidIEs());
}

TEST(World, GivesNoReasonBeforeAStationLeaves) {
    World world = worldWithBSS();
    world.join("wlan0", kStranger);
    world.burst("wlan0", 1);
    for (const HalvaneClient& client : world.clients()) EXPECT_EQ(client.deauthReason(), 0u);
    world.leave("wlan0", kStranger);
    EXPECT_EQ(clientOf(world, kStranger).deauthReason(), 3u);
}

TEST(World, StartsNothingOnAnInterfaceThatCannot) {
    World world = defaultWorld();
    EXPECT_EQ(world.startBSS("wlan7"), DaemonStatus::UnknownInterface);
    EXPECT_EQ(world.startBSS("wlan1"), DaemonStatus::WrongRole);
    EXPECT_EQ(world.changeRole("wlan1", "AP"), DaemonStatus::Done);
    EXPECT_EQ(world.startBSS("wlan1"), DaemonStatus::NothingToStart);
    EXPECT_EQ(world.disable("wlan0"), DaemonStatus::Done);
    EXPECT_EQ(world.startBSS("wlan0"), DaemonStatus::InterfaceDisabled);
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
    EXPECT_EQ(world.enable("wlan0"), DaemonStatus::Done);
    EXPECT_EQ(world.startBSS("wlan0"), DaemonStatus::Done);
}

TEST(World, StartsTheConfigurationOfTheLowestOrder) {
    World world = defaultWorld();
    world.addConfig("wlan0", config("later", 5));
    world.addConfig("wlan0", config("first", -1));
    world.addConfig("wlan0", config("as early", -1));
    world.startBSS("wlan0");
    EXPECT_EQ(world.interfaces()[0].hostedSSID, ByteBuffer::fromText("first"));
    // The configuration does not state a channel.
    EXPECT_EQ(clientOf(world, kFirst).channel(), Number(1));
}

TEST(World, ReplacesAConfigurationOfTheSameSSID) {
    World world = defaultWorld();
    EXPECT_EQ(world.addConfig("wlan1", config("one")), DaemonStatus::Done);
    EXPECT_EQ(world.addConfig("wlan1", config("two")), DaemonStatus::Done);
    EXPECT_EQ(world.addConfig("wlan1", config("one", 9)), DaemonStatus::Done);
    EXPECT_THAT(namesOf(world.interfaces()[1]), ElementsAre("one", "two"));
    EXPECT_EQ(world.interfaces()[1].configs.begin()->preferredOrder(), 9);
    EXPECT_THAT(namesOf(world.interfaces()[0]), ElementsAre("Halvane Simulation"));
}

TEST(World, RemovesAConfigurationByItsSSID) {
    World world = defaultWorld();
    world.addConfig("wlan1", config("one"));
    world.addConfig("wlan1", config("two"));
    EXPECT_EQ(world.removeConfig("wlan1", config("one", 9)), DaemonStatus::Done);
    EXPECT_THAT(namesOf(world.interfaces()[1]), ElementsAre("two"));
    EXPECT_EQ(world.removeConfig("wlan1", config("one")), DaemonStatus::UnknownConfiguration);
    EXPECT_EQ(world.removeConfig("wlan1", HalvaneBSSConfig::init()),
              DaemonStatus::UnknownConfiguration);
    EXPECT_EQ(world.removeConfig("wlan7", config("two")), DaemonStatus::UnknownInterface);
}

TEST(World, LeavesTheBSSUpWhenAnotherConfigurationGoes) {
    World world = worldWithBSS();
    world.addConfig("wlan0", config("other"));
    world.removeConfig("wlan0", config("other"));
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
    EXPECT_TRUE(world.interfaces()[0].hostedSSID);
}

TEST(World, RefusesAConfigurationWithoutAnSSIDOfItsOwn) {
    World world = defaultWorld();
    EXPECT_EQ(world.addConfig("wlan0", HalvaneBSSConfig::init()), DaemonStatus::BadConfiguration);
    EXPECT_EQ(world.addConfig("wlan0", config("")), DaemonStatus::BadConfiguration);
    EXPECT_EQ(world.addConfig("wlan7", config("x")), DaemonStatus::UnknownInterface);
    PropertyListDictionary skeleton;
    skeleton.set("SSID", ByteBuffer::fromText(std::string(33, 'x')));
    EXPECT_EQ(world.addConfig("wlan0", HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton)),
              DaemonStatus::BadConfiguration);
    skeleton.set("SSID", ByteBuffer::fromText(std::string(32, 'x')));
    EXPECT_EQ(world.addConfig("wlan0", HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton)),
              DaemonStatus::Done);
}

TEST(World, TakesAnyRoleThatAPropertyListHolds) {
    World world = defaultWorld();
    EXPECT_EQ(world.changeRole("wlan7", "AP"), DaemonStatus::UnknownInterface);
    EXPECT_EQ(world.changeRole("wlan0", ""), DaemonStatus::BadRequest);
    EXPECT_EQ(world.changeRole("wlan0", "\xEF\xBF\xBF"), DaemonStatus::BadRequest);
    EXPECT_EQ(world.interfaces()[0].record.ifRole(), "AP");
    EXPECT_EQ(world.changeRole("wlan0", "monitor"), DaemonStatus::Done);
    EXPECT_EQ(world.interfaces()[0].record.ifRole(), "monitor");
    EXPECT_EQ(world.enable("wlan7"), DaemonStatus::UnknownInterface);
    EXPECT_EQ(world.disable("wlan7"), DaemonStatus::UnknownInterface);
    EXPECT_EQ(world.stopBSS("wlan7"), DaemonStatus::UnknownInterface);
}

TEST(World, TellsWhatStationsDoInOrder) {
    World world = worldWithBSS();
    EXPECT_EQ(world.join("wlan0", kStranger), DaemonStatus::Done);
    EXPECT_EQ(world.authorize("wlan0", kStranger), DaemonStatus::Done);
    EXPECT_EQ(world.kick("wlan0", kStranger, 15), DaemonStatus::Done);
    EXPECT_EQ(world.leave("wlan0", kFirst), DaemonStatus::Done);
    EXPECT_THAT(
        world.takeNotifications(),
        ElementsAre(on0(Happening::Joined, kStranger), on0(Happening::Authorized, kStranger),
                    on0(Happening::Kicked, kStranger), on0(Happening::Left, kFirst)));
    EXPECT_EQ(clientOf(world, kStranger).deauthReason(), 15u);
    EXPECT_FALSE(clientOf(world, kStranger).isAssociated());
    EXPECT_EQ(world.associatedStations("wlan0"), 1u);
}

TEST(World, KnowsOnlyStationsThatAreAssociated) {
    World world = defaultWorld();
    EXPECT_EQ(world.join("wlan0", kStranger), DaemonStatus::NoBSS);
    EXPECT_EQ(world.leave("wlan0", kStranger), DaemonStatus::NoBSS);
    EXPECT_EQ(world.burst("wlan0", 1), DaemonStatus::NoBSS);
    world.startBSS("wlan0");
    world.takeNotifications();
    EXPECT_EQ(world.leave("wlan0", kFirst), DaemonStatus::Done);
    world.takeNotifications();
    EXPECT_EQ(world.leave("wlan0", kFirst), DaemonStatus::UnknownStation);
    EXPECT_EQ(world.kick("wlan0", kStranger, 1), DaemonStatus::UnknownStation);
    EXPECT_EQ(world.authorize("wlan0", kStranger), DaemonStatus::UnknownStation);
    EXPECT_EQ(world.join("wlan7", kStranger), DaemonStatus::UnknownInterface);
    EXPECT_EQ(world.burst("wlan7", 1), DaemonStatus::UnknownInterface);
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
}

TEST(World, BurstsWithStationsThatAreNew) {
    World world = worldWithBSS();
    const ByteBuffer next = {0x02, 0xB0, 0, 0, 0, 1};
    world.join("wlan0", next);
    EXPECT_EQ(world.burst("wlan0", 2), DaemonStatus::Done);
    const ByteBuffer zero = {0x02, 0xB0, 0, 0, 0, 0}, two = {0x02, 0xB0, 0, 0, 0, 2};
    EXPECT_THAT(world.takeNotifications(),
                ElementsAre(on0(Happening::Joined, next), on0(Happening::Joined, zero),
                            on0(Happening::Joined, two)));
}

TEST(World, HasRoomForSoManyStationsAndNoMore) {
    World world = worldWithBSS();
    EXPECT_EQ(world.burst("wlan0", SIZE_MAX), DaemonStatus::TooManyStations);
    EXPECT_EQ(world.burst("wlan0", kMaximumStations - 1), DaemonStatus::TooManyStations);
    EXPECT_THAT(world.takeNotifications(), IsEmpty());
    EXPECT_EQ(world.burst("wlan0", kMaximumStations - 2), DaemonStatus::Done);
    EXPECT_EQ(world.takeNotifications().size(), kMaximumStations - 2);
    EXPECT_EQ(world.join("wlan0", kStranger), DaemonStatus::TooManyStations);
    EXPECT_EQ(world.join("wlan0", kFirst), DaemonStatus::Done);
    world.changeRole("wlan1", "AP");
    world.addConfig("wlan1", config("x"));
    EXPECT_EQ(world.startBSS("wlan1"), DaemonStatus::TooManyStations);
}

TEST(World, StartsAgainWhereThereIsNoRoomLeft) {
    World world = worldWithBSS();
    EXPECT_EQ(world.burst("wlan0", kMaximumStations - 2), DaemonStatus::Done);
    EXPECT_EQ(world.stopBSS("wlan0"), DaemonStatus::Done);
    world.takeNotifications();
    EXPECT_EQ(world.startBSS("wlan0"), DaemonStatus::Done);
    EXPECT_EQ(world.takeNotifications().size(), 4u);
    EXPECT_EQ(world.clients().size(), kMaximumStations);
}

}  // namespace

}  // namespace halvane::sim
