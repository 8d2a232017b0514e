#include "halvane/air/finding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace halvane::air {

namespace {

using Kind = FindingKind;

constexpr FindingInfo kFindings[] = {
    // Security
    {Kind::WepOnly, "wep", Severity::Error, "WEP: anybody reads along after minutes of listening.",
     "Switch on WPA3 or WPA2 with CCMP.", "12.3.1"},
    {Kind::WpaOnly, "wpa-only", Severity::Error, "WPA without WPA2: deprecated since 2012.",
     "Switch on WPA2 with CCMP and switch TKIP off.", "12.5.2"},
    {Kind::WpaBesideWpa2, "wpa-allowed", Severity::Warning,
     "WPA is still allowed beside the RSN element.", "Switch WPA off.", "WPA 3.1"},
    {Kind::TkipAllowed, "tkip-allowed", Severity::Warning, "TKIP is still allowed.",
     "Allow CCMP alone: a station that takes TKIP gets 54 Mbit/s at most.", "9.4.2.24.2"},
    {Kind::TkipGroup, "weak-group-cipher", Severity::Warning,
     "Broadcasts are protected by TKIP or WEP, for all stations.", "Allow CCMP or GCMP alone.",
     "9.4.2.24.2"},
    {Kind::OpenNetwork, "open", Severity::Warning, "No encryption: everybody near reads along.",
     "Use Enhanced Open (OWE) where no password is wanted.", "9.4.1.4"},
    {Kind::SecurityBroken, "security-broken", Severity::Error,
     "The security element cannot be read: stations cannot tell how to join.",
     "Look at the access point's software.", "9.4.2.24"},
    {Kind::SuiteCountPastEnd, "suite-count", Severity::Error,
     "A count of suites goes past the end of its element.", "Look at the access point's software.",
     "9.4.2.24.1"},
    {Kind::RsnVersion, "rsn-version", Severity::Error,
     "The RSN element has another version than 1: stations ignore it.",
     "Look at the access point's software.", "9.4.2.24.1"},
    {Kind::AkmUnknown, "akm-unknown", Severity::Note,
     "The network offers key management that is not known here.", "", "9.4.2.24.3"},
    {Kind::PrivacyBitDiffers, "privacy-bit", Severity::Warning,
     "The privacy bit and the security elements disagree.", "Look at the access point's software.",
     "9.4.1.4"},
    {Kind::RsnWpaDiffer, "rsn-wpa-differ", Severity::Warning,
     "RSN and WPA offer different key management.", "Switch WPA off, or set both alike.",
     "9.4.2.24.3"},
    {Kind::PmfOff, "pmf-off", Severity::Note,
     "Management frames are not protected: anybody can send stations away.",
     "Set PMF to capable, or to required with WPA3.", "9.4.2.24.4"},
    {Kind::PmfNotRequired, "pmf-not-required", Severity::Warning,
     "Key management of WPA3 alone, and yet PMF is not required.", "Set PMF to required.",
     "WPA3 3.x, 2.2"},
    {Kind::PmfMissingWithSae, "pmf-missing", Severity::Error,
     "Key management of WPA3 without protected management frames: stations do not join by it.",
     "Set PMF to capable (transition) or required.", "12.6.3"},
    {Kind::PmfRequiredNotCapable, "pmf-invalid", Severity::Error,
     "PMF is required but not capable, which the standard forbids.",
     "Look at the access point's software.", "12.6.3"},
    {Kind::SaeWithoutH2e, "sae-without-h2e", Severity::Note,
     "SAE without hash-to-element: the older method leaks timing.",
     "Switch on hash-to-element (sae_pwe 2).", "12.4.4"},
    {Kind::Wpa3Transition, "wpa3-transition", Severity::Note,
     "WPA3 transition: stations may still join by WPA2 with the same password.",
     "Set WPA3 alone when the last old station is gone.", "WPA3 3.x, 2.3"},
    {Kind::Suite192Mixed, "192-bit-mixed", Severity::Warning,
     "The 192-bit mode stands beside weaker key management.",
     "Give the 192-bit mode a network of its own.", "WPA3 3.x, 3.5"},
    {Kind::PersonalAndEnterprise, "personal-and-enterprise", Severity::Note,
     "A password and 802.1X open the same network.", "Give each a network of its own.",
     "9.4.2.24.3"},
    {Kind::OpenWithWps, "open-with-wps", Severity::Warning,
     "WPS on a network without encryption sends its settings in the clear.",
     "Switch WPS off, or encryption on.", "Wi-Fi Simple Configuration 2.0"},
    {Kind::WpsOn, "wps-on", Severity::Warning,
     "WPS is switched on: where it takes a PIN, 8 digits open the network.",
     "Switch WPS off, or at least its PIN.", "Wi-Fi Simple Configuration 2.0"},
    {Kind::WpsUnlockedPin, "wps-registrar", Severity::Warning,
     "A WPS registrar is selected now: a station may join without the password.",
     "Look who pressed the button.", "Wi-Fi Simple Configuration 2.0"},
    {Kind::FtWithoutMobilityDomain, "ft-without-domain", Severity::Warning,
     "Key management for fast transition without a Mobility Domain element.",
     "Switch on 802.11r whole, or not at all.", "13.2.2"},
    {Kind::MobilityDomainWithoutFt, "domain-without-ft", Severity::Note,
     "A Mobility Domain element without key management for fast transition.",
     "Add the FT key management, or switch 802.11r off.", "13.2.2"},
    {Kind::SixGhzSecurity, "6ghz-security", Severity::Error,
     "Security on 6 GHz that the band does not allow.",
     "6 GHz demands WPA3 with hash-to-element, or OWE, and PMF required.", "12.12.2"},
    {Kind::OweTransitionOpen, "owe-transition", Severity::Note,
     "The open half of an Enhanced Open network: old stations stay without encryption.",
     "Set Enhanced Open alone when the last old station is gone.", "OWE 1.1, 2.2"},
    {Kind::RsnOverride, "rsn-override", Severity::Note,
     "An override element hides stronger security from old stations.", "", "WPA3 3.4"},
    // Channel
    {Kind::HtVhtWidthDiffer, "ht-vht-width", Severity::Note,
     "HT Operation says 20 MHz, VHT Operation 80 MHz or more.",
     "Look at the access point's software.", "11.38.1"},
    {Kind::DsHtChannelDiffer, "ds-ht-channel", Severity::Warning,
     "DS Parameter Set and HT Operation name different channels.",
     "Look at the access point's software.", "9.4.2.56"},
    {Kind::ChannelFarFromRadio, "heard-elsewhere", Severity::Note,
     "The radio heard the frame on another channel than the network is on.", "", "9.4.2.4"},
    {Kind::Ht40On24, "ht40-on-2.4", Severity::Warning,
     "40 MHz on 2.4 GHz: two of the three channels that do not overlap.", "Set 20 MHz on 2.4 GHz.",
     "11.15"},
    {Kind::BetweenChannels, "between-channels", Severity::Warning,
     "A 2.4 GHz channel between 1, 6 and 11 disturbs two of them.", "Take 1, 6 or 11.", "Annex E"},
    {Kind::VhtOn24, "vht-on-2.4", Severity::Note,
     "VHT elements on 2.4 GHz: a habit of vendors that the standard does not have.", "", "21.1"},
    {Kind::VhtCentersInvalid, "vht-centers", Severity::Warning,
     "The centre frequencies of VHT Operation make no channel.",
     "Look at the access point's software.", "9.4.2.158"},
    {Kind::CenterWithoutPrimary, "center-without-primary", Severity::Warning,
     "The told centre frequency does not contain the primary channel.",
     "Look at the access point's software.", "11.38.1"},
    {Kind::EhtHeWidthDiffer, "eht-he-width", Severity::Note,
     "EHT and HE Operation tell different widths: older stations use less.", "", "35.15.1"},
    {Kind::SixGhzInformationMissing, "6ghz-information", Severity::Warning,
     "A network on 6 GHz without 6 GHz Operation Information.",
     "Look at the access point's software.", "26.17.2"},
    {Kind::PuncturedPrimary, "punctured-primary", Severity::Error,
     "The primary channel itself is punctured.", "Look at the access point's software.", "35.15.2"},
    {Kind::PuncturingInvalid, "puncturing", Severity::Warning,
     "A pattern of punctured channels that the standard does not have.",
     "Look at the access point's software.", "36.3.12.11"},
    {Kind::OperationWithoutCapabilities, "operation-without-capabilities", Severity::Note,
     "An operation element without the capabilities of its generation.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::CapabilitiesWithoutOperation, "capabilities-without-operation", Severity::Note,
     "Capabilities of a generation without its operation element.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::ChannelSwitch, "channel-switch", Severity::Note,
     "The network is about to change its channel.", "", "11.8.8"},
    // Air time and rates
    {Kind::SlowBasicRates, "slow-basic-rates", Severity::Note,
     "Basic rates of 1 or 2 Mbit/s: each beacon takes up to 3 ms of air.",
     "Take 12 Mbit/s as the lowest basic rate.", "9.4.2.3"},
    {Kind::NoBasicRates, "no-basic-rates", Severity::Note,
     "No rate is basic: stations cannot tell what all must support.",
     "Look at the access point's software.", "9.4.2.3"},
    {Kind::LoadHigh, "load-high", Severity::Warning,
     "The access point tells a channel load above 60 %.", "Move the channel or the stations.",
     "9.4.2.27"},
    {Kind::ManyNames, "many-names", Severity::Note,
     "Four names or more on one radio: beacons alone take air from all.",
     "Take fewer names; VLANs by user do the same.", "9.4.2.2"},
    {Kind::ShortBeaconInterval, "short-beacon-interval", Severity::Note,
     "Beacons more often than every 50 TU take air from all.", "Set 100 TU.", "9.4.1.3"},
    {Kind::LongBeaconInterval, "long-beacon-interval", Severity::Note,
     "Beacons more rarely than every 500 TU: stations lose the network.", "Set 100 TU.", "9.4.1.3"},
    // Names
    {Kind::SsidMissing, "ssid-missing", Severity::Warning, "There is no SSID element.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::SsidTooLong, "ssid-too-long", Severity::Error, "The SSID has more than 32 octets.",
     "Look at who sends this.", "9.4.2.2"},
    {Kind::HiddenName, "hidden-name", Severity::Note,
     "A hidden name protects nothing: stations call it out instead.", "Show the name.", "9.4.2.2"},
    {Kind::ProfileSsidMissing, "profile-ssid-missing", Severity::Warning,
     "A profile of Multiple BSSID has no SSID.", "Look at the access point's software.",
     "9.4.2.45"},
    // Country
    {Kind::CountryInvalid, "country-invalid", Severity::Warning,
     "The country is no country code of two letters.",
     "Set the country: channels and power depend on it.", "9.4.2.8"},
    {Kind::CountryMissingOnDfs, "country-missing", Severity::Note,
     "No country on a channel with radar detection.",
     "Set the country: channels and power depend on it.", "11.8.2"},
    // Multiple BSSs and links
    {Kind::MldSecurityDiffers, "mld-security", Severity::Error,
     "The links of a multi-link device differ in security.", "Look at the access point's software.",
     "12.6.2 of 802.11be"},
    {Kind::MldAddressIsBssid, "mld-address", Severity::Note,
     "The address of the multi-link device is that of a link.", "", "35.3.3"},
    {Kind::ProfileIndexInvalid, "profile-index", Severity::Warning,
     "A profile of Multiple BSSID has no index, or one that is taken or out of range.",
     "Look at the access point's software.", "9.4.2.73"},
    {Kind::ColorDisabled, "color-disabled", Severity::Note,
     "The BSS colour is switched off: spatial reuse does not work.", "", "26.17.3"},
    // Form
    {Kind::FrameCut, "frame-cut", Severity::Warning, "A frame ended inside an element.",
     "Capture whole frames (snapshot length), or look at the radio.", "9.4.2.1"},
    {Kind::ElementTooShort, "element-too-short", Severity::Warning,
     "The fields of an element go past its end.", "Look at the access point's software.",
     "9.4.2.1"},
    {Kind::ElementDuplicated, "element-duplicated", Severity::Note,
     "An element that may stand once stands more often: the first counts.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::ElementOrder, "element-order", Severity::Note,
     "Elements stand in another order than the standard's.", "", "9.3.3.2"},
    {Kind::ExtensionMissing, "extension-missing", Severity::Note,
     "An extended element without its extension.", "Look at the access point's software.",
     "9.4.2.1"},
    {Kind::FragmentAlone, "fragment-alone", Severity::Note,
     "A fragment follows no full element: nobody can join it.",
     "Look at the access point's software.", "10.28.11"},
};

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < std::size(kFindings); ++i) {
        if (kFindings[i].kind != static_cast<Kind>(i)) return false;
    }
    return kFindings[std::size(kFindings) - 1].kind == Kind::FragmentAlone;
}
static_assert(isInOrder());

}  // namespace

std::string_view severityName(Severity severity) {
    constexpr std::array<std::string_view, 3> kNames = {"note", "warning", "error"};
    return kNames[static_cast<std::size_t>(severity)];
}

std::span<const FindingInfo> findingInfos() {
    return kFindings;
}

const FindingInfo& findingInfo(FindingKind kind) {
    return kFindings[static_cast<std::size_t>(kind)];
}

const FindingInfo* findingInfo(std::string_view id) {
    const auto* const found = std::ranges::find(kFindings, id, &FindingInfo::id);
    return found == std::end(kFindings) ? nullptr : found;
}

}  // namespace halvane::air
