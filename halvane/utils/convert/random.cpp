#include "halvane/utils/convert/random.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>

#include "halvane/platform/os/random_internal.h"

namespace {

constexpr std::size_t kValueSize = sizeof(std::uint32_t);

// One system call reads this many values.
constexpr std::size_t kBatch = 64;

constexpr std::string_view kCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

// Stores the upper bytes of a value, the most significant one first.
void store(std::uint32_t value, std::span<std::uint8_t> bytes) {
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value >> 24);
        value <<= CHAR_BIT;
    }
}

std::size_t randomNumber() {
    return static_cast<std::size_t>(std::rand());
}

}  // namespace

HalvaneStatus RandomBytes(void* buffer, std::size_t length) {
    std::span<std::uint8_t> left(static_cast<std::uint8_t*>(buffer), length);
    std::array<std::uint32_t, kBatch> batch;
    while (!left.empty()) {
        const std::size_t needed = left.size() / kValueSize + (left.size() % kValueSize != 0);
        const auto values = std::span(batch).first(std::min(needed, kBatch));
        halvane::fillRandom(values);
        for (const std::uint32_t value : values) {
            const auto bytes = left.first(std::min(left.size(), kValueSize));
            store(value, bytes);
            left = left.subspan(bytes.size());
        }
    }
    return kStatusOK;
}

char* RandomString(std::size_t minLength, std::size_t maxLength, char* buffer) {
    minLength = std::min(minLength, maxLength);
    const std::size_t lengths = maxLength - minLength + 1;
    const std::size_t number = randomNumber();
    // If there are more lengths than a size_t can count, `lengths` is 0; every number is then one.
    const std::size_t length = minLength + (lengths == 0 ? number : number % lengths);
    std::generate_n(buffer, length,
                    [] { return kCharacters[randomNumber() % kCharacters.size()]; });
    buffer[length] = '\0';
    return buffer;
}
