// Elements for tests, built from their parts.
#ifndef TESTS_SUPPORT_ELEMENTS_H
#define TESTS_SUPPORT_ELEMENTS_H

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "tests/support/hostile_bytes.h"

namespace halvane::testing {

// ID, length and body.
inline Bytes element(std::uint8_t id, const Bytes& body) {
    Bytes bytes = {id, static_cast<std::uint8_t>(body.size())};
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
}

inline Bytes ssidElement(std::string_view text) {
    return element(0, {text.begin(), text.end()});
}

inline Bytes joined(std::initializer_list<Bytes> parts) {
    Bytes bytes;
    for (const Bytes& part : parts) bytes.insert(bytes.end(), part.begin(), part.end());
    return bytes;
}

// One pairwise CCMP suite and one AKM of the RSN element.
inline Bytes rsnElement(std::uint8_t akm) {
    return element(48, {1,    0, 0x00, 0x0F, 0xAC, 4,    1,    0,   0x00, 0x0F,
                        0xAC, 4, 1,    0,    0x00, 0x0F, 0xAC, akm, 0,    0});
}

inline Bytes wpaElement(std::uint8_t akm) {
    return element(221, {0x00, 0x50, 0xF2, 1,    1, 0, 0x00, 0x50, 0xF2, 2,    1,
                         0,    0x00, 0x50, 0xF2, 2, 1, 0,    0x00, 0x50, 0xF2, akm});
}

// WPS with one attribute: version 1.0.
inline Bytes wpsElement() {
    return element(221, {0x00, 0x50, 0xF2, 4, 0x10, 0x4A, 0x00, 0x01, 0x10});
}

// HT Capabilities of MCS 0 to 8 * streams - 1.
inline Bytes htCapabilitiesElement(std::uint16_t capabilities, unsigned streams) {
    Bytes body(26, 0);
    body[0] = static_cast<std::uint8_t>(capabilities);
    body[1] = static_cast<std::uint8_t>(capabilities >> 8);
    for (unsigned i = 0; i < streams; ++i) body[3 + i] = 0xFF;
    return element(45, body);
}

inline Bytes htOperationElement(std::uint8_t channel, std::uint8_t information) {
    Bytes body(22, 0);
    body[0] = channel;
    body[1] = information;
    return element(61, body);
}

}  // namespace halvane::testing

#endif
