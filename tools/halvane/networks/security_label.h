// How the security of a network stands in a table.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_NETWORKS_SECURITY_LABEL_H
#define TOOLS_HALVANE_NETWORKS_SECURITY_LABEL_H

#include <string_view>

#include "halvane/air/security.h"

#include "tools/halvane/output/theme.h"

namespace halvane::tool {

// At most ten letters: "WPA2/WPA3", "WPA2-Ent". A name without a suffix is of the personal kind, as
// phones show it.
std::string_view shortSecurityName(air::Security security);

// Danger where everybody can listen or join although it looks protected, caution where everybody
// can because it is open.
Meaning meaningOfSecurity(air::Security security);

// "-", "cap" or "req".
std::string_view shortPmfName(air::Pmf pmf);

}  // namespace halvane::tool

#endif
