// The part "Shares": how many networks have each kind of security, generation, maker and width, and
// how busy the channels are.
#ifndef TOOLS_HALVANE_REPORT_SHARES_H
#define TOOLS_HALVANE_REPORT_SHARES_H

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

void writeShares(HtmlWriter& html, const ReportData& data);

}  // namespace halvane::tool

#endif
