// An order of byte buffers by the bytes that they have in common.
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

// -1, 0 or 1: how `buffer` stands to `other`, by the first bytes of both, as many as the shorter
// one has, taken as unsigned. A longer buffer that begins with the shorter one is its equal, which
// makes the empty buffer the equal of every other.
//
// No order to sort mixed lengths by: 01 equals 01 02 and 01 03, which differ.
HALVANE_EXPORT int compare(const ByteBuffer& buffer, const ByteBuffer& other);

// The same; 1 where there is no other buffer.
HALVANE_EXPORT int compare(const ByteBuffer& buffer, const std::optional<ByteBuffer>& other);

// The same for bytes in braces. Empty ones are the empty buffer, not none.
inline int compare(const ByteBuffer& buffer, std::initializer_list<std::uint8_t> other) {
    return compare(buffer, ByteBuffer(other));
}

}  // namespace halvane::NSData_Halvane

#endif
