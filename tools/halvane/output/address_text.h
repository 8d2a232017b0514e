// Addresses as the tool writes them: in capitals.
#ifndef TOOLS_HALVANE_OUTPUT_ADDRESS_TEXT_H
#define TOOLS_HALVANE_OUTPUT_ADDRESS_TEXT_H

#include <string>

#include "halvane/base/mac_address.h"
#include "halvane/ie/fancy_formatting.h"

namespace halvane::tool {

// "00:1A:2B:3C:4D:5E".
inline std::string addressText(const MacAddress& address) {
    return FancyFormatting::formattedMAC(address.buffer());
}

}  // namespace halvane::tool

#endif
