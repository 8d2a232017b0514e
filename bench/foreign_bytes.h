// Inputs of any size, as a stranger may send them.
#ifndef BENCH_FOREIGN_BYTES_H
#define BENCH_FOREIGN_BYTES_H

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

using Bytes = std::vector<std::uint8_t>;

inline void append(Bytes& bytes, std::initializer_list<unsigned> more) {
    for (const unsigned byte : more) bytes.push_back(static_cast<std::uint8_t>(byte));
}

inline void append(Bytes& bytes, const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

inline Bytes repeated(std::initializer_list<unsigned> piece, std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) append(bytes, piece);
    return bytes;
}

inline std::string repeated(std::string_view piece, std::size_t count) {
    std::string text;
    text.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i) text += piece;
    return text;
}

// Between `head` and `tail`.
inline std::string enclosed(std::string_view head, std::string_view piece, std::size_t count,
                            std::string_view tail) {
    return std::string(head) + repeated(piece, count) + std::string(tail);
}

// The rate of element `index` of `count`, 1 to 120 in units of 500 kb/s.
inline unsigned risingRate(std::size_t index, std::size_t count) {
    return static_cast<unsigned>(1 + index * 120 / count);
}

// Supported Rates elements of one rate each. REQUIRES: 3 * count < 65536 for a record's buffer.
inline Bytes risingRateElements(std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) append(bytes, {1, 1, risingRate(i, count)});
    return bytes;
}
inline Bytes fallingRateElements(std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i) append(bytes, {1, 1, 121 - risingRate(i, count)});
    return bytes;
}

}  // namespace bench

#endif
