#include "halvane/utils/text/xml_escape.h"

#include <cstdlib>
#include <string_view>

#include "halvane/utils/text/cursor_internal.h"

namespace {

using std::string_view;

// Returns the escaped form of a byte; empty if the byte stays.
constexpr string_view replacementOf(char byte) {
    switch (byte) {
        case '&':
            return "&amp;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        default:
            return {};
    }
}

std::size_t escapedSize(string_view text) {
    std::size_t size = text.size();
    for (const char byte : text) {
        const string_view replacement = replacementOf(byte);
        if (!replacement.empty()) size += replacement.size() - 1;
    }
    return size;
}

// Returns the end of the written text.
char* writeEscaped(string_view text, char* out) {
    for (const char byte : text) {
        const string_view replacement = replacementOf(byte);
        if (replacement.empty()) {
            *out++ = byte;
        } else {
            out += replacement.copy(out, replacement.size());
        }
    }
    return out;
}

}  // namespace

void XMLEscape(const char* text, std::size_t length, char* buffer, std::size_t* escapedLength) {
    const string_view unescaped = halvane::textOf(text, length);
    const std::size_t size =
        buffer != nullptr ? static_cast<std::size_t>(writeEscaped(unescaped, buffer) - buffer)
                          : escapedSize(unescaped);
    if (escapedLength != nullptr) *escapedLength = size;
}

HalvaneStatus XMLEscapeCopy(const char* text, std::size_t length, char** copy,
                            std::size_t* escapedLength) {
    const string_view unescaped = halvane::textOf(text, length);
    const std::size_t size = escapedSize(unescaped);
    auto* const escaped = static_cast<char*>(std::malloc(size + 1));
    if (escaped == nullptr) return kStatusNoMemory;
    *writeEscaped(unescaped, escaped) = '\0';
    *copy = escaped;
    if (escapedLength != nullptr) *escapedLength = size;
    return kStatusOK;
}
