#include "tools/halvane/report/page_words.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <iterator>

#include "halvane/capture/beacon_frame.h"

#include "tools/halvane/networks/generation_label.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/address_text.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/maker_name.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kLabelCells = 20;
constexpr std::int64_t kSecond = 1'000'000'000;

// What people say of a generation: the amendment in brackets. The newest stands first.
struct GenerationName {
    std::string_view label;
    std::string_view name;
};
constexpr GenerationName kGenerationNames[] = {
    {"7", "Wi-Fi 7 (be)"},       {"6E", "Wi-Fi 6E (ax)"},     {"6", "Wi-Fi 6 (ax)"},
    {"5", "Wi-Fi 5 (ac)"},       {"4", "Wi-Fi 4 (n)"},        {"g", "before Wi-Fi 4 (g)"},
    {"a", "before Wi-Fi 4 (a)"}, {"b", "before Wi-Fi 4 (b)"},
};

}  // namespace

std::string countedText(std::uint64_t count, std::string_view one, std::string_view many) {
    return groupedText(count) + ' ' + std::string(count == 1 ? one : many);
}

Markup classOf(Tint tint) {
    return tint == Tint::Own ? Markup("own") : Markup("oth");
}

Markup untold() {
    return "<span class=\"none\">\u2013</span>";
}

Markup signOf(air::Severity severity) {
    switch (severity) {
        case air::Severity::Error:
            return "<svg class=\"ic e\" width=\"14\" height=\"14\" viewBox=\"0 0 14 14\" "
                   "aria-hidden=\"true\"><path "
                   "d=\"M4.4 .8h5.2l3.6 3.6v5.2l-3.6 3.6H4.4L.8 9.6V4.4z\"/>"
                   "<path d=\"M4.6 4.6l4.8 4.8m0-4.8l-4.8 4.8\" class=\"in\"/></svg>";
        case air::Severity::Warning:
            return "<svg class=\"ic w\" width=\"14\" height=\"14\" viewBox=\"0 0 14 14\" "
                   "aria-hidden=\"true\"><path d=\"M7 .9l6.4 11.8H.6z\"/>"
                   "<path d=\"M7 5v4m0 1.6v.3\" class=\"in\"/></svg>";
        case air::Severity::Note:
            break;
    }
    return "<svg class=\"ic n\" width=\"14\" height=\"14\" viewBox=\"0 0 14 14\" "
           "aria-hidden=\"true\"><circle cx=\"7\" cy=\"7\" r=\"5.6\"/>"
           "<path d=\"M7 6.4v3.8m0-6.2v.3\" class=\"in\"/></svg>";
}

Markup signOf(Meaning meaning) {
    if (meaning == Meaning::Danger) return signOf(air::Severity::Error);
    return meaning == Meaning::Caution ? signOf(air::Severity::Warning) : Markup("");
}

void writeName(HtmlWriter& html, const ReportNetwork& network) {
    if (network.isNameless) {
        html << "<span class=\"none\">" << network.name << "</span>";
    } else {
        html << "<bdi>" << network.name << "</bdi>";
    }
}

void writeLink(HtmlWriter& html, const ReportNetwork& network) {
    const bool isLink = network.place != ReportNetwork::Place::Nowhere;
    if (isLink) html << "<a href=\"#" << HtmlText{network.id} << "\">";
    writeName(html, network);
    if (isLink) html << "</a>";
}

void writeLinkAndAddress(HtmlWriter& html, const ReportNetwork& network) {
    writeLink(html, network);
    html << " <span class=\"u\">" << HtmlText{addressText(network)} << "</span>";
}

std::string idsOf(const ReportData& data, std::span<const std::size_t> networks) {
    std::string ids;
    for (const std::size_t index : networks) {
        if (data.networks[index].place != ReportNetwork::Place::Row) continue;
        if (!ids.empty()) ids += ' ';
        ids += data.networks[index].id;
    }
    return ids;
}

std::string addressText(const ReportNetwork& network) {
    return addressText(network.network.bssid);
}

ShownText radioLabel(const ReportData& data, const Radio& radio) {
    const TextRules rules;
    const std::size_t count = radio.networks.size();
    const bool isNamed = !data.strongestOf(radio).network.details.accessPoint.empty();
    ShownText label = cutInMiddle(data.nameOf(radio), kLabelCells, ownText("\u2026", rules));
    if (count == 1) return label;
    label.append(ownText(
        isNamed ? " \u00D7" + std::to_string(count) : " +" + std::to_string(count - 1), rules));
    return label;
}

int percentOfLoad(int utilization) {
    constexpr int kWhole = 255;
    return (utilization * 100 + kWhole / 2) / kWhole;
}

std::string dateText(std::int64_t nanoseconds) {
    constexpr std::array<const char*, 12> kMonths = {
        "January", "February", "March",     "April",   "May",      "June",
        "July",    "August",   "September", "October", "November", "December"};
    using std::chrono::days;
    const std::chrono::sys_time<std::chrono::nanoseconds> time{
        std::chrono::nanoseconds(nanoseconds)};
    const std::chrono::year_month_day date(std::chrono::floor<days>(time));
    return std::to_string(static_cast<unsigned>(date.day())) + ' ' +
           kMonths[static_cast<unsigned>(date.month()) - 1] + ' ' +
           std::to_string(static_cast<int>(date.year()));
}

std::string durationText(std::int64_t nanoseconds) {
    constexpr std::int64_t kMinute = 60;
    constexpr std::int64_t kHour = 60 * kMinute;
    std::int64_t seconds = nanoseconds / kSecond;
    if (seconds < 1) return "less than 1 s";
    std::string text;
    if (seconds >= kHour) text += std::to_string(seconds / kHour) + " h ";
    if (seconds >= kMinute) text += std::to_string(seconds % kHour / kMinute) + " min ";
    if (seconds >= kHour) return text.substr(0, text.size() - 1);
    return text + std::to_string(seconds % kMinute) + " s";
}

ShownText fileName(const std::string& path) {
    if (path == "-") return ownText("standard input", {});
    return shownText(std::filesystem::path(path).filename().string(), {});
}

std::uint64_t damagedFrames(const SurveyedCapture& capture) {
    using halvane::capture::SkipReason;
    std::uint64_t count = capture.cutFrames;
    for (const auto reason :
         {SkipReason::Short, SkipReason::Damaged, SkipReason::MalformedHeader}) {
        count += capture.summary.skipped[static_cast<std::size_t>(reason)];
    }
    return count;
}

std::string generationName(const Network& network) {
    if (!tellsGeneration(network)) return "not told";
    const std::string_view label = generationLabel(network);
    for (const GenerationName& known : kGenerationNames) {
        if (known.label == label) return std::string(known.name);
    }
    return std::string(label);
}

int generationRank(const Network& network) {
    const auto* const place =
        std::ranges::find(kGenerationNames, generationLabel(network), &GenerationName::label);
    return static_cast<int>(std::end(kGenerationNames) - place) - 1;
}

std::string makerNameOf(const ReportData& data, const Network& network) {
    if (data.options.makers == nullptr) return {};
    const auto name = data.options.makers->find(network.bssid);
    return name ? shortMakerName(*name) : std::string();
}

}  // namespace halvane::tool
