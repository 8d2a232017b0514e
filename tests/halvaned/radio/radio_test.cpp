#include "tools/halvaned/radio/radio.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <linux/nl80211.h>
#include <optional>

#include "halvane/air/channel.h"
#include "halvane/air/he_phy_capabilities.h"

#include "tools/halvane/input/wireless_interface.h"

using halvane::tool::InterfaceMode;
using namespace halvane::hosting;
namespace air = halvane::air;

namespace {

RadioBand bandWithHE(air::HePhyCapability flag) {
    RadioBand band;
    band.he.emplace();
    band.he->bits.setBit(static_cast<std::size_t>(flag), true);
    return band;
}

TEST(RadioChannel, HasTheNumberOfItsFrequency) {
    const auto number = [](std::uint32_t frequency, std::uint32_t offset = 0) {
        return RadioChannel{.frequency = frequency, .frequencyOffset = offset}.channel();
    };
    EXPECT_EQ(number(2412), (air::Channel{air::Band::Ghz2, 1}));
    EXPECT_EQ(number(2484), (air::Channel{air::Band::Ghz2, 14}));
    EXPECT_EQ(number(5955), (air::Channel{air::Band::Ghz6, 1}));
    EXPECT_EQ(number(2413), std::nullopt);
    EXPECT_EQ(number(2412, 500), std::nullopt);
    EXPECT_EQ(number(0), std::nullopt);
    EXPECT_EQ(number(std::numeric_limits<std::uint32_t>::max()), std::nullopt);
}

TEST(RadioChannel, HostsWhereSomebodyMaySendFirst) {
    EXPECT_TRUE(RadioChannel{}.canHost());
    EXPECT_FALSE((RadioChannel{.isPassive = true}.canHost()));
    EXPECT_TRUE((RadioChannel{.isPassive = true, .isRadarProne = true}.canHost()));
    EXPECT_FALSE((RadioChannel{.isDisabled = true, .isRadarProne = true}.canHost()));
}

TEST(RadioBand, AllowsWideChannelsThatRadioAndDomainAllow) {
    const RadioBand none, ht20{.ht = 0x0000}, ht40{.ht = 0x0002};
    const RadioBand vht{.ht = 0x0002, .vht = 0};
    const RadioBand he40 = bandWithHE(air::HePhyCapability::Width40At2Ghz);
    const RadioBand he80 = bandWithHE(air::HePhyCapability::Width40And80);
    struct Case {
        const char* what;
        const RadioBand& band;
        RadioChannel channel;
        bool allows40;
        bool allows80;
    };
    const Case cases[] = {
        {"no capabilities", none, {.frequency = 5180}, false, false},
        {"HT of 20 MHz", ht20, {.frequency = 5180}, false, false},
        {"HT", ht40, {.frequency = 5180}, true, false},
        {"VHT", vht, {.frequency = 5180}, true, true},
        {"VHT at 2.4 GHz", vht, {.frequency = 2412}, true, false},
        {"channel 165",
         vht,
         {.frequency = 5825, .hasNoUpper40 = true, .hasNoLower40 = true},
         false,
         false},
        {"one side", ht40, {.frequency = 2412, .hasNoLower40 = true}, true, false},
        {"disabled", vht, {.frequency = 5180, .isDisabled = true}, false, false},
        {"80 MHz forbidden", vht, {.frequency = 5180, .hasNo80 = true}, true, false},
        {"HE at 2.4 GHz", he40, {.frequency = 2412}, true, false},
        {"HE at 6 GHz", he80, {.frequency = 5955}, true, true},
        {"HE at 6 GHz, single channel", he80, {.frequency = 5935}, false, false},
        {"HE of 2.4 GHz at 6 GHz", he40, {.frequency = 5955}, false, false},
        {"no number", vht, {.frequency = 5181}, false, false},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(one.band.allows40(one.channel), one.allows40) << one.what;
        EXPECT_EQ(one.band.allows80(one.channel), one.allows80) << one.what;
    }
}

TEST(Radio, HasAtLeastOneChain) {
    Radio radio;
    EXPECT_EQ(radio.chains(), 1U);
    radio.bands[0].streams = 2;
    radio.bands[1].streams = 4;
    EXPECT_EQ(radio.chains(), 4U);
    radio.receivingChains = 0x7;
    radio.sendingChains = 0x1;
    EXPECT_EQ(radio.chains(), 3U);
    radio.receivingChains = radio.sendingChains = 0;  // it does not know its antennas
    EXPECT_EQ(radio.chains(), 4U);
}

TEST(Radio, HostsOneNetworkIfNoCombinationTellsMore) {
    Radio radio;
    radio.mostAPs = 5;
    EXPECT_EQ(radio.mostNetworks(), 0U);
    radio.modes = {InterfaceMode::AP};
    EXPECT_EQ(radio.mostNetworks(), 5U);
    radio.mostAPs = 0;
    EXPECT_EQ(radio.mostNetworks(), 1U);
    radio.mostAPs = std::nullopt;
    EXPECT_EQ(radio.mostNetworks(), 1U);
}

TEST(Radio, KeepsWhatIsNotToldAgain) {
    Radio whole{.index = 1, .name = "phy1", .ciphers = {1}, .sendingChains = 3, .mostStations = 7};
    whole.hasOwnRegulatoryDomain = true;
    whole.modes = {InterfaceMode::AP};
    whole.bands[1].ht = 2;
    whole.bands[1].hasEHT = true;
    const Radio before = whole;
    whole.join({.index = 1});
    EXPECT_EQ(whole, before);
    whole.join({.index = 1, .name = "renamed", .sendingChains = 1});
    EXPECT_EQ(whole.name, "renamed");
    EXPECT_EQ(whole.sendingChains, 1U);
}

}  // namespace
