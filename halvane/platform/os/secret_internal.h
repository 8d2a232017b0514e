// Memory that holds a secret while it is in use and is wiped afterwards.
#ifndef HALVANE_PLATFORM_OS_SECRET_INTERNAL_H
#define HALVANE_PLATFORM_OS_SECRET_INTERNAL_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string.h>
#include <type_traits>
#include <utility>

#include "halvane/base/byte_buffer.h"

namespace halvane {

// A value that is overwritten when it is destroyed. It can be neither copied nor moved, since a
// copy would have to be wiped too.
template <typename Value>
requires std::is_trivially_copyable_v<Value>
class Secret {
  public:
    Secret() = default;
    Secret(const Secret&) = delete;
    Secret& operator=(const Secret&) = delete;
    ~Secret() { ::explicit_bzero(&value_, sizeof(value_)); }

    Value& operator*() { return value_; }
    const Value& operator*() const { return value_; }
    Value* operator->() { return &value_; }
    const Value* operator->() const { return &value_; }

  private:
    Value value_{};
};

// Memory for a number of bytes that is known only at run time, initially zero. The last owner wipes
// it.
inline std::shared_ptr<std::uint8_t[]> secretMemory(std::size_t size) {
    const auto wipe = [size](std::uint8_t* bytes) {
        ::explicit_bzero(bytes, size);
        delete[] bytes;
    };
    return {new std::uint8_t[size](), wipe};
}

// Returns a copy in such memory, even of a few bytes. Short bytes inside a ByteBuffer would stay
// behind at every move. Copies of the buffer share the memory, and the last one wipes it.
inline ByteBuffer secretBuffer(std::span<const std::uint8_t> bytes) {
    auto memory = secretMemory(bytes.size());
    std::copy(bytes.begin(), bytes.end(), memory.get());
    return ByteBuffer::sharing(std::move(memory), bytes.size());
}

}  // namespace halvane

#endif
