// Every truncation of a sample, and every false value of its length fields, in exactly sized heap
// copies. The address sanitizer therefore detects a read of one byte too many.
#ifndef TESTS_SUPPORT_HOSTILE_BYTES_H
#define TESTS_SUPPORT_HOSTILE_BYTES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"

namespace halvane::testing {

using Bytes = std::vector<std::uint8_t>;

// A buffer that fills its heap block exactly, however short it is.
inline ByteBuffer exactHeapCopy(std::span<const std::uint8_t> bytes) {
    std::shared_ptr<std::uint8_t[]> block(new std::uint8_t[bytes.size()]);
    std::ranges::copy(bytes, block.get());
    return ByteBuffer::sharing(std::move(block), bytes.size());
}

// Calls `decode` with every prefix of `sample`, from nothing to the whole.
template <typename Decode>
void forEachPrefix(const Bytes& sample, Decode decode) {
    for (std::size_t size = 0; size <= sample.size(); ++size) {
        decode(exactHeapCopy(std::span(sample).first(size)));
    }
}

// Calls `decode` with `sample` for each of the 256 values of the byte at each offset.
template <typename Decode>
void forEachValueAt(const Bytes& sample, std::span<const std::size_t> offsets, Decode decode) {
    for (const std::size_t offset : offsets) {
        Bytes changed = sample;
        for (unsigned value = 0; value <= 0xFF; ++value) {
            changed.at(offset) = static_cast<std::uint8_t>(value);
            decode(exactHeapCopy(changed));
        }
    }
}

// Calls `decode` with every prefix of `sample`, and with every value of its length fields. These
// stand at `lengthOffsets`; each byte of a wider field has its own offset.
template <typename Decode>
void forEachHostileForm(const Bytes& sample, std::initializer_list<std::size_t> lengthOffsets,
                        Decode decode) {
    forEachPrefix(sample, decode);
    forEachValueAt(sample, std::span(lengthOffsets.begin(), lengthOffsets.size()), decode);
}

}  // namespace halvane::testing

#endif
