#include "tools/halvane/output/explain_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/feature.h"
#include "halvane/air/finding.h"
#include "halvane/air/generation.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/phy_rate.h"
#include "halvane/air/rule.h"
#include "halvane/air/security.h"
#include "halvane/air/source.h"
#include "halvane/air/suite.h"

#include "tools/halvane/output/paragraph.h"

namespace halvane::tool {

namespace {

struct Row {
    std::string what;
    std::string value;
    std::string because;
};

// --- Words ---

// Names the sources of values.
class SourceNames {
  public:
    explicit SourceNames(air::Octets elements) {
        for (const air::Element& element : air::ElementRange(elements)) {
            if (element.id == air::ElementId::Vendor) {
                vendors_.emplace_back(element.offset, air::elementName(element));
            }
        }
    }

    // "RSN @69, radio".
    std::string textOf(const air::Sources& sources) const {
        std::string text;
        for (const air::Source& source : sources) {
            if (!text.empty()) text += ", ";
            text += textOf(source);
        }
        return text;
    }

    template <typename T>
    std::string reasonOf(const air::Derived<T>& derived) const {
        const std::string sources = textOf(derived.sources);
        const std::string rule(air::ruleInfo(derived.rule).sentence);
        return sources.empty() ? rule : sources + ": " + rule;
    }

  private:
    std::string textOf(const air::Source& source) const {
        if (source.origin != air::Origin::Element) {
            return std::string(air::originName(source.origin));
        }
        return nameOf(source) + " @" + std::to_string(source.offset);
    }
    std::string nameOf(const air::Source& source) const {
        const auto vendor = std::ranges::find(vendors_, std::size_t{source.offset},
                                              &std::pair<std::size_t, std::string>::first);
        if (vendor != vendors_.end()) return vendor->second;
        const auto* const info = air::elementInfo(source.id);
        return std::string(info != nullptr ? info->name : "element");
    }

    std::vector<std::pair<std::size_t, std::string>> vendors_{};  // by their offsets
};

std::string tenthsText(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string megahertz(int value) {
    return std::to_string(value) + " MHz";
}

template <typename Items, typename ToText>
std::string joined(const Items& items, ToText toText) {
    std::string text;
    for (const auto& item : items) {
        if (!text.empty()) text += ", ";
        text += toText(item);
    }
    return text.empty() ? "-" : text;
}

// --- Rows ---

void addChannel(std::vector<Row>& rows, const SourceNames& names, const air::ChannelUse& channel) {
    if (channel.band) {
        rows.push_back({"Band", std::string(air::bandName(**channel.band)) + " GHz",
                        names.reasonOf(*channel.band)});
    }
    if (channel.primaryChannel) {
        std::string value = std::to_string(**channel.primaryChannel);
        if (channel.primaryFrequency) value += ", " + megahertz(*channel.primaryFrequency);
        rows.push_back({"Channel", std::move(value), names.reasonOf(*channel.primaryChannel)});
    }
    const auto& span = *channel.span;
    std::string width = span.center2 ? "80+80 MHz" : megahertz(span.width);
    if (span.center1) width += ", centre " + std::to_string(*span.center1);
    if (span.center2) width += " and " + std::to_string(*span.center2);
    rows.push_back({"Width", std::move(width), names.reasonOf(channel.span)});
    if (!channel.punctured) return;
    std::vector<int> indexes;
    for (int i = 0; i < 16; ++i) {
        if (**channel.punctured >> i & 1) indexes.push_back(i);
    }
    const auto numberText = [](int number) { return std::to_string(number); };
    rows.push_back({"Punctured", indexes.empty() ? "no" : joined(indexes, numberText),
                    names.reasonOf(*channel.punctured)});
}

std::string generationText(const air::BssProfile& profile) {
    if (*profile.generation == air::Generation::Legacy) return "before Wi-Fi 4";
    const int number = static_cast<int>(*profile.generation);
    const auto& band = profile.channel.band;
    const bool is6E = number == 6 && band && **band == air::Band::Ghz6;
    std::string text = "Wi-Fi " + std::to_string(number) + (is6E ? "E" : "");
    const int streams = profile.streams();
    if (streams > 0)
        text += ", " + std::to_string(streams) + (streams == 1 ? " stream" : " streams");
    return text;
}

void addRates(std::vector<Row>& rows, const SourceNames& names, const air::MaxRates& rates) {
    for (const auto* rate : {&rates.eht, &rates.he, &rates.vht, &rates.ht}) {
        if (!*rate) continue;
        const air::PhyRate& value = ***rate;
        rows.push_back({"Rate " + std::string(air::phyName(value.inputs.phy)),
                        tenthsText(value.mbps()) + " Mbit/s",
                        names.textOf((*rate)->sources) + ": MCS " +
                            std::to_string(value.inputs.mcs) + ", " +
                            megahertz(value.inputs.width) + "; " + value.formula()});
    }
}

void addSecurity(std::vector<Row>& rows, const SourceNames& names,
                 const air::SecurityProfile& security) {
    rows.push_back({"Security", std::string(air::securityName(*security.name)),
                    names.reasonOf(security.name)});
    const std::string elements = names.textOf(security.name.sources);
    if (!security.akms.empty()) {
        rows.push_back({"Keys", joined(security.akms, air::akmText), elements});
    }
    if (!security.pairwiseCiphers.empty()) {
        std::string value = joined(security.pairwiseCiphers, air::cipherText);
        if (security.groupCipher) value += "; group " + air::cipherText(*security.groupCipher);
        if (security.groupManagementCipher) {
            value += "; management " + air::cipherText(*security.groupManagementCipher);
        }
        rows.push_back({"Ciphers", std::move(value), elements});
    }
    rows.push_back({"PMF", std::string(air::pmfName(*security.pmf)), names.reasonOf(security.pmf)});
}

void addAccessPoint(std::vector<Row>& rows, const SourceNames& names,
                    const air::BssProfile& profile) {
    if (profile.country) {
        std::string value = (*profile.country)->code;
        if ((*profile.country)->environment == 'I') value += ", indoor";
        if ((*profile.country)->environment == 'O') value += ", outdoor";
        rows.push_back({"Country", std::move(value), names.reasonOf(*profile.country)});
    }
    if (profile.load) {
        const auto& load = **profile.load;
        rows.push_back({"Load",
                        std::to_string((load.utilization * 100 + 127) / 255) + " %, " +
                            std::to_string(load.stations) + " stations",
                        names.reasonOf(*profile.load)});
    }
    if (profile.dtimPeriod) {
        rows.push_back({"Beacons", "DTIM " + std::to_string(**profile.dtimPeriod),
                        names.reasonOf(*profile.dtimPeriod)});
    }
    if (!profile.features.empty()) {
        const auto name = [](air::Feature feature) {
            return std::string(air::featureName(feature));
        };
        rows.push_back({"Features", joined(profile.features, name), ""});
    }
}

void addOthers(std::vector<Row>& rows, const SourceNames& names, const air::BssProfile& profile) {
    if (profile.mld) {
        rows.push_back({"MLD", profile.mld->address.text(), names.textOf(profile.mld->sources)});
        for (const air::MldLink& link : profile.mld->links) {
            rows.push_back({"",
                            "link " + std::to_string(link.id) +
                                (link.address ? " " + link.address->text() : "") +
                                (link.isReporting ? ", this one" : ""),
                            ""});
        }
    }
    for (const air::NontransmittedBss& bss : profile.nontransmitted) {
        const auto& ssid = bss.profile.ssid;
        rows.push_back({"Also",
                        (ssid ? (*ssid)->text() : "-") + ", " + bss.bssid.text() + ", " +
                            std::string(air::securityName(*bss.profile.security.name)),
                        std::string(air::ruleInfo(air::Rule::ProfileAddress).sentence)});
    }
    for (const air::Neighbor& neighbor : profile.neighbors) {
        rows.push_back({"Neighbour",
                        (neighbor.bssid ? neighbor.bssid->text() : "-") + ", class " +
                            std::to_string(neighbor.operatingClass) + ", channel " +
                            std::to_string(neighbor.channel) +
                            (neighbor.isCoLocated == true ? ", same device" : ""),
                        std::string(air::ruleInfo(air::Rule::NeighborReport).sentence)});
    }
}

std::vector<Row> rowsOf(const air::BssProfile& profile, const SourceNames& names) {
    std::vector<Row> rows;
    addChannel(rows, names, profile.channel);
    rows.push_back({"Generation", generationText(profile), names.reasonOf(profile.generation)});
    addRates(rows, names, profile.rates);
    addSecurity(rows, names, profile.security);
    addAccessPoint(rows, names, profile);
    addOthers(rows, names, profile);
    return rows;
}

constexpr std::size_t kValueColumn = 12;
constexpr std::size_t kReasonColumn = 40;

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size() + 1, width), ' ');
    return text;
}

std::string findingText(const air::Finding& finding, const SourceNames& names) {
    const air::FindingInfo& info = finding.info();
    std::string lines = paragraph(padded(std::string(air::severityName(info.severity)), 12),
                                  info.sentence, kValueColumn);
    const std::string indent(kValueColumn, ' ');
    if (!info.advice.empty()) lines += paragraph(indent, info.advice, kValueColumn);
    const std::string sources = names.textOf(finding.sources);
    return lines + paragraph(indent,
                             std::string(info.id) + ", clause " + std::string(info.clause) +
                                 (sources.empty() ? "" : "; " + sources),
                             kValueColumn);
}

}  // namespace

std::string explainText(const air::BssProfile& profile, air::Octets elements) {
    const SourceNames names(elements);
    std::string text;
    for (const Row& row : rowsOf(profile, names)) {
        std::string head = padded(row.what, kValueColumn);
        const bool hasOwnLines =
            row.because.empty() || head.size() + row.value.size() >= kReasonColumn;
        if (hasOwnLines) {
            text += paragraph(std::exchange(head, {}), row.value, kValueColumn);
            if (row.because.empty()) continue;
        } else {
            head += row.value;
        }
        text += paragraph(padded(head, kReasonColumn), row.because, kReasonColumn);
    }
    if (!profile.findings.empty()) text += '\n';
    for (const air::Finding& finding : profile.findings) text += findingText(finding, names);
    return text;
}

std::string airText(const air::BssProfile& profile) {
    std::string text;
    for (const Row& row : rowsOf(profile, SourceNames({})))
        text += "    " + padded(row.what, 17) + row.value + '\n';
    return text;
}

std::string findingLines(const air::BssProfile& profile) {
    std::string text;
    for (const air::Finding& finding : profile.findings) {
        const air::FindingInfo& info = finding.info();
        text += "    " + padded(std::string(air::severityName(info.severity)), 9) +
                std::string(info.id) + ": " + std::string(info.sentence) + '\n';
    }
    return text;
}

}  // namespace halvane::tool
