#include "tools/halvane/output/explain_text.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/feature.h"
#include "halvane/air/finding.h"
#include "halvane/air/mesh_id.h"
#include "halvane/base/mac_address.h"
#include "halvane/capture/link_type.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/output/address_text.h"
#include "tools/halvane/output/element_places.h"
#include "tools/halvane/output/explain_parts.h"
#include "tools/halvane/output/explain_rows.h"
#include "tools/halvane/output/explained_bss.h"
#include "tools/halvane/output/finding_text.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/guessed_name.h"
#include "tools/halvane/output/network_name.h"
#include "tools/halvane/output/reason_table.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/output/wrapped_text.h"
#include "tools/halvane/survey/air_profile.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kHeadingGap = "  ";

std::string radioNameOf(const std::optional<capture::ElementsOrigin>& origin) {
    if (!origin || !origin->linkType) return "radio";
    switch (*origin->linkType) {
        case capture::LinkType::Radiotap:
            return "radiotap";
        case capture::LinkType::Prism:
            return "Prism";
        case capture::LinkType::AVS:
            return "AVS";
        case capture::LinkType::PPI:
            return "PPI";
        case capture::LinkType::IEEE80211:
            break;
    }
    return "radio";
}

std::string heardText(std::uint64_t frames) {
    return frames == 1 ? "heard once" : "heard " + std::to_string(frames) + " times";
}

ShownText nameOf(const air::BssProfile& profile, const ElementPlaces& places,
                 const TextRules& rules) {
    const auto mesh = places.decode<air::MeshId>();
    if (!mesh || !profile.features.contains(air::Feature::Mesh)) return networkName(profile, rules);
    const auto octets = mesh->name.bytes();
    return shownMesh(std::string(octets.begin(), octets.end()), rules);
}

// "Arc-QA-Lab-5G  60:8D:26:A6:D6:05  Arcadyan  -70 dBm, heard once".
std::string headingText(const ExplainedNetwork& network, const ShownText& name,
                        const TextStyle& style) {
    Parts parts = {TextPart::foreign(name)};
    parts.push_back(
        part(FancyFormatting::formattedMAC(network.sighting.record.mac()), kHeadingGap));
    if (!network.maker.empty()) {
        const bool isOwn = network.maker == "(local)" || network.maker == "(group)";
        parts.push_back(
            isOwn ? part(network.maker, kHeadingGap)
                  : TextPart::foreign(shownText(network.maker, style.rules), kHeadingGap));
    }
    std::string_view gap = kHeadingGap;
    if (network.signal) {
        parts.push_back(part(std::to_string(*network.signal) + " dBm", gap));
        gap = kCommaJoiner;
    }
    if (network.sighting.origin) parts.push_back(part(heardText(network.sighting.frames), gap));
    return hangingLines({}, Meaning::Plain, parts, Meaning::Header, style);
}

// What its name may be meant to read.
std::optional<std::string> guessOf(const capture::Sighting& sighting) {
    const auto& ssid = sighting.record.SSID();
    if (!ssid) return std::nullopt;
    const auto octets = ssid->bytes();
    return nameInGB18030(std::string(octets.begin(), octets.end()));
}

// "walk.pcap: frame 7, beacon, 383 octets of elements; @N is octet N of the 802.11 frame".
std::string frameText(const ExplainedNetwork& network, std::size_t octets, const TextStyle& style) {
    const capture::Sighting& sighting = network.sighting;
    std::string text;
    std::string_view counted = "elements";
    if (const auto& origin = sighting.origin) {
        if (origin->frame != 0) text += "frame " + std::to_string(origin->frame) + ", ";
        text += std::string(subtypeName(origin->subtype)) + ", ";
        counted = "802.11 frame";
    }
    text += std::to_string(octets) + (octets == 1 ? " octet" : " octets") + " of elements";
    Parts parts;
    if (!network.file.empty()) {
        parts.push_back(TextPart::foreign(shownText(network.file, style.rules)));
    }
    parts.push_back(part(text, kColonJoiner));
    parts.push_back(part("@N is octet N of the " + std::string(counted)));
    if (sighting.isNameRevealed) parts.push_back(part("earlier frames hide the name"));
    if (const auto guess = guessOf(sighting)) {
        ShownText name = ownText("not UTF-8; in GB18030 it would read ", style.rules);
        name.append(shownText(*guess, style.rules));
        parts.push_back(TextPart::foreign(name));
    }
    return hangingLines({}, Meaning::Plain, parts, Meaning::Secondary, style);
}

std::string findingText(const air::Finding& finding, const ElementPlaces& places,
                        const TextStyle& style) {
    const air::FindingInfo& info = finding.info();
    ShownText head = ownText(air::severityName(info.severity), {});
    ShownText indent;
    const ShownText blank = ownText(" ", {});
    while (head.cells() < kValueColumn) head.append(blank);
    while (indent.cells() < kValueColumn) indent.append(blank);
    std::string text =
        hangingLines(head, meaningOf(info.severity), {part(info.sentence)}, Meaning::Plain, style);
    const auto add = [&](const Parts& parts, Meaning meaning) {
        text += hangingLines(indent, Meaning::Plain, parts, meaning, style);
    };
    if (!info.advice.empty()) add({part(info.advice)}, Meaning::Plain);
    Parts reference = {part(findingReference(info))};
    if (!finding.sources.empty()) reference.push_back(part(places.of(finding.sources)));
    add(reference, Meaning::Secondary);
    return text;
}

std::string findingsText(const air::BssProfile& profile, const ElementPlaces& places,
                         const TextStyle& style) {
    std::string text = profile.findings.empty() ? "" : "\n";
    for (const air::Finding& finding : profile.findings) {
        text += findingText(finding, places, style);
    }
    return text;
}

// Those of the networks that share the beacon.
std::string sharersText(const air::BssProfile& profile, const ElementPlaces& places,
                        const TextStyle& style) {
    std::string text;
    for (const air::NontransmittedBss& bss : profile.nontransmitted) {
        if (bss.profile.findings.empty()) continue;
        const Parts heading = {TextPart::foreign(networkName(bss.profile, style.rules)),
                               part(addressText(bss.bssid), kHeadingGap),
                               part("shares the beacon", kHeadingGap)};
        text += '\n' + hangingLines({}, Meaning::Plain, heading, Meaning::Header, style);
        for (const air::Finding& finding : bss.profile.findings) {
            text += findingText(finding, places, style);
        }
    }
    return text;
}

}  // namespace

std::string explainText(const ExplainedNetwork& network, const TextStyle& style) {
    const capture::Sighting& sighting = network.sighting;
    const air::BssProfile profile = airProfileOf(sighting);
    const auto& buffer = sighting.record.ieBuffer();
    const air::Octets elements = buffer ? air::Octets(buffer->bytes()) : air::Octets();
    const ElementPlaces places(elements, sighting.origin ? sighting.origin->offset : 0);
    const ExplainedBss bss = {
        profile,    elements, places, sighting.radioFrequency, radioNameOf(sighting.origin),
        style.rules};
    return headingText(network, nameOf(profile, places, style.rules), style) +
           frameText(network, elements.size(), style) + '\n' +
           reasonLines(explainRows(bss), style) + findingsText(profile, places, style) +
           sharersText(profile, places, style);
}

}  // namespace halvane::tool
