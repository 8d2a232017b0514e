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

// Whole seconds since a time stamp; 0 for one that lies ahead (a record from another boot).
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
#define HALVANE_CAPABILITY_LINE(bit, property, label) appendPrintF(text, label, yesNo(property()));
    HALVANE_CAPABILITY_BITS(HALVANE_CAPABILITY_LINE)
#undef HALVANE_CAPABILITY_LINE
    text += '\n';
    appendElementLines(text);
    appendDecodedElements(text);
    return text;
}

// The bytes as they came, whole and cut.
void HalvaneMAC::appendElementLines(std::string& text) const {
    appendPrintF(text, "IE Buffer            : \n%s\n", formattedHexData(ieBuffer()).c_str());
    if (invalidIEs()) {
        appendPrintF(text, "Invalid IE Chunk     : \n%s\n",
                     formattedHexData(*invalidIEs()).c_str());
    }
    for (const ByteBuffer& element : IEs()) {
        appendPrintF(text, "IE                   : %s\n", formattedHexData(element).c_str());
    }
    text += '\n';
}

void HalvaneMAC::appendDecodedElements(std::string& text) const {
    if (SSID()) {
        appendPrintF(text, "SSID                 : %s\n\n",
                     formattedData_includeHex(*SSID(), true).c_str());
    }
    if (supportedRates()) {
        text += "Supported Rates      : ";
        for (const Number& rate : *supportedRates()) {
            appendPrintF(text, "%s ", rate.description().c_str());
        }
        text += "\n\n";
    }
    appendElement(text, "RSN", rsn());
    appendElement(text, "WPA", wpa());
    appendElement(text, "Country", countryIE());
    appendElement(text, "Tessic General", tessicIE());
    appendElement(text, "DWDS", dwdsIE());
    appendElement(text, "WPS", wpsIE());
    appendElement(text, "HT Capabilities", HTCaps());
    appendElement(text, "HT Operation", HTOperation());
}

}  // namespace halvane
