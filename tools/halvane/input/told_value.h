// Values that attributes of netlink tell, and what is wrong with those that have another size.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_TOLD_VALUE_H
#define TOOLS_HALVANE_INPUT_TOLD_VALUE_H

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/mac_address.h"

#include "tools/halvane/input/netlink_attributes.h"

namespace halvane::tool {

// What is wrong with a message: "its frequency has 3 octets". Absent if nothing is.
using MessageFault = std::optional<std::string>;

inline constexpr const char* kEndsInsideAttribute = "it ends inside an attribute";
inline constexpr const char* kShorterThanHeader = "it is shorter than its header";

inline MessageFault wrongSize(const NetlinkAttribute& attribute, const char* name) {
    return "its " + std::string(name) + " has " + std::to_string(attribute.value.size()) +
           " octets";
}

// Keeps a number. `number` is absent if the attribute has another size.
template <typename Value, typename Number>
MessageFault keep(std::optional<Value>& value, const std::optional<Number>& number,
                  const NetlinkAttribute& attribute, const char* name) {
    if (!number) return wrongSize(attribute, name);
    value = static_cast<Value>(*number);
    return std::nullopt;
}

inline MessageFault keepAddress(std::optional<MacAddress>& address,
                                const NetlinkAttribute& attribute, const char* name) {
    address = MacAddress::fromBytes(attribute.value);
    return address ? std::nullopt : wrongSize(attribute, name);
}

// The text up to its NUL, or all of it if it has none.
inline std::string toldText(const NetlinkAttribute& attribute) {
    const auto end = std::ranges::find(attribute.value, std::uint8_t{0});
    return {attribute.value.begin(), end};
}

// Calls `read(attribute)` for each attribute. Returns the first fault, that of the attributes
// themselves included.
template <typename Read>
MessageFault readEach(NetlinkAttributes attributes, Read read) {
    while (const auto attribute = attributes.next()) {
        if (MessageFault fault = read(*attribute)) return fault;
    }
    if (attributes.areBroken()) return kEndsInsideAttribute;
    return std::nullopt;
}

}  // namespace halvane::tool

#endif
