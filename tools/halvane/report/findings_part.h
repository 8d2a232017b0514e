// The part "Findings": what is wrong, by severity, each with what to do and with the networks that
// have it.
#ifndef TOOLS_HALVANE_REPORT_FINDINGS_PART_H
#define TOOLS_HALVANE_REPORT_FINDINGS_PART_H

#include <array>
#include <cstddef>

#include "halvane/air/finding.h"

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

// The findings of some networks, by severity.
using FindingCounts = std::array<std::size_t, 3>;
FindingCounts findingCounts(const ReportNetwork& network);
FindingCounts findingCounts(const ReportData& data);
inline std::size_t countOf(const FindingCounts& counts, air::Severity severity) {
    return counts[static_cast<std::size_t>(severity)];
}

void writeFindings(HtmlWriter& html, const ReportData& data);

}  // namespace halvane::tool

#endif
