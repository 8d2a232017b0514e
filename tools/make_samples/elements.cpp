#include "tools/make_samples/elements.h"

#include <algorithm>

namespace halvane::samples {

namespace {

constexpr std::size_t kMostSupportedRates = 8;  // more go to the second element

const Bytes kIEEEOUI = {0x00, 0x0F, 0xAC};
const Bytes kWPAOUI = {0x00, 0x50, 0xF2};  // also that of WPS
const Bytes kVendorOUI = {0x0A, 0x7E, 0x55};
const Bytes kVendorGeneralOUI = {0x0A, 0x7E, 0x56};

// A count, then that many suites.
Bytes suiteList(const Bytes& oui, const Bytes& types) {
    Bytes list = le16(types.size());
    for (const std::uint8_t type : types) list = join({list, oui, u8(type)});
    return list;
}

// What RSN and WPA elements have in common.
Bytes suites(const Bytes& oui, const Security& security) {
    return join({le16(1), oui, u8(security.group), suiteList(oui, security.pairwise),
                 suiteList(oui, security.keyManagement)});
}

}  // namespace

const Bytes kRates11b = {0x82, 0x84, 0x8B, 0x96};
const Bytes kRates11bg = {0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24, 0x30, 0x48, 0x60, 0x6C};
const Bytes kRates11a = {0x8C, 0x12, 0x98, 0x24, 0xB0, 0x48, 0x60, 0x6C};

const Bytes kAllianceSMI = {0x00, 0x50, 0xF2, 0x04};
const Bytes kVendorSMI = {0x0A, 0x7E, 0x55, 0x01};

Bytes element(std::uint8_t identifier, const Bytes& body) {
    return join({u8(identifier), u8(body.size()), body});
}

Bytes vendorElement(const Bytes& oui, const Bytes& body) {
    return element(221, join({oui, body}));
}

Bytes ssid(std::string_view octets) {
    return element(0, text(octets));
}

Bytes hiddenSSID(std::size_t size) {
    return element(0, Bytes(size, 0));
}

Bytes channelElement(std::uint8_t channel) {
    return element(3, u8(channel));
}

Bytes rates(const Bytes& all) {
    const auto split =
        all.begin() + static_cast<std::ptrdiff_t>(std::min(all.size(), kMostSupportedRates));
    const Bytes first(all.begin(), split), more(split, all.end());
    return join({element(1, first), more.empty() ? Bytes{} : element(50, more)});
}

Bytes country(std::string_view code, const std::vector<Bytes>& triplets) {
    Bytes body = text(code);
    for (const Bytes& triplet : triplets) body = join({body, triplet});
    if (body.size() % 2 != 0) body.push_back(0);  // the element is padded to an even length
    return element(7, body);
}

Bytes rsn(const Security& security) {
    Bytes body = join({suites(kIEEEOUI, security), le16(security.capabilities)});
    if (!security.pmkids.empty()) body = join({body, le16(security.pmkids.size())});
    for (const Bytes& pmkid : security.pmkids) body = join({body, pmkid});
    return element(48, body);
}

Bytes wpa(const Security& security) {
    return vendorElement(kWPAOUI, join({u8(1), suites(kWPAOUI, security)}));
}

Bytes ht(std::uint8_t channel, Secondary secondary) {
    const bool isWide = secondary != Secondary::None;
    // SM power save disabled, short guard interval; at 40 MHz DSSS/CCK as well.
    const std::uint16_t information = isWide ? 0x106E : 0x002C;
    const Bytes capabilities = join({
        le16(information),
        u8(0x17),                         // A-MPDU parameters
        Bytes{0xFF, 0xFF}, Bytes(14, 0),  // MCS 0 to 15
        le16(0), le32(0), u8(0),          // extended, beamforming, ASEL
    });
    const std::uint64_t width = isWide ? 0x04 : 0;
    const Bytes operation = join({
        u8(channel), u8(static_cast<std::uint8_t>(secondary) | width), le16(0),
        le16(0),       // protection
        Bytes(16, 0),  // basic MCS set
    });
    return join({element(45, capabilities), element(61, operation)});
}

Bytes vendorGeneral(std::uint8_t version, std::uint8_t product, std::uint16_t flags) {
    return vendorElement(kVendorGeneralOUI, join({u8(version), u8(product), le16(flags)}));
}

Bytes dwds(std::uint8_t role, std::uint32_t flags) {
    return vendorElement(kVendorOUI, join({u8(1), le16(0), u8(role), be32(flags)}));
}

Bytes peerToPeer() {
    return vendorElement(kVendorOUI, u8(5));
}

Bytes wps(std::initializer_list<Bytes> attributes) {
    return vendorElement(kWPAOUI, join({u8(4), join(attributes)}));
}

Bytes attribute(std::uint16_t type, const Bytes& value) {
    return join({be16(type), be16(value.size()), value});
}

Bytes deviceType(std::uint16_t category, const Bytes& smi, std::uint16_t subCategory) {
    return join({be16(category), smi, be16(subCategory)});
}

}  // namespace halvane::samples
