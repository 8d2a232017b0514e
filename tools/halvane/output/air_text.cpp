#include "tools/halvane/output/air_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/feature.h"
#include "halvane/air/finding.h"
#include "halvane/air/generation.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/phy_rate.h"
#include "halvane/air/security.h"
#include "halvane/air/suite.h"

#include "tools/halvane/output/address_text.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kNotTold = "not told";

struct Row {
    std::string what;
    std::string value;
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

void addChannel(std::vector<Row>& rows, const air::ChannelUse& channel) {
    if (channel.band) {
        rows.push_back({"Band", std::string(air::bandName(**channel.band)) + " GHz"});
    }
    if (channel.primaryChannel) {
        std::string value = std::to_string(**channel.primaryChannel);
        if (channel.primaryFrequency) value += ", " + megahertz(*channel.primaryFrequency);
        rows.push_back({"Channel", std::move(value)});
    }
    const auto& span = *channel.span;
    std::string width = span.center2 ? "80+80 MHz" : megahertz(span.width);
    if (span.center1) width += ", centre " + std::to_string(*span.center1);
    if (span.center2) width += " and " + std::to_string(*span.center2);
    if (!channel.span.isTold()) width = kNotTold;
    rows.push_back({"Width", std::move(width)});
    if (!channel.punctured) return;
    std::vector<int> indexes;
    for (int i = 0; i < 16; ++i) {
        if (**channel.punctured >> i & 1) indexes.push_back(i);
    }
    const auto numberText = [](int number) { return std::to_string(number); };
    rows.push_back({"Punctured", indexes.empty() ? "no" : joined(indexes, numberText)});
}

std::string generationText(const air::BssProfile& profile) {
    if (!profile.generation.isTold()) return std::string(kNotTold);
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

void addRates(std::vector<Row>& rows, const air::MaxRates& rates) {
    for (const auto* rate : {&rates.eht, &rates.he, &rates.vht, &rates.ht}) {
        if (!*rate) continue;
        const air::PhyRate& value = ***rate;
        rows.push_back({"Rate " + std::string(air::phyName(value.inputs.phy)),
                        tenthsText(value.mbps()) + " Mbit/s"});
    }
}

void addSecurity(std::vector<Row>& rows, const air::SecurityProfile& security) {
    rows.push_back({"Security", std::string(air::securityName(*security.name))});
    if (!security.akms.empty()) {
        rows.push_back({"Keys", joined(security.akms, air::akmText)});
    }
    if (!security.pairwiseCiphers.empty()) {
        std::string value = joined(security.pairwiseCiphers, air::cipherText);
        if (security.groupCipher) value += "; group " + air::cipherText(*security.groupCipher);
        if (security.groupManagementCipher) {
            value += "; management " + air::cipherText(*security.groupManagementCipher);
        }
        rows.push_back({"Ciphers", std::move(value)});
    }
    rows.push_back(
        {"PMF", std::string(security.pmf.isTold() ? air::pmfName(*security.pmf) : kNotTold)});
}

void addAccessPoint(std::vector<Row>& rows, const air::BssProfile& profile) {
    if (profile.country) {
        std::string value = (*profile.country)->code;
        if ((*profile.country)->environment == 'I') value += ", indoor";
        if ((*profile.country)->environment == 'O') value += ", outdoor";
        rows.push_back({"Country", std::move(value)});
    }
    if (profile.load) {
        const auto& load = **profile.load;
        rows.push_back({"Load", std::to_string((load.utilization * 100 + 127) / 255) + " %, " +
                                    std::to_string(load.stations) + " stations"});
    }
    if (profile.dtimPeriod) {
        rows.push_back({"Beacons", "DTIM " + std::to_string(**profile.dtimPeriod)});
    }
    if (!profile.features.empty()) {
        const auto name = [](air::Feature feature) {
            return std::string(air::featureName(feature));
        };
        rows.push_back({"Features", joined(profile.features, name)});
    }
}

void addOthers(std::vector<Row>& rows, const air::BssProfile& profile) {
    if (profile.mld) {
        rows.push_back({"MLD", addressText(profile.mld->address)});
        for (const air::MldLink& link : profile.mld->links) {
            rows.push_back({"", "link " + std::to_string(link.id) +
                                    (link.address ? " " + addressText(*link.address) : "") +
                                    (link.isReporting ? ", this one" : "")});
        }
    }
    for (const air::NontransmittedBss& bss : profile.nontransmitted) {
        const auto& ssid = bss.profile.ssid;
        rows.push_back({"Also", (ssid ? (*ssid)->text() : "-") + ", " + addressText(bss.bssid) +
                                    ", " +
                                    std::string(air::securityName(*bss.profile.security.name))});
    }
    for (const air::Neighbor& neighbor : profile.neighbors) {
        rows.push_back({"Neighbour", (neighbor.bssid ? addressText(*neighbor.bssid) : "-") +
                                         ", class " + std::to_string(neighbor.operatingClass) +
                                         ", channel " + std::to_string(neighbor.channel) +
                                         (neighbor.isCoLocated == true ? ", same device" : "")});
    }
}

std::vector<Row> rowsOf(const air::BssProfile& profile) {
    std::vector<Row> rows;
    addChannel(rows, profile.channel);
    rows.push_back({"Generation", generationText(profile)});
    addRates(rows, profile.rates);
    addSecurity(rows, profile.security);
    addAccessPoint(rows, profile);
    addOthers(rows, profile);
    return rows;
}

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size() + 1, width), ' ');
    return text;
}

}  // namespace

std::string airText(const air::BssProfile& profile) {
    std::string text;
    for (const Row& row : rowsOf(profile)) text += "    " + padded(row.what, 17) + row.value + '\n';
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
