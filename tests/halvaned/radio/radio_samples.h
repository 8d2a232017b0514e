// Messages about radios, as a kernel sends them.
#ifndef TESTS_HALVANED_RADIO_RADIO_SAMPLES_H
#define TESTS_HALVANED_RADIO_RADIO_SAMPLES_H

#include <cstdint>
#include <initializer_list>
#include <linux/nl80211.h>
#include <string>
#include <vector>

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"

namespace halvane::testing {

inline void addChannel(NetlinkMessage& message, int place, std::uint32_t frequency,
                       std::initializer_list<int> flags = {}, std::uint32_t power = 2000) {
    message.begin(place).addU32(NL80211_FREQUENCY_ATTR_FREQ, frequency);
    for (const int flag : flags) message.addFlag(flag);
    message.addU32(NL80211_FREQUENCY_ATTR_MAX_TX_POWER, power).end();
}

inline void addModes(NetlinkMessage& message, int type, std::initializer_list<int> modes) {
    message.begin(type);
    for (const int mode : modes) message.addFlag(mode);
    message.end();
}

// MCS 0 to 15 with two streams, 0 to 7 with one.
inline const Bytes kHTOfTwoStreams = {0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x01, 0, 0, 0};
inline const Bytes kHTOfOneStream = {0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x01, 0, 0, 0};
// MCS 0 to 9 with three streams.
inline const Bytes kVHTOfThreeStreams = {0xEA, 0xFF, 0, 0, 0xEA, 0xFF, 0, 0};

// A radio of 2.4 and 5 GHz in one message, with two chains and eight networks.
inline Bytes radioMessage(std::uint32_t index = 0, const std::string& name = "phy0") {
    NetlinkMessage message(NL80211_CMD_NEW_WIPHY);
    message.addU32(NL80211_ATTR_WIPHY, index).addText(NL80211_ATTR_WIPHY_NAME, name);
    message.addU32(NL80211_ATTR_GENERATION, 1);
    message.addU32(NL80211_ATTR_WIPHY_ANTENNA_AVAIL_TX, 0x3);
    message.addU32(NL80211_ATTR_WIPHY_ANTENNA_AVAIL_RX, 0x3);
    addModes(message, NL80211_ATTR_SUPPORTED_IFTYPES, {NL80211_IFTYPE_STATION, NL80211_IFTYPE_AP});
    message.begin(NL80211_ATTR_WIPHY_BANDS).begin(NL80211_BAND_2GHZ);
    message.add(NL80211_BAND_ATTR_HT_MCS_SET, kHTOfTwoStreams);
    message.addU16(NL80211_BAND_ATTR_HT_CAPA, 0x11EF).begin(NL80211_BAND_ATTR_FREQS);
    addChannel(message, 0, 2412, {NL80211_FREQUENCY_ATTR_NO_HT40_MINUS});
    addChannel(message, 1, 2437);
    addChannel(message, 2, 2484, {NL80211_FREQUENCY_ATTR_DISABLED});
    message.end().end().begin(NL80211_BAND_5GHZ);
    message.add(NL80211_BAND_ATTR_VHT_MCS_SET, kVHTOfThreeStreams);
    message.addU32(NL80211_BAND_ATTR_VHT_CAPA, 0x339071B2);
    message.addU16(NL80211_BAND_ATTR_HT_CAPA, 0x11EF).begin(NL80211_BAND_ATTR_FREQS);
    addChannel(message, 0, 5180,
               {NL80211_FREQUENCY_ATTR_NO_HT40_MINUS, NL80211_FREQUENCY_ATTR_INDOOR_ONLY}, 2300);
    addChannel(message, 1, 5260, {NL80211_FREQUENCY_ATTR_NO_IR, NL80211_FREQUENCY_ATTR_RADAR});
    addChannel(message, 2, 5825,
               {NL80211_FREQUENCY_ATTR_NO_HT40_MINUS, NL80211_FREQUENCY_ATTR_NO_HT40_PLUS});
    message.end().end().end();
    message.begin(NL80211_ATTR_INTERFACE_COMBINATIONS).begin(1);
    message.begin(NL80211_IFACE_COMB_LIMITS);
    message.begin(1).addU32(NL80211_IFACE_LIMIT_MAX, 1);
    addModes(message, NL80211_IFACE_LIMIT_TYPES, {NL80211_IFTYPE_STATION});
    message.end().begin(2).addU32(NL80211_IFACE_LIMIT_MAX, 8);
    addModes(message, NL80211_IFACE_LIMIT_TYPES, {NL80211_IFTYPE_AP, NL80211_IFTYPE_P2P_GO});
    message.end().end();
    message.addU32(NL80211_IFACE_COMB_MAXNUM, 9).addU32(NL80211_IFACE_COMB_NUM_CHANNELS, 1);
    message.end().end();
    message.add(NL80211_ATTR_CIPHER_SUITES,
                {0x02, 0xAC, 0x0F, 0x00, 0x04, 0xAC, 0x0F, 0x00});  // of a little-endian kernel
    message.addU16(NL80211_ATTR_MAX_AP_ASSOC_STA, 128);
    return message.bytes();
}

}  // namespace halvane::testing

#endif
