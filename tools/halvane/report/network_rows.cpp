#include "tools/halvane/report/network_rows.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/finding.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/base/escaped_text.h"

#include "tools/halvane/networks/generation_label.h"
#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/output/address_text.h"
#include "tools/halvane/output/folded_case.h"
#include "tools/halvane/output/rounded.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/report/findings_part.h"
#include "tools/halvane/report/network_details_part.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

constexpr int kEmptySignal = -95;  // dBm, of an empty bar
constexpr int kFullSignal = -30;
constexpr double kBarWidth = 52;  // pixels

struct Column {
    Markup head;  // the cell before its name
    Markup name;
    Markup cell;  // the start of a cell, up to the value to sort by
    // Writes the value to sort by, for a number or a text in small letters; nothing if absent.
    void (*key)(HtmlWriter& html, const ReportData& data, const ReportNetwork& network);
    void (*write)(HtmlWriter& html, const ReportData& data, const ReportNetwork& network);
};

const air::BssProfile& profileOf(const ReportNetwork& network) {
    return network.network.profile;
}

std::string_view bandOf(const ReportNetwork& network) {
    const auto& band = profileOf(network).channel.band;
    return band ? air::bandName(**band) : std::string_view();
}

std::optional<double> rateOf(const ReportNetwork& network) {
    if (const auto* const rate = profileOf(network).rates.latest()) return rate->value.mbps();
    const int legacy = network.network.details.highestRate;
    return legacy > 0 ? std::optional(legacy / 2.0) : std::nullopt;
}

template <typename T>
void writeNumber(HtmlWriter& html, const std::optional<T>& number) {
    if (number) {
        html << *number;
    } else {
        html << untold();
    }
}

// --- Name, signal ---

void writeNameCell(HtmlWriter& html, const ReportData&, const ReportNetwork& network) {
    const air::ChannelUse& channel = profileOf(network).channel;
    html << "<a class=\"open\" href=\"#" << HtmlText{network.id} << "\">";
    writeName(html, network);
    html << "</a><span class=\"bs\">" << HtmlText{addressText(network)}
         << "</span><span class=\"sub\">";
    if (channel.band) html << HtmlText{bandOf(network)} << " GHz \u00B7 ";
    if (channel.primaryChannel) html << **channel.primaryChannel << "/";
    writeNumber(html, widthOf(network.network));
    html << " \u00B7 " << HtmlText{shortSecurityName(*profileOf(network).security.name)}
         << "</span>";
}

void writeSignalCell(HtmlWriter& html, const ReportData& data, const ReportNetwork& network) {
    html << "<span class=\"sv2\">";
    if (network.signal) {
        html << HtmlText{signedText(*network.signal)};
    } else {
        html << untold();
    }
    const double part = network.signal ? static_cast<double>(*network.signal - kEmptySignal) /
                                             (kFullSignal - kEmptySignal)
                                       : 0;
    html << "</span><svg class=\"sb\" width=\"52\" height=\"10\" aria-hidden=\"true\">"
            "<rect width=\"52\" height=\"10\" rx=\"2\" class=\"trk\"/><rect width=\""
         << Fixed{kBarWidth * std::clamp(part, 0.0, 1.0)} << "\" height=\"10\" rx=\"2\" class=\""
         << classOf(tintOf(data, network.isOwn)) << "\"/></svg>";
}

// --- Security ---

Markup styleOf(Meaning meaning) {
    if (meaning == Meaning::Danger) return "s-e";
    if (meaning == Meaning::Caution) return "s-w";
    return meaning == Meaning::Good ? Markup("s-g") : "s-p";
}

void writeSecurityCell(HtmlWriter& html, const ReportData&, const ReportNetwork& network) {
    const air::Security security = *profileOf(network).security.name;
    const Meaning meaning = meaningOfSecurity(security);
    html << signOf(meaning) << "<span class=\"" << styleOf(meaning) << "\">"
         << HtmlText{air::securityName(security)} << "</span>";
}

// --- The others ---

void writeWidthCell(HtmlWriter& html, const ReportData&, const ReportNetwork& network) {
    const air::ChannelUse& channel = profileOf(network).channel;
    if (!widthOf(network.network)) {
        html << untold();
    } else if (channel.span->center2) {
        html << "80+80";
    } else {
        html << channel.span->width;
    }
    if (channel.punctured && **channel.punctured != 0) {
        html << "<span class=\"pm\" title=\"punctured\">p</span>";
    }
}

void writeMakerCell(HtmlWriter& html, const ReportData& data, const ReportNetwork& network) {
    const std::string name = makerNameOf(data, network.network);
    if (!name.empty()) {
        html << shownText(name, {});
    } else if (network.network.bssid.isLocal()) {
        html << "<span class=\"none\">local address</span>";
    } else {
        html << untold();
    }
}

void writeFindingsCell(HtmlWriter& html, const ReportData&, const ReportNetwork& network) {
    const FindingCounts counts = findingCounts(network);
    bool hasFound = false;
    for (const auto severity :
         {air::Severity::Error, air::Severity::Warning, air::Severity::Note}) {
        const std::size_t count = countOf(counts, severity);
        if (count == 0) continue;
        hasFound = true;
        html << "<span class=\"fc\">" << signOf(severity) << count << "<span class=\"vh\"> "
             << HtmlText{air::severityName(severity)} << (count == 1 ? Markup("") : "s")
             << "</span></span>";
    }
    if (!hasFound) html << untold();
}

using Network = const ReportNetwork&;
using Data = const ReportData&;

constexpr Column kColumns[] = {
    {"<th scope=\"col\" class=\"c1\" data-k=\"name\">", "Name<span class=\"u\">and address</span>",
     "<th scope=\"row\" class=\"c1\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         if (!network.isNameless) html << HtmlText{foldedCase(network.name.octets())};
     },
     writeNameCell},
    {"<th scope=\"col\" class=\"c1 num\" data-k=\"sig\" aria-sort=\"descending\">",
     "Signal<span class=\"u\">dBm</span>", "<td class=\"c1 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         if (network.signal) html << *network.signal;
     },
     writeSignalCell},
    {"<th scope=\"col\" class=\"c2 num\" data-k=\"band\">", "Band<span class=\"u\">GHz</span>",
     "<td class=\"c2 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) { html << HtmlText{bandOf(network)}; },
     [](HtmlWriter& html, Data, Network network) {
         if (bandOf(network).empty()) html << untold();
         html << HtmlText{bandOf(network)};
     }},
    {"<th scope=\"col\" class=\"c2 num\" data-k=\"ch\">", "Channel",
     "<td class=\"c2 num\" data-v=\"",
     // The bands in their order.
     [](HtmlWriter& html, Data, Network network) {
         const air::ChannelUse& channel = profileOf(network).channel;
         if (!channel.primaryChannel) return;
         const int band = channel.band ? static_cast<int>(**channel.band) : 0;
         html << band * 1000 + **channel.primaryChannel;
     },
     [](HtmlWriter& html, Data, Network network) {
         const auto& channel = profileOf(network).channel.primaryChannel;
         writeNumber(html, channel ? std::optional(**channel) : std::nullopt);
     }},
    {"<th scope=\"col\" class=\"c2 num\" data-k=\"width\">", "Width<span class=\"u\">MHz</span>",
     "<td class=\"c2 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         if (const auto width = widthOf(network.network)) html << *width;
     },
     writeWidthCell},
    {"<th scope=\"col\" class=\"c3\" data-k=\"gen\">", "Wi-Fi", "<td class=\"c3\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) { html << generationRank(network.network); },
     [](HtmlWriter& html, Data, Network network) {
         html << HtmlText{generationLabel(network.network)};
     }},
    {"<th scope=\"col\" class=\"c2\" data-k=\"sec\">", "Security", "<td class=\"c2 sec\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         html << rankOf(*profileOf(network).security.name);
     },
     writeSecurityCell},
    {"<th scope=\"col\" class=\"c4\" data-k=\"pmf\">", "PMF", "<td class=\"c4\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         html << static_cast<int>(*profileOf(network).security.pmf);
     },
     [](HtmlWriter& html, Data, Network network) {
         const auto& pmf = profileOf(network).security.pmf;
         const bool isUntold = pmf.rule == air::Rule::FrameCut;
         if (isUntold) html << untold();
         if (!isUntold) html << HtmlText{air::pmfName(*pmf)};
     }},
    {"<th scope=\"col\" class=\"c4 num\" data-k=\"rate\">", "Rate<span class=\"u\">Mbit/s</span>",
     "<td class=\"c4 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         if (const auto rate = rateOf(network)) html << Fixed{*rate};
     },
     [](HtmlWriter& html, Data, Network network) {
         const auto rate = rateOf(network);
         writeNumber(html, rate ? std::optional(rounded(*rate)) : std::nullopt);
     }},
    {"<th scope=\"col\" class=\"c5 num\" data-k=\"load\">", "Load<span class=\"u\">%</span>",
     "<td class=\"c5 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         const auto& load = profileOf(network).load;
         if (load) html << load->value.utilization;
     },
     [](HtmlWriter& html, Data, Network network) {
         const auto& load = profileOf(network).load;
         writeNumber(html,
                     load ? std::optional(percentOfLoad(load->value.utilization)) : std::nullopt);
     }},
    {"<th scope=\"col\" class=\"c5 num\" data-k=\"sta\">", "Stations",
     "<td class=\"c5 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         const auto& load = profileOf(network).load;
         if (load) html << load->value.stations;
     },
     [](HtmlWriter& html, Data, Network network) {
         const auto& load = profileOf(network).load;
         writeNumber(html, load ? std::optional(load->value.stations) : std::nullopt);
     }},
    {"<th scope=\"col\" class=\"c5 num\" data-k=\"frames\">", "Frames",
     "<td class=\"c5 num\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) { html << network.network.statistics->frames(); },
     [](HtmlWriter& html, Data, Network network) {
         html << HtmlText{groupedText(network.network.statistics->frames())};
     }},
    {"<th scope=\"col\" class=\"c4\" data-k=\"maker\">", "Maker", "<td class=\"c4 mk\" data-v=\"",
     [](HtmlWriter& html, Data data, Network network) {
         html << HtmlText{foldedCase(makerNameOf(data, network.network))};
     },
     writeMakerCell},
    {"<th scope=\"col\" class=\"c3\" data-k=\"find\">", "Findings", "<td class=\"c3 fi\" data-v=\"",
     [](HtmlWriter& html, Data, Network network) {
         const FindingCounts counts = findingCounts(network);
         html << countOf(counts, air::Severity::Error) * 10000 +
                     countOf(counts, air::Severity::Warning) * 100 +
                     countOf(counts, air::Severity::Note);
     },
     writeFindingsCell},
};

// What the filter looks for words in.
std::string searchText(const ReportData& data, const ReportNetwork& network) {
    std::string text = network.name.octets() + ' ' + addressText(network) + ' ' +
                       makerNameOf(data, network.network) + ' ' +
                       escapedText(network.network.details.accessPoint) + ' ' +
                       std::string(air::securityName(*profileOf(network).security.name)) +
                       " wi-fi " + std::string(generationLabel(network.network));
    const auto& channel = profileOf(network).channel.primaryChannel;
    if (channel) text += " ch" + std::to_string(**channel);
    const auto& country = profileOf(network).country;
    if (country) text += ' ' + country->value.code;
    return foldedCase(text);
}

void writeRow(HtmlWriter& html, const ReportData& data, const ReportNetwork& network) {
    const FindingCounts counts = findingCounts(network);
    const std::string_view band = bandOf(network);
    const bool hasChip = band == "2.4" || band == "5" || band == "6";
    html << "<tbody id=\"" << HtmlText{network.id} << "\" class=\"net"
         << (tintOf(data, network.isOwn) == Tint::Own ? Markup(" own") : "") << "\" data-t=\""
         << HtmlText{searchText(data, network)} << "\" data-b=\""
         << HtmlText{hasChip ? band : std::string_view()} << "\" data-o=\""
         << (network.isOwn ? 1 : 0) << "\" data-f=\""
         << countOf(counts, air::Severity::Error) + countOf(counts, air::Severity::Warning) << "\"";
    if (const auto& mld = profileOf(network).mld) {
        html << " data-m=\"" << HtmlText{addressText(mld->address)} << "\"";
    }
    html << "><tr>";
    for (const Column& column : kColumns) {
        html << column.cell;
        column.key(html, data, network);
        html << "\">";
        column.write(html, data, network);
        html << (&column == kColumns ? Markup("</th>") : "</td>");
    }
    html << "</tr><tr class=\"more\"><td colspan=\"14\">";
    writeDetails(html, data, network);
    html << "</td></tr></tbody>\n";
}
static_assert(std::size(kColumns) == 14);

void writeFilter(HtmlWriter& html, const ReportData& data) {
    html << "<form class=\"filter js-only\" role=\"search\" aria-label=\"Filter the networks\">"
            "<label class=\"ft\">Filter <input type=\"search\" id=\"q\" placeholder=\"name, "
            "maker, WPA3, ch36 \u2026\" autocomplete=\"off\" spellcheck=\"false\"/>"
            "</label>\n<fieldset><legend class=\"vh\">Band</legend>"
            "<label class=\"chip\"><input type=\"checkbox\" name=\"b\" value=\"2.4\" "
            "checked=\"checked\"/><span>2.4</span></label>"
            "<label class=\"chip\"><input type=\"checkbox\" name=\"b\" value=\"5\" "
            "checked=\"checked\"/><span>5</span></label>"
            "<label class=\"chip\"><input type=\"checkbox\" name=\"b\" value=\"6\" "
            "checked=\"checked\"/><span>6 GHz</span></label></fieldset>\n";
    if (data.hasOwn) {
        html << "<label class=\"chip\"><input type=\"checkbox\" id=\"fo\"/><span>yours "
                "only</span></label>";
    }
    html << "<label class=\"chip\"><input type=\"checkbox\" id=\"ff\"/><span>with errors or "
            "warnings</span></label>\n<label class=\"srt\">Sort <select id=\"srt\"></select>"
            "</label><button type=\"reset\">Show all</button><p id=\"count\" role=\"status\" "
            "aria-live=\"polite\">"
         << HtmlText{countedText(data.countOf(ReportNetwork::Place::Row), "network", "networks")}
         << "</p></form>\n<noscript><p class=\"foot\">Without scripts the "
            "table neither sorts nor filters; everything else works, and a name opens its "
            "details.</p></noscript>\n";
}

// Networks beyond the table's limit: a line each.
void writeBriefRow(HtmlWriter& html, const ReportNetwork& network) {
    html << "<tr id=\"" << HtmlText{network.id} << "\"><td>";
    writeName(html, network);
    html << "</td><td>" << HtmlText{addressText(network)} << "</td><td>";
    if (network.signal) {
        html << HtmlText{signedText(*network.signal)};
    } else {
        html << untold();
    }
    html << "</td><td>" << HtmlText{bandOf(network)} << "</td><td>";
    const auto& channel = profileOf(network).channel.primaryChannel;
    if (channel) html << **channel;
    html << "</td><td>" << HtmlText{air::securityName(*profileOf(network).security.name)}
         << "</td></tr>\n";
}

void writeOctetsNote(HtmlWriter& html, const ReportData& data) {
    if (data.options.details != ReportDetails::Auto) return;
    const auto lacks = [](const ReportNetwork& network) {
        return network.place == ReportNetwork::Place::Row && network.network.heard != nullptr &&
               !network.hasOctets;
    };
    if (std::ranges::none_of(data.networks, lacks)) return;
    html << "<p class=\"foot\">To keep the page small, "
         << HtmlText{countedText(
                static_cast<std::size_t>(std::ranges::count_if(data.networks, lacks)), "row has",
                "rows have")}
         << " no octets of elements; <code>--details=all</code> puts all there.</p>";
}

void writeFurther(HtmlWriter& html, const ReportData& data) {
    const std::size_t rows = data.countOf(ReportNetwork::Place::Row);
    const std::size_t brief = data.countOf(ReportNetwork::Place::BriefRow);
    const std::size_t further = data.networks.size() - rows;
    if (further == 0) return;
    html << "<p class=\"foot\">The table holds "
         << (data.hasOwn ? Markup("your networks and the strongest others, ") : "the strongest ")
         << HtmlText{groupedText(rows)} << (data.hasOwn ? Markup(" of ") : " networks of ")
         << HtmlText{groupedText(data.networks.size())} << ".</p>";
    html << "<details class=\"alt\"><summary>"
         << HtmlText{countedText(brief, "further network", "further networks")}
         << ", a line each</summary><div class=\"scroll\" tabindex=\"0\" role=\"group\" "
            "aria-label=\"Further networks, scrolls sideways\"><table class=\"plain\"><thead><tr>"
            "<th scope=\"col\">Name</th><th scope=\"col\">Address</th><th scope=\"col\">dBm</th>"
            "<th scope=\"col\">GHz</th><th scope=\"col\">Channel</th>"
            "<th scope=\"col\">Security</th></tr></thead><tbody>";
    for (const ReportNetwork& network : data.networks) {
        if (network.place == ReportNetwork::Place::BriefRow) writeBriefRow(html, network);
    }
    html << "</tbody></table></div></details>";
    if (brief == further) return;
    html << "<p class=\"foot\">"
         << HtmlText{countedText(further - brief, "weaker one is", "weaker ones are")}
         << " counted above and left out here; <code>halvane decode</code> lists "
            "them.</p>";
}

}  // namespace

void writeNetworks(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"networks\"><h2>Networks</h2>\n";
    writeFilter(html, data);
    html
        << "<table id=\"nets\"><caption class=\"vh\">Networks, strongest first. The name opens the "
           "details.</caption><thead><tr>";
    for (const Column& column : kColumns) {
        html << column.head << "<span class=\"hd\">" << column.name << "</span></th>";
    }
    html << "</tr></thead>\n";
    for (const ReportNetwork& network : data.networks) {
        if (network.place == ReportNetwork::Place::Row) writeRow(html, data, network);
    }
    html << "</table><div id=\"empty\" hidden=\"hidden\"><p>No network passes the filter.</p>"
            "<button type=\"button\" id=\"again\">Show all</button></div>\n";
    writeOctetsNote(html, data);
    writeFurther(html, data);
    html << "</section>\n";
}

}  // namespace halvane::tool
