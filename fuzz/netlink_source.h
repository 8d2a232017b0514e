// Attributes of netlink from the bytes of an input, most of them whole.
#ifndef FUZZ_NETLINK_SOURCE_H
#define FUZZ_NETLINK_SOURCE_H

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "fuzz/byte_source.h"

namespace halvane::fuzzing {

// Appends an attribute. Its length may be wrong by what the input says.
inline void putAttribute(ByteSource& source, std::vector<std::uint8_t>& bytes, std::uint16_t type,
                         std::span<const std::uint8_t> value) {
    const auto append = [&bytes](std::uint16_t number) {
        const auto octets = std::bit_cast<std::array<std::uint8_t, 2>>(number);
        bytes.insert(bytes.end(), octets.begin(), octets.end());
    };
    const std::size_t wrong =
        source.byte() == 0xFF ? source.integer<std::uint16_t>() : std::uint16_t{0};
    append(static_cast<std::uint16_t>(4 + value.size() + wrong));
    append(type);
    bytes.insert(bytes.end(), value.begin(), value.end());
    bytes.resize((bytes.size() + 3) / 4 * 4);
}

}  // namespace halvane::fuzzing

#endif
