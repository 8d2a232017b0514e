#include "halvane/base/describe.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/ie/mac.h"
#include "halvane/utils/printf/std_string_internal.h"
#include "halvane/utils/scan_time.h"

namespace halvane {

namespace {

using FancyFormatting::formattedData_includeHex;
using FancyFormatting::formattedHexData;
using FancyFormatting::formattedMAC;

struct CapabilityLine {
    bool (HalvaneMAC::*isSet)() const;
    const char* format;
};

// The lines of the capability field, in the order of its bits.
constexpr CapabilityLine kCapabilityLines[] = {
    {&HalvaneMAC::isESS, "ESS                  : %s\n"},
    {&HalvaneMAC::isIBSS, "IBSS                 : %s\n"},
    {&HalvaneMAC::isCFPollable, "CF Pollable          : %s\n"},
    {&HalvaneMAC::isCFPollRequest, "CF Poll Request      : %s\n"},
    {&HalvaneMAC::isPrivacy, "Privacy              : %s\n"},
    {&HalvaneMAC::isShortPreamble, "Short Preamble       : %s\n"},
    {&HalvaneMAC::isPBCC, "PBCC                 : %s\n"},
    {&HalvaneMAC::isChannelAgility, "Channel Agility      : %s\n"},
    {&HalvaneMAC::isSpectrumManagement, "Spectrum Management  : %s\n"},
    {&HalvaneMAC::isQoS, "QoS                  : %s\n"},
    {&HalvaneMAC::isShortSlotTime, "Short Time Slot      : %s\n"},
    {&HalvaneMAC::isAPSD, "APSD                 : %s\n"},
    {&HalvaneMAC::isDSSSOFDM, "DSS OFDM             : %s\n"},
    {&HalvaneMAC::isDelayedBlockAck, "Delayed Block-Ack    : %s\n"},
    {&HalvaneMAC::isImmediateBlockAck, "Immediate Block-Ack  : %s\n"},
};

// Whole seconds since a time stamp; 0 for a future one (of a record from another boot).
unsigned long long secondsSince(std::uint64_t timestamp) {
    const std::uint64_t now = UpTicksToMicroseconds(UpTicks());
    return now > timestamp ? (now - timestamp) / 1'000'000 : 0;
}

void appendPositive(std::string& text, const char* format, const std::optional<Number>& number) {
    if (number && *number > Number(0)) appendPrintF(text, format, number->description().c_str());
}

template <typename Element>
void appendElement(std::string& text, const char* heading, const std::optional<Element>& element) {
    if (element) appendPrintF(text, "%s\n%s\n\n", heading, element->description().c_str());
}

// Appends the received bytes, whole and split.
void appendElementLines(std::string& text, const HalvaneMAC& record) {
    appendPrintF(text, "IE Buffer            : \n%s\n",
                 formattedHexData(record.ieBuffer()).c_str());
    if (record.invalidIEs()) {
        appendPrintF(text, "Invalid IE Chunk     : \n%s\n",
                     formattedHexData(*record.invalidIEs()).c_str());
    }
    for (const ByteBuffer& element : record.IEs()) {
        appendPrintF(text, "IE                   : %s\n", formattedHexData(element).c_str());
    }
    text += '\n';
}

void appendDecodedElements(std::string& text, const HalvaneMAC& record) {
    if (record.SSID()) {
        appendPrintF(text, "SSID                 : %s\n\n",
                     formattedData_includeHex(*record.SSID(), true).c_str());
    }
    if (record.supportedRates()) {
        text += "Supported Rates      : ";
        for (const Number& rate : *record.supportedRates()) {
            appendPrintF(text, "%s ", rate.description().c_str());
        }
        text += "\n\n";
    }
    appendElement(text, "RSN", record.rsn());
    appendElement(text, "WPA", record.wpa());
    appendElement(text, "Country", record.countryIE());
    appendElement(text, "Tessic General", record.tessicIE());
    appendElement(text, "DWDS", record.dwdsIE());
    appendElement(text, "WPS", record.wpsIE());
    appendElement(text, "HT Capabilities", record.HTCaps());
    appendElement(text, "HT Operation", record.HTOperation());
}

}  // namespace

std::string HalvaneMAC::description() const {
    std::string text;
    appendPrintF(text, "MAC                  : %s\n", formattedMAC(mac()).c_str());
    appendPrintF(text, "Cache Time           : %llu secs\n", secondsSince(firstAdded()));
    appendPrintF(text, "Last Update          : %llu secs\n", secondsSince(lastUpdated()));
    appendPrintF(text, "Channel              : %s (%s MHz wide)\n", describe(channel()).c_str(),
                 describe(channelWidth()).c_str());
    appendPrintF(text, "RSSI                 : %s\n", describe(RSSI()).c_str());
    appendPrintF(text, "Noise                : %s\n", describe(noise()).c_str());
    appendPrintF(text, "Beacon Interval      : %s (ms)\n", describe(beaconInterval()).c_str());
    appendPrintF(text, "Maximum PHY Rate     : %s Mbps\n", describe(maxPHYRate()).c_str());
    appendPositive(text, "Maximum Client Rate  : %s Mbps\n", maxClientRate());
    appendPositive(text, "Average PHY Rate     : %s Mbps\n", averageRate());
    appendPrintF(text, "Security              : %s\n", describe(securityFriendlyName()).c_str());
    for (const auto& [isSet, format] : kCapabilityLines) {
        appendPrintF(text, format, yesNo((this->*isSet)()));
    }
    text += '\n';
    appendElementLines(text, *this);
    appendDecodedElements(text, *this);
    return text;
}

}  // namespace halvane
