// The names of networks, as tables and texts show them.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_NETWORK_NAME_H
#define TOOLS_HALVANE_OUTPUT_NETWORK_NAME_H

#include "halvane/air/bss_profile.h"

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// "(cut)" if a name may have been cut off; otherwise "(no name)".
ShownText shownNameless(bool isCut);

// As shownName(); "(no name)" for a network without an SSID element, and "(cut)" if one may have
// been cut off.
ShownText networkName(const air::BssProfile& profile, const TextRules& rules);

// The same; of a mesh as shownMesh().
ShownText networkName(const Network& network, const TextRules& rules);

}  // namespace halvane::tool

#endif
