// The rules by which a profile is derived from elements, and how a value names its rule.
//
// Constant tables and plain values. Any thread may use them.
#ifndef HALVANE_AIR_RULE_H
#define HALVANE_AIR_RULE_H

#include <cstdint>
#include <string_view>
#include <utility>

#include "halvane/air/source.h"
#include "halvane/base/export.h"

namespace halvane::air {

// In the order of the table.
enum class Rule : std::uint8_t {
    None,  // nothing tells the value
    SsidElement,
    Band6GhzInformation,
    BandRadio,
    BandChannelNumber,
    Primary6GhzInformation,
    PrimaryHt,
    PrimaryDs,
    PrimaryRadio,
    WidthDefault,
    WidthHt,
    WidthVht80,
    WidthVht160,
    WidthVht80Plus80,
    WidthVhtDeprecated,
    WidthVhtExtendedNss,
    WidthHeVht,
    WidthHe6Ghz,
    WidthEht,
    PuncturingEht,
    GenerationEht,
    GenerationHe,
    GenerationVht,
    GenerationHt,
    GenerationLegacy,
    RateHt,
    RateVht,
    RateHe,
    RateEht,
    SecurityRsn,
    SecurityRsnOverride,
    SecurityRsnWpa,
    SecurityWpa,
    SecurityOsen,
    SecurityWapi,
    SecurityPrivacyBit,
    SecurityOweTransition,
    SecurityOpen,
    PmfRsn,
    PmfNoRsn,
    CountryElement,
    BssLoadElement,
    TimElement,
    MultiLinkElement,
    ProfileAddress,
    NeighborReport,
    FrameCut,  // what tells the value may have been cut off; it is what the rest tells
};

// What a rule says. The texts live as long as the program.
struct RuleInfo {
    Rule rule;                  // of the row
    std::string_view sentence;  // for people
    std::string_view clause;    // of the document that has the rule; empty if none does
};
// The row of a rule.
HALVANE_EXPORT const RuleInfo& ruleInfo(Rule rule);

// A value, the rule that gives it, and what it was taken from.
template <typename T>
struct Derived {
    T value{};               // what is derived
    Rule rule = Rule::None;  // Rule::None if nothing tells the value
    Sources sources{};       // the parts of the frame that tell it

    // Whether something tells the value, and nothing that was cut off could tell another one.
    bool isTold() const { return rule != Rule::None && rule != Rule::FrameCut; }

    const T& operator*() const { return value; }
    const T* operator->() const { return &value; }

    friend bool operator==(const Derived&, const Derived&) = default;
};

}  // namespace halvane::air

#endif
