#include "halvane/base/crc32.h"

#include <array>

namespace halvane {

namespace {

// The generator polynomial of 9.2.4.8 without x^32. The coefficient of x^31 is in bit 0, since
// octets enter the sum as they are sent, least significant bit first.
constexpr std::uint32_t kPolynomial = 0xEDB88320;
constexpr std::uint32_t kAllOnes = 0xFFFFFFFF;

// The remainder for each octet.
constexpr std::array<std::uint32_t, 256> kRemainders = [] {
    std::array<std::uint32_t, 256> remainders{};
    for (std::uint32_t octet = 0; octet < remainders.size(); ++octet) {
        std::uint32_t remainder = octet;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? kPolynomial : 0);
        }
        remainders[octet] = remainder;
    }
    return remainders;
}();

}  // namespace

std::uint32_t crc32(std::span<const std::uint8_t> octets) noexcept {
    std::uint32_t sum = kAllOnes;
    for (const std::uint8_t octet : octets) {
        sum = (sum >> 8) ^ kRemainders[(sum ^ octet) & 0xFF];
    }
    return sum ^ kAllOnes;
}

}  // namespace halvane
