// The regulatory domain: the country whose rules decide which channels may be used.
//
// A plain value, and a function without state that any thread may call.
#ifndef TOOLS_HALVANED_RADIO_REGULATORY_DOMAIN_H
#define TOOLS_HALVANED_RADIO_REGULATORY_DOMAIN_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "tools/halvane/input/netlink_attributes.h"
#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvane/input/told_value.h"

namespace halvane::hosting {

struct RegulatoryDomain {
    // Two characters: a country of ISO 3166-1, "00" for the world, "98" and "99" for the kernel's
    // intersections and a driver's own rules.
    std::string country{};
    // The radio that has this domain for itself. Absent for the domain of all others.
    std::optional<std::uint32_t> radio{};

    bool operator==(const RegulatoryDomain&) const = default;
};

// Of an answer to NL80211_CMD_GET_REG. `message` begins with the header of generic netlink.
tool::ToldBy<RegulatoryDomain> readRegulatoryDomain(std::span<const std::uint8_t> message);

// Keeps a country's two characters, with or without a NUL.
tool::MessageFault keepCountry(std::optional<std::string>& country,
                               const tool::NetlinkAttribute& attribute);

}  // namespace halvane::hosting

#endif
