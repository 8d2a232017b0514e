// The part "Networks": a filter and a table, with the details of each network below its row.
#ifndef TOOLS_HALVANE_REPORT_NETWORK_ROWS_H
#define TOOLS_HALVANE_REPORT_NETWORK_ROWS_H

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

void writeNetworks(HtmlWriter& html, const ReportData& data);

}  // namespace halvane::tool

#endif
