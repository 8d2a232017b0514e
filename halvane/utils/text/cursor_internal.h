// Reads a text from its start, and no further than requested.
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

// Returns the text of a pointer and a length; SIZE_MAX is the length of a NUL-terminated text. A
// null text is an empty one. A terminated text is measured, so use this only in functions that read
// all of it.
inline std::string_view textOf(const char* text, std::size_t length) {
    if (text == nullptr) return {};
    return {text, length == SIZE_MAX ? std::strlen(text) : length};
}

// Returns the first `most` characters of the text. Nothing after them is read.
inline std::string_view startOf(const char* text, std::size_t length, std::size_t most) {
    if (text == nullptr) return {};
    return {text, length == SIZE_MAX ? strnlen(text, most) : std::min(length, most)};
}

// A cursor borrows its text and must not outlive it.
class TextCursor {
  public:
    explicit TextCursor(std::string_view text) : TextCursor(text.data(), text.size()) {}

    // Takes the same arguments as textOf(), but does not measure a terminated text. However long
    // the text is, only what the cursor passes or peeks at is read.
    TextCursor(const char* text, std::size_t length)
        : at_(text), left_(text != nullptr ? length : 0), endsAtNUL_(length == SIZE_MAX) {}

    const char* position() const { return at_; }
    // REQUIRES: a text of known length
    std::size_t remaining() const { return left_; }
    bool atEnd() const { return left_ == 0 || (endsAtNUL_ && *at_ == '\0'); }

    // Returns the character `offset` ahead, or NUL past the end, which no caller accepts as a part
    // of anything.
    // REQUIRES: no NUL comes before that character
    char peek(std::size_t offset = 0) const {
        // A null text has no characters left, but the analyzer does not see that.
        return offset < left_ ? at_[offset] : '\0';  // NOLINT(clang-analyzer-core.NullDereference)
    }

    // REQUIRES: `count` characters are left
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
    // above `max`; the cursor is inside it.
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
    std::size_t left_;  // at most; a terminator may come earlier
    bool endsAtNUL_;
};

}  // namespace halvane

#endif
