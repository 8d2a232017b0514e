#include "tools/halvane/report/shares.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/security.h"

#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/output/maker_name.h"
#include "tools/halvane/output/rounded.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kMostMakers = 11;
constexpr std::size_t kMostLoads = 12;
constexpr double kLoadWhole = 255;
constexpr double kGap = 0.4;  // per cent, between own ones and others

struct Share {
    std::string name;
    Meaning meaning = Meaning::Plain;
    std::size_t own = 0;
    std::size_t others = 0;

    std::size_t count() const { return own + others; }
};

// What a network counts as: shares stand by their keys.
struct ShareKey {
    std::string key;
    std::string name;
    Meaning meaning = Meaning::Plain;
};

using KeyOf = std::function<ShareKey(const ReportNetwork& network)>;

std::vector<Share> sharesBy(const ReportData& data, const KeyOf& keyOf) {
    std::map<std::string, Share> shares;
    for (const ReportNetwork& network : data.networks) {
        const ShareKey key = keyOf(network);
        Share& share = shares.try_emplace(key.key, Share{key.name, key.meaning}).first->second;
        ++(tintOf(data, network.isOwn) == Tint::Own ? share.own : share.others);
    }
    std::vector<Share> list;
    list.reserve(shares.size());
    for (auto& [key, share] : shares) list.push_back(std::move(share));
    return list;
}

// A number as a key, in its order.
std::string numberKey(int number) {
    std::string digits = std::to_string(number);
    return std::string(6 - std::min<std::size_t>(6, digits.size()), '0') + digits;
}

class ShareWriter {
  public:
    ShareWriter(HtmlWriter& html, const ReportData& data) : html_(html), data_(data) {}

    // `note` stands below; nothing without shares.
    void write(Markup title, std::span<const Share> shares, Markup note) {
        if (shares.empty()) return;
        html_ << "<section class=\"card\"><h3>" << title
              << "</h3><table class=\"bars\"><caption class=\"vh\">" << title
              << ": networks</caption><thead class=\"vh\"><tr><th scope=\"col\">" << title
              << "</th><th scope=\"col\">Share</th><th scope=\"col\">Networks</th></tr></thead>"
                 "<tbody>";
        std::size_t most = 1;
        for (const Share& share : shares) most = std::max(most, share.count());
        for (const Share& share : shares) writeRow(share, most);
        html_ << "</tbody></table>" << note << "</section>\n";
    }

  private:
    void writeRow(const Share& share, std::size_t most) {
        html_ << "<tr><th scope=\"row\">" << signOf(share.meaning);
        if (share.meaning == Meaning::Danger) html_ << "<span class=\"vh\">danger: </span>";
        if (share.meaning == Meaning::Caution) html_ << "<span class=\"vh\">caution: </span>";
        html_ << "<span>" << HtmlText{share.name}
              << "</span></th><td><svg height=\"12\" aria-hidden=\"true\" class=\"bar\">";
        const double own = 100.0 * static_cast<double>(share.own) / static_cast<double>(most);
        const double all = 100.0 * static_cast<double>(share.count()) / static_cast<double>(most);
        const double gap = share.own > 0 && share.others > 0 ? kGap : 0;
        writeBar(0, own, Tint::Own);
        writeBar(own + gap, all - own - gap, Tint::Other);
        const double percent =
            100.0 * static_cast<double>(share.count()) / static_cast<double>(data_.networks.size());
        html_ << "</svg></td><td class=\"n\"><b>" << share.count() << "</b> <span class=\"pc\">"
              << rounded(percent) << "\u00A0%</span>";
        if (data_.hasOwn) {
            html_ << "<span class=\"vh\">, of these own " << share.own << "</span>";
        }
        html_ << "</td></tr>";
    }

    void writeBar(double left, double width, Tint tint) {
        if (width <= 0) return;
        html_ << "<rect x=\"" << Fixed{left, 2} << "%\" width=\"" << Fixed{width, 2}
              << "%\" height=\"12\" rx=\"2\" class=\"" << classOf(tint) << "\"/>";
    }

    HtmlWriter& html_;
    const ReportData& data_;
};

ShareKey securityKey(const ReportNetwork& network) {
    const air::Security security = network.network.profile.security.name.value;
    return {numberKey(rankOf(security)), std::string(air::securityName(security)),
            meaningOfSecurity(security)};
}

ShareKey generationKey(const ReportNetwork& network) {
    constexpr int kMostGenerations = 9;
    // The newest first.
    return {numberKey(kMostGenerations - generationRank(network.network)),
            generationName(network.network)};
}

ShareKey widthKey(const ReportNetwork& network) {
    if (!widthOf(network.network)) return {"", "not told"};
    const air::ChannelSpan& span = *network.network.profile.channel.span;
    return {numberKey(span.width) + (span.center2 ? "+" : ""),
            span.center2 ? "80+80 MHz" : std::to_string(span.width) + " MHz"};
}

std::vector<Share> makersOf(const ReportData& data) {
    std::vector<Share> shares = sharesBy(data, [&](const ReportNetwork& network) -> ShareKey {
        if (network.network.bssid.isLocal()) return {"~local", "(local address)"};
        const std::string name = makerNameOf(data, network.network);
        return name.empty() ? ShareKey{"~none", "(not listed)"} : ShareKey{makerKey(name), name};
    });
    std::ranges::stable_sort(shares, std::greater(), &Share::count);
    if (shares.size() <= kMostMakers) return shares;
    Share others{std::to_string(shares.size() - kMostMakers) + " others"};
    for (const Share& share : std::span(shares).subspan(kMostMakers)) {
        others.own += share.own;
        others.others += share.others;
    }
    shares.resize(kMostMakers);
    shares.push_back(others);
    return shares;
}

// --- Load ---

struct ToldLoad {
    const Radio* radio;
    int utilization;
    int stations;
};

std::vector<ToldLoad> loadsOf(const ReportData& data) {
    std::vector<ToldLoad> loads;
    for (const Radio& radio : data.radios) {
        std::optional<int> utilization;
        int stations = 0;
        for (const std::size_t index : radio.networks) {
            const auto& load = data.networks[index].network.profile.load;
            if (!load) continue;
            utilization = std::max(utilization.value_or(0), load->value.utilization);
            stations += load->value.stations;
        }
        if (utilization) loads.push_back({&radio, *utilization, stations});
    }
    std::ranges::stable_sort(loads, std::greater(), &ToldLoad::utilization);
    return loads;
}

void writeLoad(HtmlWriter& html, const ReportData& data, const ToldLoad& load) {
    const ReportNetwork& network = data.strongestOf(*load.radio);
    const bool isLink = network.place != ReportNetwork::Place::Nowhere;
    html << "<tr><th scope=\"row\">";
    if (isLink) html << "<a href=\"#" << HtmlText{network.id} << "\">";
    html << "<bdi>" << radioLabel(data, *load.radio) << "</bdi>";
    if (isLink) html << "</a>";
    html << "</th><td><svg height=\"12\" class=\"bar\" aria-hidden=\"true\"><rect width=\"100%\" "
            "height=\"12\" rx=\"2\" class=\"trk\"/><rect width=\""
         << Fixed{load.utilization / kLoadWhole * 100} << "%\" height=\"12\" rx=\"2\" class=\""
         << classOf(tintOf(data, load.radio->isOwn)) << "\"/></svg></td><td class=\"n\"><b>"
         << percentOfLoad(load.utilization) << "\u00A0%</b></td><td class=\"n st\">"
         << load.stations << " sta</td><td class=\"n st\">";
    const auto& channel = data.channelOf(*load.radio).primaryChannel;
    if (channel) html << "ch " << **channel;
    html << "</td></tr>";
}

void writeLoads(HtmlWriter& html, const ReportData& data) {
    const auto loads = loadsOf(data);
    if (loads.empty()) return;
    html << "<section class=\"card wide2\"><h3>Channel load <span class=\"h3s\">as "
         << HtmlText{loads.size() == 1 ? "1 radio tells it"
                                       : std::to_string(loads.size()) + " radios tell it"}
         << "</span></h3><table class=\"bars load\"><thead class=\"vh\"><tr>"
            "<th scope=\"col\">Radio</th><th scope=\"col\">Bar</th><th scope=\"col\">Load</th>"
            "<th scope=\"col\">Stations</th><th scope=\"col\">Channel</th></tr></thead><tbody>";
    for (const ToldLoad& load : std::span(loads).first(std::min(loads.size(), kMostLoads))) {
        writeLoad(html, data, load);
    }
    html << "</tbody></table><p class=\"foot\">"
         << (loads.size() > kMostLoads ? Markup("The twelve highest. ") : "")
         << "Part of the time that the access point finds the channel busy, from its BSS Load "
            "element; stations as it counts them.</p></section>\n";
}

}  // namespace

void writeShares(HtmlWriter& html, const ReportData& data) {
    html << "<section id=\"shares\"><h2>Shares</h2>";
    if (data.hasOwn) {
        html << "<p class=\"key\"><span class=\"k own\"></span> yours "
                "<span class=\"k oth\"></span> others</p>";
    }
    html << "<div class=\"grid2\">";
    ShareWriter shares(html, data);
    shares.write("Security", sharesBy(data, securityKey),
                 "<p class=\"foot\">From the weakest to the strongest.</p>");
    shares.write("Generation", sharesBy(data, generationKey),
                 "<p class=\"foot\">From the newest to the oldest.</p>");
    shares.write("Maker of the address", makersOf(data), "");
    shares.write("Width", sharesBy(data, widthKey), "");
    writeLoads(html, data);
    html << "</div></section>\n";
}

}  // namespace halvane::tool
