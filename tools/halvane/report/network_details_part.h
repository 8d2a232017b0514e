// What the page tells of one network below its row.
#ifndef TOOLS_HALVANE_REPORT_NETWORK_DETAILS_PART_H
#define TOOLS_HALVANE_REPORT_NETWORK_DETAILS_PART_H

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

void writeDetails(HtmlWriter& html, const ReportData& data, const ReportNetwork& network);

}  // namespace halvane::tool

#endif
