// The shape of a radio in the picture of its band.
#ifndef TOOLS_HALVANE_REPORT_CHANNEL_SHAPE_H
#define TOOLS_HALVANE_REPORT_CHANNEL_SHAPE_H

#include <string_view>

#include "tools/halvane/report/chart_scale.h"
#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

// The fills that shapes refer to: a gradient for own ones, one for others, and the hatching of what
// is punctured. `key` tells them apart from those of other pictures.
void writeFills(HtmlWriter& html, std::string_view key);

// The shape of a radio as a link to its strongest network. One whose signal is not told is a dashed
// bar at `barTop` pixels.
struct ShapePlace {
    const ChartScale& scale;
    std::string_view key;
    double barTop = 0;
};
void writeShape(HtmlWriter& html, const ReportData& data, const Radio& radio,
                const ShapePlace& place);

}  // namespace halvane::tool

#endif
