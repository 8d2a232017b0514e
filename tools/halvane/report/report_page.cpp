#include "tools/halvane/report/report_page.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string_view>

#include "halvane/air/channel.h"
#include "halvane/air/finding.h"

#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/time_text.h"
#include "tools/halvane/report/channel_chart.h"
#include "tools/halvane/report/findings_part.h"
#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/in_short.h"
#include "tools/halvane/report/network_rows.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/report/report_assets.h"
#include "tools/halvane/report/shares.h"
#include "tools/halvane/report/signal_chart.h"
#include "tools/halvane/report/source_hash.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/saturated.h"

namespace halvane::tool {

namespace {

std::string titleOf(const ReportData& data) {
    if (!data.options.title.empty()) return shownText(data.options.title, {}).octets();
    return countedText(data.networks.size(), "network", "networks") + " in " +
           countedText(data.captures.size(), "capture", "captures");
}

void writeHead(HtmlWriter& html, const ReportData& data) {
    html << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
            "script-src '"
         << HtmlText{sourceHash(reportScript())} << "'; style-src '"
         << HtmlText{sourceHash(reportStyle())}
         << "'; base-uri 'none'; form-action 'none'; require-trusted-types-for 'script'\"/>\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n"
            "<meta name=\"color-scheme\" content=\"light dark\"/>\n"
            "<meta name=\"referrer\" content=\"no-referrer\"/>\n<title>Wi-Fi survey: "
         << HtmlText{titleOf(data)} << "</title>\n<style>";
    html.embed(reportStyle());
    html << "</style>\n</head>\n";
}

// "10 January 2021 to 14 November 2023 (UTC)", if captures tell times.
std::string periodText(const ReportData& data) {
    std::optional<std::int64_t> first;
    std::optional<std::int64_t> last;
    for (const SurveyedCapture& capture : data.captures) {
        if (!capture.firstTime) continue;
        first = std::min(first.value_or(*capture.firstTime), *capture.firstTime);
        last = std::max(last.value_or(*capture.lastTime), *capture.lastTime);
    }
    if (!first) return {};
    const std::string begin = dateText(*first);
    const std::string end = dateText(*last);
    return (begin == end ? begin : begin + " to " + end) + " (UTC) \u00B7 ";
}

void writeLede(HtmlWriter& html, const ReportData& data) {
    CaptureSummary frames;
    for (const SurveyedCapture& capture : data.captures) frames.add(capture.summary);
    html << "<p class=\"lede\">" << HtmlText{periodText(data)}
         << HtmlText{countedText(frames.frames, "frame", "frames")} << ", of them "
         << HtmlText{countedText(frames.beacons, "beacon", "beacons")} << " and "
         << HtmlText{countedText(frames.probeResponses, "probe response", "probe responses")};
    if (data.all != data.networks.size()) {
        html << " \u00B7 a filter shows <b>" << data.networks.size() << "</b> of "
             << HtmlText{countedText(data.all, "network", "networks")};
    }
    if (data.letGo > 0) {
        html << " \u00B7 " << HtmlText{countedText(data.letGo, "network was", "networks were")}
             << " forgotten, as there were too many";
    }
    bool isFirst = true;
    for (const std::string& own : data.options.own) {
        html << (isFirst ? Markup(" \u00B7 your network: <b>") : ", <b>") << shownText(own, {})
             << "</b>";
        isFirst = false;
    }
    html << "</p>";
}

void writeNavigation(HtmlWriter& html) {
    html << "<nav class=\"wrap\" aria-label=\"Parts of this page\"><ul>"
            "<li><a href=\"#channels\">Channels</a></li><li><a href=\"#signal\">Signal</a></li>"
            "<li><a href=\"#shares\">Shares</a></li><li><a href=\"#findings\">Findings</a></li>"
            "<li><a href=\"#networks\">Networks</a></li></ul></nav>";
}

void writeTop(HtmlWriter& html, const ReportData& data) {
    html
        << "<body>\n<a class=\"skip\" href=\"#networks\">Skip to the table of networks</a>\n"
           "<header class=\"top\"><div class=\"wrap\"><div class=\"tt\"><p class=\"eyebrow\">Wi-Fi "
           "survey</p><h1>"
        << HtmlText{titleOf(data)} << "</h1>";
    writeLede(html, data);
    html << "</div>\n<div class=\"tools js-only\"><button type=\"button\" id=\"theme\" "
            "aria-label=\"Colours: as the system\">Colours: system</button></div></div>\n";
    if (!data.networks.empty()) writeNavigation(html);
    html << "</header><main class=\"wrap\">\n";
}

// --- Numbers ---

void writeNetworkCount(HtmlWriter& html, const ReportData& data) {
    std::set<std::string_view> names;
    std::size_t hidden = 0;
    for (const ReportNetwork& network : data.networks) {
        if (isHidden(network.network)) ++hidden;
        if (!network.isNameless) names.insert(nameOf(network.network));
    }
    html << "<div class=\"kpi\"><b>" << HtmlText{groupedText(data.networks.size())}
         << (data.networks.size() == 1 ? Markup("</b><span>network") : "</b><span>networks")
         << "</span><i>" << HtmlText{countedText(names.size(), "name", "names")};
    if (hidden > 0) html << ", " << hidden << " hidden";
    html << "</i></div>";
}

void writeRadioCount(HtmlWriter& html, const ReportData& data) {
    const auto own = std::ranges::count_if(data.radios, &Radio::isOwn);
    html << "<div class=\"kpi\"><b>" << HtmlText{groupedText(data.radios.size())}
         << (data.radios.size() == 1 ? Markup("</b><span>radio") : "</b><span>radios")
         << "</span><i>";
    if (data.hasOwn) {
        html << own << (own == 1 ? Markup(" is yours") : " are yours");
    } else {
        html << "access points\u2019 channels";
    }
    html << "</i></div>";
}

void writeBandCounts(HtmlWriter& html, const ReportData& data) {
    std::map<air::Band, std::size_t> counts;
    for (const ReportNetwork& network : data.networks) {
        const auto& band = network.network.profile.channel.band;
        if (band) ++counts[**band];
    }
    html << "<div class=\"kpi\"><b>" << counts[air::Band::Ghz2] << " \u00B7 "
         << counts[air::Band::Ghz5] << " \u00B7 " << counts[air::Band::Ghz6]
         << "</b><span>on 2.4, 5, 6 GHz</span><i>networks</i></div>";
}

void writeFindingCounts(HtmlWriter& html, const ReportData& data) {
    const FindingCounts counts = findingCounts(data);
    html << "<div class=\"kpi\"><b class=\"fk\">";
    for (const auto severity :
         {air::Severity::Error, air::Severity::Warning, air::Severity::Note}) {
        html << "<span>" << signOf(severity) << HtmlText{groupedText(countOf(counts, severity))}
             << "</span> ";
    }
    html << "</b><span>errors, warnings, notes</span><i><a href=\"#findings\">what they are</a></i>"
            "</div>";
}

void writeNumbers(HtmlWriter& html, const ReportData& data) {
    html << "<section class=\"kpis\" aria-label=\"In numbers\">";
    writeNetworkCount(html, data);
    writeRadioCount(html, data);
    writeBandCounts(html, data);
    writeFindingCounts(html, data);
    html << "</section>\n";
}

// --- Captures ---

void writeCapture(HtmlWriter& html, const std::string& file, const SurveyedCapture& capture) {
    html << "<tr><th scope=\"row\"><bdi>" << fileName(file) << "</bdi>"
         << (capture.error ? Markup(" <span class=\"none\">not read to its end</span>") : "")
         << "</th><td>";
    if (capture.firstTime) {
        html << HtmlText{utcSecondText(*capture.firstTime)} << "</td><td>"
             << HtmlText{durationText(saturatedDifference(*capture.lastTime, *capture.firstTime))};
    } else {
        html << untold() << "</td><td>" << untold();
    }
    for (const std::uint64_t count : {capture.summary.frames, capture.summary.beacons,
                                      capture.summary.probeResponses, damagedFrames(capture)}) {
        html << "</td><td class=\"num\">" << HtmlText{groupedText(count)};
    }
    html << "</td></tr>\n";
}

void writeCaptures(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"files\"><h2>Captures</h2><div class=\"scroll\" tabindex=\"0\" "
            "role=\"group\" aria-label=\"Captures, scrolls sideways\"><table class=\"plain\">"
            "<thead><tr><th scope=\"col\">File</th><th scope=\"col\">Begins (UTC)</th>"
            "<th scope=\"col\">Lasts</th><th scope=\"col\" class=\"num\">Frames</th>"
            "<th scope=\"col\" class=\"num\">Beacons</th><th scope=\"col\" class=\"num\">Probe "
            "responses</th><th scope=\"col\" class=\"num\">Damaged</th></tr></thead><tbody>";
    for (std::size_t i = 0; i < data.captures.size(); ++i) {
        writeCapture(html, data.files[i], data.captures[i]);
    }
    html << "</tbody></table></div></section>\n";
}

// In place of all parts about networks.
void writeNothing(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"networks\"><h2>Networks</h2><p class=\"intro\">"
         << (data.all > 0 ? Markup("No network passes the filter.")
                          : "No network was heard: the captures hold no beacon and no probe "
                            "response that can be read.")
         << "</p></section>\n";
}

void writeParts(HtmlWriter& html, const ReportData& data) {
    writeNumbers(html, data);
    writeInShort(html, data);
    writeChannels(html, data);
    writeSignals(html, data);
    writeShares(html, data);
    writeFindings(html, data);
    writeNetworks(html, data);
}

void writeEnd(HtmlWriter& html) {
    html
        << "</main><footer class=\"wrap\"><p>Made by <b>halvane report</b>. This page is whole: it "
           "loads nothing and sends nothing. Signal values are medians of what the capturing radio "
           "told; shapes show the channel, not the measured spectrum.</p></footer>\n<script>";
    html.embed(reportScript());
    html << "</script>\n</body>\n</html>\n";
}

}  // namespace

std::string reportPage(const ReportData& data) {
    HtmlWriter html;
    writeHead(html, data);
    writeTop(html, data);
    if (data.networks.empty()) {
        writeNothing(html, data);
    } else {
        writeParts(html, data);
    }
    writeCaptures(html, data);
    writeEnd(html);
    return html.take();
}

}  // namespace halvane::tool
