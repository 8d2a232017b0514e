#include "tools/halvane/report/in_short.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/security.h"

#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/report/channel_use.h"
#include "tools/halvane/report/chart_scale.h"
#include "tools/halvane/report/page_words.h"
#include "tools/halvane/report/radar_ranges.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kMostSentences = 6;
constexpr int kHighLoad = 102;     // of 255: 40 %
constexpr std::size_t kCrowd = 3;  // radios in one range
constexpr double kDamagedShare = 0.01;

// Writes a sentence and returns true, or writes nothing.
using Rule = bool (*)(HtmlWriter& html, const ReportData& data);

air::Security securityOf(const ReportNetwork& network) {
    return *network.network.profile.security.name;
}

std::optional<air::Band> bandOf(const ReportNetwork& network) {
    const auto& band = network.network.profile.channel.band;
    return band ? std::optional(**band) : std::nullopt;
}

template <typename Condition>
std::size_t countIf(const ReportData& data, Condition condition) {
    return static_cast<std::size_t>(std::ranges::count_if(data.networks, condition));
}

// "2.4 GHz and 5 GHz".
std::string enumerated(const std::set<std::string>& words) {
    std::string text;
    std::size_t left = words.size();
    for (const std::string& word : words) {
        text += word;
        --left;
        if (left > 0) text += left == 1 ? " and " : ", ";
    }
    return text;
}

bool tellOwn(HtmlWriter& html, const ReportData& data) {
    if (!data.hasOwn) return false;
    std::set<std::string> names;
    std::set<std::string> bands;
    std::set<std::string> kinds;
    std::set<std::size_t> radios;
    std::size_t addresses = 0;
    for (const ReportNetwork& network : data.networks) {
        if (!network.isOwn) continue;
        ++addresses;
        names.emplace(nameOf(network.network));
        radios.insert(network.radio);
        kinds.emplace(air::securityName(securityOf(network)));
        if (const auto band = bandOf(network))
            bands.insert(std::string(air::bandName(*band)) + " GHz");
    }
    if (addresses == 0) {
        html << "Your network was not heard.";
        return true;
    }
    html << "Your network: <b>" << names.size()
         << (names.size() == 1 ? Markup("</b> name on <b>") : "</b> names on <b>") << addresses
         << (addresses == 1 ? Markup("</b> address of <b>") : "</b> addresses of <b>")
         << radios.size() << (radios.size() == 1 ? Markup("</b> radio") : "</b> radios");
    if (!bands.empty()) html << ", on " << HtmlText{enumerated(bands)};
    html << "; " << HtmlText{enumerated(kinds)} << ".";
    return true;
}

// Channels that disturb each other, by the first and the last one of 20 MHz.
struct ChannelRange {
    air::Band band;
    int first, last;
};
// The channels around 1, 6 and 11, and those of 80 MHz.
constexpr auto kRangesOf24 = std::to_array<ChannelRange>(
    {{air::Band::Ghz2, 1, 3}, {air::Band::Ghz2, 4, 8}, {air::Band::Ghz2, 9, 13}});
constexpr auto kRangesOf5 = std::to_array<ChannelRange>({{air::Band::Ghz5, 36, 48},
                                                         {air::Band::Ghz5, 52, 64},
                                                         {air::Band::Ghz5, 100, 112},
                                                         {air::Band::Ghz5, 116, 128},
                                                         {air::Band::Ghz5, 132, 144},
                                                         {air::Band::Ghz5, 149, 161}});

// Radios whose primary channel lies in the range.
std::size_t radiosIn(const ReportData& data, const ChannelRange& range, bool ownOnly) {
    return static_cast<std::size_t>(std::ranges::count_if(data.radios, [&](const Radio& radio) {
        const auto& channel = data.channelOf(radio).primaryChannel;
        return channel && data.bandOf(radio) == range.band && **channel >= range.first &&
               **channel <= range.last && (radio.isOwn || !ownOnly);
    }));
}

// Tells of the range with most radios among those that have own ones.
bool tellCrowdIn(HtmlWriter& html, const ReportData& data, std::span<const ChannelRange> ranges) {
    if (!data.hasOwn) return false;
    const auto own = [&](const ChannelRange& range) { return radiosIn(data, range, true); };
    const auto all = [&](const ChannelRange& range) { return radiosIn(data, range, false); };
    const auto weight = [&](const ChannelRange& range) { return own(range) > 0 ? all(range) : 0; };
    const ChannelRange& crowded = *std::ranges::max_element(ranges, {}, weight);
    const ChannelRange& empty = *std::ranges::min_element(ranges, {}, all);
    if (weight(crowded) < kCrowd || all(empty) + 1 >= all(crowded)) return false;
    const bool isOne = own(crowded) == 1;
    html << "<b>" << own(crowded) << "</b> of your radios "
         << (isOne ? Markup("shares ") : Markup("share "))
         << (crowded.band == air::Band::Ghz5 ? Markup("the 80 MHz of ") : Markup("")) << "channels "
         << crowded.first << " to " << crowded.last << " (<b>" << all(crowded)
         << "</b> radios in all), while channels " << empty.first << " to " << empty.last
         << " hold <b>" << all(empty) << "</b>.";
    return true;
}

bool tellCrowdOf5(HtmlWriter& html, const ReportData& data) {
    return tellCrowdIn(html, data, kRangesOf5);
}

bool tellCrowdOf24(HtmlWriter& html, const ReportData& data) {
    return tellCrowdIn(html, data, kRangesOf24);
}

bool tellLoad(HtmlWriter& html, const ReportData& data) {
    const ReportNetwork* busiest = nullptr;
    int highest = kHighLoad - 1;
    for (const ReportNetwork& network : data.networks) {
        const auto& load = network.network.profile.load;
        if (!load || load->value.utilization <= highest) continue;
        highest = load->value.utilization;
        busiest = &network;
    }
    if (busiest == nullptr) return false;
    html << "The highest load: ";
    writeLink(html, *busiest);
    html << " finds its channel busy <b>" << percentOfLoad(highest) << "\u00A0%</b> of the time.";
    return true;
}

bool tellChannelsOf24(HtmlWriter& html, const ReportData& data) {
    constexpr int kUsual[] = {1, 6, 11};
    const auto is24 = [](const ReportNetwork& network) {
        return bandOf(network) == air::Band::Ghz2;
    };
    const std::size_t all = countIf(data, is24);
    const std::size_t off = countIf(data, [&](const ReportNetwork& network) {
        const auto& channel = network.network.profile.channel.primaryChannel;
        return is24(network) && channel && std::ranges::count(kUsual, **channel) == 0;
    });
    const std::size_t wide = countIf(data, [&](const ReportNetwork& network) {
        return is24(network) && network.network.profile.channel.span->width > 20;
    });
    if (off == 0 && wide == 0) return false;
    html << "On 2.4 GHz, <b>" << off << "</b> of "
         << HtmlText{countedText(all, "network", "networks")}
         << (off == 1 ? Markup(" uses") : " use") << " a channel other than 1, 6 or 11, and <b>"
         << wide << (wide == 1 ? Markup("</b> takes") : "</b> take") << " 40 MHz.";
    return true;
}

bool tellWeakSecurity(HtmlWriter& html, const ReportData& data) {
    const std::size_t weak = countIf(data, [](const ReportNetwork& network) {
        const air::Security security = securityOf(network);
        return security == air::Security::Open ||
               security == air::Security::EnhancedOpenTransition ||
               meaningOfSecurity(security) == Meaning::Danger;
    });
    if (weak == 0) return false;
    html << "<b>" << weak << (weak == 1 ? Markup("</b> network has") : "</b> networks have")
         << " no encryption, or one that is broken.";
    return true;
}

bool tellWpa3(HtmlWriter& html, const ReportData& data) {
    using air::Security;
    const auto isOf = [&](std::span<const Security> kinds) {
        return countIf(data, [&](const ReportNetwork& network) {
            return std::ranges::count(kinds, securityOf(network)) > 0;
        });
    };
    constexpr Security kAlone[] = {Security::Wpa3Personal, Security::Wpa3Enterprise,
                                   Security::Wpa3Enterprise192};
    constexpr Security kBeside[] = {Security::Wpa2Wpa3Personal, Security::Wpa2Wpa3Enterprise};
    const std::size_t alone = isOf(kAlone);
    const std::size_t beside = isOf(kBeside);
    if (alone + beside == 0) return false;
    html << "<b>" << alone + beside
         << (alone + beside == 1 ? Markup("</b> network uses") : "</b> networks use") << " WPA3";
    if (beside > 0) html << ", <b>" << beside << "</b> of them beside WPA2";
    html << ".";
    return true;
}

bool tellDiffering(HtmlWriter& html, const ReportData& data) {
    std::map<std::string, std::set<std::string>> kinds;
    for (const ReportNetwork& network : data.networks) {
        if (!network.isOwn || network.isNameless) continue;
        kinds[network.name.octets()].emplace(air::securityName(securityOf(network)));
    }
    for (const auto& [name, own] : kinds) {
        if (own.size() < 2) continue;
        html << "Your name <bdi>" << HtmlText{name} << "</bdi> is offered with <b>" << own.size()
             << "</b> kinds of security: " << HtmlText{enumerated(own)} << ".";
        return true;
    }
    return false;
}

bool tellRadar(HtmlWriter& html, const ReportData& data) {
    const auto radar = radarRanges(commonCountry(data));
    const auto count = std::ranges::count_if(data.radios, [&](const Radio& radio) {
        if (data.bandOf(radio) != air::Band::Ghz5) return false;
        return std::ranges::any_of(radar, [&](const FrequencyRange& range) {
            for (double low = range.low; low < range.high; low += 20) {
                if (reaches(data.channelOf(radio), low + 10)) return true;
            }
            return false;
        });
    });
    if (count == 0) return false;
    html << "<b>" << count << (count == 1 ? Markup("</b> radio uses") : "</b> radios use")
         << " channels that have to be left when radar appears.";
    return true;
}

bool tellDamage(HtmlWriter& html, const ReportData& data) {
    std::uint64_t frames = 0;
    std::uint64_t damaged = 0;
    for (const SurveyedCapture& capture : data.captures) {
        frames += capture.summary.frames;
        damaged += damagedFrames(capture);
    }
    if (frames == 0 ||
        static_cast<double>(damaged) <= kDamagedShare * static_cast<double>(frames)) {
        return false;
    }
    html << "<b>" << HtmlText{groupedText(damaged)} << "</b> of "
         << HtmlText{countedText(frames, "frame is", "frames are")}
         << " damaged: the capturing radio heard badly.";
    return true;
}

constexpr Rule kRules[] = {tellOwn,          tellCrowdOf5,     tellCrowdOf24, tellLoad,
                           tellChannelsOf24, tellWeakSecurity, tellWpa3,      tellDiffering,
                           tellRadar,        tellDamage};

}  // namespace

void writeInShort(HtmlWriter& html, const ReportData& data) {
    if (data.networks.empty()) return;
    std::size_t count = 0;
    for (const Rule rule : kRules) {
        if (count == kMostSentences) break;
        HtmlWriter sentence;
        if (!rule(sentence, data)) continue;
        if (count++ == 0) html << "<section class=\"short\"><h2>In short</h2><ul>";
        html << "<li>";
        html.append(sentence);
        html << "</li>\n";
    }
    if (count > 0) html << "</ul></section>\n";
}

}  // namespace halvane::tool
