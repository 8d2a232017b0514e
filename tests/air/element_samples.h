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
};

struct VendorSample {
    OUI oui;
    std::uint8_t type;
    std::string_view hex;  // of the body after OUI and type
};

inline constexpr std::initializer_list<VendorSample> kVendorSamples = {};

}  // namespace halvane::testing

#endif
