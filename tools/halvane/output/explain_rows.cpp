#include "tools/halvane/output/explain_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/country.h"
#include "halvane/air/element_id.h"
#include "halvane/air/feature.h"
#include "halvane/air/feature_use.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/operating_class.h"
#include "halvane/air/security.h"

#include "tools/halvane/output/address_text.h"
#include "tools/halvane/output/country_text.h"
#include "tools/halvane/output/explain_channel.h"
#include "tools/halvane/output/explain_parts.h"
#include "tools/halvane/output/explain_rates.h"
#include "tools/halvane/output/explain_security.h"
#include "tools/halvane/output/network_name.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/output/wrapped_text.h"

namespace halvane::tool {

namespace {

using air::ElementId;

// --- What the access point tells of itself ---

// "operating class 134, 6 GHz, 160 MHz".
std::string classText(std::uint8_t number) {
    std::string text = "operating class " + std::to_string(number);
    const auto* const row = air::operatingClass(number);
    if (row == nullptr) return text;
    return text + ", " + std::string(air::bandName(row->band)) + " GHz, " + megahertz(row->width());
}

void addCountry(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const auto country = bss.places.decode<air::Country>();
    if (!country) return;
    const std::string code(country->countryCode.begin(), country->countryCode.end());
    std::string because = bss.places.of(ElementId::Country);
    const auto isOperating = [](const air::CountryTriplet& item) { return item.isOperating(); };
    const auto* const end = country->triplets.end();
    const auto* const triplet = std::find_if(country->triplets.begin(), end, isOperating);
    if (triplet != end) because += ": " + classText(triplet->operatingClass());
    rows.push_back({"Country",
                    {TextPart::foreign(shownText(code, bss.rules)),
                     part(environmentText(*country), kCommaJoiner)},
                    {part(because)}});
}

void addLoad(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    if (!bss.profile.load) return;
    const air::BssLoadProfile& load = **bss.profile.load;
    rows.push_back({"Load",
                    {part(std::to_string((load.utilization * 100 + 127) / 255) + " %"),
                     part(counted(load.stations, "station"), kCommaJoiner)},
                    {part(bss.places.of(bss.profile.load->sources) + ": " +
                          std::to_string(load.utilization) + " of 255")},
                    Meaning::Header});
}

void addBeacons(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const auto& period = bss.profile.dtimPeriod;
    if (!period) return;
    rows.push_back({"Beacons",
                    {part("DTIM " + std::to_string(**period))},
                    {part(bss.places.of(period->sources))}});
}

// Vendor elements that follow one another are told together.
void addFeatures(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    Parts value;
    Parts because;
    std::vector<std::size_t> known;
    std::string vendors;
    for (const air::FeatureUse& use : air::featureUsesOf(bss.elements)) {
        value.push_back(part(air::featureName(use.feature), kCommaJoiner));
        if (std::ranges::count(known, std::size_t{use.source.offset}) > 0) continue;
        known.push_back(use.source.offset);
        if (use.source.id == ElementId::Vendor) {
            vendors += (vendors.empty() ? "vendor " : ", ") + bss.places.at(use.source.offset);
        } else {
            because.push_back(part(bss.places.of(use.source)));
        }
    }
    if (value.empty()) return;
    if (!vendors.empty()) because.push_back(part(vendors));
    rows.push_back({"Features", std::move(value), std::move(because)});
}

void addColor(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const auto operation = bss.places.decode<air::HeOperation>();
    if (!operation || operation->bssColor() == 0) return;
    Parts value = {part(std::to_string(operation->bssColor()))};
    if (operation->isBssColorDisabled()) value.push_back(part("switched off", kCommaJoiner));
    if (operation->isPartialBssColor()) value.push_back(part("partial", kCommaJoiner));
    rows.push_back({"Colour", std::move(value), {part(bss.places.of(ElementId::HeOperation))}});
}

// --- Other networks ---

void addMld(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const auto& mld = bss.profile.mld;
    if (!mld) return;
    rows.push_back({"MLD", {part(addressText(mld->address))}, {part(bss.places.of(mld->sources))}});
    for (const air::MldLink& link : mld->links) {
        Parts because;
        if (link.address) because.push_back(part(addressText(*link.address)));
        if (link.isReporting) because.push_back(part("this one", kCommaJoiner));
        rows.push_back({"", {part("link " + std::to_string(link.id))}, std::move(because)});
    }
}

void addSharers(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    for (const air::NontransmittedBss& other : bss.profile.nontransmitted) {
        rows.push_back({"Also",
                        {TextPart::foreign(networkName(other.profile, bss.rules))},
                        {part(addressText(other.bssid)),
                         part(air::securityName(*other.profile.security.name), kCommaJoiner),
                         part("the BSSID advanced by " + std::to_string(other.index))}});
    }
}

void addNeighbors(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    std::string_view what = "Neighbour";
    for (const air::Neighbor& neighbor : bss.profile.neighbors) {
        Parts because = {part("class " + std::to_string(neighbor.operatingClass)),
                         part("channel " + std::to_string(neighbor.channel), kCommaJoiner)};
        if (neighbor.frequency)
            because.push_back(part(megahertz(*neighbor.frequency), kCommaJoiner));
        if (neighbor.isCoLocated == true) because.push_back(part("same device", kCommaJoiner));
        rows.push_back({std::string(std::exchange(what, "")),
                        {part(neighbor.bssid ? addressText(*neighbor.bssid) : "-")},
                        std::move(because)});
    }
}

}  // namespace

std::vector<ReasonRow> explainRows(const ExplainedBss& bss) {
    std::vector<ReasonRow> rows;
    addChannelRows(rows, bss);
    addRateRows(rows, bss);
    addSecurityRows(rows, bss);
    addCountry(rows, bss);
    addLoad(rows, bss);
    addBeacons(rows, bss);
    addFeatures(rows, bss);
    addColor(rows, bss);
    addMld(rows, bss);
    addSharers(rows, bss);
    addNeighbors(rows, bss);
    return rows;
}

}  // namespace halvane::tool
