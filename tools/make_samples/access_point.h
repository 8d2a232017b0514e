// Access points of today: what they send, from a short description.
#ifndef TOOLS_MAKE_SAMPLES_ACCESS_POINT_H
#define TOOLS_MAKE_SAMPLES_ACCESS_POINT_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/make_samples/air_elements.h"
#include "tools/make_samples/bytes.h"
#include "tools/make_samples/elements.h"
#include "tools/make_samples/frames.h"
#include "tools/make_samples/radio_elements.h"

namespace halvane::samples {

struct AccessPoint {
    std::uint8_t number = 0;  // as in Network
    std::string_view name{};
    RadioSetup radio{};
    int generation = 6;  // 5 to 7
    Bytes rates = kRates11a;
    Bytes rsn{};  // empty: open
    Bytes rsnx{};
    Bytes load{};
    Bytes multipleBssid{};
    Bytes mobilityDomain{};
    Bytes extendedCapabilities = usualCapabilities();
    Bytes neighbors{};
    Bytes multiLink{};
    Bytes vendor{};  // after WMM

    static Bytes usualCapabilities();
};

// The address of a network of that number.
MacAddress addressOf(std::uint8_t number);

// The capability information field.
std::uint16_t capabilitiesOf(const AccessPoint& accessPoint);

enum class FrameKind : std::uint8_t { Beacon, ProbeResponse };

// The elements in the standard's order. Each item is an element, or empty.
std::vector<Bytes> elementsOf(const AccessPoint& accessPoint, FrameKind kind);

// A frame behind a radio header of its channel; the second holds other elements.
Bytes heard(const AccessPoint& accessPoint, FrameKind kind, std::int8_t signalDBm);
Bytes heard(const AccessPoint& accessPoint, const std::vector<Bytes>& elements, FrameKind kind,
            std::int8_t signalDBm);

}  // namespace halvane::samples

#endif
