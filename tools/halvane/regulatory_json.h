// The regulatory records as JSON.
//
// Keys are the records' property names, and stay as they are: programs read them. Absent names are
// left out, lists and flags never.
#ifndef TOOLS_HALVANE_REGULATORY_JSON_H
#define TOOLS_HALVANE_REGULATORY_JSON_H

#include "halvane/regulatory/channel.h"

#include "tools/halvane/json_value.h"

namespace halvane::tool {

JSON jsonOf(const HalvaneChannel& channel);

}  // namespace halvane::tool

#endif
