// A valid body for each element that has a decoder, with every optional field. A test asserts that
// none is missing.
#ifndef TESTS_AIR_ELEMENT_SAMPLES_H
#define TESTS_AIR_ELEMENT_SAMPLES_H

#include <string_view>
#include <vector>

#include "halvane/air/element_id.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/oui.h"

#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

inline Bytes bytesOf(std::string_view hex) {
    const auto buffer = ByteBuffer::fromHex(hex).value();
    return {buffer.begin(), buffer.end()};
}

struct ElementSample {
    air::ElementId id;
    std::string_view hex;  // of the body
};

inline constexpr ElementSample kElementSamples[] = {
    {air::ElementId::BssLoad, "0500 7F 1234"},
    {air::ElementId::Rsn,
     "0100 000FAC04 0200 000FAC04 000FAC02 0200 000FAC02 000FAC08 CC00 0100 "
     "00112233445566778899AABBCCDDEEFF 000FAC06"},
    {air::ElementId::VhtOperation, "01 2A 32 FCFF"},
    {air::ElementId::MultiLink,
     "F007 12 020000000A01 02 05 0805 D722 F271 00 E500 "
     "00 1D F10F 16 020000000A11 6400 FEFFFFFFFFFFFFFF 0103 0500 07 1104 000161 DD 04 01020304"},
    {air::ElementId::MultiLink, "1100 02 00 00 05 1300 0A010A"},
    {air::ElementId::MultiLink,
     "F200 0D 020000000A01 D722 F271 E500 "
     "00 0F 6100 0B 020000000A11 6400 AABB 1104"},
    {air::ElementId::MultiLink, "0300 07 020000000A01 00 02 0100"},
    {air::ElementId::MultiLink, "0400 07 020000000A01 00 05 0200 0C0101"},
    {air::ElementId::MultiLink, "0700 07 020000000A01 00 02 0100"},
    {air::ElementId::MultipleBssid, "03 00 0C 53021104 000161 5503010300 DD 02 0102"},
    {air::ElementId::NontransmittedBssidCapability, "1104"},
    {air::ElementId::MultipleBssidIndex, "01 03 00"},
    {air::ElementId::MultipleBssidConfiguration, "04 01"},
    {air::ElementId::NonInheritance, "02 30 46 01 6C"},
};

struct VendorSample {
    OUI oui;
    std::uint8_t type;
    std::string_view hex;  // of the body after OUI and type
};

inline constexpr std::initializer_list<VendorSample> kVendorSamples = {};

}  // namespace halvane::testing

#endif
