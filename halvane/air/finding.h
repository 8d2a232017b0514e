// Contradictions and dangers in what a BSS tells about itself.
//
// Constant tables and plain values. Any thread may use them.
#ifndef HALVANE_AIR_FINDING_H
#define HALVANE_AIR_FINDING_H

#include <cstdint>
#include <span>
#include <string_view>

#include "halvane/air/source.h"
#include "halvane/base/export.h"

namespace halvane::air {

// In the order of the table. New ones are added at the end of their group.
enum class FindingKind : std::uint8_t {
    // Security
    WepOnly,
    WpaOnly,
    WpaBesideWpa2,
    TkipAllowed,
    TkipGroup,
    OpenNetwork,
    SecurityBroken,
    SuiteCountPastEnd,
    RsnVersion,
    AkmUnknown,
    PrivacyBitDiffers,
    RsnWpaDiffer,
    PmfOff,
    PmfNotRequired,
    PmfMissingWithSae,
    PmfRequiredNotCapable,
    SaeWithoutH2e,
    Wpa3Transition,
    Suite192Mixed,
    PersonalAndEnterprise,
    OpenWithWps,
    WpsOn,
    WpsUnlockedPin,
    FtWithoutMobilityDomain,
    MobilityDomainWithoutFt,
    SixGhzSecurity,
    OweTransitionOpen,
    RsnOverride,
    // Channel
    HtVhtWidthDiffer,
    DsHtChannelDiffer,
    ChannelFarFromRadio,
    Ht40On24,
    BetweenChannels,
    VhtOn24,
    VhtCentersInvalid,
    CenterWithoutPrimary,
    EhtHeWidthDiffer,
    SixGhzInformationMissing,
    PuncturedPrimary,
    PuncturingInvalid,
    OperationWithoutCapabilities,
    CapabilitiesWithoutOperation,
    ChannelSwitch,
    SignalImplausible,
    // Air time and rates
    SlowBasicRates,
    NoBasicRates,
    LoadHigh,
    ManyNames,
    ShortBeaconInterval,
    LongBeaconInterval,
    // Names
    SsidMissing,
    SsidTooLong,
    HiddenName,
    ProfileSsidMissing,
    // Country
    CountryInvalid,
    CountryMissingOnDfs,
    CountryDiffers,  // of several networks: profileOf() never finds it
    // Multiple BSSs and links
    MldSecurityDiffers,
    MldAddressIsBssid,
    ProfileIndexInvalid,
    ColorDisabled,
    // Form
    FrameCut,
    ElementTooShort,
    ElementDuplicated,
    ElementOrder,
    ExtensionMissing,
    FragmentAlone,
};

// How bad a finding is. An error is against the standard or dangerous.
enum class Severity : std::uint8_t { Note, Warning, Error };

// "note", "warning", "error".
HALVANE_EXPORT std::string_view severityName(Severity severity);

// What is to be said about a kind of finding. Its texts live as long as the program.
struct FindingInfo {
    FindingKind kind;           // of the row
    Severity severity;          // of every finding of the kind
    std::string_view id;        // stable: "tkip-allowed"
    std::string_view sentence;  // tells what is wrong, to people
    std::string_view advice;    // empty where the reader can do nothing
    std::string_view clause;    // of IEEE 802.11-2020, or the document with its clause
};

// All rows, in the order of their kinds.
HALVANE_EXPORT std::span<const FindingInfo> findingInfos();
// The row of a kind.
HALVANE_EXPORT const FindingInfo& findingInfo(FindingKind kind);
// Null for an identifier that there is not.
HALVANE_EXPORT const FindingInfo* findingInfo(std::string_view id);

// A finding of a BSS.
struct Finding {
    FindingKind kind = FindingKind::WepOnly;  // what is wrong
    Sources sources{};                        // the elements that show it

    // The row of its kind.
    const FindingInfo& info() const { return findingInfo(kind); }

    friend bool operator==(const Finding&, const Finding&) = default;
};

}  // namespace halvane::air

#endif
