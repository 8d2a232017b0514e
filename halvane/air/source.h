// Where a derived value comes from: the parts of a frame that it was taken from.
//
// Plain values. Threads: as for an integer.
#ifndef HALVANE_AIR_SOURCE_H
#define HALVANE_AIR_SOURCE_H

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/air/element_id.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// The kind of a part of a frame.
enum class Origin : std::uint8_t {
    Element,
    Capabilities,    // the capability information field (IEEE 802.11-2020, 9.4.1.4)
    BeaconInterval,  // 9.4.1.3
    Bssid,
    Radio,  // what the receiving radio reports
};

// "element", "capabilities", "beacon interval", "BSSID", "radio".
constexpr std::string_view originName(Origin origin) {
    constexpr std::string_view kNames[] = {"element", "capabilities", "beacon interval", "BSSID",
                                           "radio"};
    return kNames[static_cast<std::size_t>(origin)];
}

struct Source {
    Origin origin = Origin::Element;  // what it is
    ElementId id = ElementId::Ssid;   // of an element
    std::uint32_t offset = 0;         // of the element's first octet among the elements

    friend constexpr bool operator==(const Source&, const Source&) = default;
};

// The most telling one first.
using Sources = InlineList<Source, 4>;

}  // namespace halvane::air

#endif
