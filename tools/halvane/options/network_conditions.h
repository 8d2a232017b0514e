// What the filters of a command line mean.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OPTIONS_NETWORK_CONDITIONS_H
#define TOOLS_HALVANE_OPTIONS_NETWORK_CONDITIONS_H

#include <optional>
#include <string_view>
#include <vector>

#include "halvane/air/finding.h"
#include "halvane/base/mac_address.h"

#include "tools/halvane/networks/network_filter.h"

namespace halvane::tool {

// Six pairs of hexadecimal digits, with or without one separator.
std::optional<MacAddress> addressOf(std::string_view text);

// Each returns a condition, or none if its text cannot be read.
using ConditionReader = std::optional<NetworkCondition> (*)(std::string_view text);

// An address of six octets, and after a slash a mask: as an address, or as a number of bits.
std::optional<NetworkCondition> bssidCondition(std::string_view text);
// A name with wildcards, as its octets or as the tool shows it.
std::optional<NetworkCondition> ssidCondition(std::string_view text);
// "2.4", "5", "6" and the names of other bands.
std::optional<NetworkCondition> bandCondition(std::string_view text);
// A primary channel.
std::optional<NetworkCondition> channelCondition(std::string_view text);
// A name of the table or of JSON, whatever its case is, or a kind: "WPA", "WPA2", "WPA3" for all
// networks that offer it, "Personal" and "Enterprise".
std::optional<NetworkCondition> securityCondition(std::string_view text);
// "4" to "7", "6E", or "a", "b", "g"; with '+' behind a number this generation or a newer one.
std::optional<NetworkCondition> generationCondition(std::string_view text);
// A median of dBm, or stronger.
std::optional<NetworkCondition> signalCondition(std::string_view text);
// A finding of this severity or a worse one.
NetworkCondition findingsCondition(air::Severity least);
// The words that these conditions take, for suggestions.
std::vector<std::string_view> bandWords();
std::vector<std::string_view> securityWords();
std::vector<std::string_view> generationWords();
std::vector<std::string_view> severityWords();

// "error", "warning" or "note".
std::optional<air::Severity> severityNamed(std::string_view name);

NetworkCondition hiddenCondition();

}  // namespace halvane::tool

#endif
