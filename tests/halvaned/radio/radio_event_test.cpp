#include "tools/halvaned/radio/radio_event.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <optional>
#include <string>
#include <utility>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::forEachPrefix;
using halvane::testing::NetlinkMessage;
using namespace halvane::hosting;

namespace {

using Kind = RadioEvent::Kind;

RadioEvent read(const NetlinkMessage& message) {
    const auto event = readRadioEvent(message.bytes());
    EXPECT_TRUE(event) << event.error();
    EXPECT_TRUE(event && *event);
    return event && *event ? **event : RadioEvent();
}

TEST(RadioEvent, IsOfAKindForEachCommand) {
    const std::pair<std::uint8_t, std::optional<Kind>> commands[] = {
        {NL80211_CMD_NEW_WIPHY, Kind::Radio},
        {NL80211_CMD_SET_WIPHY, Kind::Radio},
        {NL80211_CMD_DEL_WIPHY, Kind::RadioGone},
        {NL80211_CMD_NEW_INTERFACE, Kind::Interface},
        {NL80211_CMD_SET_INTERFACE, Kind::Interface},
        {NL80211_CMD_DEL_INTERFACE, Kind::InterfaceGone},
        {NL80211_CMD_REG_CHANGE, Kind::Regulatory},
        {NL80211_CMD_WIPHY_REG_CHANGE, Kind::Regulatory},
        {NL80211_CMD_REG_BEACON_HINT, Kind::Regulatory},
        {NL80211_CMD_NEW_SCAN_RESULTS, std::nullopt},
        {250, std::nullopt},
    };
    for (const auto& [command, kind] : commands) {
        const auto event = readRadioEvent(NetlinkMessage(command).bytes());
        ASSERT_TRUE(event);
        EXPECT_EQ(*event ? std::optional((*event)->kind) : std::nullopt, kind) << int{command};
    }
}

TEST(RadioEvent, TellsWhichInterfaceOfWhichRadio) {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU32(NL80211_ATTR_WIPHY, 1).addU32(NL80211_ATTR_IFINDEX, 4294967295);
    message.addText(NL80211_ATTR_IFNAME, "wlan1").addU32(999, 1);
    EXPECT_EQ(read(message),
              (RadioEvent{
                  .kind = Kind::Interface, .radio = 1, .interface = 4294967295, .name = "wlan1"}));
}

TEST(RadioEvent, TellsTheCountryAndWhoChoseIt) {
    NetlinkMessage message(NL80211_CMD_REG_CHANGE);
    message.addU8(NL80211_ATTR_REG_INITIATOR, NL80211_REGDOM_SET_BY_USER);
    message.addU8(NL80211_ATTR_REG_TYPE, NL80211_REGDOM_TYPE_COUNTRY);
    message.addText(NL80211_ATTR_REG_ALPHA2, "DE");
    EXPECT_EQ(read(message), (RadioEvent{.kind = Kind::Regulatory,
                                         .country = "DE",
                                         .initiator = RegulatoryInitiator::User}));
    // The world's domain has no country.
    NetlinkMessage world(NL80211_CMD_REG_CHANGE);
    world.addU8(NL80211_ATTR_REG_INITIATOR, NL80211_REGDOM_SET_BY_CORE);
    EXPECT_EQ(read(world).country, std::nullopt);
    EXPECT_EQ(read(world).initiator, RegulatoryInitiator::Kernel);
}

TEST(RadioEvent, IsChecked) {
    EXPECT_EQ(readRadioEvent({}).error(), "it is shorter than its header");
    NetlinkMessage wrong(NL80211_CMD_REG_CHANGE);
    wrong.addU16(NL80211_ATTR_REG_INITIATOR, 1);
    EXPECT_EQ(readRadioEvent(wrong.bytes()).error(), "its initiator has 2 octets");
    NetlinkMessage country(NL80211_CMD_REG_CHANGE);
    country.addText(NL80211_ATTR_REG_ALPHA2, "D\n");
    EXPECT_FALSE(readRadioEvent(country.bytes()));
    NetlinkMessage whole(NL80211_CMD_NEW_INTERFACE);
    whole.addU32(NL80211_ATTR_WIPHY, 1).addU32(NL80211_ATTR_IFINDEX, 3);
    forEachPrefix(whole.bytes(), [&](const ByteBuffer& prefix) {
        const std::size_t size = prefix.size();
        EXPECT_EQ(readRadioEvent(prefix.bytes()).has_value(),
                  size == 4 || size == 12 || size == 20);
    });
}

}  // namespace
