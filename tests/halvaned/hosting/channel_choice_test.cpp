#include "tools/halvaned/hosting/channel_choice.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"

#include "tools/halvaned/radio/radio.h"

namespace halvane::hosting {
namespace {

struct Frequency {
    std::uint32_t megahertz;
    bool isRadarProne = false;
    bool isDisabled = false;
    bool isPassive = false;
};

Radio radioOf(std::initializer_list<Frequency> frequencies) {
    Radio radio{.name = "phy0"};
    for (const Frequency& each : frequencies) {
        RadioChannel channel{.frequency = each.megahertz,
                             .isDisabled = each.isDisabled,
                             .isPassive = each.isPassive,
                             .isRadarProne = each.isRadarProne};
        const std::uint16_t band = each.megahertz < 3000 ? 0 : 1;
        radio.bands[band].channels.emplace(channel.kilohertz(), channel);
    }
    return radio;
}

Result<std::int64_t, std::string> channelFor(const HalvaneBSSConfig& configuration,
                                             const Radio& radio) {
    return hosting::channelFor(configuration, radio, ChannelRules::InForce);
}

HalvaneBSSConfig onChannel(std::int64_t number) {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setChannel(number);
    return configuration;
}

HalvaneBSSConfig ofModes(const char* words) {
    auto configuration = HalvaneBSSConfig::init();
    EXPECT_TRUE(configuration.setPHYModeWithOptionString_error(words));
    return configuration;
}

constexpr std::uint32_t kChannel1 = 2412, kChannel6 = 2437, kChannel7 = 2442, kChannel36 = 5180,
                        kChannel52 = 5260;

TEST(ChannelChoice, TakesTheConfiguredChannel) {
    const Radio radio = radioOf({{kChannel1}, {kChannel6}, {kChannel36}});
    EXPECT_EQ(channelFor(onChannel(6), radio), 6);
    EXPECT_EQ(channelFor(onChannel(36), radio), 36);
}

TEST(ChannelChoice, TakesAConfiguredChannelWithRadarToo) {
    const Radio radio =
        radioOf({{.megahertz = kChannel52, .isRadarProne = true, .isPassive = true}});
    EXPECT_EQ(channelFor(onChannel(52), radio), 52);
}

TEST(ChannelChoice, RefusesAChannelThatTheRadioMayNotUse) {
    const Radio radio = radioOf({{kChannel1},
                                 {.megahertz = kChannel6, .isDisabled = true},
                                 {.megahertz = kChannel36, .isPassive = true}});
    for (const std::int64_t number : {6, 36, 40, 0x101, -1, 14}) {
        const auto channel = channelFor(onChannel(number), radio);
        ASSERT_FALSE(channel) << number;
        EXPECT_EQ(channel.error(), "phy0 may not host on channel " + std::to_string(number) + ".");
    }
}

TEST(ChannelChoice, ChoosesOneThatDoesNotOverlap) {
    EXPECT_EQ(channelFor(onChannel(0), radioOf({{kChannel1}, {kChannel6}, {kChannel36}})), 1);
    EXPECT_EQ(
        channelFor(
            onChannel(0),
            radioOf({{.megahertz = kChannel1, .isDisabled = true}, {kChannel6}, {kChannel7}})),
        6);
    EXPECT_EQ(channelFor(onChannel(0), radioOf({{kChannel7}})), 7);
}

TEST(ChannelChoice, FollowsTheModes) {
    const Radio radio = radioOf({{kChannel1}, {kChannel36}});
    EXPECT_EQ(channelFor(ofModes("802.11a"), radio), 36);
    EXPECT_EQ(channelFor(ofModes("802.11a,802.11n"), radio), 36);
    EXPECT_EQ(channelFor(ofModes("802.11b,802.11g"), radio), 1);
    EXPECT_EQ(channelFor(ofModes("802.11n"), radio), 1);
    EXPECT_EQ(channelFor(ofModes("802.11g,802.11a"), radioOf({{kChannel36}})), 36);
    EXPECT_FALSE(channelFor(ofModes("802.11g"), radioOf({{kChannel36}})));
}

TEST(ChannelChoice, ChoosesNoneThatNeedsALookForRadar) {
    const Radio radio = radioOf({{.megahertz = kChannel36, .isRadarProne = true},
                                 {.megahertz = kChannel52, .isRadarProne = true}});
    const auto channel = channelFor(onChannel(0), radio);
    ASSERT_FALSE(channel);
    EXPECT_EQ(channel.error(), "phy0 has no channel to host on that needs no radar detection.");
}

// A new system follows the rules of the world, which forbid most of 5 GHz, until somebody sets a
// country.
TEST(ChannelChoice, LeavesTheRulesOfAnotherCountryToHostapd) {
    const Radio radio = radioOf({{kChannel1},
                                 {.megahertz = kChannel36, .isPassive = true},
                                 {.megahertz = kChannel52, .isDisabled = true}});
    const auto rules = ChannelRules::Another;
    EXPECT_EQ(hosting::channelFor(onChannel(36), radio, rules), 36);
    EXPECT_EQ(hosting::channelFor(onChannel(52), radio, rules), 52);
    EXPECT_FALSE(hosting::channelFor(onChannel(149), radio, rules));
    EXPECT_EQ(hosting::channelFor(ofModes("802.11a"), radio, rules), 36);
    EXPECT_EQ(hosting::channelFor(onChannel(0), radio, rules), 1);
}

TEST(ChannelChoice, KnowsWhereRadarMayBe) {
    const Radio radio = radioOf({{kChannel36}, {.megahertz = kChannel52, .isRadarProne = true}});
    EXPECT_TRUE(isRadarProne(radio, 52));
    EXPECT_FALSE(isRadarProne(radio, 36));
    EXPECT_FALSE(isRadarProne(radio, 100));
    EXPECT_FALSE(isRadarProne(radio, 0));
}

}  // namespace
}  // namespace halvane::hosting
