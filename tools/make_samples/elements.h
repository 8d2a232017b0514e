// Builders of the information elements that the samples hold (IEEE 802.11-2020 9.4.2, Wi-Fi
// Protected Setup 2.0, and the maker's own).
#ifndef TOOLS_MAKE_SAMPLES_ELEMENTS_H
#define TOOLS_MAKE_SAMPLES_ELEMENTS_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "tools/make_samples/bytes.h"

namespace halvane::samples {

Bytes element(std::uint8_t identifier, const Bytes& body);
Bytes vendorElement(const Bytes& oui, const Bytes& body);

Bytes ssid(std::string_view octets);
Bytes hiddenSSID(std::size_t size);  // zeros in place of the name
Bytes channelElement(std::uint8_t channel);

// Rates in units of 500 kb/s; bit 7 marks a basic rate. Rates that do not fit Supported Rates go to
// Extended Supported Rates.
Bytes rates(const Bytes& all);
extern const Bytes kRates11b;   // 1 to 11 Mb/s
extern const Bytes kRates11bg;  // 1 to 54 Mb/s, twelve of them
extern const Bytes kRates11a;   // 6 to 54 Mb/s

// `code` has three characters; each triplet three bytes.
Bytes country(std::string_view code, const std::vector<Bytes>& triplets);

// Suite types; the same numbers under both OUIs.
inline constexpr std::uint8_t kTKIP = 2, kCCMP = 4;
inline constexpr std::uint8_t k8021X = 1, kPSK = 2, kSAE = 8;

struct Security {
    std::uint8_t group = kCCMP;
    Bytes pairwise = {kCCMP};
    Bytes keyManagement = {kPSK};
    std::uint16_t capabilities = 0;  // RSN only
    std::vector<Bytes> pmkids{};     // RSN only; 16 bytes each
};
Bytes rsn(const Security& security);
Bytes wpa(const Security& security);

// Where the second 20 MHz of a 40 MHz channel lie.
enum class Secondary : std::uint8_t { None = 0, Above = 1, Below = 3 };

// HT Capabilities (two streams, short guard interval) and HT Operation.
Bytes ht(std::uint8_t channel, Secondary secondary);

// The maker's elements.
Bytes vendorGeneral(std::uint8_t version, std::uint8_t product, std::uint16_t flags);
Bytes dwds(std::uint8_t role, std::uint32_t flags);
Bytes peerToPeer();

// Wi-Fi Protected Setup.
Bytes wps(std::initializer_list<Bytes> attributes);
Bytes attribute(std::uint16_t type, const Bytes& value);
Bytes deviceType(std::uint16_t category, const Bytes& smi, std::uint16_t subCategory);
extern const Bytes kAllianceSMI;
extern const Bytes kVendorSMI;

}  // namespace halvane::samples

#endif
