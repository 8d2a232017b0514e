#include "tools/halvane/output/findings_list.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/finding_text.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/network_name.h"
#include "tools/halvane/output/reason_table.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/output/wrapped_text.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kSeverityCells = 8;
constexpr std::size_t kCountEnd = 13;  // the cell after the count
constexpr std::size_t kTextColumn = 14;
constexpr std::size_t kMostNamed = 4;
constexpr std::size_t kNameCells = 24;

ShownText blanks(std::size_t count) {
    return ownText(std::string(count, ' '), {});
}

// "warning    14 ".
ShownText headOf(air::Severity severity, std::size_t count) {
    const std::string number = std::to_string(count);
    std::string text(air::severityName(severity));
    text.resize(std::max(kSeverityCells, kCountEnd - std::min(kCountEnd, number.size())), ' ');
    return ownText(text + number + ' ', {});
}

}  // namespace

void FindingsList::add(const air::BssProfile& profile, std::optional<int> signal) {
    addOne(profile, signal);
    for (const air::NontransmittedBss& bss : profile.nontransmitted) addOne(bss.profile, signal);
}

void FindingsList::addOne(const air::BssProfile& profile, std::optional<int> signal) {
    std::optional<std::string> ssid;
    if (profile.ssid) {
        const auto octets = (*profile.ssid)->bytes();
        ssid.emplace(octets.begin(), octets.end());
    }
    const Networks* last = nullptr;
    for (const air::Finding& finding : profile.findings) {
        Networks& networks = networks_[finding.kind];
        // The findings of a kind stand together; a network counts once.
        if (std::exchange(last, &networks) == &networks) continue;
        networks.push_back({ssid, profile.isCut, signal});
    }
}

namespace {

// Names, the strongest first, and how many are left out.
template <typename Networks>
std::vector<TextPart> namesOf(Networks networks, const TextStyle& style) {
    std::ranges::stable_sort(networks, [](const auto& a, const auto& b) {
        return a.signal && (!b.signal || *a.signal > *b.signal);
    });
    const ShownText mark = ownText(glyphsOf(style.glyphs).cut, style.rules);
    const std::size_t named = std::min(networks.size(), kMostNamed);
    std::vector<TextPart> parts;
    for (std::size_t i = 0; i < named; ++i) {
        const auto& ssid = networks[i].ssid;
        ShownText name = ssid ? shownName(*ssid, style.rules) : shownNameless(networks[i].isCut);
        name = cutInMiddle(name, kNameCells, mark);
        if (i + 1 < named) name.append(ownText(",", {}));
        parts.push_back(TextPart::foreign(std::move(name), " "));
    }
    if (networks.size() > named) {
        parts.push_back(
            TextPart::own("and " + std::to_string(networks.size() - named) + " more", " "));
    }
    return parts;
}

}  // namespace

std::string FindingsList::text(air::Severity least, const TextStyle& style) const {
    std::vector<std::pair<const air::FindingInfo*, const Networks*>> found;
    for (const auto& [kind, networks] : networks_) {
        const air::FindingInfo& info = air::findingInfo(kind);
        if (info.severity >= least) found.emplace_back(&info, &networks);
    }
    std::ranges::stable_sort(found, [](const auto& a, const auto& b) {
        return std::tuple(a.first->severity, a.second->size()) >
               std::tuple(b.first->severity, b.second->size());
    });
    std::string text;
    for (const auto& [info, networks] : found) {
        const auto add = [&](const std::vector<TextPart>& parts, Meaning meaning) {
            text += hangingLines(blanks(kTextColumn), Meaning::Plain, parts, meaning, style);
        };
        text += hangingLines(headOf(info->severity, networks->size()), meaningOf(info->severity),
                             {TextPart::own(info->sentence)}, Meaning::Plain, style);
        add(namesOf(*networks, style), Meaning::Header);
        if (!info->advice.empty()) {
            add({TextPart::own("Do: " + std::string(info->advice))}, Meaning::Plain);
        }
        add({TextPart::own(findingReference(*info))}, Meaning::Secondary);
    }
    return text;
}

}  // namespace halvane::tool
