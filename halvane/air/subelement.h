// A subelement that the library does not look into: its ID and its octets (IEEE 802.11-2020,
// 9.4.3).
#ifndef HALVANE_AIR_SUBELEMENT_H
#define HALVANE_AIR_SUBELEMENT_H

#include <cstdint>

#include "halvane/base/byte_buffer.h"

namespace halvane::air {

struct Subelement {
    std::uint8_t id = 0;
    ByteBuffer body{};  // at most 255 octets

    friend bool operator==(const Subelement&, const Subelement&) = default;
};

}  // namespace halvane::air

#endif
