// Findings in words, as all lists of them tell them.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_FINDING_TEXT_H
#define TOOLS_HALVANE_OUTPUT_FINDING_TEXT_H

#include <string>

#include "halvane/air/finding.h"

#include "tools/halvane/output/theme.h"

namespace halvane::tool {

// Of the word that names the severity.
Meaning meaningOf(air::Severity severity);

// "load-high, clause 9.4.2.27", "wps-on, Wi-Fi Simple Configuration 2.0": what programs call the
// finding, and where it is written. Only numbers are clauses; others are documents.
std::string findingReference(const air::FindingInfo& info);

}  // namespace halvane::tool

#endif
