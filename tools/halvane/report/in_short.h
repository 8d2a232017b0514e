// The part "In short": at most six sentences, each made by a rule, each with numbers.
#ifndef TOOLS_HALVANE_REPORT_IN_SHORT_H
#define TOOLS_HALVANE_REPORT_IN_SHORT_H

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

// Writes nothing if no rule applies.
void writeInShort(HtmlWriter& html, const ReportData& data);

}  // namespace halvane::tool

#endif
