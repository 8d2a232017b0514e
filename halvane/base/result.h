// The value of an operation, or the error that it failed with. It offers the part of std::expected
// (C++23) that this library uses, with the same names, so that the standard class can replace it.
//
//     Result<int> half(int number) {
//         if (number % 2 != 0) return Unexpected(Error{...});
//         return number / 2;
//     }
//
//     if (const auto result = half(4)) use(*result);
//     else tell(result.error());
//
// A value type. Threads: as for the value or error that it holds.
#ifndef HALVANE_BASE_RESULT_H
#define HALVANE_BASE_RESULT_H

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>
#include <variant>

#include "halvane/base/error.h"

namespace halvane {

// Wraps the error of a Result, so that it is never taken for a value.
template <typename E>
class Unexpected {
  public:
    // The error, which a Result takes.
    explicit Unexpected(E error) : error_(std::move(error)) {}

    // The error:
    const E& error() const& noexcept { return error_; }
    E&& error() && noexcept { return std::move(error_); }

  private:
    E error_;
};

template <typename T, typename E = Error>
class Result;

// A type that a result's value can be constructed from, other than the result itself.
template <typename U, typename T, typename E>
concept ResultValue =
    std::constructible_from<T, U> && !std::same_as<std::remove_cvref_t<U>, Result<T, E>>;

template <typename T, typename E>
class [[nodiscard]] Result {
  public:
    // What std::expected names so.
    using value_type = T;
    // What std::expected names so.
    using error_type = E;

    // Succeeded with the value.
    template <ResultValue<T, E> U = T>
    // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the concept leaves copies alone.
    Result(U&& value) : state_(std::in_place_index<0>, std::forward<U>(value)) {}
    // Failed with the error.
    template <std::convertible_to<E> G>
    Result(Unexpected<G> error) : state_(std::in_place_index<1>, std::move(error).error()) {}

    // Whether it succeeded:
    bool has_value() const noexcept { return state_.index() == 0; }
    explicit operator bool() const noexcept { return has_value(); }

    // REQUIRES: has_value().
    T& operator*() & noexcept { return *std::get_if<0>(&state_); }
    const T& operator*() const& noexcept { return *std::get_if<0>(&state_); }
    T&& operator*() && noexcept { return std::move(*std::get_if<0>(&state_)); }
    T* operator->() noexcept { return std::get_if<0>(&state_); }
    const T* operator->() const noexcept { return std::get_if<0>(&state_); }

    // REQUIRES: !has_value().
    const E& error() const& noexcept { return *std::get_if<1>(&state_); }
    E&& error() && noexcept { return std::move(*std::get_if<1>(&state_)); }

    // Equal if both hold equal values, or both hold equal errors.
    friend bool operator==(const Result& a, const Result& b) {
        if (!a) return !b && a.error() == b.error();
        return b && *a == *b;
    }
    // Equal if the result holds a value equal to `value`.
    friend bool operator==(const Result& a, const T& value) { return a && *a == value; }

    // The value, or `other` after a failure:
    template <typename U>
    T value_or(U&& other) const& {
        return has_value() ? **this : static_cast<T>(std::forward<U>(other));
    }
    // The value, or `other` after a failure:
    template <typename U>
    T value_or(U&& other) && {
        return has_value() ? *std::move(*this) : static_cast<T>(std::forward<U>(other));
    }

    // Returns the result of `next` for the value, or the same error if there is no value.
    template <typename F>
    auto and_then(F&& next) && -> std::invoke_result_t<F, T&&> {
        if (!has_value()) return Unexpected(std::move(*this).error());
        return std::invoke(std::forward<F>(next), *std::move(*this));
    }

    // The same for a `next` that cannot fail.
    template <typename F>
    auto transform(F&& next) && -> Result<std::invoke_result_t<F, T&&>, E> {
        if (!has_value()) return Unexpected(std::move(*this).error());
        return std::invoke(std::forward<F>(next), *std::move(*this));
    }

  private:
    std::variant<T, E> state_;
};

// The result of an operation that returns nothing but may fail.
template <typename E>
class [[nodiscard]] Result<void, E> {
  public:
    // What std::expected names so:
    using value_type = void;
    using error_type = E;

    Result() = default;
    template <std::convertible_to<E> G>
    Result(Unexpected<G> error) : state_(std::in_place_index<1>, std::move(error).error()) {}

    // Whether it succeeded:
    bool has_value() const noexcept { return state_.index() == 0; }
    explicit operator bool() const noexcept { return has_value(); }

    // REQUIRES: !has_value().
    const E& error() const& noexcept { return *std::get_if<1>(&state_); }
    E&& error() && noexcept { return std::move(*std::get_if<1>(&state_)); }

  private:
    std::variant<std::monostate, E> state_;
};

}  // namespace halvane

#endif
