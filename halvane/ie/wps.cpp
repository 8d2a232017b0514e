#include "halvane/ie/wps.h"

#include <array>

#include "halvane/utils/convert/integer_math.h"
#include "halvane/utils/convert/random.h"

namespace halvane {

namespace {

constexpr unsigned kDigits = 8;

// Sums up the digits from the right; digit 0 is the check digit. Odd digits have weight 3, even
// ones weight 1. The digits of a negative value are 0 or negative.
template <typename Integer>
constexpr Integer weightedSum(Integer value, unsigned firstDigit) {
    Integer sum = 0;
    for (unsigned digit = 0; digit < kDigits; ++digit, value /= 10) {
        if (digit >= firstDigit) sum += value % 10 * (digit % 2 == 1 ? 3 : 1);
    }
    return sum;
}

// An integer out of range wraps around; a real number becomes the nearest limit.
std::uint64_t unsignedValue(const Number& number) {
    return number.isSigned() ? static_cast<std::uint64_t>(number.int64()) : number.uint64();
}
std::int64_t signedValue(const Number& number) {
    return number.isUnsigned() ? static_cast<std::int64_t>(number.uint64()) : number.int64();
}

}  // namespace

Number HalvaneWPS::generatePIN() {
    std::array<std::uint8_t, kDigits - 1> random{};
    RandomBytes(random.data(), random.size());
    std::uint32_t pin = 0;
    for (unsigned i = 0; i < random.size(); ++i) pin += random[i] % 10u * ipow10(i + 1);
    return Number(std::int64_t{pin} + computeChecksum(Number(pin)));
}

unsigned HalvaneWPS::computeChecksum(const std::optional<Number>& pin) {
    if (!pin) return 0;
    const auto sum = weightedSum(static_cast<std::uint32_t>(unsignedValue(*pin)), 1);
    return (10 - sum % 10) % 10;
}

bool HalvaneWPS::validateChecksum(const std::optional<Number>& pin) {
    return pin && weightedSum(signedValue(*pin), 0) % 10 == 0;
}

}  // namespace halvane
