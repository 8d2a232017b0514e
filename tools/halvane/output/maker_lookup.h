// How output learns the makers of devices, which a list outside of it holds.
#ifndef TOOLS_HALVANE_OUTPUT_MAKER_LOOKUP_H
#define TOOLS_HALVANE_OUTPUT_MAKER_LOOKUP_H

#include <functional>
#include <optional>
#include <string_view>

#include "halvane/base/mac_address.h"

namespace halvane::tool {

// Returns the name under which the address is registered; absent if it is in no list. An empty
// function knows no maker. The name is valid as long as the list.
using MakerOf = std::function<std::optional<std::string_view>(const MacAddress& address)>;

}  // namespace halvane::tool

#endif
