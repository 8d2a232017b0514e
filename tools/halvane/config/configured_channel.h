// The channel of a BSS configuration.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_CONFIG_CONFIGURED_CHANNEL_H
#define TOOLS_HALVANE_CONFIG_CONFIGURED_CHANNEL_H

#include <optional>
#include <string_view>

#include "halvane/air/channel.h"
#include "halvane/model/bss_config.h"

namespace halvane::tool {

// The band of the channel number: 2.4 GHz up to 14, else 5 GHz. Absent without a channel, and for a
// number that neither band has as a channel of 20 MHz.
std::optional<air::Band> bandOf(const HalvaneBSSConfig& configuration);

// Absent without a width, and for a number that is none.
std::optional<air::ChannelWidth> widthOf(const HalvaneBSSConfig& configuration);

// The channel of 40 MHz and more. Of the two of 40 MHz that a channel at 2.4 GHz may be part of,
// the upper one up to channel 7, where it always exists. Absent without one.
std::optional<air::WideChannel> wideChannelOf(const HalvaneBSSConfig& configuration);

int phyModeCount(const HalvaneBSSConfig& configuration);

// Whether the text is two capital letters, as ISO 3166-1 has them.
bool isCountryCode(std::string_view text);

}  // namespace halvane::tool

#endif
