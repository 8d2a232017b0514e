// The channel of a network whose configuration leaves it to the daemon.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANED_HOSTING_CHANNEL_CHOICE_H
#define TOOLS_HALVANED_HOSTING_CHANNEL_CHOICE_H

#include <cstdint>
#include <string>

#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"

#include "tools/halvaned/radio/radio.h"

namespace halvane::hosting {

// What the flags of a radio's channels are worth for a network.
enum class ChannelRules {
    InForce,  // they tell what the network may do
    Another,  // they follow another country's rules, until hostapd has set that of the network
};

// Returns the configured channel if the radio may host there. For channel 0 returns 1, 6 or 11 at
// 2.4 GHz, the first that is allowed, or else any channel there; or 36 to 48 or 149 to 161 at 5 GHz
// if the configuration has no PHY mode of 2.4 GHz, or the radio no such band. Channels where the
// radio has to look for radar first are not chosen. If the flags follow another country's rules,
// a channel that they forbid will do if there is no other: hostapd refuses it if it has to. The
// error is a sentence.
Result<std::int64_t, std::string> channelFor(const HalvaneBSSConfig& configuration,
                                             const Radio& radio, ChannelRules rules);

// Whether the radio says that it has to look for radar on the channel (IEEE 802.11-2020, 11.8).
bool isRadarProne(const Radio& radio, std::int64_t channel);

}  // namespace halvane::hosting

#endif
