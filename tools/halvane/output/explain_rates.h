// The rows of an explanation that tell of generation and rates.
#ifndef TOOLS_HALVANE_OUTPUT_EXPLAIN_RATES_H
#define TOOLS_HALVANE_OUTPUT_EXPLAIN_RATES_H

#include <vector>

#include "tools/halvane/output/explained_bss.h"
#include "tools/halvane/output/reason_table.h"

namespace halvane::tool {

void addRateRows(std::vector<ReasonRow>& rows, const ExplainedBss& bss);

}  // namespace halvane::tool

#endif
