// The part "Channels": a picture of each band, with a shape for each radio over the frequencies
// that it fills, as high as its signal is strong.
#ifndef TOOLS_HALVANE_REPORT_CHANNEL_CHART_H
#define TOOLS_HALVANE_REPORT_CHANNEL_CHART_H

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

void writeChannels(HtmlWriter& html, const ReportData& data);

}  // namespace halvane::tool

#endif
