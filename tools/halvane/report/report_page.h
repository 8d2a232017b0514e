// The page: one HTML document that loads nothing, and that can be read without scripts.
#ifndef TOOLS_HALVANE_REPORT_REPORT_PAGE_H
#define TOOLS_HALVANE_REPORT_REPORT_PAGE_H

#include <string>

#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

std::string reportPage(const ReportData& data);

}  // namespace halvane::tool

#endif
