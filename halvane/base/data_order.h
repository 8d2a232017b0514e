// An order of byte buffers by the bytes that both have.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_BASE_DATA_ORDER_H
#define HALVANE_BASE_DATA_ORDER_H

#include <cstdint>
#include <initializer_list>
#include <optional>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::NSData_Halvane {

// Compares the first bytes of both buffers as unsigned values, as many as the shorter one has, and
// returns -1, 0 or 1. A longer buffer that begins with the shorter one is equal to it, so the empty
// buffer is equal to every buffer.
//
// Do not sort buffers of different lengths with it: 01 equals 01 02 and 01 03, which differ.
HALVANE_EXPORT int compare(const ByteBuffer& buffer, const ByteBuffer& other);

// The same; returns 1 if `other` is absent.
HALVANE_EXPORT int compare(const ByteBuffer& buffer, const std::optional<ByteBuffer>& other);

// The same for bytes in braces. Empty braces mean the empty buffer, not an absent one.
inline int compare(const ByteBuffer& buffer, std::initializer_list<std::uint8_t> other) {
    return compare(buffer, ByteBuffer(other));
}

}  // namespace halvane::NSData_Halvane

#endif
