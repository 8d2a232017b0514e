// The walk over the elements of a frame by which a record reads them.
//
// Pure functions; any thread may call them.
#ifndef HALVANE_IE_ELEMENT_WALK_INTERNAL_H
#define HALVANE_IE_ELEMENT_WALK_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"

namespace halvane {

// Returns the bytes that are walked: their number has 16 bits.
inline std::span<const std::uint8_t> walkedBytesOf(std::span<const std::uint8_t> elements) {
    return *ByteCursor(elements).take(static_cast<std::uint16_t>(elements.size()));
}

// Calls each(offset, element) for every element. Returns the offset of the trailing bytes that form
// no element.
template <typename Each>
std::size_t walkElements(std::span<const std::uint8_t> elements, Each each) {
    ByteCursor cursor(elements);
    while (const auto length = cursor.peek(1)) {
        // The size of an element has 8 bits.
        const auto size = static_cast<std::uint8_t>(*length + kElementHeaderSize);
        if (size == 0 || size > cursor.remaining()) break;
        const std::size_t offset = cursor.position();
        each(offset, *cursor.take(size));
    }
    return cursor.position();
}

}  // namespace halvane

#endif
