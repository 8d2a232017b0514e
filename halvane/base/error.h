// A failure: a domain and a code within the domain. It carries no text.
#ifndef HALVANE_BASE_ERROR_H
#define HALVANE_BASE_ERROR_H

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/cxx20.h"

namespace halvane {

class ErrorDomain;

// What operator+ of ErrorDomain takes: two texts, one of which is a domain.
template <typename T>
concept ErrorDomainText = std::convertible_to<const T&, std::string_view>;
template <typename A, typename B>
concept ErrorDomainIsEither = std::same_as<A, ErrorDomain> || std::same_as<B, ErrorDomain>;

// The name of a domain. A domain made by constant() allocates nothing, and neither do its copies.
// The library makes all its errors this way, so that it can report a lack of memory while memory is
// short. Any other domain owns its text, as std::string does.
class ErrorDomain {
  public:
    ErrorDomain() = default;
    ErrorDomain(std::string text) : own_(std::move(text)) {}
    ErrorDomain(const char* text) : own_(text) {}

    // REQUIRES: `text` never changes and lives until the process ends, as a literal does.
    static ErrorDomain constant(const char* text) noexcept {
        ErrorDomain domain;
        domain.constant_ = text;
        return domain;
    }

    // The text is valid until the domain is assigned to, moved from or destroyed.
    const char* c_str() const noexcept { return constant_ != nullptr ? constant_ : own_.c_str(); }
    std::string_view view() const noexcept {
        return constant_ != nullptr ? std::string_view(constant_) : std::string_view(own_);
    }
    std::size_t size() const noexcept { return view().size(); }
    bool empty() const noexcept { return view().empty(); }

    // The text, as view() and as a copy of it:
    operator std::string_view() const noexcept { return view(); }
    operator std::string() const { return std::string(view()); }

    // Domains are equal if their texts are, wherever the texts are stored.
    friend bool operator==(const ErrorDomain& a, const ErrorDomain& b) noexcept {
        return a.view() == b.view();
    }
    friend bool operator==(const ErrorDomain& a, std::string_view b) noexcept {
        return a.view() == b;
    }
    friend bool operator==(const ErrorDomain& a, const std::string& b) noexcept {
        return a.view() == b;
    }
    friend bool operator==(const ErrorDomain& a, const char* b) noexcept { return a.view() == b; }
    friend std::strong_ordering operator<=>(const ErrorDomain& a, const ErrorDomain& b) noexcept {
        return a.view() <=> b.view();
    }
    // Returns the two texts joined. One of them may be of another type.
    template <ErrorDomainText A, ErrorDomainText B>
    requires ErrorDomainIsEither<A, B>
    friend std::string operator+(const A& a, const B& b) {
        return std::string(std::string_view(a)).append(std::string_view(b));
    }
    friend std::ostream& operator<<(std::ostream& stream, const ErrorDomain& domain) {
        return stream << domain.view();
    }

  private:
    const char* constant_ = nullptr;  // null if own_ holds the text
    std::string own_;
};

struct Error {
    ErrorDomain domain;     // who made the code
    std::int64_t code = 0;  // what went wrong, by the domain's own numbers

    friend bool operator==(const Error&, const Error&) = default;
};

}  // namespace halvane

#endif
