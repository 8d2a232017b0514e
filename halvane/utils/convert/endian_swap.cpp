#include "halvane/utils/convert/endian_swap.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace {

std::uint16_t swapped(std::uint16_t value) {
    return __builtin_bswap16(value);
}

std::uint32_t swapped(std::uint32_t value) {
    return __builtin_bswap32(value);
}

std::uint64_t swapped(std::uint64_t value) {
    return __builtin_bswap64(value);
}

template <typename Integer>
void swapEach(const void* source, std::size_t size, void* destination) {
    const auto* from = static_cast<const std::uint8_t*>(source);
    auto* to = static_cast<std::uint8_t*>(destination);
    for (; size >= sizeof(Integer); size -= sizeof(Integer)) {
        Integer value;
        std::memcpy(&value, from, sizeof(value));
        value = swapped(value);
        std::memcpy(to, &value, sizeof(value));
        from += sizeof(value);
        to += sizeof(value);
    }
    if (size > 0 && from != to) std::memcpy(to, from, size);
}

}  // namespace

void EndianSwap16Mem(void* memory, std::size_t size) {
    swapEach<std::uint16_t>(memory, size, memory);
}

void EndianSwap32Mem(void* memory, std::size_t size) {
    swapEach<std::uint32_t>(memory, size, memory);
}

void EndianSwap16MemCopy(const void* source, std::size_t size, void* destination) {
    swapEach<std::uint16_t>(source, size, destination);
}

void EndianSwap32MemCopy(const void* source, std::size_t size, void* destination) {
    swapEach<std::uint32_t>(source, size, destination);
}

float EndianSwapFloat32(float value) {
    return std::bit_cast<float>(swapped(std::bit_cast<std::uint32_t>(value)));
}

double EndianSwapFloat64(double value) {
    return std::bit_cast<double>(swapped(std::bit_cast<std::uint64_t>(value)));
}

void MemReverse(void* memory, std::size_t size) {
    auto* bytes = static_cast<std::uint8_t*>(memory);
    std::reverse(bytes, bytes + size);
}

void MemReverseCopy(const void* source, std::size_t size, void* destination) {
    if (source == destination) return MemReverse(destination, size);
    const auto* from = static_cast<const std::uint8_t*>(source);
    std::reverse_copy(from, from + size, static_cast<std::uint8_t*>(destination));
}
