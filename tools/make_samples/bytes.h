// Byte strings put together from fields.
#ifndef TOOLS_MAKE_SAMPLES_BYTES_H
#define TOOLS_MAKE_SAMPLES_BYTES_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace halvane::samples {

using Bytes = std::vector<std::uint8_t>;

enum class Order { Little, Big };

// The low `size` bytes of `value`, in that order.
inline Bytes number(std::uint64_t value, std::size_t size, Order order) {
    Bytes bytes;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t shift = 8 * (order == Order::Little ? i : size - 1 - i);
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
    return bytes;
}

inline Bytes u8(std::uint64_t value) {
    return number(value, 1, Order::Little);
}
inline Bytes le16(std::uint64_t value) {
    return number(value, 2, Order::Little);
}
inline Bytes le32(std::uint64_t value) {
    return number(value, 4, Order::Little);
}
inline Bytes le64(std::uint64_t value) {
    return number(value, 8, Order::Little);
}
inline Bytes be16(std::uint64_t value) {
    return number(value, 2, Order::Big);
}
inline Bytes be32(std::uint64_t value) {
    return number(value, 4, Order::Big);
}
inline Bytes be64(std::uint64_t value) {
    return number(value, 8, Order::Big);
}

inline Bytes text(std::string_view characters) {
    return Bytes(characters.begin(), characters.end());
}

inline Bytes join(std::initializer_list<Bytes> parts) {
    Bytes whole;
    for (const Bytes& part : parts) whole.insert(whole.end(), part.begin(), part.end());
    return whole;
}

}  // namespace halvane::samples

#endif
