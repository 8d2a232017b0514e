#include "halvane/air/rule.h"

#include <cstddef>
#include <iterator>

namespace halvane::air {

namespace {

constexpr RuleInfo kRules[] = {
    {Rule::None, "Nothing tells it.", ""},
    {Rule::SsidElement, "The first SSID element counts.", "9.4.2.2"},
    {Rule::Band6GhzInformation, "HE Operation holds 6 GHz Operation Information.",
     "802.11ax 26.17.2"},
    {Rule::BandRadio, "The radio received the frame in this band.", ""},
    {Rule::BandChannelNumber,
     "The channel number: up to 14 at 2.4 GHz, above at 5 GHz. No element speaks of 6 GHz.",
     "Annex E"},
    {Rule::Primary6GhzInformation, "The primary channel of 6 GHz Operation Information.",
     "802.11ax 9.4.2.249"},
    {Rule::PrimaryHt, "The primary channel of HT Operation.", "9.4.2.56"},
    {Rule::PrimaryDs, "The current channel of DS Parameter Set.", "9.4.2.4"},
    {Rule::PrimaryRadio, "No element names the channel: it is the radio's.", ""},
    {Rule::WidthDefault, "No operation element tells more than 20 MHz.", "11.15.2"},
    {Rule::WidthHt, "The secondary channel offset of HT Operation.", "11.15.2"},
    {Rule::WidthVht80, "VHT Operation: channel width 1 and no second centre.", "Table 11-23"},
    {Rule::WidthVht160,
     "VHT Operation: the second centre is 8 channel numbers from the first, and is the centre of "
     "160 MHz.",
     "Table 11-23"},
    {Rule::WidthVht80Plus80,
     "VHT Operation: the second centre is more than 16 channel numbers from the first, and is "
     "that of a second segment.",
     "Table 11-23"},
    {Rule::WidthVhtDeprecated, "VHT Operation: the older channel widths 2 (160) and 3 (80+80).",
     "9.4.2.158"},
    {Rule::WidthVhtExtendedNss,
     "VHT Operation has no second centre; that of HT Operation takes its place.", "Table 11-24"},
    {Rule::WidthHeVht, "HE Operation holds VHT Operation Information.", "802.11ax 9.4.2.249"},
    {Rule::WidthHe6Ghz, "The control field and the centres of 6 GHz Operation Information.",
     "802.11ax 9.4.2.249"},
    {Rule::WidthEht, "The control field and the centres of EHT Operation Information.",
     "802.11be 9.4.2.311"},
    {Rule::PuncturingEht, "The disabled subchannel bitmap of EHT Operation.", "802.11be 35.15.2"},
    {Rule::GenerationEht, "EHT Capabilities: Wi-Fi 7.", "802.11be 9.4.2.313"},
    {Rule::GenerationHe, "HE Capabilities without EHT Capabilities: Wi-Fi 6.",
     "802.11ax 9.4.2.248"},
    {Rule::GenerationVht, "VHT Capabilities without HE Capabilities: Wi-Fi 5.", "9.4.2.157"},
    {Rule::GenerationHt, "HT Capabilities without those of later generations: Wi-Fi 4.",
     "9.4.2.55"},
    {Rule::GenerationLegacy, "No capabilities of Wi-Fi 4 or later.", "9.4.2.3"},
    {Rule::RateHt, "The highest MCS that HT Capabilities receives, at the network's width.",
     "19.5"},
    {Rule::RateVht, "The highest MCS that VHT Capabilities receives, at the network's width.",
     "21.5"},
    {Rule::RateHe, "The highest MCS that HE Capabilities receives, at the network's width.",
     "802.11ax 27.5"},
    {Rule::RateEht,
     "The highest MCS that EHT Capabilities receives, at the network's width without puncturing.",
     "802.11be 36.5"},
    {Rule::SecurityRsn, "The key management suites of RSN.", "9.4.2.24.3"},
    {Rule::SecurityRsnOverride, "The key management suites of RSN and of its overrides.",
     "WPA3 3.4"},
    {Rule::SecurityRsnWpa, "The key management suites of RSN and WPA.", "9.4.2.24.3"},
    {Rule::SecurityWpa, "The key management suites of WPA; there is no RSN element.", "WPA 3.1"},
    {Rule::SecurityOsen, "An OSEN element; there is no RSN element.", "Hotspot 2.0 R3"},
    {Rule::SecurityWapi, "A WAPI element; there is no RSN element.", "GB 15629.11"},
    {Rule::SecurityPrivacyBit, "The privacy bit is set, and no element tells of keys: WEP.",
     "9.4.1.4"},
    {Rule::SecurityOweTransition,
     "Neither privacy bit nor RSN; OWE Transition Mode names the encrypted half.", "OWE 1.1"},
    {Rule::SecurityOpen, "Neither the privacy bit nor an element tells of keys.", "9.4.1.4"},
    {Rule::PmfRsn, "Bits 6 and 7 of the RSN capabilities.", "9.4.2.24.4"},
    {Rule::PmfNoRsn, "Without RSN capabilities there is no protection.", "12.6.3"},
    {Rule::CountryElement, "The country string.", "9.4.2.8"},
    {Rule::BssLoadElement, "What the access point counts itself.", "9.4.2.27"},
    {Rule::TimElement, "The DTIM period.", "9.4.2.5"},
    {Rule::MultiLinkElement, "The common information and the profiles of Multi-Link.",
     "802.11be 9.4.2.312"},
    {Rule::ProfileAddress,
     "The transmitted BSSID with its low bits advanced by the index, without a carry.", "9.4.2.45"},
    {Rule::NeighborReport, "The neighbours of Reduced Neighbor Report.", "9.4.2.170"},
    {Rule::FrameCut, "The frame was cut: what tells it may be missing.", ""},
};

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < std::size(kRules); ++i) {
        if (kRules[i].rule != static_cast<Rule>(i)) return false;
    }
    return kRules[std::size(kRules) - 1].rule == Rule::FrameCut;
}
static_assert(isInOrder());

}  // namespace

const RuleInfo& ruleInfo(Rule rule) {
    return kRules[static_cast<std::size_t>(rule)];
}

}  // namespace halvane::air
