// The names of networks, as tables and texts show them.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_NETWORK_NAME_H
#define TOOLS_HALVANE_OUTPUT_NETWORK_NAME_H

#include "halvane/air/bss_profile.h"

#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

// As shownName(); "(no name)" for a network without an SSID element.
ShownText networkName(const air::BssProfile& profile, const TextRules& rules);

}  // namespace halvane::tool

#endif
