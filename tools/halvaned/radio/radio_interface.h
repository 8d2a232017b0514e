// A network interface of a radio, as nl80211 tells it.
//
// A plain value, and a function without state that any thread may call.
#ifndef TOOLS_HALVANED_RADIO_RADIO_INTERFACE_H
#define TOOLS_HALVANED_RADIO_RADIO_INTERFACE_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "halvane/base/mac_address.h"

#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvane/input/wireless_interface.h"

namespace halvane::hosting {

struct RadioInterface {
    std::string name{};
    unsigned index = 0;
    std::uint32_t radio = 0;  // its index
    std::optional<MacAddress> address{};
    tool::InterfaceMode mode = tool::InterfaceMode::Unspecified;

    bool operator==(const RadioInterface&) const = default;
};

// Of an answer to NL80211_CMD_GET_INTERFACE. `message` begins with the header of generic netlink. A
// device without a network interface is of no kind.
tool::ToldBy<RadioInterface> readRadioInterface(std::span<const std::uint8_t> message);

}  // namespace halvane::hosting

#endif
