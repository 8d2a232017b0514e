// Reading a text of known length from its start to its end.
#ifndef HALVANE_UTILS_TEXT_CURSOR_INTERNAL_H
#define HALVANE_UTILS_TEXT_CURSOR_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "halvane/base/status.h"
#include "halvane/utils/ascii_internal.h"

namespace halvane {

// The text that a pointer and a length tell: SIZE_MAX is the length of a NUL-terminated one. A null
// text is an empty one.
inline std::string_view textOf(const char* text, std::size_t length) {
    if (text == nullptr) return {};
    return {text, length == SIZE_MAX ? std::strlen(text) : length};
}

// A cursor borrows its text: it must not outlive it.
class TextCursor {
  public:
    explicit TextCursor(std::string_view text)
        : at_(text.data()), end_(text.data() + text.size()) {}

    const char* position() const { return at_; }
    std::size_t remaining() const { return static_cast<std::size_t>(end_ - at_); }
    bool atEnd() const { return at_ == end_; }

    // The character `offset` ahead; a NUL past the end, which no caller takes for part of anything.
    char peek(std::size_t offset = 0) const { return offset < remaining() ? at_[offset] : '\0'; }

    // REQUIRES: count <= remaining()
    void skip(std::size_t count) { at_ += count; }

    bool skipIf(char character) {
        if (atEnd() || *at_ != character) return false;
        ++at_;
        return true;
    }

    void skipSpace() {
        while (at_ != end_ && isSpace(*at_)) ++at_;
    }

    // Consumes decimal digits. kStatusMalformed: there are none. kStatusOutOfRange: the number is
    // above `max`, and the cursor stands within it.
    HalvaneStatus decimal(std::uint32_t max, std::uint32_t& value) {
        if (!isDigit(peek())) return kStatusMalformed;
        std::uint64_t number = 0;
        for (; at_ != end_ && isDigit(*at_); ++at_) {
            number = number * 10 + digitValue(*at_);
            if (number > max) return kStatusOutOfRange;
        }
        value = static_cast<std::uint32_t>(number);
        return kStatusOK;
    }

  private:
    const char* at_;
    const char* end_;
};

}  // namespace halvane

#endif
