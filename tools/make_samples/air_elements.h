// Builders of the elements of today's networks, by the library's own types. Each returns whole
// elements. Where a standard leaves a choice, they take what access points on the market send.
#ifndef TOOLS_MAKE_SAMPLES_AIR_ELEMENTS_H
#define TOOLS_MAKE_SAMPLES_AIR_ELEMENTS_H

#include <cstdint>
#include <initializer_list>
#include <optional>

#include "halvane/air/element_id.h"
#include "halvane/air/element_writer.h"
#include "halvane/air/extended_capabilities.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/security.h"

#include "tools/make_samples/bytes.h"
#include "tools/make_samples/elements.h"

namespace halvane::samples {

template <typename T>
Bytes airElement(const T& element) {
    Bytes octets;
    if constexpr (requires { T::kId; }) {
        air::appendElement(octets, T::kId, element.encode());
    } else {
        air::appendVendorElement(octets, T::kOui, T::kType, element.encode());
    }
    return octets;
}

// Further types of suites (tables 9-149 and 9-151).
inline constexpr std::uint8_t kFTSAE = 9, kSuiteB192 = 12, kOWE = 18, kSAEExtKey = 24;
inline constexpr std::uint8_t kBIPCMAC128 = 6, kGCMP256 = 9, kBIPGMAC256 = 12;

// The number of an element.
air::ElementId idOf(const Bytes& element);

// An RSN element.
struct Keys {
    Bytes akms{};
    Bytes pairwise = {kCCMP};
    std::uint8_t group = kCCMP;
    air::Pmf pmf = air::Pmf::None;
    std::optional<std::uint8_t> groupManagement{};  // absent: BIP-CMAC-128 if there is PMF
};
Bytes rsnOf(const Keys& keys);
Bytes rsnxOf(std::initializer_list<air::RsnxCapability> capabilities);

// WPA3 as it is deployed: with hash-to-element, and PMF required.
Keys wpa3Personal();
Bytes hashToElement();

Bytes timOf(std::uint8_t dtimPeriod);
Bytes loadOf(std::uint16_t stations, std::uint8_t utilization);
Bytes radioMeasurement();
Bytes mobilityDomain();
Bytes extendedCapabilities(std::initializer_list<air::ExtendedCapability> capabilities);
Bytes wmmParameters();

}  // namespace halvane::samples

#endif
