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
    {Kind::WepOnly, Severity::Error, "wep", "WEP: anybody reads along after minutes of listening.",
     "Switch on WPA3 or WPA2 with CCMP.", "12.3.1"},
    {Kind::WpaOnly, Severity::Error, "wpa-only", "WPA without WPA2: deprecated since 2012.",
     "Switch on WPA2 with CCMP and switch TKIP off.", "12.5.2"},
    {Kind::WpaBesideWpa2, Severity::Warning, "wpa-allowed",
     "WPA is still allowed beside the RSN element.", "Switch WPA off.", "WPA 3.1"},
    {Kind::TkipAllowed, Severity::Warning, "tkip-allowed", "TKIP is still allowed.",
     "Allow CCMP alone: a station that takes TKIP gets 54 Mbit/s at most.", "9.4.2.24.2"},
    {Kind::TkipGroup, Severity::Warning, "weak-group-cipher",
     "Broadcasts are protected by TKIP or WEP, for all stations.", "Allow CCMP or GCMP alone.",
     "9.4.2.24.2"},
    {Kind::OpenNetwork, Severity::Warning, "open", "No encryption: everybody near reads along.",
     "Use Enhanced Open (OWE) where no password is wanted.", "9.4.1.4"},
    {Kind::SecurityBroken, Severity::Error, "security-broken",
     "The security element cannot be read: stations cannot tell how to join.",
     "Look at the access point's software.", "9.4.2.24"},
    {Kind::SuiteCountPastEnd, Severity::Error, "suite-count",
     "A count of suites goes past the end of its element.", "Look at the access point's software.",
     "9.4.2.24.1"},
    {Kind::RsnVersion, Severity::Error, "rsn-version",
     "The RSN element has another version than 1: stations ignore it.",
     "Look at the access point's software.", "9.4.2.24.1"},
    {Kind::AkmUnknown, Severity::Note, "akm-unknown",
     "The network offers key management that is not known here.", "", "9.4.2.24.3"},
    {Kind::PrivacyBitDiffers, Severity::Warning, "privacy-bit",
     "The privacy bit and the security elements disagree.", "Look at the access point's software.",
     "9.4.1.4"},
    {Kind::RsnWpaDiffer, Severity::Warning, "rsn-wpa-differ",
     "RSN and WPA offer different key management.", "Switch WPA off, or set both alike.",
     "9.4.2.24.3"},
    {Kind::PmfOff, Severity::Note, "pmf-off",
     "Management frames are not protected: anybody can send stations away.",
     "Set PMF to capable, or to required with WPA3.", "9.4.2.24.4"},
    {Kind::PmfNotRequired, Severity::Warning, "pmf-not-required",
     "Key management of WPA3 alone, and yet PMF is not required.", "Set PMF to required.",
     "WPA3 3.x, 2.2"},
    {Kind::PmfMissingWithSae, Severity::Error, "pmf-missing",
     "Key management of WPA3 without protected management frames: stations do not join by it.",
     "Set PMF to capable (transition) or required.", "12.6.3"},
    {Kind::PmfRequiredNotCapable, Severity::Error, "pmf-invalid",
     "PMF is required but not capable, which the standard forbids.",
     "Look at the access point's software.", "12.6.3"},
    {Kind::SaeWithoutH2e, Severity::Note, "sae-without-h2e",
     "SAE without hash-to-element: the older method leaks timing.",
     "Switch on hash-to-element (sae_pwe 2).", "12.4.4"},
    {Kind::Wpa3Transition, Severity::Note, "wpa3-transition",
     "WPA3 transition: stations may still join by WPA2 with the same password.",
     "Set WPA3 alone when the last old station is gone.", "WPA3 3.x, 2.3"},
    {Kind::Suite192Mixed, Severity::Warning, "192-bit-mixed",
     "The 192-bit mode stands beside weaker key management.",
     "Give the 192-bit mode a network of its own.", "WPA3 3.x, 3.5"},
    {Kind::PersonalAndEnterprise, Severity::Note, "personal-and-enterprise",
     "A password and 802.1X open the same network.", "Give each a network of its own.",
     "9.4.2.24.3"},
    {Kind::OpenWithWps, Severity::Warning, "open-with-wps",
     "WPS on a network without encryption sends its settings in the clear.",
     "Switch WPS off, or encryption on.", "Wi-Fi Simple Configuration 2.0"},
    {Kind::WpsOn, Severity::Warning, "wps-on",
     "WPS is switched on: where it takes a PIN, 8 digits open the network.",
     "Switch WPS off, or at least its PIN.", "Wi-Fi Simple Configuration 2.0"},
    {Kind::WpsUnlockedPin, Severity::Warning, "wps-registrar",
     "A WPS registrar is selected now: a station may join without the password.",
     "Look who pressed the button.", "Wi-Fi Simple Configuration 2.0"},
    {Kind::FtWithoutMobilityDomain, Severity::Warning, "ft-without-domain",
     "Key management for fast transition without a Mobility Domain element.",
     "Switch on 802.11r whole, or not at all.", "13.2.2"},
    {Kind::MobilityDomainWithoutFt, Severity::Note, "domain-without-ft",
     "A Mobility Domain element without key management for fast transition.",
     "Add the FT key management, or switch 802.11r off.", "13.2.2"},
    {Kind::SixGhzSecurity, Severity::Error, "6ghz-security",
     "Security on 6 GHz that the band does not allow.",
     "6 GHz demands WPA3 with hash-to-element, or OWE, and PMF required.", "802.11ax 12.12.2"},
    {Kind::OweTransitionOpen, Severity::Note, "owe-transition",
     "The open half of an Enhanced Open network: old stations stay without encryption.",
     "Set Enhanced Open alone when the last old station is gone.", "OWE 1.1, 2.2"},
    {Kind::RsnOverride, Severity::Note, "rsn-override",
     "An override element hides stronger security from old stations.", "", "WPA3 3.4"},
    // Channel
    {Kind::HtVhtWidthDiffer, Severity::Note, "ht-vht-width",
     "HT Operation says 20 MHz, VHT Operation 80 MHz or more.",
     "Look at the access point's software.", "11.38.1"},
    {Kind::DsHtChannelDiffer, Severity::Warning, "ds-ht-channel",
     "DS Parameter Set and HT Operation name different channels.",
     "Look at the access point's software.", "9.4.2.56"},
    {Kind::ChannelFarFromRadio, Severity::Note, "heard-elsewhere",
     "The radio heard the frame on another channel than the network is on.", "", "9.4.2.4"},
    {Kind::Ht40On24, Severity::Warning, "ht40-on-2.4",
     "40 MHz on 2.4 GHz: two of the three channels that do not overlap.", "Set 20 MHz on 2.4 GHz.",
     "11.15"},
    {Kind::BetweenChannels, Severity::Warning, "between-channels",
     "A 2.4 GHz channel between 1, 6 and 11 disturbs two of them.", "Take 1, 6 or 11.", "Annex E"},
    {Kind::VhtOn24, Severity::Note, "vht-on-2.4",
     "VHT elements on 2.4 GHz: a habit of vendors that the standard does not have.", "", "21.1"},
    {Kind::VhtCentersInvalid, Severity::Warning, "vht-centers",
     "The centre frequencies of VHT Operation make no channel.",
     "Look at the access point's software.", "9.4.2.158"},
    {Kind::CenterWithoutPrimary, Severity::Warning, "center-without-primary",
     "The told centre frequency does not contain the primary channel.",
     "Look at the access point's software.", "11.38.1"},
    {Kind::EhtHeWidthDiffer, Severity::Note, "eht-he-width",
     "EHT and HE Operation tell different widths: older stations use less.", "",
     "802.11be 35.15.1"},
    {Kind::SixGhzInformationMissing, Severity::Warning, "6ghz-information",
     "A network on 6 GHz without 6 GHz Operation Information.",
     "Look at the access point's software.", "802.11ax 26.17.2"},
    {Kind::PuncturedPrimary, Severity::Error, "punctured-primary",
     "The primary channel itself is punctured.", "Look at the access point's software.",
     "802.11be 35.15.2"},
    {Kind::PuncturingInvalid, Severity::Warning, "puncturing",
     "A pattern of punctured channels that the standard does not have.",
     "Look at the access point's software.", "802.11be 36.3.12.11"},
    {Kind::OperationWithoutCapabilities, Severity::Note, "operation-without-capabilities",
     "An operation element without the capabilities of its generation.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::CapabilitiesWithoutOperation, Severity::Note, "capabilities-without-operation",
     "Capabilities of a generation without its operation element.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::ChannelSwitch, Severity::Note, "channel-switch",
     "The network is about to change its channel.", "", "11.8.8"},
    {Kind::SignalImplausible, Severity::Note, "signal-implausible",
     "The radio tells a signal above 0 dBm, which nobody receives.",
     "Do not believe the signal: look at the radio's driver.", "radiotap, Antenna signal"},
    // Air time and rates
    {Kind::SlowBasicRates, Severity::Note, "slow-basic-rates",
     "Basic rates of 1 or 2 Mbit/s: each beacon takes up to 3 ms of air.",
     "Take 12 Mbit/s as the lowest basic rate.", "9.4.2.3"},
    {Kind::NoBasicRates, Severity::Note, "no-basic-rates",
     "No rate is basic: stations cannot tell what all must support.",
     "Look at the access point's software.", "9.4.2.3"},
    {Kind::LoadHigh, Severity::Warning, "load-high",
     "The access point tells a channel load above 60 %.", "Move the channel or the stations.",
     "9.4.2.27"},
    {Kind::ManyNames, Severity::Note, "many-names",
     "Four names or more on one radio: beacons alone take air from all.",
     "Take fewer names; VLANs by user do the same.", "9.4.2.2"},
    {Kind::ShortBeaconInterval, Severity::Note, "short-beacon-interval",
     "Beacons more often than every 50 TU take air from all.", "Set 100 TU.", "9.4.1.3"},
    {Kind::LongBeaconInterval, Severity::Note, "long-beacon-interval",
     "Beacons more rarely than every 500 TU: stations lose the network.", "Set 100 TU.", "9.4.1.3"},
    // Names
    {Kind::SsidMissing, Severity::Warning, "ssid-missing", "There is no SSID element.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::SsidTooLong, Severity::Error, "ssid-too-long", "The SSID has more than 32 octets.",
     "Look at who sends this.", "9.4.2.2"},
    {Kind::HiddenName, Severity::Note, "hidden-name",
     "A hidden name protects nothing: stations call it out instead.", "Show the name.", "9.4.2.2"},
    {Kind::ProfileSsidMissing, Severity::Warning, "profile-ssid-missing",
     "A profile of Multiple BSSID has no SSID.", "Look at the access point's software.",
     "9.4.2.45"},
    // Country
    {Kind::CountryInvalid, Severity::Warning, "country-invalid",
     "The country is no country code of two letters.",
     "Set the country: channels and power depend on it.", "9.4.2.8"},
    {Kind::CountryMissingOnDfs, Severity::Note, "country-missing",
     "No country on a channel with radar detection.",
     "Set the country: channels and power depend on it.", "9.3.3.2"},
    {Kind::CountryDiffers, Severity::Note, "country-differs",
     "The country differs from that of most networks here.",
     "Set the country: channels and power depend on it.", "9.4.2.8"},
    // Multiple BSSs and links
    {Kind::MldSecurityDiffers, Severity::Error, "mld-security",
     "The links of a multi-link device differ in security.", "Look at the access point's software.",
     "802.11be 12.6.2"},
    {Kind::MldAddressIsBssid, Severity::Note, "mld-address",
     "The address of the multi-link device is that of a link.", "", "802.11be 35.3.3"},
    {Kind::ProfileIndexInvalid, Severity::Warning, "profile-index",
     "Multiple BSSID has a size out of range, or an index that is missing, taken or out of range.",
     "Look at the access point's software.", "9.4.2.73"},
    {Kind::ColorDisabled, Severity::Note, "color-disabled",
     "The BSS colour is switched off: spatial reuse does not work.", "", "802.11ax 26.17.3"},
    // Form
    {Kind::FrameCut, Severity::Warning, "frame-cut",
     "A frame was cut: it ended inside an element, or the capture kept only its start.",
     "Capture whole frames (snapshot length), or look at the radio.", "9.4.2.1"},
    {Kind::ElementTooShort, Severity::Warning, "element-too-short",
     "The fields of an element go past its end.", "Look at the access point's software.",
     "9.4.2.1"},
    {Kind::ElementDuplicated, Severity::Note, "element-duplicated",
     "An element that may stand once stands more often: the first counts.",
     "Look at the access point's software.", "9.3.3.2"},
    {Kind::ElementOrder, Severity::Note, "element-order",
     "Elements stand in another order than the standard's.", "", "9.3.3.2"},
    {Kind::ExtensionMissing, Severity::Note, "extension-missing",
     "An extended element without its extension.", "Look at the access point's software.",
     "9.4.2.1"},
    {Kind::FragmentAlone, Severity::Note, "fragment-alone",
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

constexpr std::array<std::string_view, 3> kSeverityNames = {"note", "warning", "error"};

}  // namespace

std::string_view severityName(Severity severity) {
    return kSeverityNames[static_cast<std::size_t>(severity)];
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
