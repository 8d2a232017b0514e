#include "halvane/base/number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace halvane {

namespace {

// The first double beyond each integer type. Both are exact.
constexpr double kTwoTo63 = 9223372036854775808.0;
constexpr double kTwoTo64 = 18446744073709551616.0;

template <typename Integer>
Integer clampedFromReal(double value, double belowLimit) {
    if (std::isnan(value)) return 0;
    if (value >= belowLimit) return std::numeric_limits<Integer>::max();
    if (value <= static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::min();
    }
    return static_cast<Integer>(value);
}

template <typename To, typename From>
To clampedFromInteger(From value) {
    if (std::in_range<To>(value)) return static_cast<To>(value);
    return std::cmp_less(value, 0) ? std::numeric_limits<To>::min()
                                   : std::numeric_limits<To>::max();
}

template <typename Integer>
std::strong_ordering compareIntegers(Integer a, Integer b) {
    return a <=> b;
}

std::strong_ordering compareIntegers(std::int64_t a, std::uint64_t b) {
    if (a < 0) return std::strong_ordering::less;
    return static_cast<std::uint64_t>(a) <=> b;
}

std::strong_ordering compareIntegers(std::uint64_t a, std::int64_t b) {
    return 0 <=> compareIntegers(b, a);
}

// The comparison is exact: it compares the integer part as an integer, and the fraction decides
// only a tie.
template <typename Integer>
std::partial_ordering compareWithReal(Integer a, double b, double belowLimit) {
    if (std::isnan(b)) return std::partial_ordering::unordered;
    if (b >= belowLimit) return std::partial_ordering::less;
    if (b < static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::partial_ordering::greater;
    }
    const double whole = std::trunc(b);
    if (const auto order = a <=> static_cast<Integer>(whole); order != 0) return order;
    return whole <=> b;
}

std::partial_ordering compareWithReal(std::int64_t a, double b) {
    return compareWithReal(a, b, kTwoTo63);
}

// A double between -1 and 0 also has the integer part 0, but is less than every unsigned integer.
std::partial_ordering compareWithReal(std::uint64_t a, double b) {
    if (b < 0) return std::partial_ordering::greater;
    return compareWithReal(a, b, kTwoTo64);
}

struct Compare {
    std::partial_ordering operator()(std::integral auto a, std::integral auto b) const {
        return compareIntegers(a, b);
    }
    std::partial_ordering operator()(std::integral auto a, double b) const {
        return compareWithReal(a, b);
    }
    std::partial_ordering operator()(double a, std::integral auto b) const {
        return 0 <=> compareWithReal(b, a);
    }
    std::partial_ordering operator()(double a, double b) const { return a <=> b; }
};

template <typename Value>
std::string shortest(Value value) {
    std::array<char, 32> text;
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value);
    return {text.data(), result.ptr};
}

}  // namespace

std::int64_t Number::convertedToInt64() const {
    if (const auto* value = std::get_if<double>(&value_)) {
        return clampedFromReal<std::int64_t>(*value, kTwoTo63);
    }
    return clampedFromInteger<std::int64_t>(std::get<std::uint64_t>(value_));
}

std::uint64_t Number::convertedToUInt64() const {
    if (const auto* value = std::get_if<double>(&value_)) {
        return clampedFromReal<std::uint64_t>(*value, kTwoTo64);
    }
    return clampedFromInteger<std::uint64_t>(std::get<std::int64_t>(value_));
}

double Number::convertedToReal() const {
    return std::visit([](auto value) { return static_cast<double>(value); }, value_);
}

std::optional<std::int64_t> Number::exactInt64() const {
    const auto value = int64();
    if (*this == Number(value)) return value;
    return std::nullopt;
}

std::optional<std::uint64_t> Number::exactUInt64() const {
    const auto value = uint64();
    if (*this == Number(value)) return value;
    return std::nullopt;
}

std::string Number::description() const {
    return std::visit([](auto value) { return shortest(value); }, value_);
}

std::partial_ordering operator<=>(const Number& a, const Number& b) {
    return std::visit(Compare{}, a.value_, b.value_);
}

}  // namespace halvane
