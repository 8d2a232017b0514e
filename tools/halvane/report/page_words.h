// Small pieces that several parts of the page share.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_REPORT_PAGE_WORDS_H
#define TOOLS_HALVANE_REPORT_PAGE_WORDS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "halvane/air/finding.h"

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

// "1 network", "2 networks".
std::string countedText(std::uint64_t count, std::string_view one, std::string_view many);

// The class of what is own or of others: "own" or "oth".
Markup classOf(Tint tint);

// A dash that says that nothing was told.
Markup untold();

// The sign of a severity.
Markup signOf(air::Severity severity);
// That of danger or caution; empty for other meanings.
Markup signOf(Meaning meaning);

// The name of a network, isolated from what stands beside it.
void writeName(HtmlWriter& html, const ReportNetwork& network);
// The same as a link to its row, where it has one.
void writeLink(HtmlWriter& html, const ReportNetwork& network);
// The link and the address.
void writeLinkAndAddress(HtmlWriter& html, const ReportNetwork& network);

// The ids of networks, with blanks between them, for the attribute data-n.
std::string idsOf(const ReportData& data, std::span<const std::size_t> networks);

std::string addressText(const ReportNetwork& network);

// "AP#45 x4", "home +1": the name of a radio, cut to what a label holds.
ShownText radioLabel(const ReportData& data, const Radio& radio);

// Of a share of 255, rounded.
int percentOfLoad(int utilization);

// "6 January 2023", and "3 min 17 s" of nanoseconds.
std::string dateText(std::int64_t nanoseconds);
std::string durationText(std::int64_t nanoseconds);

// The last part of a path, as a text of others.
ShownText fileName(const std::string& path);

// The frames of a capture that could not be read whole.
std::uint64_t damagedFrames(const SurveyedCapture& capture);

// "Wi-Fi 6E (ax)", "before Wi-Fi 4 (g)".
std::string generationName(const Network& network);
// The place of a generation between the oldest, 0, and the newest.
int generationRank(const Network& network);

// A maker's short name; empty if there is none.
std::string makerNameOf(const ReportData& data, const Network& network);

}  // namespace halvane::tool

#endif
