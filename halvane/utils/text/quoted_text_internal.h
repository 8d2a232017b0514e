// Reads the tokens of a text with quotes and backslash escapes, for any set of delimiters.
#ifndef HALVANE_UTILS_TEXT_QUOTED_TEXT_INTERNAL_H
#define HALVANE_UTILS_TEXT_QUOTED_TEXT_INTERNAL_H

#include <cstddef>

#include "halvane/utils/text/byte_set_internal.h"
#include "halvane/utils/text/cursor_internal.h"

namespace halvane {

// Stores the bytes of a token. Bytes beyond the capacity are only counted.
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

// Returns whether a backslash and a newline come next, which belong to no token.
inline bool isContinuedLine(const TextCursor& text) {
    return text.peek() == '\\' && text.peek(1) == '\n';
}

// Reads up to the end, or up to a delimiter outside of quotes, which it does not consume.
void takeQuotedToken(TextCursor& text, const ByteSet& delimiters, TokenBuffer& token);

}  // namespace halvane

#endif
