#include "halvane/air/channel_use.h"

#include <cstddef>
#include <cstdlib>
#include <span>

#include "halvane/air/bit_octets.h"
#include "halvane/air/channel_use_internal.h"
#include "halvane/air/element_id.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/secondary_channel_offset.h"
#include "halvane/air/source.h"
#include "halvane/air/width_claim.h"

namespace halvane::air {

namespace {

// --- Band and primary channel ---

constexpr int kLastChannelAt2Ghz = 14;

// A number of 0 names no channel.
std::optional<int> numberOf(int number) {
    return number == 0 ? std::nullopt : std::optional(number);
}

std::optional<int> htChannel(const OperationElements& operation) {
    return operation.ht ? numberOf(operation.ht->primaryChannel) : std::nullopt;
}

std::optional<int> dsChannel(const OperationElements& operation) {
    return operation.ds ? numberOf(operation.ds->currentChannel) : std::nullopt;
}

std::optional<Derived<Band>> bandOf(const ElementIndex& index, const OperationElements& operation,
                                    std::optional<int> radioFrequency) {
    if (operation.he && operation.he->sixGhz) {
        return Derived<Band>{
            Band::Ghz6, Rule::Band6GhzInformation, {index.sourceOf(ElementId::HeOperation)}};
    }
    if (radioFrequency) {
        if (const auto band = bandOfFrequency(*radioFrequency)) {
            return Derived<Band>{*band, Rule::BandRadio, {{Origin::Radio}}};
        }
    }
    const auto fromNumber = [&](std::optional<int> number, ElementId id) {
        const Band band = *number <= kLastChannelAt2Ghz ? Band::Ghz2 : Band::Ghz5;
        return Derived<Band>{band, Rule::BandChannelNumber, {index.sourceOf(id)}};
    };
    if (const auto number = htChannel(operation)) {
        return fromNumber(number, ElementId::HtOperation);
    }
    if (const auto number = dsChannel(operation)) {
        return fromNumber(number, ElementId::DsParameterSet);
    }
    return std::nullopt;
}

// A network of 2.4 GHz is heard on neighbouring channels, so elements come before the radio.
std::optional<Derived<int>> primaryOf(const ElementIndex& index, const OperationElements& operation,
                                      Band band, std::optional<int> radioFrequency) {
    if (operation.he && operation.he->sixGhz) {
        return Derived<int>{operation.he->sixGhz->primaryChannel,
                            Rule::Primary6GhzInformation,
                            {index.sourceOf(ElementId::HeOperation)}};
    }
    const auto isInBand = [band](int number) {
        return centerFrequencyOf(band, number).has_value();
    };
    if (const auto number = htChannel(operation); number && isInBand(*number)) {
        return Derived<int>{*number, Rule::PrimaryHt, {index.sourceOf(ElementId::HtOperation)}};
    }
    if (const auto number = dsChannel(operation); number && isInBand(*number)) {
        return Derived<int>{*number, Rule::PrimaryDs, {index.sourceOf(ElementId::DsParameterSet)}};
    }
    if (!radioFrequency) return std::nullopt;
    const auto number = channelNumberOf(band, *radioFrequency);
    if (!number) return std::nullopt;
    return Derived<int>{*number, Rule::PrimaryRadio, {{Origin::Radio}}};
}

// --- Width ---

// What the elements of a generation say, in numbers of the band's channels.
struct ToldWidth {
    int width = 20;
    int center1 = 0;  // 0: 20 MHz at the primary channel
    int center2 = 0;
    Rule rule = Rule::WidthDefault;
};

// Two segments of 80 MHz: side by side they are 160 MHz, apart 80+80. What lies between is
// reserved. A centre without the other is that of 80 MHz alone.
constexpr int kAdjacent = 8;
constexpr int kApart = 16;

ToldWidth segmentsOf(int center1, int center2, Rule adjacent, Rule apart, Rule alone) {
    const int distance = std::abs(center2 - center1);
    const bool areBoth = center1 != 0 && center2 != 0;
    if (areBoth && distance == kAdjacent) return {160, center2, 0, adjacent};
    if (areBoth && distance > kApart) return {160, center1, center2, apart};
    return {80, center1, 0, alone};
}

std::optional<ToldWidth> toldByHt(const OperationElements& operation) {
    constexpr int kHalf = 2;  // channel numbers from the primary's centre to that of 40 MHz
    if (!operation.ht) return std::nullopt;
    const int primary = operation.ht->primaryChannel;
    switch (operation.ht->secondaryChannel()) {
        case SecondaryChannel::Above:
            return ToldWidth{40, primary + kHalf, 0, Rule::WidthHt};
        case SecondaryChannel::Below:
            return ToldWidth{40, primary - kHalf, 0, Rule::WidthHt};
        case SecondaryChannel::None:
        case SecondaryChannel::Reserved:
            break;
    }
    return std::nullopt;
}

// Tables 11-23 and 11-24. `center2` may come from HT Operation.
std::optional<ToldWidth> toldByVht(const VhtOperationInformation& information, int htCenter2) {
    const int center1 = information.centerSegment0;
    const int center2 = information.centerSegment1;
    switch (information.channelWidth) {
        case 1:
            if (center2 == 0 && htCenter2 != 0) {
                return segmentsOf(center1, htCenter2, Rule::WidthVhtExtendedNss,
                                  Rule::WidthVhtExtendedNss, Rule::WidthVht80);
            }
            return segmentsOf(center1, center2, Rule::WidthVht160, Rule::WidthVht80Plus80,
                              Rule::WidthVht80);
        case 2:
            return ToldWidth{160, center1, 0, Rule::WidthVhtDeprecated};
        case 3:
            if (center1 == 0 || center2 == 0) {
                return ToldWidth{80, center1, 0, Rule::WidthVhtDeprecated};
            }
            return ToldWidth{160, center1, center2, Rule::WidthVhtDeprecated};
        default:
            return std::nullopt;  // 0: HT decides; from 4 on reserved
    }
}

std::optional<ToldWidth> toldByVht(const OperationElements& operation) {
    if (!operation.vht) return std::nullopt;
    const int htCenter2 = operation.ht ? operation.ht->centerSegment2().value_or(0) : 0;
    return toldByVht(operation.vht->information, htCenter2);
}

std::optional<ToldWidth> toldBy6Ghz(const SixGhzOperationInformation& information) {
    using Width = SixGhzOperationInformation::ChannelWidth;
    const int center1 = information.centerSegment0;
    const int center2 = information.centerSegment1;
    switch (information.channelWidth()) {
        case Width::Mhz20:
            return ToldWidth{20, 0, 0, Rule::WidthHe6Ghz};
        case Width::Mhz40:
            return ToldWidth{40, center1, 0, Rule::WidthHe6Ghz};
        case Width::Mhz80:
            return ToldWidth{80, center1, 0, Rule::WidthHe6Ghz};
        case Width::Mhz160Or80Plus80:
            break;
    }
    return segmentsOf(center1, center2, Rule::WidthHe6Ghz, Rule::WidthHe6Ghz, Rule::WidthHe6Ghz);
}

std::optional<ToldWidth> toldByHe(const OperationElements& operation) {
    if (!operation.he) return std::nullopt;
    if (operation.he->sixGhz) return toldBy6Ghz(*operation.he->sixGhz);
    if (!operation.he->vht) return std::nullopt;
    auto told = toldByVht(*operation.he->vht, 0);
    if (told) told->rule = Rule::WidthHeVht;
    return told;
}

std::optional<ToldWidth> toldByEht(const OperationElements& operation) {
    using Width = EhtOperationInformation::ChannelWidth;
    if (!operation.eht || !operation.eht->information) return std::nullopt;
    const auto& information = *operation.eht->information;
    switch (information.channelWidth()) {
        case Width::Mhz20:
            return ToldWidth{20, 0, 0, Rule::WidthEht};
        case Width::Mhz40:
            return ToldWidth{40, information.centerSegment0, 0, Rule::WidthEht};
        case Width::Mhz80:
            return ToldWidth{80, information.centerSegment0, 0, Rule::WidthEht};
        case Width::Mhz160:
            return ToldWidth{160, information.centerSegment1, 0, Rule::WidthEht};
        case Width::Mhz320:
            return ToldWidth{320, information.centerSegment1, 0, Rule::WidthEht};
        case Width::Reserved:
            break;
    }
    return std::nullopt;
}

struct WidthSource {
    std::optional<ToldWidth> told;
    ElementId id;
};

// The latest generation that tells a width decides. VHT elements at 2.4 GHz are a habit of vendors
// and say nothing about the width.
WidthSource toldWidthOf(const OperationElements& operation, Band band) {
    if (const auto told = toldByEht(operation)) return {told, ElementId::EhtOperation};
    if (const auto told = toldByHe(operation)) return {told, ElementId::HeOperation};
    if (band == Band::Ghz5) {
        if (const auto told = toldByVht(operation)) return {told, ElementId::VhtOperation};
    }
    if (const auto told = toldByHt(operation)) return {told, ElementId::HtOperation};
    return {std::nullopt, ElementId::HtOperation};
}

// The centre of a channel that is wider than 20 MHz lies between the numbers of 20 MHz channels.
std::optional<int> frequencyOfCenter(Band band, int number) {
    if (number <= 0) return std::nullopt;
    const int start = band == Band::Ghz2 ? 2407 : band == Band::Ghz6 ? 5950 : 5000;
    return start + 5 * number;
}

Derived<ChannelSpan> spanOf(const ElementIndex& index, const OperationElements& operation,
                            const ChannelUse& use) {
    Derived<ChannelSpan> span{{20, use.primaryFrequency, std::nullopt}, Rule::WidthDefault, {}};
    if (!use.band) return span;
    const auto [told, id] = toldWidthOf(operation, **use.band);
    if (!told) return span;
    span.rule = told->rule;
    span.sources.push_back(index.sourceOf(id));
    if (told->rule == Rule::WidthVhtExtendedNss) {
        span.sources.push_back(index.sourceOf(ElementId::HtOperation));
    }
    span.value.width = told->width;
    if (told->width == 20) return span;
    span.value.center1 = frequencyOfCenter(**use.band, told->center1);
    span.value.center2 = frequencyOfCenter(**use.band, told->center2);
    return span;
}

// The bits past the channel are reserved. They have no place in a channel that other elements tell.
std::optional<Derived<std::uint16_t>> puncturedOf(const ElementIndex& index,
                                                  const OperationElements& operation,
                                                  const Derived<ChannelSpan>& span) {
    if (span.rule != Rule::WidthEht || !operation.eht->information->disabledSubchannels) {
        return std::nullopt;
    }
    const auto count = static_cast<std::size_t>(span->width / 20);
    const auto bits = operation.eht->information->disabledSubchannels->bits(0, count);
    return Derived<std::uint16_t>{static_cast<std::uint16_t>(bits),
                                  Rule::PuncturingEht,
                                  {index.sourceOf(ElementId::EhtOperation)}};
}

// --- Claims ---

// The claim of an element whose centres are `segment0` and `segment1`.
WidthClaim claimOf(const Source& source, int field, int segment0, int segment1,
                   const std::optional<ToldWidth>& told) {
    WidthClaim claim{.source = source, .field = field, .segment0 = segment0, .segment1 = segment1};
    if (!told) return claim;
    claim.rule = told->rule;
    claim.width = told->width;
    if (told->width == 20) return claim;
    claim.center1 = told->center1;
    claim.center2 = told->center2;
    return claim;
}

WidthClaim ehtClaim(const Source& source, const OperationElements& operation) {
    const auto& information = operation.eht->information;
    if (!information) return {.source = source};
    return claimOf(source, static_cast<int>(information->channelWidth()),
                   information->centerSegment0, information->centerSegment1, toldByEht(operation));
}

// REQUIRES: HE Operation holds the channel.
WidthClaim heClaim(const Source& source, const OperationElements& operation) {
    const auto told = toldByHe(operation);
    if (const auto& sixGhz = operation.he->sixGhz) {
        return claimOf(source, static_cast<int>(sixGhz->channelWidth()), sixGhz->centerSegment0,
                       sixGhz->centerSegment1, told);
    }
    const auto& vht = *operation.he->vht;
    return claimOf(source, vht.channelWidth, vht.centerSegment0, vht.centerSegment1, told);
}

WidthClaim vhtClaim(const Source& source, const OperationElements& operation, Band band) {
    const auto& information = operation.vht->information;
    const auto told = toldByVht(operation);
    const bool isByHt = told && told->rule == Rule::WidthVhtExtendedNss;
    const int segment1 = isByHt ? operation.ht->centerSegment2().value_or(0)
                                : static_cast<int>(information.centerSegment1);
    WidthClaim claim =
        claimOf(source, information.channelWidth, information.centerSegment0, segment1, told);
    claim.isPassedOver = band != Band::Ghz5;
    return claim;
}

std::optional<int> widthIn(const std::optional<ToldWidth>& told) {
    return told ? std::optional(told->width) : std::nullopt;
}

}  // namespace

ChannelUse channelUseOf(const ElementIndex& index, const OperationElements& operation,
                        std::optional<int> radioFrequency) {
    ChannelUse use;
    use.band = bandOf(index, operation, radioFrequency);
    if (use.band) {
        use.primaryChannel = primaryOf(index, operation, **use.band, radioFrequency);
    }
    if (use.primaryChannel) {
        use.primaryFrequency = centerFrequencyOf(**use.band, **use.primaryChannel);
    }
    use.span = spanOf(index, operation, use);
    use.punctured = puncturedOf(index, operation, use.span);
    return use;
}

WidthClaims widthClaimsOf(const ElementIndex& index, const OperationElements& operation,
                          Band band) {
    WidthClaims claims;
    if (operation.eht) {
        claims.push_back(ehtClaim(index.sourceOf(ElementId::EhtOperation), operation));
    }
    if (operation.he && (operation.he->sixGhz || operation.he->vht)) {
        claims.push_back(heClaim(index.sourceOf(ElementId::HeOperation), operation));
    }
    if (operation.vht) {
        claims.push_back(vhtClaim(index.sourceOf(ElementId::VhtOperation), operation, band));
    }
    if (operation.ht) {
        claims.push_back(claimOf(index.sourceOf(ElementId::HtOperation),
                                 static_cast<int>(operation.ht->secondaryChannel()), 0, 0,
                                 toldByHt(operation)));
    }
    return claims;
}

WidthClaims widthClaimsOf(Octets octets, Band band) {
    const auto elements = elementsIn(octets);
    const ElementIndex index(elements);
    return widthClaimsOf(index, OperationElements(index), band);
}

std::optional<int> htWidthOf(const OperationElements& operation) {
    if (!operation.ht) return std::nullopt;
    return widthIn(toldByHt(operation)).value_or(20);
}

std::optional<int> vhtWidthOf(const OperationElements& operation) {
    return widthIn(toldByVht(operation));
}

std::optional<int> heWidthOf(const OperationElements& operation) {
    return widthIn(toldByHe(operation));
}

std::optional<int> ehtWidthOf(const OperationElements& operation) {
    return widthIn(toldByEht(operation));
}

}  // namespace halvane::air
