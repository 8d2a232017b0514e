#include "tools/make_samples/scenes.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "tools/make_samples/capture_file.h"
#include "tools/make_samples/elements.h"
#include "tools/make_samples/frames.h"

namespace halvane::samples {

namespace {

constexpr std::uint16_t kOpen = kESS | kShortPreamble | kShortSlotTime;
constexpr std::uint16_t kSecured = kOpen | kPrivacy;

// The elements that every access point at 2.4 GHz sends.
Bytes basics(std::string_view name, std::uint8_t channel) {
    return join({ssid(name), rates(kRates11bg), channelElement(channel)});
}

// The same at 5 GHz, where no DS Parameter Set states the channel.
Bytes basics5GHz(std::string_view name) {
    return join({ssid(name), rates(kRates11a)});
}

// WPA and WPA2 side by side, for old clients.
Bytes mixedSecurity() {
    const Security security{.group = kTKIP, .pairwise = {kCCMP, kTKIP}};
    return join({rsn(security), wpa(security)});
}

Bytes germany2GHz() {
    return country("DE ", {Bytes{1, 13, 20}});
}

Bytes germany5GHz() {
    return country("DE ", {Bytes{36, 4, 23}, Bytes{52, 4, 23}, Bytes{100, 11, 30}});
}

// Vendor-general flags.
constexpr std::uint16_t kWoW = 0x0001, kInterferenceRobustness = 0x0100, kWPSCapable = 0x2000;

// Vendor-general product identifiers: the first and the last that have a name.
constexpr std::uint8_t kFirstProduct = 3, kLastProduct = 117;

// WPS attribute types and values.
constexpr std::uint16_t kVersion = 0x104A, kSetupState = 0x1044, kDeviceName = 0x1011,
                        kPrimaryDeviceType = 0x1054, kSecondaryDeviceTypes = 0x1055,
                        kConfigMethods = 0x1008;
constexpr std::uint8_t kVersion1 = 0x10, kConfigured = 2, kNotConfigured = 1;

// Network infrastructure, access point.
Bytes accessPointType() {
    return deviceType(6, kAllianceSMI, 1);
}

Bytes shortSetup(std::uint8_t state, std::string_view name) {
    return wps({attribute(kVersion, u8(kVersion1)), attribute(kSetupState, u8(state)),
                attribute(kDeviceName, text(name)),
                attribute(kPrimaryDeviceType, accessPointType())});
}

}  // namespace

// The neighbourhood.

namespace {

Network mapleStreet() {
    return {1, kSecured,
            join({basics("Maple Street 12", 6), germany2GHz(), rsn({}), ht(6, Secondary::Above),
                  shortSetup(kConfigured, "Tessic Hub"),
                  vendorGeneral(1, kFirstProduct, kWoW | kInterferenceRobustness | kWPSCapable)})};
}

Network cornerBakery() {
    return {2, kOpen, join({basics("Corner Bakery", 11), ht(11, Secondary::None)})};
}

Network harbourOffice() {
    return {3, kSecured,
            join({basics5GHz("Harbour Office"), germany5GHz(), rsn({.keyManagement = {k8021X}}),
                  ht(36, Secondary::Above)})};
}

Network grandpasPrinter() {
    return {4, kESS | kPrivacy,
            join({ssid("grandpas-printer"), rates(kRates11b), channelElement(1)})};
}

Network atticStudio() {
    return {5, kSecured, join({basics("Attic Studio", 1), mixedSecurity()})};
}

// Its beacons hide the name, and its probe responses state it.
Network quietRoom(bool isHidden) {
    const Bytes name = isHidden ? hiddenSSID(10) : ssid("Quiet Room");
    return {6, kSecured,
            join({name, rates(kRates11bg), channelElement(9), rsn({}), ht(9, Secondary::None)})};
}

Network lantern() {
    return {7, kOpen, join({basics("Lantern", 3), shortSetup(kNotConfigured, "Lantern")})};
}

Network berghuette() {
    return {8, kSecured,
            join({basics5GHz("Bergh\xC3\xBCtte"), germany5GHz(), rsn({}), ht(44, Secondary::Below),
                  dwds(2, 0x00000004)})};
}

}  // namespace

Bytes neighbourhoodCapture() {
    const Radio channel1{1, 2412, -70, -94}, channel3{3, 2422, -77, -95},
        channel6{6, 2437, -48, -95}, channel9{9, 2452, -66, -95}, channel11{11, 2462, -63, -93},
        channel36{36, 5180, -57, -97}, channel44{44, 5220, -83, -98};
    Radio later = channel6;
    later.signalDBm = -51;
    return pcapFile(LinkType::Radiotap, Order::Little,
                    {
                        {join({radiotap(channel1), beacon(grandpasPrinter())})},
                        {join({radiotap(channel1), beacon(atticStudio())})},
                        {join({radiotap(channel3), beacon(lantern())})},
                        {join({radiotap(channel6), beacon(mapleStreet())})},
                        {join({radiotap(channel6), dataFrame(mapleStreet())})},
                        {join({radiotap(channel6), acknowledgement()})},
                        {join({radiotap(channel9), beacon(quietRoom(true))})},
                        {join({radiotap(channel11), beacon(cornerBakery())})},
                        {join({radiotap(channel36), beacon(harbourOffice())})},
                        {join({radiotap(channel44), beacon(berghuette())})},
                        {join({radiotap(later), beacon(mapleStreet())})},
                        {join({radiotap(channel9), probeResponse(quietRoom(false))})},
                    });
}

// Vendor elements, odd names and broken ends, without radio headers.

namespace {

Network vendorElementsWhole() {
    return {1, kSecured,
            join({basics("Vendor elements", 6), rsn({}),
                  vendorGeneral(2, kLastProduct, 0xFF01),  // every flag that has a meaning
                  dwds(1, 0x0000000A),                     // master; workaround, closed network
                  peerToPeer()})};
}

// Each is at least one byte shorter than its decoder requires.
Network vendorElementsShort() {
    const Bytes general = {221, 6, 0x0A, 0x7E, 0x56, 0x01, kFirstProduct, 0x01};
    const Bytes roleOnly = {221, 7, 0x0A, 0x7E, 0x55, 0x01, 0x00, 0x00, 0x03};
    return {2, kSecured, join({basics("Short vendor elements", 6), rsn({}), general, roleOnly})};
}

Network latin1Name() {
    return {3, kOpen, basics("Caf\xE9 am Markt", 11)};
}

// The name would clear a terminal, and an override of the text direction makes it look like another
// name.
Network deceivingName() {
    return {4, kOpen, basics("\x1B[2J\\free \xE2\x80\xAEretupmoc", 11)};
}

// 32 octets, the longest name.
Network longName() {
    return {5, kOpen, basics("The longest name fits 32 octets!", 11)};
}

// A vendor element that announces 24 bytes and has 5.
Network truncatedElement() {
    const Bytes cut = {221, 24, 0x0A, 0x7E, 0x56, 0x01, kFirstProduct};
    return {6, kOpen, join({basics("Truncated", 1), cut})};
}

Network strayByte() {
    return {7, kOpen, join({basics("Stray byte", 1), u8(42)})};
}

Network noElements() {
    return {8, kOpen, {}};
}

// Nine rates in Supported Rates, which holds at most eight.
Network overlongRates() {
    const Bytes nine(kRates11bg.begin(), kRates11bg.begin() + 9);
    return {
        9, kOpen,
        join({ssid("Nine rates"), element(1, nine), element(50, {0x60, 0x6C}), channelElement(1)})};
}

}  // namespace

Bytes elementsCapture() {
    std::vector<Packet> packets;
    for (const Network& network :
         {vendorElementsWhole(), vendorElementsShort(), latin1Name(), deceivingName(), longName(),
          truncatedElement(), strayByte(), noElements(), overlongRates()}) {
        packets.push_back({beacon(network)});
    }
    return pcapFile(LinkType::IEEE80211, Order::Little, packets);
}

// One network for each kind of security, under the three headers of the Prism link type.

Bytes securityCapture() {
    const Security enterprise{.keyManagement = {k8021X}};
    const Security tkip{.group = kTKIP, .pairwise = {kTKIP}};
    const Security sae{.keyManagement = {kSAE}, .capabilities = 0x00C0};
    // Pre-authentication; 16 replay counters for pairwise keys, 4 for group keys.
    const Security rich{.keyManagement = {k8021X, kPSK},
                        .capabilities = 0x002D,
                        .pmkids = {Bytes(16, 0x11), Bytes(16, 0x22)}};
    const Network networks[] = {
        {1, kOpen, basics("Open", 6)},
        {2, kSecured, basics("WEP", 6)},
        {3, kSecured, join({basics("WPA", 6), wpa(tkip)})},
        {4, kSecured, join({basics("WPA and WPA2", 6), mixedSecurity()})},
        {5, kSecured, join({basics("WPA2", 6), rsn({})})},
        {6, kSecured, join({basics("WPA2 Enterprise", 6), rsn(enterprise)})},
        {7, kSecured, join({basics("WPA Enterprise", 6), wpa({kTKIP, {kTKIP}, {k8021X}})})},
        {8, kSecured, join({basics("SAE alone", 6), rsn(sae)})},
        {9, kSecured, join({basics("Both ways, PMKIDs", 6), rsn(rich)})},
    };
    const Radio radio{6, 2437, -64, -92};
    const Bytes headers[] = {prism(radio, Order::Little), prism(radio, Order::Big), avs(radio)};
    std::vector<Packet> packets;
    for (const Network& network : networks) {
        packets.push_back({join({headers[packets.size() % 3], beacon(network)})});
    }
    return pcapFile(LinkType::Prism, Order::Little, packets);
}

// Wi-Fi Protected Setup.

namespace {

// An attribute of each kind of value.
Bytes everyKindOfAttribute() {
    return wps({
        attribute(kVersion, u8(kVersion1)), attribute(kSetupState, u8(kConfigured)),  // 8 bits
        attribute(kConfigMethods, be16(0x2688)),                                      // 16 bits
        attribute(0x1003, be16(0x0022)),                 // authentication type
        attribute(0x102D, be32(0x80000001)),             // OS version: 32 bits
        attribute(0x1047, text("\x02UUID of Lantern")),  // 16 bytes exactly
        attribute(kDeviceName, text("Lantern")),         // bounded
        attribute(0x1021, text("Tessic")),               // manufacturer
        attribute(0x1023, text("Lantern 2")),            // model name
        attribute(0x1018, text("any number of bytes")),  // encrypted settings
        attribute(kPrimaryDeviceType, accessPointType()),
        attribute(kSecondaryDeviceTypes,
                  join({deviceType(5, kAllianceSMI, 1), deviceType(8, kVendorSMI, 2)})),
        attribute(0x1049, Bytes{0x00, 0x37, 0x2A, 0x00, 0x01, 0x20}),  // vendor extension: WPS 2.0
    });
}

// Values of a refused length, and one of an unknown type, between sound ones.
Bytes refusedAttributes() {
    return wps({
        attribute(kVersion, u8(0x25)), attribute(kDeviceName, Bytes(33, 'x')),
        attribute(kConfigMethods, u8(0x88)), attribute(0x10FF, text("unknown")),
        attribute(kSecondaryDeviceTypes, Bytes(12, 0)),
        attribute(0x1042, text("000012")),  // serial number
    });
}

// The last attribute announces more than there is.
Bytes cutAttributes() {
    return vendorElement({0x00, 0x50, 0xF2}, join({u8(4), attribute(kVersion, u8(kVersion1)),
                                                   be16(kDeviceName), be16(20), text("Lan")}));
}

}  // namespace

Bytes setupCapture() {
    const Radio radio{3, 2422, -77, -95};
    const auto lanternWith = [](std::uint8_t number, const Bytes& setup) {
        return Network{number, kOpen, join({basics("Lantern", 3), setup})};
    };
    const Bytes frames[] = {
        beacon(lanternWith(1, shortSetup(kConfigured, "Lantern"))),
        probeResponse(lanternWith(2, everyKindOfAttribute())),
        beacon(lanternWith(3, refusedAttributes())),
        beacon(lanternWith(4, cutAttributes())),
    };
    std::vector<Packet> packets;
    for (const Bytes& frame : frames) packets.push_back({join({avs(radio), frame})});
    return pcapFile(LinkType::AVS, Order::Little, packets);
}

// Country elements, in both bands.

Bytes countryCapture() {
    const Radio radio2GHz{11, 2462, -59, -96}, radio5GHz{149, 5745, -72, -99};
    // A triplet that starts with 201 or more states the operating class of the channels after it.
    const Bytes bothKinds = country(
        "US\x04", {Bytes{201, 1, 0}, Bytes{36, 4, 23}, Bytes{201, 5, 0}, Bytes{149, 5, 30}});
    const Bytes codeOnly = element(7, text("NO "));
    const Network networks[] = {
        {1, kSecured,
         join({basics("Country", 11), germany2GHz(), rsn({}), ht(11, Secondary::Below)})},
        {2, kSecured,
         join({basics5GHz("Operating classes"), bothKinds, rsn({}), ht(149, Secondary::Above)})},
        {3, kOpen, join({basics("Code alone", 11), codeOnly})},
    };
    const Bytes packets[] = {
        join({ppi(radio2GHz, true), withFCS(beacon(networks[0]))}),
        join({ppi(radio5GHz, false), probeResponse(networks[1])}),
        join({ppi(radio2GHz, true), withFCS(beacon(networks[2]))}),
    };
    return pcapngFile(LinkType::PPI, Order::Little, {{packets[0]}, {packets[1]}, {packets[2]}});
}

// Every reason to skip a frame, and frames that only look as though.

Bytes damagedCapture() {
    const Network network{1, kSecured, join({basics("Old Mill", 6), rsn({})})};
    const Radio radio{6, 2437, -71, -90};
    const Bytes whole = beacon(network);
    const Bytes header = radiotap(radio), headerWithFCS = radiotap(radio, kFCSAtEnd);
    const Bytes shortFrame(whole.begin(), whole.begin() + 30);
    // Keeps the SSID and half of the rates.
    const Bytes start(whole.begin(), whole.begin() + 36 + 10 + 6);

    Bytes fragment = withFlags(whole, kMoreFragments);
    Bytes lastFragment = whole;
    lastFragment.at(22) |= 0x01;  // fragment number
    Bytes brokenHeader = header;
    brokenHeader.at(2) = 0xFF;  // longer than the packet

    return pcapFile(
        LinkType::Radiotap, Order::Big,
        {
            {join({headerWithFCS, withFCS(whole)})},
            {join({radiotap(radio, kFCSAtEnd | kBadFCS), withBadFCS(whole)})},
            {join({header, fragment})},
            {join({header, lastFragment})},
            {join({header, withFlags(whole, kProtected)})},
            {join({header, shortFrame})},
            {join({brokenHeader, whole})},
            {join({header, dataFrame(network)})},
            {join({headerWithFCS, withFCS(acknowledgement())})},
            {join({header, withHTControl(whole)})},
            {join({radiotapOfTwoAntennas(radio, -80, kFCSAtEnd), withFCS(probeResponse(network))})},
            {join({headerWithFCS, start}), whole.size() + 4 - start.size()},
        });
}

}  // namespace halvane::samples
