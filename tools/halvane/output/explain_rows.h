// What a network is, value by value, each with the elements and the rule that it comes from.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_EXPLAIN_ROWS_H
#define TOOLS_HALVANE_OUTPUT_EXPLAIN_ROWS_H

#include <vector>

#include "tools/halvane/output/explained_bss.h"
#include "tools/halvane/output/reason_table.h"

namespace halvane::tool {

std::vector<ReasonRow> explainRows(const ExplainedBss& bss);

}  // namespace halvane::tool

#endif
