// The profile of a BSS for people, each value with its reason.
#ifndef TOOLS_HALVANE_OUTPUT_EXPLAIN_TEXT_H
#define TOOLS_HALVANE_OUTPUT_EXPLAIN_TEXT_H

#include <string>

#include "halvane/air/bit_octets.h"
#include "halvane/air/profile.h"

namespace halvane::tool {

// A row for each value: what, the value, and why. "@N" is the octet N of the elements, from which
// the profile was derived. The findings follow, the worst first, each with its advice, its
// identifier and its clause.
std::string explainText(const air::BssProfile& profile, air::Octets elements);

// The rows of the values alone, without reasons.
std::string airText(const air::BssProfile& profile);

// A line for each finding: its severity, its identifier and its sentence.
std::string findingLines(const air::BssProfile& profile);

}  // namespace halvane::tool

#endif
