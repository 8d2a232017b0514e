// The frequencies on which a network has to give way to radar, by the regulatory data.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_REPORT_RADAR_RANGES_H
#define TOOLS_HALVANE_REPORT_RADAR_RANGES_H

#include <string>
#include <vector>

#include "tools/halvane/report/chart_scale.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

// The country that most networks tell; empty if none tells one.
std::string commonCountry(const ReportData& data);

// Of the country with this code of two letters. Of all countries together if it is not known.
std::vector<FrequencyRange> radarRanges(const std::string& country);

}  // namespace halvane::tool

#endif
