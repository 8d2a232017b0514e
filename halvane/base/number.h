// A number as a property list holds it: a signed or unsigned 64-bit integer, or a double.
//
// Comparison is by value and exact across the three kinds: 1 equals 1.0, and 2^63 as
// unsigned is greater than every signed integer. A NaN is unordered.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_BASE_NUMBER_H
#define HALVANE_BASE_NUMBER_H

#include <compare>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT Number {
  public:
    // The integer 0.
    Number() = default;

    // A signed integer.
    template <std::signed_integral Integer>
    Number(Integer value) : value_(static_cast<std::int64_t>(value)) {}

    // An unsigned integer.
    template <std::unsigned_integral Integer>
    requires(!std::same_as<Integer, bool>) Number(Integer value)
        : value_(static_cast<std::uint64_t>(value)) {}

    // A real number. A float becomes the double of the same value.
    template <std::floating_point Real>
    Number(Real value) : value_(static_cast<double>(value)) {}

    // Booleans are property-list values of their own, not numbers.
    template <std::same_as<bool> Boolean>
    Number(Boolean) = delete;

    // How the number holds its value: Number(1.0) is real, Number(1u) unsigned.
    bool isSigned() const { return std::holds_alternative<std::int64_t>(value_); }
    bool isUnsigned() const { return std::holds_alternative<std::uint64_t>(value_); }
    bool isReal() const { return std::holds_alternative<double>(value_); }

    // Converts the value. The fraction is dropped. A value out of range becomes the nearest limit
    // of the type, and a NaN becomes 0.
    std::int64_t int64() const {
        const auto* value = std::get_if<std::int64_t>(&value_);
        return value != nullptr ? *value : convertedToInt64();
    }
    std::uint64_t uint64() const {
        const auto* value = std::get_if<std::uint64_t>(&value_);
        return value != nullptr ? *value : convertedToUInt64();
    }
    double real() const {
        const auto* value = std::get_if<double>(&value_);
        return value != nullptr ? *value : convertedToReal();
    }

    // Absent unless the type holds the value exactly.
    std::optional<std::int64_t> exactInt64() const;
    std::optional<std::uint64_t> exactUInt64() const;

    // The number as text: an integer without a fraction, a double in the shortest form that reads
    // back equal. "54", "6.5", "-61".
    std::string description() const;

    // Compares the values, whatever types hold them. NaN is unordered.
    friend HALVANE_EXPORT std::partial_ordering operator<=>(const Number& a, const Number& b);
    friend HALVANE_EXPORT bool operator==(const Number& a, const Number& b) {
        return (a <=> b) == std::partial_ordering::equivalent;
    }

  private:
    std::int64_t convertedToInt64() const;
    std::uint64_t convertedToUInt64() const;
    double convertedToReal() const;

    std::variant<std::int64_t, std::uint64_t, double> value_ = std::int64_t{0};
};

}  // namespace halvane

#endif
