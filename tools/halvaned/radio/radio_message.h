// What messages of nl80211 (<linux/nl80211.h>) tell of radios. They come from the kernel, and yet
// every length in them is checked. Attributes that nobody knows are ignored.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANED_RADIO_RADIO_MESSAGE_H
#define TOOLS_HALVANED_RADIO_RADIO_MESSAGE_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvaned/radio/radio.h"

namespace halvane::hosting {

// Of an answer to NL80211_CMD_GET_WIPHY. `message` begins with the header of generic netlink. A
// kernel that is asked for it (NL80211_ATTR_SPLIT_WIPHY_DUMP) tells a radio in several messages:
// Radio::join() adds them up.
tool::ToldBy<Radio> readRadio(std::span<const std::uint8_t> message);

// The radios of a whole answer, in the order of their indexes. A message that cannot be read tells
// nothing of its radio; its fault goes to `faults`.
std::vector<Radio> joinedRadios(std::span<const std::vector<std::uint8_t>> messages,
                                std::vector<std::string>& faults);

}  // namespace halvane::hosting

#endif
