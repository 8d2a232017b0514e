// Events of nl80211 that tell of changed radios: those of its groups "config" and "regulatory".
//
// A plain value, and a function without state that any thread may call.
#ifndef TOOLS_HALVANED_RADIO_RADIO_EVENT_H
#define TOOLS_HALVANED_RADIO_RADIO_EVENT_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "tools/halvane/input/nl80211_message.h"

namespace halvane::hosting {

// Who chose a regulatory domain. The numbers are the kernel's (NL80211_REGDOM_SET_BY_...).
enum class RegulatoryInitiator : std::uint8_t { Kernel = 0, User = 1, Driver = 2, Beacon = 3 };

struct RadioEvent {
    enum class Kind {
        Radio,  // it came, or is called otherwise
        RadioGone,
        Interface,  // it came, or has another mode
        InterfaceGone,
        Regulatory,  // another domain, or a channel of it became usable
    };

    Kind kind = Kind::Radio;
    std::optional<std::uint32_t> radio{};       // its index
    std::optional<std::uint32_t> interface {};  // its index
    std::optional<std::string> name{};          // of the interface, or else of the radio
    std::optional<std::string> country{};
    std::optional<RegulatoryInitiator> initiator{};

    bool operator==(const RadioEvent&) const = default;
};

// `message` begins with the header of generic netlink.
tool::ToldBy<RadioEvent> readRadioEvent(std::span<const std::uint8_t> message);

}  // namespace halvane::hosting

#endif
