#include "tools/halvane/output/explain_rates.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/air/bss_profile.h"
#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/generation.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/phy_rate.h"

#include "tools/halvane/output/explain_parts.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network_details.h"

namespace halvane::tool {

namespace {

// "600" and "4803.9".
std::string rateText(const air::PhyRate& rate) {
    const auto tenths = rate.hundredKbit % 10;
    return std::to_string(rate.hundredKbit / 10) +
           (tenths == 0 ? "" : '.' + std::to_string(tenths));
}

// "13.6 us" and "4 us".
std::string microseconds(int nanoseconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%g us", nanoseconds / 1000.0);
    return text;
}

struct GenerationWords {
    air::Generation generation;
    std::string_view name;
    std::string_view newer;  // the capabilities that it lacks
};
constexpr auto kGenerations = std::to_array<GenerationWords>({
    {air::Generation::Legacy, "before Wi-Fi 4", "no HT Capabilities"},
    {air::Generation::WiFi4, "Wi-Fi 4", "no VHT Capabilities"},
    {air::Generation::WiFi5, "Wi-Fi 5", "no HE Capabilities"},
    {air::Generation::WiFi6, "Wi-Fi 6", "no EHT Capabilities"},
    {air::Generation::WiFi7, "Wi-Fi 7", ""},
});

// What was cut off can only tell a later one.
void addCutGeneration(std::vector<ReasonRow>& rows, const ExplainedBss& bss,
                      std::string_view name) {
    const auto& generation = bss.profile.generation;
    const bool isAny = *generation == air::Generation::Legacy;
    const std::string value = isAny ? "not told" : std::string(name) + " or later";
    Parts because;
    if (!isAny) because.push_back(part(bss.places.of(generation.sources)));
    because.push_back(part(kFrameCut));
    rows.push_back({"Generation", {part(value)}, std::move(because), Meaning::Header});
}

void addGeneration(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const air::BssProfile& profile = bss.profile;
    const auto* const words =
        std::ranges::find(kGenerations, *profile.generation, &GenerationWords::generation);
    if (words == kGenerations.end()) return;
    const auto& band = profile.channel.band;
    const bool is6E =
        words->generation == air::Generation::WiFi6 && band && **band == air::Band::Ghz6;
    if (!profile.generation.isTold()) return addCutGeneration(rows, bss, words->name);
    Parts value = {part(std::string(words->name) + (is6E ? "E" : ""))};
    if (profile.streams() > 0)
        value.push_back(part(counted(profile.streams(), "stream"), kCommaJoiner));
    Parts because;
    if (!profile.generation.sources.empty()) {
        because.push_back(part(bss.places.of(profile.generation.sources)));
    }
    if (!words->newer.empty()) because.push_back(part(words->newer));
    rows.push_back({"Generation", std::move(value), std::move(because), Meaning::Header});
}

std::string guardText(const air::PhyRateInputs& inputs) {
    return inputs.isShortGuard ? "short GI" : "long GI";
}

// MCS of HT counts on from one number of streams to the next.
std::string olderRateText(const air::PhyRateInputs& inputs) {
    constexpr int kMcsPerStream = 8;
    const std::string width = ", " + megahertz(inputs.width);
    if (inputs.phy == air::Phy::Ht) {
        return "MCS " + std::to_string(kMcsPerStream * (inputs.streams - 1) + inputs.mcs) + width +
               ", " + guardText(inputs);
    }
    const std::string text =
        counted(inputs.streams, "stream") + ", MCS " + std::to_string(inputs.mcs) + width;
    return inputs.phy == air::Phy::Vht ? text + ", " + guardText(inputs) : text;
}

Parts rateReasons(const air::PhyRate& rate) {
    std::string text =
        std::string(air::phyName(rate.inputs.phy)) + ": " + olderRateText(rate.inputs);
    const bool isLater = rate.inputs.phy == air::Phy::He || rate.inputs.phy == air::Phy::Eht;
    if (isLater) text += ", GI 0.8 us";
    const std::string formula =
        std::to_string(rate.dataSubcarriers) + " x " + std::to_string(rate.codedBits) + " x " +
        std::to_string(rate.codingNumerator) + '/' + std::to_string(rate.codingDenominator) +
        " x " + std::to_string(rate.inputs.streams) + " / " + microseconds(rate.symbolNanoseconds);
    return {part(text), part(formula, kColonJoiner)};
}

void addRates(std::vector<ReasonRow>& rows, const air::MaxRates& rates) {
    bool isFirst = true;
    for (const auto* rate : {&rates.eht, &rates.he, &rates.vht, &rates.ht}) {
        if (!*rate) continue;
        const air::PhyRate& value = ***rate;
        if (std::exchange(isFirst, false)) {
            rows.push_back(
                {"Rate", {part(rateText(value) + " Mbit/s")}, rateReasons(value), Meaning::Header});
        } else {
            rows.push_back(
                {"",
                 {part(rateText(value) + ' ' + std::string(air::phyName(value.inputs.phy)))},
                 {part(olderRateText(value.inputs))}});
        }
    }
}

// Before Wi-Fi 4 there is no formula: the elements list the rates.
void addListedRate(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const int rate = networkDetailsOf(bss.elements).highestRate;  // in units of 500 kbit/s
    if (rate == 0 || bss.profile.isCut) return;
    Parts because;
    for (const auto id : {air::ElementId::SupportedRates, air::ElementId::ExtendedSupportedRates}) {
        if (bss.places.find(id) != nullptr)
            because.push_back(part(bss.places.of(id), kCommaJoiner));
    }
    because.push_back(part("the highest rate listed", kColonJoiner));
    const std::string value = std::to_string(rate / 2) + (rate % 2 == 0 ? "" : ".5");
    rows.push_back({"Rate", {part(value + " Mbit/s")}, std::move(because), Meaning::Header});
}

}  // namespace

void addRateRows(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    addGeneration(rows, bss);
    if (bss.profile.rates.latest() == nullptr) return addListedRate(rows, bss);
    addRates(rows, bss.profile.rates);
}

}  // namespace halvane::tool
