// The tokens of a text with quotes and backslash escapes, for any set of delimiters.
#ifndef HALVANE_UTILS_TEXT_QUOTED_TEXT_INTERNAL_H
#define HALVANE_UTILS_TEXT_QUOTED_TEXT_INTERNAL_H

#include <cstddef>

#include "halvane/utils/text/byte_set_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace halvane {

// Where the bytes of a token go: those beyond the capacity are counted only.
class TokenBuffer {
  public:
    TokenBuffer(char* buffer, std::size_t capacity) : buffer_(buffer), capacity_(capacity) {}

    void put(char byte) {
        if (total_ < capacity_) buffer_[total_] = byte;
        ++total_;
    }

    std::size_t copied() const { return total_ < capacity_ ? total_ : capacity_; }
    std::size_t total() const { return total_; }

  private:
    char* buffer_;
    std::size_t capacity_;
    std::size_t total_ = 0;
};

// Whether the text stands at a backslash and a newline, which are no part of what is read.
inline bool isContinuedLine(const TextCursor& text) {
    return text.peek() == '\\' && text.peek(1) == '\n';
}

// Reads up to a delimiter outside of quotes, which stays unread, or up to the end.
void takeQuotedToken(TextCursor& text, const ByteSet& delimiters, TokenBuffer& token);

}  // namespace halvane

#endif
