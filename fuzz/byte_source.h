// Turns the bytes of an input into decisions and values, from the front. After the last byte every
// decision is 0 and every text is empty.
#ifndef FUZZ_BYTE_SOURCE_H
#define FUZZ_BYTE_SOURCE_H

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>

#include "halvane/base/byte_buffer.h"

namespace halvane::fuzzing {

class ByteSource {
  public:
    ByteSource(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    bool empty() const { return rest_.empty(); }
    std::span<const std::uint8_t> rest() const { return rest_; }
    std::string restText() const { return {rest_.begin(), rest_.end()}; }

    std::uint8_t byte() {
        if (rest_.empty()) return 0;
        const std::uint8_t first = rest_.front();
        rest_ = rest_.subspan(1);
        return first;
    }
    bool flag() { return (byte() & 1) != 0; }

    template <std::integral Integer>
    Integer integer() {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < sizeof(Integer); ++i) value = value << 8 | byte();
        return static_cast<Integer>(value);
    }

    // A number less than `count`, which is 1 to 256.
    std::size_t below(std::size_t count) { return byte() % count; }

    template <typename Items>
    const auto& oneOf(const Items& items) {
        return items[below(std::size(items))];
    }

    // The first byte is the number of bytes that follow.
    std::span<const std::uint8_t> bytes(std::size_t maximum = 255) {
        const std::size_t size = std::min({std::size_t{byte()}, maximum, rest_.size()});
        const auto taken = rest_.first(size);
        rest_ = rest_.subspan(size);
        return taken;
    }
    std::string text(std::size_t maximum = 255) {
        const auto taken = bytes(maximum);
        return {taken.begin(), taken.end()};
    }
    ByteBuffer buffer(std::size_t maximum = 255) { return ByteBuffer(bytes(maximum)); }

  private:
    std::span<const std::uint8_t> rest_;
};

}  // namespace halvane::fuzzing

#endif
