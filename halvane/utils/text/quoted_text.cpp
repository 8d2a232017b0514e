#include "halvane/utils/text/quoted_text.h"

#include <optional>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/quoted_text_internal.h"

namespace halvane {

namespace {

constexpr bool isOctalDigit(char character) {
    return digitValue(character) < 8;
}

char take(TextCursor& text) {
    const char byte = text.peek();
    text.skip(1);
    return byte;
}

// Returns the byte that is escaped by its number, if such an escape comes next.
std::optional<char> takeNumberedByte(TextCursor& text) {
    const auto digit = [&](std::size_t offset) { return digitValue(text.peek(offset)); };
    unsigned value = 0;
    if (text.peek(1) == 'x' || text.peek(1) == 'X') {
        if (!isHexDigit(text.peek(2)) || !isHexDigit(text.peek(3))) return std::nullopt;
        value = digit(2) << 4 | digit(3);
    } else {
        const bool isOctal =
            digit(1) <= 3 && isOctalDigit(text.peek(2)) && isOctalDigit(text.peek(3));
        if (!isOctal) return std::nullopt;
        value = digit(1) << 6 | digit(2) << 3 | digit(3);
    }
    text.skip(4);
    return static_cast<char>(value);
}

// Takes a backslash and what it escapes. If `canEscape` refuses the next byte, the backslash stays.
template <typename CanEscape>
void takeEscape(TextCursor& text, TokenBuffer& token, CanEscape canEscape) {
    if (isContinuedLine(text)) return text.skip(2);
    if (const auto byte = takeNumberedByte(text)) return token.put(*byte);
    if (text.remaining() > 1 && canEscape(text.peek(1))) text.skip(1);
    token.put(take(text));
}

void takeSingleQuoted(TextCursor& text, TokenBuffer& token) {
    text.skip(1);
    while (!text.atEnd() && !text.skipIf('\'')) token.put(take(text));
}

void takeDoubleQuoted(TextCursor& text, TokenBuffer& token) {
    constexpr auto canEscape = [](char byte) { return byte == '"' || byte == '\\'; };
    text.skip(1);
    while (!text.atEnd() && !text.skipIf('"')) {
        if (text.peek() == '\\') {
            takeEscape(text, token, canEscape);
        } else {
            token.put(take(text));
        }
    }
}

}  // namespace

void takeQuotedToken(TextCursor& text, const ByteSet& delimiters, TokenBuffer& token) {
    constexpr auto canEscape = [](char) { return true; };
    while (!text.atEnd() && !delimiters.contains(text.peek())) {
        switch (text.peek()) {
            case '"':
                takeDoubleQuoted(text, token);
                break;
            case '\'':
                takeSingleQuoted(text, token);
                break;
            case '\\':
                takeEscape(text, token, canEscape);
                break;
            default:
                token.put(take(text));
        }
    }
}

}  // namespace halvane

namespace {

using halvane::ByteSet;
using halvane::TextCursor;
using halvane::TokenBuffer;

TextCursor cursorOf(const char* text, const char* end) {
    return TextCursor(std::string_view(text, static_cast<std::size_t>(end - text)));
}

// Reports a token, and skips the delimiter after it.
void answer(TextCursor& text, const TokenBuffer& token, std::size_t* copied, std::size_t* total,
            const char** next) {
    if (!text.atEnd()) text.skip(1);
    if (copied != nullptr) *copied = token.copied();
    if (total != nullptr) *total = token.total();
    if (next != nullptr) *next = text.position();
}

}  // namespace

bool ParseQuotedEscapedString(const char* text, const char* end, char delimiter, char* buffer,
                              std::size_t capacity, std::size_t* copied, std::size_t* total,
                              const char** next) {
    TextCursor cursor = cursorOf(text, end);
    cursor.skipSpace();
    if (cursor.atEnd()) return false;
    TokenBuffer token(buffer, capacity);
    halvane::takeQuotedToken(cursor, ByteSet({&delimiter, 1}), token);
    answer(cursor, token, copied, total, next);
    return true;
}

bool ParseEscapedString(const char* text, const char* end, char delimiter, char* buffer,
                        std::size_t capacity, std::size_t* copied, std::size_t* total,
                        const char** next) {
    TextCursor cursor = cursorOf(text, end);
    if (cursor.atEnd()) return false;
    TokenBuffer token(buffer, capacity);
    while (!cursor.atEnd() && cursor.peek() != delimiter) {
        if (cursor.peek() == '\\' && cursor.remaining() > 1) cursor.skip(1);
        token.put(halvane::take(cursor));
    }
    answer(cursor, token, copied, total, next);
    return true;
}
