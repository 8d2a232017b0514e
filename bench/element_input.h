// Elements from which a record makes lists, as long as an element may be.
#ifndef BENCH_ELEMENT_INPUT_H
#define BENCH_ELEMENT_INPUT_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "bench/foreign_bytes.h"

namespace bench {

// A vendor element of Wi-Fi Protected Setup.
inline Bytes elementOfWPS(const Bytes& attributes) {
    Bytes element = {221, static_cast<std::uint8_t>(4 + attributes.size()), 0x00, 0x50, 0xF2, 4};
    append(element, attributes);
    return element;
}

// A list of `count` secondary device types.
inline Bytes attributeOfDeviceTypes(std::size_t count) {
    Bytes attribute = {0x10, 0x55, 0, static_cast<std::uint8_t>(8 * count)};
    append(attribute, repeated({0, 6, 0x00, 0x50, 0xF2, 4, 0, 1}, count));
    return attribute;
}

// Device types in as few lists as possible, and each in its own list.
inline Bytes deviceTypesOfWPS() {
    Bytes attributes = attributeOfDeviceTypes(16);
    append(attributes, attributeOfDeviceTypes(14));
    return elementOfWPS(attributes);
}
inline Bytes scatteredDeviceTypesOfWPS() {
    Bytes attributes;
    for (int i = 0; i < 20; ++i) append(attributes, attributeOfDeviceTypes(1));
    return elementOfWPS(attributes);
}

// Security elements of many suites, and of many PMKIDs.
inline Bytes suitesOfRSN() {
    Bytes element = {48, 254, 1, 0, 0x00, 0x0F, 0xAC, 4, 30, 0};
    append(element, repeated({0x00, 0x0F, 0xAC, 4}, 30));
    append(element, {30, 0});
    append(element, repeated({0x00, 0x0F, 0xAC, 2}, 30));
    append(element, {0, 0, 0, 0});
    return element;
}
inline Bytes identifiersOfRSN() {
    Bytes element = {48, 246, 1, 0, 0x00, 0x0F, 0xAC, 4, 1, 0, 0x00, 0x0F, 0xAC, 4, 1, 0};
    append(element, {0x00, 0x0F, 0xAC, 2, 0, 0, 14, 0});
    append(element, Bytes(14 * 16, 1));
    return element;
}

inline Bytes countryOf(std::initializer_list<unsigned> triplet) {
    Bytes element = {7, 252, 'D', 'E', ' '};
    append(element, repeated(triplet, 83));
    return element;
}

// HT Capabilities and HT Operation of all rates.
inline Bytes elementsOfHT() {
    Bytes elements = {45, 26, 0xFF, 0xFF, 0xFF};
    elements.resize(elements.size() + 23, 0xFF);
    append(elements, {61, 22, 36});
    elements.resize(elements.size() + 21, 0xFF);
    return elements;
}

}  // namespace bench

#endif
