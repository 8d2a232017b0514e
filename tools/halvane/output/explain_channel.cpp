#include "tools/halvane/output/explain_channel.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/ds_parameter_set.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_id.h"
#include "halvane/air/rule.h"
#include "halvane/air/source.h"
#include "halvane/air/width_claim.h"

#include "tools/halvane/output/explain_parts.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/output/wrapped_text.h"

namespace halvane::tool {

namespace {

using air::ElementId;
using air::Rule;

std::string ruleText(Rule rule) {
    return std::string(air::ruleInfo(rule).sentence);
}

std::string radioText(const ExplainedBss& bss) {
    return bss.radioName + ": received on " + megahertz(*bss.radioFrequency);
}

// What names the primary channel, for the reasons of band and channel.
std::optional<std::string> channelEvidence(const ExplainedBss& bss, std::string_view word) {
    const auto& primary = bss.profile.channel.primaryChannel;
    if (!primary || primary->sources.empty()) return std::nullopt;
    const air::Source& source = primary->sources[0];
    if (source.origin != air::Origin::Element) return std::nullopt;
    return bss.places.of(source) + ": " + std::string(word) + ' ' + std::to_string(**primary);
}

Parts bandReasons(const ExplainedBss& bss) {
    const auto& band = *bss.profile.channel.band;
    if (band.rule == Rule::Band6GhzInformation) {
        return {part(bss.places.of(band.sources) + ": 6 GHz Operation Information")};
    }
    Parts parts;
    if (band.rule == Rule::BandChannelNumber) {
        constexpr std::string_view kBelow = ", up to 14";
        constexpr std::string_view kAbove = ", above 14";
        const auto evidence = channelEvidence(bss, "channel").value_or(ruleText(band.rule));
        return {part(evidence + std::string(*band == air::Band::Ghz2 ? kBelow : kAbove))};
    }
    if (const auto evidence = channelEvidence(bss, "channel")) parts.push_back(part(*evidence));
    if (bss.radioFrequency) parts.push_back(part(radioText(bss)));
    return parts;
}

void addBand(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const auto& band = bss.profile.channel.band;
    if (!band) return;
    rows.push_back({"Band",
                    {part(std::string(air::bandName(**band)) + " GHz")},
                    bandReasons(bss),
                    Meaning::Header});
}

// HT Operation decides, whatever DS Parameter Set says.
void addLostChannel(Parts& parts, const ExplainedBss& bss) {
    const auto& primary = bss.profile.channel.primaryChannel;
    const auto ds = bss.places.decode<air::DsParameterSet>();
    if (!ds || primary->rule != Rule::PrimaryHt || ds->currentChannel == **primary) return;
    parts.push_back(notTaken(bss.places.of(ElementId::DsParameterSet) + ", channel " +
                             std::to_string(ds->currentChannel)));
}

void addChannel(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const air::ChannelUse& channel = bss.profile.channel;
    if (!channel.primaryChannel) return;
    Parts value = {part(std::to_string(**channel.primaryChannel))};
    if (channel.primaryFrequency)
        value.push_back(part(megahertz(*channel.primaryFrequency), kCommaJoiner));
    Parts because;
    const bool isByRadio = channel.primaryChannel->rule == Rule::PrimaryRadio;
    if (isByRadio) because.push_back(part("no element names it"));
    if (const auto evidence = channelEvidence(bss, "primary")) because.push_back(part(*evidence));
    const bool isRadioTold = channel.band && channel.band->rule == Rule::BandRadio;
    if (bss.radioFrequency && (isByRadio || !isRadioTold)) because.push_back(part(radioText(bss)));
    addLostChannel(because, bss);
    rows.push_back({"Channel", std::move(value), std::move(because), Meaning::Header});
}

// --- Width ---

std::string_view phyOf(ElementId id) {
    switch (id) {
        case ElementId::EhtOperation:
            return "EHT";
        case ElementId::HeOperation:
            return "HE";
        case ElementId::VhtOperation:
            return "VHT";
        default:
            return "HT";
    }
}

// "160 MHz at 50", "80+80 MHz at 42 and 155", "20 MHz".
std::string spanText(const air::WidthClaim& claim) {
    const std::string center = std::to_string(claim.center1);
    if (claim.center2 != 0) {
        return "80+80 MHz at " + center + " and " + std::to_string(claim.center2);
    }
    return megahertz(claim.width) + (claim.center1 != 0 ? " at " + center : "");
}

// Whether the distance of two centres decided between 160 and 80+80 MHz.
bool isByDistance(const air::WidthClaim& claim) {
    constexpr int kWideVht = 1;  // of VHT Operation; above, the field itself tells
    if (claim.width != 160 || claim.segment0 == 0 || claim.segment1 == 0) return false;
    if (claim.rule == Rule::WidthEht || claim.rule == Rule::WidthVhtDeprecated) return false;
    return claim.rule != Rule::WidthHeVht || claim.field == kWideVht;
}

std::string decisionText(const air::WidthClaim& claim) {
    if (!isByDistance(claim)) return spanText(claim);
    const int distance = std::abs(claim.segment1 - claim.segment0);
    return '|' + std::to_string(claim.segment1) + " - " + std::to_string(claim.segment0) +
           "| = " + std::to_string(distance) + (claim.center2 != 0 ? " > 16: " : ": ") +
           spanText(claim);
}

// The fields of an element stay whole at the end of a line.
TextPart fieldsOf(const std::string& place, const air::WidthClaim& claim) {
    const bool isByHt = claim.rule == Rule::WidthVhtExtendedNss;
    TextPart text = part(place + ':');
    std::string field = "width " + std::to_string(claim.field);
    const auto add = [&](const char* name, int value) {
        if (value == 0) return;
        text.words.push_back(ownText(field + ',', {}));
        field = name + std::to_string(value);
    };
    add("CCFS0 ", claim.segment0);
    add("CCFS1 ", isByHt ? 0 : claim.segment1);
    text.words.push_back(ownText(field, {}));
    return text;
}

void addDecision(Parts& parts, const ExplainedBss& bss, const air::WidthClaim& claim) {
    const std::string place = bss.places.of(claim.source);
    if (claim.rule == Rule::WidthHt) {
        const auto& primary = bss.profile.channel.primaryChannel;
        const bool isAbove = primary && claim.center1 > **primary;
        parts.push_back(part(place + ": secondary channel " + (isAbove ? "above" : "below")));
    } else {
        parts.push_back(fieldsOf(place, claim));
    }
    if (claim.rule == Rule::WidthVhtExtendedNss) {
        parts.push_back(part(bss.places.of(ElementId::HtOperation) + ": CCFS2 " +
                             std::to_string(claim.segment1)));
    }
    parts.push_back(part(decisionText(claim)));
}

// An element that tells no width, or that older elements decided against.
std::string silenceText(const ExplainedBss& bss, const air::WidthClaim& claim,
                        const std::string& decider) {
    const std::string place = bss.places.of(claim.source);
    const bool isEht = claim.source.id == ElementId::EhtOperation;
    const auto eht = isEht ? bss.places.decode<air::EhtOperation>() : std::nullopt;
    if (eht && !eht->information) return place + " has no operation information" + decider;
    if (claim.source.id == ElementId::HtOperation) return place + ": no secondary channel";
    return place + ": width " + std::to_string(claim.field) + decider;
}

Parts widthReasons(const ExplainedBss& bss, const air::WidthClaims& claims) {
    Parts parts;
    const auto decides = [](const air::WidthClaim& claim) {
        return claim.width != 0 && !claim.isPassedOver;
    };
    const auto* const decider = std::find_if(claims.begin(), claims.end(), decides);
    const bool isDecided = decider != claims.end();
    if (isDecided) addDecision(parts, bss, *decider);
    const std::string told =
        isDecided ? ": " + std::string(phyOf(decider->source.id)) + " decides" : "";
    for (const air::WidthClaim& claim : claims) {
        if (&claim == decider) continue;
        const bool isLater = &claim > decider;
        if (claim.isPassedOver || (isDecided && isLater)) {
            const bool isSame = isDecided && claim.width == decider->width &&
                                claim.center1 == decider->center1 &&
                                claim.center2 == decider->center2;
            if (isSame || (claim.isPassedOver && claim.width == 0)) continue;
            parts.push_back(notTaken(bss.places.of(claim.source) + ", " +
                                     megahertz(claim.width == 0 ? 20 : claim.width)));
        } else {
            parts.push_back(part(silenceText(bss, claim, told)));
        }
    }
    if (parts.empty()) parts.push_back(part("no operation element tells more"));
    return parts;
}

// "5170 to 5330".
std::string rangeText(int center, int width) {
    return std::to_string(center - width / 2) + " to " + std::to_string(center + width / 2);
}

Parts widthValue(const air::ChannelSpan& span) {
    if (!span.center1) return {part(megahertz(span.width))};
    if (span.center2) {
        constexpr int kSegment = 80;
        return {part("80+80 MHz"), part(rangeText(*span.center1, kSegment), kCommaJoiner),
                part(rangeText(*span.center2, kSegment), kCommaJoiner),
                part("centres " + std::to_string(*span.center1) + " and " +
                         std::to_string(*span.center2),
                     kCommaJoiner)};
    }
    Parts parts = {part(megahertz(span.width)),
                   part(rangeText(*span.center1, span.width), kCommaJoiner)};
    if (span.width > 20)
        parts.push_back(part("centre " + std::to_string(*span.center1), kCommaJoiner));
    return parts;
}

// Below 80 MHz nothing can be punctured.
void addPunctured(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const air::ChannelUse& channel = bss.profile.channel;
    if (channel.span->width < 80 || !channel.span.isTold()) return;
    if (!channel.punctured) {
        if (bss.places.find(ElementId::EhtOperation) != nullptr) return;
        rows.push_back({"Punctured", {part("no")}, {part("no EHT Operation")}});
        return;
    }
    std::vector<int> indexes;
    for (int i = 0; i < 16; ++i) {
        if (**channel.punctured >> i & 1) indexes.push_back(i);
    }
    const std::string value =
        indexes.empty()
            ? "no"
            : "20 MHz number " + listed(indexes, [](int index) { return std::to_string(index); });
    rows.push_back({"Punctured",
                    {part(value)},
                    {part(bss.places.of(channel.punctured->sources) + ": disabled subchannels " +
                          hexText(**channel.punctured))}});
}

void addWidth(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    const air::ChannelUse& channel = bss.profile.channel;
    if (!channel.span.isTold()) {
        rows.push_back({"Width", {part("not told")}, {part(kFrameCut)}, Meaning::Header, true});
        return;
    }
    air::WidthClaims claims;
    if (channel.band) claims = air::widthClaimsOf(bss.elements, **channel.band);
    rows.push_back(
        {"Width", widthValue(*channel.span), widthReasons(bss, claims), Meaning::Header, true});
}

}  // namespace

void addChannelRows(std::vector<ReasonRow>& rows, const ExplainedBss& bss) {
    addBand(rows, bss);
    addChannel(rows, bss);
    addWidth(rows, bss);
    addPunctured(rows, bss);
}

}  // namespace halvane::tool
