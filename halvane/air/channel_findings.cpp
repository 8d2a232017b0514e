#include <cstdint>
#include <cstdlib>
#include <optional>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_id.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/ht_operation.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/source.h"
#include "halvane/air/vht_operation.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

bool isBand(const ProfileParts& parts, Band band) {
    const auto& derived = parts.profile.channel.band;
    return derived && **derived == band;
}

// --- Elements that disagree ---

void findDifferences(const ProfileParts& parts, FindingCollector& findings) {
    const auto& operation = parts.operation;
    if (operation.ds && operation.ht && operation.ds->currentChannel != 0 &&
        operation.ds->currentChannel != operation.ht->primaryChannel) {
        findings.add(Kind::DsHtChannelDiffer,
                     findings.sourcesOf(ElementId::DsParameterSet, ElementId::HtOperation));
    }
    const auto vhtWidth = vhtWidthOf(operation);
    if (isBand(parts, Band::Ghz5) && htWidthOf(operation) == 20 && vhtWidth) {
        findings.add(Kind::HtVhtWidthDiffer,
                     findings.sourcesOf(ElementId::HtOperation, ElementId::VhtOperation));
    }
    const auto ehtWidth = ehtWidthOf(operation);
    const auto heWidth = heWidthOf(operation);
    if (ehtWidth && heWidth && ehtWidth != heWidth) {
        findings.add(Kind::EhtHeWidthDiffer,
                     findings.sourcesOf(ElementId::EhtOperation, ElementId::HeOperation));
    }
}

void findRadioElsewhere(const ProfileParts& parts, FindingCollector& findings) {
    const auto& primary = parts.profile.channel.primaryFrequency;
    if (!primary || !parts.radio.frequency || *primary == *parts.radio.frequency) return;
    Sources sources = parts.profile.channel.primaryChannel->sources;
    sources.push_back({Origin::Radio});
    findings.add(Kind::ChannelFarFromRadio, sources);
}

// 0 dBm is a milliwatt: an antenna that touches the sender's receives less.
void findImplausibleSignal(const ProfileParts& parts, FindingCollector& findings) {
    constexpr int kMost = 0;  // dBm
    findings.addIf(parts.radio.signal.value_or(kMost) > kMost, Kind::SignalImplausible,
                   {{Origin::Radio}});
}

// --- 2.4 GHz ---

void findAt2Ghz(const ProfileParts& parts, FindingCollector& findings) {
    const auto& channel = parts.profile.channel;
    if (!isBand(parts, Band::Ghz2)) return;
    findings.addIf(channel.span->width > 20, Kind::Ht40On24, channel.span.sources);
    if (channel.primaryChannel) {
        const int number = **channel.primaryChannel;
        const bool isBetween = number != 1 && number != 6 && number != 11 && number < 12;
        findings.addIf(isBetween, Kind::BetweenChannels, channel.primaryChannel->sources);
    }
    findings.addIf(parts.index.has(ElementId::VhtCapabilities), Kind::VhtOn24,
                   findings.sourcesOf(ElementId::VhtCapabilities));
}

// --- Centres ---

// Whether one of the spans of `width` around a centre holds the primary channel.
bool isPrimaryWithin(int primary, const ChannelSpan& span) {
    const int width = span.center2 ? 80 : span.width;
    const auto isWithin = [&](std::optional<int> center) {
        return center && std::abs(primary - *center) <= (width - 20) / 2 &&
               (primary - *center + (width - 20) / 2) % 20 == 0;
    };
    return isWithin(span.center1) || isWithin(span.center2);
}

void findVhtCenters(const ProfileParts& parts, FindingCollector& findings) {
    if (!isBand(parts, Band::Ghz5) || !parts.operation.vht) return;
    const auto& information = parts.operation.vht->information;
    const int distance = std::abs(information.centerSegment1 - information.centerSegment0);
    const bool isReserved = information.channelWidth == 1 && information.centerSegment1 != 0 &&
                            distance != 8 && distance <= 16;
    const bool isMissing = (information.channelWidth != 0 && information.centerSegment0 == 0) ||
                           (information.channelWidth == 3 && information.centerSegment1 == 0);
    findings.addIf(isReserved || isMissing || information.channelWidth > 3, Kind::VhtCentersInvalid,
                   findings.sourcesOf(ElementId::VhtOperation));
}

void findCenters(const ProfileParts& parts, FindingCollector& findings) {
    findVhtCenters(parts, findings);
    const auto& channel = parts.profile.channel;
    const auto& span = *channel.span;
    if (!channel.primaryFrequency || span.width <= 20 || isBand(parts, Band::Ghz2)) return;
    findings.addIf(!isPrimaryWithin(*channel.primaryFrequency, span), Kind::CenterWithoutPrimary,
                   channel.span.sources);
}

void findAt6Ghz(const ProfileParts& parts, FindingCollector& findings) {
    const bool isElementThere = parts.index.has(ElementId::HeOperation);
    const bool hasInformation = parts.operation.he && parts.operation.he->sixGhz;
    if (!isBand(parts, Band::Ghz6) || hasInformation) return;
    if (!isElementThere && !parts.lacks(ElementId::HeOperation)) return;
    Sources sources = findings.sourcesOf(ElementId::HeOperation);
    if (sources.empty()) sources.push_back({Origin::Radio});
    findings.add(Kind::SixGhzInformationMissing, sources);
}

// --- Puncturing ---

// Table 36-30: within 80 MHz one 20; within 160 MHz one 20 or one aligned 40; within 320 MHz one
// aligned 40 or 80, or an outer 80 with one aligned 40 beside it.
bool isPuncturingKnown(std::uint16_t bitmap, int width) {
    if (bitmap == 0) return true;
    const auto isRun = [bitmap](unsigned size, unsigned count) {
        for (unsigned i = 0; i + size <= count; i += size) {
            if (bitmap == ((1u << size) - 1) << i) return true;
        }
        return false;
    };
    if (width == 80) return isRun(1, 4);
    if (width == 160) return isRun(1, 8) || isRun(2, 8);
    if (width != 320) return false;
    if (isRun(2, 16) || isRun(4, 16)) return true;
    for (const unsigned outer : {0x000Fu, 0xF000u}) {
        if ((bitmap & outer) != outer) continue;
        const unsigned rest = bitmap & ~outer;
        for (unsigned i = 0; i < 16; i += 2) {
            if (rest == 3u << i && (outer & rest) == 0) return true;
        }
    }
    return false;
}

// The primary's place among the 20 MHz of the span, counted from the lowest.
std::optional<unsigned> primaryIndex(const ChannelUse& channel) {
    const auto& span = *channel.span;
    if (!channel.primaryFrequency || !span.center1 || span.center2) return std::nullopt;
    const int lowest = *span.center1 - span.width / 2 + 10;
    const int distance = *channel.primaryFrequency - lowest;
    if (distance < 0 || distance % 20 != 0 || distance / 20 >= span.width / 20) return std::nullopt;
    return static_cast<unsigned>(distance / 20);
}

void findPuncturing(const ProfileParts& parts, FindingCollector& findings) {
    const auto& channel = parts.profile.channel;
    if (!channel.punctured) return;
    // With the bits past the channel, which must not be set.
    const auto& told = parts.operation.eht->information->disabledSubchannels;
    const auto bitmap = static_cast<std::uint16_t>(told->bits(0, 16));
    const auto& sources = channel.punctured->sources;
    findings.addIf(!isPuncturingKnown(bitmap, channel.span->width), Kind::PuncturingInvalid,
                   sources);
    const auto index = primaryIndex(channel);
    findings.addIf(index && (**channel.punctured >> *index & 1) != 0, Kind::PuncturedPrimary,
                   sources);
}

// --- Generations ---

struct Pair {
    ElementId capabilities;
    ElementId operation;
};
constexpr Pair kPairs[] = {
    {ElementId::HtCapabilities, ElementId::HtOperation},
    {ElementId::VhtCapabilities, ElementId::VhtOperation},
    {ElementId::HeCapabilities, ElementId::HeOperation},
    {ElementId::EhtCapabilities, ElementId::EhtOperation},
};

void findHalfGenerations(const ProfileParts& parts, FindingCollector& findings) {
    for (const Pair& pair : kPairs) {
        const bool hasCapabilities = parts.index.has(pair.capabilities);
        const bool hasOperation = parts.index.has(pair.operation);
        findings.addIf(hasOperation && parts.lacks(pair.capabilities),
                       Kind::OperationWithoutCapabilities, findings.sourcesOf(pair.operation));
        findings.addIf(hasCapabilities && parts.lacks(pair.operation),
                       Kind::CapabilitiesWithoutOperation, findings.sourcesOf(pair.capabilities));
    }
}

void findChannelSwitch(const ProfileParts& parts, FindingCollector& findings) {
    for (const ElementId id : {ElementId::ChannelSwitch, ElementId::ExtendedChannelSwitch}) {
        if (!parts.index.has(id)) continue;
        return findings.add(Kind::ChannelSwitch, findings.sourcesOf(id));
    }
}

}  // namespace

void findInChannel(const ProfileParts& parts, FindingCollector& findings) {
    findDifferences(parts, findings);
    findRadioElsewhere(parts, findings);
    findImplausibleSignal(parts, findings);
    findAt2Ghz(parts, findings);
    findCenters(parts, findings);
    findAt6Ghz(parts, findings);
    findPuncturing(parts, findings);
    findHalfGenerations(parts, findings);
    findChannelSwitch(parts, findings);
}

}  // namespace halvane::air
