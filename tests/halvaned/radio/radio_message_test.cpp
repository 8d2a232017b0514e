#include "tools/halvaned/radio/radio_message.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/base/byte_buffer.h"

#include "tests/halvaned/radio/radio_samples.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"
#include "tools/halvane/input/wireless_interface.h"

using halvane::ByteBuffer;
using halvane::testing::addChannel;
using halvane::testing::addModes;
using halvane::testing::Bytes;
using halvane::testing::exactHeapCopy;
using halvane::testing::forEachPrefix;
using halvane::testing::kHTOfOneStream;
using halvane::testing::kVHTOfThreeStreams;
using halvane::testing::NetlinkMessage;
using halvane::testing::radioMessage;
using halvane::tool::InterfaceMode;
using ::testing::ElementsAre;
using ::testing::Optional;
using namespace halvane::hosting;
namespace air = halvane::air;

namespace {

Radio read(const Bytes& message) {
    const auto radio = readRadio(message);
    EXPECT_TRUE(radio) << radio.error();
    EXPECT_TRUE(radio && *radio);
    return radio && *radio ? **radio : Radio();
}

std::string faultOf(const Bytes& message) {
    const auto radio = readRadio(message);
    EXPECT_FALSE(radio);
    return radio ? "" : radio.error();
}

// A message about radio 0 with what `add` adds.
Bytes messageWith(const std::function<void(NetlinkMessage&)>& add) {
    NetlinkMessage message(NL80211_CMD_NEW_WIPHY);
    message.addU32(NL80211_ATTR_WIPHY, 0);
    add(message);
    return message.bytes();
}

// The same for a band.
Bytes messageWithBand(const std::function<void(NetlinkMessage&)>& add) {
    return messageWith([&add](NetlinkMessage& message) {
        message.begin(NL80211_ATTR_WIPHY_BANDS).begin(NL80211_BAND_5GHZ);
        add(message);
        message.end().end();
    });
}

TEST(RadioMessage, TellsWhatARadioCanDo) {
    const Radio radio = read(radioMessage());
    EXPECT_EQ(radio.index, 0U);
    EXPECT_EQ(radio.name, "phy0");
    EXPECT_THAT(radio.modes, ElementsAre(InterfaceMode::Managed, InterfaceMode::AP));
    EXPECT_THAT(radio.sendingChains, Optional(3U));
    EXPECT_THAT(radio.receivingChains, Optional(3U));
    EXPECT_EQ(radio.chains(), 2U);
    EXPECT_TRUE(radio.canHost());
    EXPECT_EQ(radio.mostNetworks(), 8U);
    EXPECT_THAT(radio.mostStations, Optional(128));
    EXPECT_FALSE(radio.hasOwnRegulatoryDomain);
    if (std::endian::native == std::endian::little) {
        EXPECT_THAT(radio.ciphers, ElementsAre(0x000FAC02, 0x000FAC04));
    }
    ASSERT_EQ(radio.bands.size(), 2U);
    EXPECT_THAT(radio.bands.at(NL80211_BAND_2GHZ).ht, Optional(0x11EF));
    EXPECT_EQ(radio.bands.at(NL80211_BAND_2GHZ).vht, std::nullopt);
    EXPECT_THAT(radio.bands.at(NL80211_BAND_2GHZ).streams, Optional(2U));
    EXPECT_THAT(radio.bands.at(NL80211_BAND_5GHZ).vht, Optional(0x339071B2U));
    EXPECT_THAT(radio.bands.at(NL80211_BAND_5GHZ).streams, Optional(3U));
}

TEST(RadioMessage, TellsChannelsWithTheirFlags) {
    const Radio radio = read(radioMessage());
    const auto channel = [&radio](std::uint16_t band, std::uint64_t frequency) {
        return radio.bands.at(band).channels.at(frequency * 1000);
    };
    const RadioChannel expected[] = {
        {.frequency = 2412, .mostPower = 2000, .hasNoLower40 = true},
        {.frequency = 2437, .mostPower = 2000},
        {.frequency = 2484, .mostPower = 2000, .isDisabled = true},
        {.frequency = 5180, .mostPower = 2300, .isIndoorOnly = true, .hasNoLower40 = true},
        {.frequency = 5260, .mostPower = 2000, .isPassive = true, .isRadarProne = true},
        {.frequency = 5825, .mostPower = 2000, .hasNoUpper40 = true, .hasNoLower40 = true},
    };
    for (const RadioChannel& one : expected) {
        const bool isAt2 = one.frequency < 3000;
        EXPECT_EQ(channel(isAt2 ? NL80211_BAND_2GHZ : NL80211_BAND_5GHZ, one.frequency), one)
            << one.frequency;
    }
    EXPECT_EQ(radio.bands.at(NL80211_BAND_2GHZ).channels.size(), 3U);
    EXPECT_EQ(radio.bands.at(NL80211_BAND_5GHZ).channels.size(), 3U);
}

// Every flag by itself: none stands for another.
TEST(RadioMessage, TellsEachFlagOfAChannel) {
    const std::pair<int, bool RadioChannel::*> flags[] = {
        {NL80211_FREQUENCY_ATTR_DISABLED, &RadioChannel::isDisabled},
        {NL80211_FREQUENCY_ATTR_NO_IR, &RadioChannel::isPassive},
        {NL80211_FREQUENCY_ATTR_RADAR, &RadioChannel::isRadarProne},
        {NL80211_FREQUENCY_ATTR_NO_HT40_MINUS, &RadioChannel::hasNoLower40},
        {NL80211_FREQUENCY_ATTR_NO_HT40_PLUS, &RadioChannel::hasNoUpper40},
        {NL80211_FREQUENCY_ATTR_NO_80MHZ, &RadioChannel::hasNo80},
        {NL80211_FREQUENCY_ATTR_NO_160MHZ, &RadioChannel::hasNo160},
        {NL80211_FREQUENCY_ATTR_INDOOR_ONLY, &RadioChannel::isIndoorOnly},
    };
    for (const auto& [type, member] : flags) {
        const Radio radio = read(messageWithBand([type = type](NetlinkMessage& band) {
            band.begin(NL80211_BAND_ATTR_FREQS);
            addChannel(band, 0, 5180, {type});
            band.end();
        }));
        RadioChannel expected{.frequency = 5180, .mostPower = 2000};
        expected.*member = true;
        EXPECT_EQ(radio.bands.at(NL80211_BAND_5GHZ).channels.at(5180000), expected) << type;
    }
}

TEST(RadioMessage, IgnoresWhatItDoesNotKnow) {
    const Radio radio = read(messageWith([](NetlinkMessage& message) {
        message.addText(NL80211_ATTR_WIPHY_NAME, "phy0").addU64(999, 1);
        message.begin(NL80211_ATTR_WIPHY_BANDS).begin(77).addU32(99, 1);
        message.begin(NL80211_BAND_ATTR_FREQS).begin(0).addU32(NL80211_FREQUENCY_ATTR_FREQ, 1);
        message.addU16(200, 5).end().end().end().end();
        addModes(message, NL80211_ATTR_SUPPORTED_IFTYPES, {250});
    }));
    EXPECT_EQ(radio.bands.at(77).channels.at(1000).channel(), std::nullopt);
    EXPECT_FALSE(radio.canHost());
    EXPECT_EQ(radio.mostNetworks(), 0U);
    EXPECT_EQ(radio.chains(), 1U);
}

TEST(RadioMessage, TellsHEOfAccessPointsAlone) {
    const auto bandWith = [](int mode) {
        return read(messageWithBand([mode](NetlinkMessage& band) {
                   band.begin(NL80211_BAND_ATTR_IFTYPE_DATA).begin(0);
                   band.add(NL80211_BAND_IFTYPE_ATTR_HE_CAP_PHY,
                            {0x04, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
                   band.add(NL80211_BAND_IFTYPE_ATTR_HE_CAP_MCS_SET,
                            {0xAA, 0xFF, 0xAA, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,
                             0xFF});  // four streams
                   band.add(NL80211_BAND_IFTYPE_ATTR_EHT_CAP_PHY, Bytes(9, 0));
                   addModes(band, NL80211_BAND_IFTYPE_ATTR_IFTYPES, {mode});
                   band.end().end();
               }))
            .bands.at(NL80211_BAND_5GHZ);
    };
    const RadioBand hosting = bandWith(NL80211_IFTYPE_AP);
    ASSERT_TRUE(hosting.he);
    EXPECT_TRUE(hosting.he->has(air::HePhyCapability::Width40And80));
    EXPECT_TRUE(hosting.hasEHT);
    EXPECT_THAT(hosting.streams, Optional(4U));
    EXPECT_EQ(bandWith(NL80211_IFTYPE_STATION), RadioBand());
}

TEST(RadioMessage, CountsNetworksByItsCombinations) {
    struct Case {
        std::uint32_t limits[2];
        std::uint32_t most;
        unsigned networks;
    };
    const Case cases[] = {
        {{1, 1}, 2, 2},          {{4, 4}, 4, 4},
        {{0, 0}, 9, 1},          {{0xFFFFFFFF, 0xFFFFFFFF}, 0xFFFFFFFF, 0xFFFFFFFF},
        {{0xFFFFFFFF, 1}, 3, 3},
    };
    for (const Case& one : cases) {
        const Radio radio = read(messageWith([&one](NetlinkMessage& message) {
            addModes(message, NL80211_ATTR_SUPPORTED_IFTYPES, {NL80211_IFTYPE_AP});
            message.begin(NL80211_ATTR_INTERFACE_COMBINATIONS).begin(1);
            message.begin(NL80211_IFACE_COMB_LIMITS);
            for (int i = 0; i < 2; ++i) {
                message.begin(i + 1).addU32(NL80211_IFACE_LIMIT_MAX, one.limits[i]);
                addModes(message, NL80211_IFACE_LIMIT_TYPES, {NL80211_IFTYPE_AP});
                message.end();
            }
            message.end().addU32(NL80211_IFACE_COMB_MAXNUM, one.most).end().end();
        }));
        EXPECT_EQ(radio.mostNetworks(), one.networks);
    }
}

TEST(RadioMessage, RefusesValuesOfAnotherSize) {
    struct Sized {
        std::vector<int> path;
        std::size_t size;
        const char* name;
    };
    const int band = NL80211_ATTR_WIPHY_BANDS;
    const int mode = NL80211_BAND_ATTR_IFTYPE_DATA;
    const int combination = NL80211_ATTR_INTERFACE_COMBINATIONS;
    const Sized attributes[] = {
        {{NL80211_ATTR_WIPHY}, 4, "index"},
        {{NL80211_ATTR_WIPHY_ANTENNA_AVAIL_TX}, 4, "sending antennas"},
        {{NL80211_ATTR_WIPHY_ANTENNA_AVAIL_RX}, 4, "receiving antennas"},
        {{NL80211_ATTR_MAX_AP_ASSOC_STA}, 2, "number of stations"},
        {{band, 1, NL80211_BAND_ATTR_HT_CAPA}, 2, "HT capabilities"},
        {{band, 1, NL80211_BAND_ATTR_HT_MCS_SET}, 16, "HT MCS set"},
        {{band, 1, NL80211_BAND_ATTR_VHT_CAPA}, 4, "VHT capabilities"},
        {{band, 1, NL80211_BAND_ATTR_VHT_MCS_SET}, 8, "VHT MCS set"},
        {{band, 1, mode, 0, NL80211_BAND_IFTYPE_ATTR_HE_CAP_PHY}, 11, "HE PHY capabilities"},
        {{band, 1, NL80211_BAND_ATTR_FREQS, 0, NL80211_FREQUENCY_ATTR_FREQ},
         4,
         "channel's frequency"},
        {{combination, 1, NL80211_IFACE_COMB_MAXNUM}, 4, "number of interfaces"},
        {{combination, 1, NL80211_IFACE_COMB_LIMITS, 1, NL80211_IFACE_LIMIT_MAX},
         4,
         "limit of interfaces"},
    };
    for (const Sized& attribute : attributes) {
        for (std::size_t size = 0; size <= 20; ++size) {
            const Bytes message = messageWith([&attribute, size](NetlinkMessage& radio) {
                for (std::size_t i = 0; i + 1 < attribute.path.size(); ++i) {
                    radio.begin(attribute.path[i]);
                }
                radio.add(attribute.path.back(), Bytes(size, 1));
                for (std::size_t i = 0; i + 1 < attribute.path.size(); ++i) radio.end();
            });
            if (size == attribute.size) {
                EXPECT_TRUE(readRadio(message)) << attribute.name;
            } else {
                EXPECT_EQ(faultOf(message), std::string("its ") + attribute.name + " has " +
                                                std::to_string(size) + " octets");
            }
        }
    }
}

TEST(RadioMessage, RefusesListsThatEndInsideOfAnItem) {
    EXPECT_EQ(faultOf(messageWith([](NetlinkMessage& message) {
                  message.add(NL80211_ATTR_CIPHER_SUITES, Bytes(7, 0));
              })),
              "its list of ciphers has 7 octets");
    EXPECT_EQ(faultOf(messageWithBand([](NetlinkMessage& band) {
                  band.begin(NL80211_BAND_ATTR_FREQS).begin(0);
                  band.addFlag(NL80211_FREQUENCY_ATTR_DISABLED).end().end();
              })),
              "a channel of it tells no frequency");
    EXPECT_EQ(faultOf(NetlinkMessage(NL80211_CMD_NEW_WIPHY).bytes()), "it tells no index");
    EXPECT_EQ(faultOf({1, 2, 3}), "it is shorter than its header");
}

TEST(RadioMessage, IsOfOneKind) {
    Bytes other = radioMessage();
    other[0] = NL80211_CMD_DEL_WIPHY;
    const auto radio = readRadio(other);
    ASSERT_TRUE(radio);
    EXPECT_FALSE(*radio);
}

// A cut message is told as such, unless the cut is between two attributes. Then it tells less.
TEST(RadioMessage, IsNotReadFromAPartOfAnAttribute) {
    const Bytes whole = radioMessage();
    const auto wholeSize = [&whole](std::size_t place) {
        std::uint16_t size = 0;
        std::memcpy(&size, &whole[place], sizeof size);
        return std::size_t{size};
    };
    std::set<std::size_t> cuts;  // that end no attribute early
    for (std::size_t place = 4; place < whole.size();) {
        const std::size_t end = place + wholeSize(place);
        place = (end + 3) / 4 * 4;
        for (std::size_t cut = end; cut <= place; ++cut) cuts.insert(cut);
    }
    forEachPrefix(whole, [&](const ByteBuffer& prefix) {
        const auto radio = readRadio(prefix.bytes());
        EXPECT_TRUE(radio || !radio.error().empty());
        EXPECT_EQ(radio && *radio, cuts.contains(prefix.size())) << prefix.size();
    });
    EXPECT_TRUE(cuts.contains(whole.size()));
}

TEST(RadioMessage, SurvivesWrongOctets) {
    const Bytes whole = radioMessage();
    for (std::size_t place = 0; place < whole.size(); ++place) {
        for (const std::uint8_t value : Bytes{0x00, 0x01, 0x03, 0x04, 0x05, 0x7F, 0x80, 0xFF}) {
            Bytes changed = whole;
            changed[place] = value;
            const ByteBuffer copy = exactHeapCopy(changed);
            const auto radio = readRadio(copy.bytes());
            EXPECT_TRUE(radio || !radio.error().empty());
        }
    }
}

// As kernels tell it that are asked to: what is one message above is one for each channel.
TEST(JoinedRadios, AreThoseOfSplitMessages) {
    std::vector<Bytes> split;
    const auto add = [&split](const Bytes& message) { split.push_back(message); };
    add(messageWith([](NetlinkMessage& message) {
        message.addText(NL80211_ATTR_WIPHY_NAME, "phy0");
        message.addU32(NL80211_ATTR_WIPHY_ANTENNA_AVAIL_TX, 0x7);
    }));
    add(messageWith([](NetlinkMessage& message) {
        addModes(message, NL80211_ATTR_SUPPORTED_IFTYPES, {NL80211_IFTYPE_AP});
    }));
    add(messageWithBand([](NetlinkMessage& band) {
        band.add(NL80211_BAND_ATTR_HT_MCS_SET, kHTOfOneStream);
        band.addU16(NL80211_BAND_ATTR_HT_CAPA, 0x0002);
    }));
    for (const std::uint32_t frequency : {5220U, 5180U, 5200U}) {
        add(messageWithBand([frequency](NetlinkMessage& band) {
            band.begin(NL80211_BAND_ATTR_FREQS);
            addChannel(band, static_cast<int>(frequency - 5180) / 20, frequency);
            band.end();
        }));
    }
    add(messageWithBand(
        [](NetlinkMessage& band) { band.add(NL80211_BAND_ATTR_VHT_MCS_SET, kVHTOfThreeStreams); }));
    std::vector<std::string> faults;
    const auto radios = joinedRadios(split, faults);
    EXPECT_TRUE(faults.empty());
    ASSERT_EQ(radios.size(), 1U);
    EXPECT_EQ(radios[0].name, "phy0");
    EXPECT_EQ(radios[0].chains(), 3U);
    EXPECT_TRUE(radios[0].canHost());
    const RadioBand& band = radios[0].bands.at(NL80211_BAND_5GHZ);
    EXPECT_THAT(band.ht, Optional(2));
    EXPECT_THAT(band.streams, Optional(3U));
    std::vector<std::uint32_t> frequencies;
    for (const auto& [place, channel] : band.channels) frequencies.push_back(channel.frequency);
    EXPECT_THAT(frequencies, ElementsAre(5180, 5200, 5220));
}

TEST(JoinedRadios, StandInTheOrderOfTheirIndexes) {
    std::vector<std::string> faults;
    const std::vector<Bytes> messages = {radioMessage(4294967295, "phy9"), Bytes{1, 2},
                                         radioMessage(3, "phy3"), radioMessage(3, "phy3")};
    const auto radios = joinedRadios(messages, faults);
    ASSERT_EQ(radios.size(), 2U);
    EXPECT_EQ(radios[0], read(radioMessage(3, "phy3")));
    EXPECT_EQ(radios[1].index, 4294967295U);
    EXPECT_THAT(faults, ElementsAre("it is shorter than its header"));
}

}  // namespace
