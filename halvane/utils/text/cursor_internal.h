// Reading a text from its start, no further than it is asked for.
#ifndef HALVANE_UTILS_TEXT_CURSOR_INTERNAL_H
#define HALVANE_UTILS_TEXT_CURSOR_INTERNAL_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/status.h"

namespace halvane {

// The text that a pointer and a length tell: SIZE_MAX is the length of a NUL-terminated one. A null
// text is an empty one. Measures a terminated text, so it is for functions that read all of it.
inline std::string_view textOf(const char* text, std::size_t length) {
    if (text == nullptr) return {};
    return {text, length == SIZE_MAX ? std::strlen(text) : length};
}

// The first `most` characters of it. Nothing behind them is looked at.
inline std::string_view startOf(const char* text, std::size_t length, std::size_t most) {
    if (text == nullptr) return {};
    return {text, length == SIZE_MAX ? strnlen(text, most) : std::min(length, most)};
}

// A cursor borrows its text: it must not outlive it.
class TextCursor {
  public:
    explicit TextCursor(std::string_view text) : TextCursor(text.data(), text.size()) {}

    // The text that a pointer and a length tell, as textOf() takes them, but a terminated one is
    // not measured: however long it is, only what the cursor passes or looks at is read.
    TextCursor(const char* text, std::size_t length)
        : at_(text), left_(text != nullptr ? length : 0), endsAtNUL_(length == SIZE_MAX) {}

    const char* position() const { return at_; }
    // REQUIRES: a text of known length
    std::size_t remaining() const { return left_; }
    bool atEnd() const { return left_ == 0 || (endsAtNUL_ && *at_ == '\0'); }

    // The character `offset` ahead; a NUL past the end, which no caller takes for part of anything.
    // REQUIRES: no NUL among the characters before that one
    char peek(std::size_t offset = 0) const {
        // A null text has none left, which the analyzer loses sight of.
        return offset < left_ ? at_[offset] : '\0';  // NOLINT(clang-analyzer-core.NullDereference)
    }

    // REQUIRES: there are so many
    void skip(std::size_t count) {
        at_ += count;
        left_ -= count;
    }

    // REQUIRES: character != '\0'
    bool skipIf(char character) {
        if (peek() != character) return false;
        skip(1);
        return true;
    }

    void skipSpace() {
        while (isSpace(peek())) skip(1);
    }

    // Consumes decimal digits. kStatusMalformed: there are none. kStatusOutOfRange: the number is
    // above `max`, and the cursor stands within it.
    HalvaneStatus decimal(std::uint32_t max, std::uint32_t& value) {
        if (!isDigit(peek())) return kStatusMalformed;
        std::uint64_t number = 0;
        for (; isDigit(peek()); skip(1)) {
            number = number * 10 + digitValue(peek());
            if (number > max) return kStatusOutOfRange;
        }
        value = static_cast<std::uint32_t>(number);
        return kStatusOK;
    }

  private:
    const char* at_;
    std::size_t left_;  // at most; a terminator may come before
    bool endsAtNUL_;
};

}  // namespace halvane

#endif
