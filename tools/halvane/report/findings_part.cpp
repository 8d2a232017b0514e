#include "tools/halvane/report/findings_part.h"

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

#include "tools/halvane/output/finding_text.h"
#include "tools/halvane/report/page_words.h"

namespace halvane::tool {

namespace {

struct Found {
    const air::FindingInfo* info;
    std::vector<std::size_t> networks{};  // indexes, own ones first
};

// The findings of a severity, those of most networks first.
std::vector<Found> foundOf(const ReportData& data, air::Severity severity) {
    std::map<air::FindingKind, Found> found;
    for (const bool isOwn : {true, false}) {
        for (std::size_t i = 0; i < data.networks.size(); ++i) {
            if (data.networks[i].isOwn != isOwn) continue;
            for (const air::Finding& finding : data.networks[i].network.profile.findings) {
                if (finding.info().severity != severity) continue;
                auto& networks =
                    found.try_emplace(finding.kind, Found{&finding.info()}).first->second.networks;
                if (networks.empty() || networks.back() != i) networks.push_back(i);
            }
        }
    }
    std::vector<Found> list;
    list.reserve(found.size());
    for (auto& [kind, one] : found) list.push_back(one);
    std::ranges::stable_sort(list, std::greater(),
                             [](const Found& one) { return one.networks.size(); });
    return list;
}

void writeNames(HtmlWriter& html, const ReportData& data, const Found& found) {
    html << "<ul class=\"nl\">";
    const std::size_t count = std::min(found.networks.size(), data.limits.findingNames);
    for (std::size_t i = 0; i < count; ++i) {
        html << "<li>";
        writeLinkAndAddress(html, data.networks[found.networks[i]]);
        html << "</li>";
    }
    if (count < found.networks.size()) {
        html << "<li>and " << found.networks.size() - count << " more</li>";
    }
    html << "</ul>";
}

void writeFound(HtmlWriter& html, const ReportData& data, const Found& found) {
    const auto own = std::ranges::count_if(
        found.networks, [&](std::size_t index) { return data.networks[index].isOwn; });
    html << "<li><details><summary><span class=\"cnt\"><b>" << found.networks.size()
         << (found.networks.size() == 1 ? Markup("</b> network") : "</b> networks")
         << "</span><span class=\"fs\">" << HtmlText{found.info->sentence}
         << "</span><span class=\"fo\">";
    if (own > 0) html << own << (own == 1 ? Markup(" is yours") : " are yours");
    html << "</span></summary><div class=\"fb\">";
    if (!found.info->advice.empty()) {
        html << "<p><b>What to do.</b> " << HtmlText{found.info->advice} << "</p>";
    }
    html << "<p class=\"u\">" << HtmlText{findingReference(*found.info)} << "</p>";
    writeNames(html, data, found);
    html << "</div></details></li>\n";
}

Markup titleOf(air::Severity severity) {
    if (severity == air::Severity::Error) return "Errors";
    return severity == air::Severity::Warning ? Markup("Warnings") : "Notes";
}

}  // namespace

FindingCounts findingCounts(const ReportNetwork& network) {
    FindingCounts counts{};
    for (const air::Finding& finding : network.network.profile.findings) {
        ++counts[static_cast<std::size_t>(finding.info().severity)];
    }
    return counts;
}

FindingCounts findingCounts(const ReportData& data) {
    FindingCounts counts{};
    for (const ReportNetwork& network : data.networks) {
        const FindingCounts own = findingCounts(network);
        for (std::size_t i = 0; i < counts.size(); ++i) counts[i] += own[i];
    }
    return counts;
}

void writeFindings(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"findings\"><h2>Findings</h2>";
    bool hasFound = false;
    for (const auto severity :
         {air::Severity::Error, air::Severity::Warning, air::Severity::Note}) {
        const auto found = foundOf(data, severity);
        if (found.empty()) continue;
        if (!hasFound) {
            html << "<p class=\"intro\">Counted by network. Open a line for what to do and "
                    "where.</p>";
        }
        hasFound = true;
        html << "<h3 class=\"sv\">" << signOf(severity) << " " << titleOf(severity)
             << "</h3><ul class=\"finds\">\n";
        for (const Found& one : found) writeFound(html, data, one);
        html << "</ul>\n";
    }
    if (!hasFound) html << "<p class=\"foot\">Nothing found.</p>";
    html << "</section>\n";
}

}  // namespace halvane::tool
