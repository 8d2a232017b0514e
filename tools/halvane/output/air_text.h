// What a record of text adds about a network by today's standards.
#ifndef TOOLS_HALVANE_OUTPUT_AIR_TEXT_H
#define TOOLS_HALVANE_OUTPUT_AIR_TEXT_H

#include <string>

#include "halvane/air/bss_profile.h"

namespace halvane::tool {

// A line for each value, for a record.
std::string airText(const air::BssProfile& profile);

// A line for each finding, for a record.
std::string findingLines(const air::BssProfile& profile);

}  // namespace halvane::tool

#endif
