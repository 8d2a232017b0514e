// Memory that holds a secret while it is worked on, and nothing of it afterwards.
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

// A value that is overwritten when it goes, on whatever way. It can be neither copied nor moved: a
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

// Bytes whose number is known at run time only, zeros at first. The last owner wipes them.
inline std::shared_ptr<std::uint8_t[]> secretMemory(std::size_t size) {
    const auto wipe = [size](std::uint8_t* bytes) {
        ::explicit_bzero(bytes, size);
        delete[] bytes;
    };
    return {new std::uint8_t[size](), wipe};
}

// A copy in such memory, however few bytes there are: inside a buffer, where short ones live, every
// move would leave them behind. Copies of the buffer share the memory, and the last one wipes it.
inline ByteBuffer secretBuffer(std::span<const std::uint8_t> bytes) {
    auto memory = secretMemory(bytes.size());
    std::copy(bytes.begin(), bytes.end(), memory.get());
    return ByteBuffer::sharing(std::move(memory), bytes.size());
}

}  // namespace halvane

#endif
