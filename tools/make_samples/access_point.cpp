#include "tools/make_samples/access_point.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/extended_capabilities.h"

namespace halvane::samples {

namespace {

using air::Band;

constexpr std::size_t kMostSupportedRates = 8;
constexpr std::uint8_t kSupportedRates = 1, kExtendedRates = 50, kErp = 42, kPowerConstraint = 32;
constexpr std::uint16_t kSpectrumManagement = 0x0100;

bool isAt(const AccessPoint& accessPoint, Band band) {
    return accessPoint.radio.primary.band == band;
}

// Whether radar comes first on a part of the channel. Every 160 MHz at 5 GHz have such a part.
bool isOnRadarChannel(const AccessPoint& accessPoint) {
    const int number = accessPoint.radio.primary.number;
    const bool isWide = accessPoint.radio.width >= air::ChannelWidth::Mhz160;
    return isAt(accessPoint, Band::Ghz5) && (isWide || (number >= 52 && number <= 144));
}

Bytes ratesPart(const AccessPoint& accessPoint, bool isExtended) {
    const Bytes& all = accessPoint.rates;
    const auto split =
        all.begin() + static_cast<std::ptrdiff_t>(std::min(all.size(), kMostSupportedRates));
    if (!isExtended) return element(kSupportedRates, Bytes(all.begin(), split));
    return split == all.end() ? Bytes{} : element(kExtendedRates, Bytes(split, all.end()));
}

// Germany: channels, their number, dBm. At 6 GHz an operating class of the global table comes
// first.
Bytes countryOf(const AccessPoint& accessPoint) {
    switch (accessPoint.radio.primary.band) {
        case Band::Ghz2:
            return country("DE ", {Bytes{1, 13, 20}});
        case Band::Ghz6:
            return country("DE\x04", {Bytes{201, 131, 0}, Bytes{1, 24, 23}});
        default:
            return country("DE ", {Bytes{36, 4, 23}, Bytes{52, 4, 23}, Bytes{100, 11, 30}});
    }
}

// Elements up to Extended Capabilities.
std::vector<Bytes> firstPart(const AccessPoint& accessPoint, FrameKind kind) {
    const bool isAt2Ghz = isAt(accessPoint, Band::Ghz2);
    const bool isAt6Ghz = isAt(accessPoint, Band::Ghz6);
    return {
        ssid(accessPoint.name),
        ratesPart(accessPoint, false),
        isAt2Ghz ? channelElement(accessPoint.radio.primary.number) : Bytes{},
        kind == FrameKind::Beacon ? timOf(2) : Bytes{},
        countryOf(accessPoint),
        isOnRadarChannel(accessPoint) ? element(kPowerConstraint, u8(3)) : Bytes{},
        isAt2Ghz ? element(kErp, u8(0)) : Bytes{},
        ratesPart(accessPoint, true),
        accessPoint.rsn,
        accessPoint.load,
        radioMeasurement(),
        accessPoint.multipleBssid,
        accessPoint.mobilityDomain,
        isAt6Ghz ? Bytes{} : htCapabilities(accessPoint.radio),
        isAt6Ghz ? Bytes{} : htOperation(accessPoint.radio),
        accessPoint.extendedCapabilities,
    };
}

std::vector<Bytes> secondPart(const AccessPoint& accessPoint) {
    const RadioSetup& radio = accessPoint.radio;
    const bool isAt5Ghz = isAt(accessPoint, Band::Ghz5);
    const bool isAt6Ghz = isAt(accessPoint, Band::Ghz6);
    const bool isHe = accessPoint.generation >= 6;
    const bool isEht = accessPoint.generation >= 7;
    return {
        isAt5Ghz ? vhtCapabilities(radio) : Bytes{},
        isAt5Ghz ? vhtOperation(radio) : Bytes{},
        isAt6Ghz ? indoorPower() : Bytes{},
        accessPoint.neighbors,
        accessPoint.rsnx,
        isHe ? heCapabilities(radio) : Bytes{},
        isHe ? heOperation(radio, accessPoint.number % 63 + 1) : Bytes{},
        isAt6Ghz ? sixGhzCapabilities() : Bytes{},
        accessPoint.multiLink,
        isEht ? ehtCapabilities(radio) : Bytes{},
        isEht ? ehtOperation(radio) : Bytes{},
        wmmParameters(),
        accessPoint.vendor,
    };
}

}  // namespace

Bytes AccessPoint::usualCapabilities() {
    using Capability = air::ExtendedCapability;
    return samples::extendedCapabilities({Capability::ExtendedChannelSwitching,
                                          Capability::BssTransition,
                                          Capability::OperatingModeNotification});
}

MacAddress addressOf(std::uint8_t number) {
    return MacAddress({0x02, 0x1A, 0x00, 0x00, 0x00, number});
}

std::uint16_t capabilitiesOf(const AccessPoint& accessPoint) {
    std::uint16_t capabilities = kESS | kRadioMeasurement;
    if (!accessPoint.rsn.empty()) capabilities |= kPrivacy;
    if (isAt(accessPoint, Band::Ghz2)) capabilities |= kShortPreamble | kShortSlotTime;
    if (isOnRadarChannel(accessPoint)) capabilities |= kSpectrumManagement;
    return capabilities;
}

std::vector<Bytes> elementsOf(const AccessPoint& accessPoint, FrameKind kind) {
    std::vector<Bytes> elements = firstPart(accessPoint, kind);
    for (Bytes& element : secondPart(accessPoint)) elements.push_back(std::move(element));
    return elements;
}

Bytes heard(const AccessPoint& accessPoint, const std::vector<Bytes>& elements, FrameKind kind,
            std::int8_t signalDBm) {
    Network network{accessPoint.number, capabilitiesOf(accessPoint), {}};
    for (const Bytes& element : elements) network.elements = join({network.elements, element});
    Radio radio;
    radio.channel = accessPoint.radio.primary.number;
    radio.frequencyMHz =
        static_cast<std::uint16_t>(air::centerFrequencyOf(accessPoint.radio.primary).value());
    radio.signalDBm = signalDBm;
    return join(
        {radiotap(radio), kind == FrameKind::Beacon ? beacon(network) : probeResponse(network)});
}

Bytes heard(const AccessPoint& accessPoint, FrameKind kind, std::int8_t signalDBm) {
    return heard(accessPoint, elementsOf(accessPoint, kind), kind, signalDBm);
}

}  // namespace halvane::samples
