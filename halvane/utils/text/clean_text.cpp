#include "halvane/utils/text/clean_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/utf_text.h"

namespace {

using std::string_view;

bool isPrintableASCII(char character) {
    return halvane::isPrintable(static_cast<unsigned char>(character));
}

bool isPrintableInUTF8(char byte) {
    return isPrintableASCII(byte) || static_cast<unsigned char>(byte) >= 0x80;
}

template <typename IsPrintable>
string_view trimmed(string_view text, IsPrintable isPrintable) {
    const auto isShown = [=](char byte) { return byte != ' ' && isPrintable(byte); };
    const auto start = std::find_if(text.begin(), text.end(), isShown);
    const auto end = std::find_if(text.rbegin(), std::reverse_iterator(start), isShown).base();
    return {start, end};
}

// Copies forwards, so that `buffer` may be the start of the text.
template <typename IsPrintable>
char* copyCleansed(string_view text, char* buffer, IsPrintable isPrintable) {
    char* out = buffer;
    for (const char byte : text) *out++ = isPrintable(byte) ? byte : '^';
    *out = '\0';
    return buffer;
}

}  // namespace

bool IsASCII7PrintableString(const char* text, std::size_t length) {
    halvane::TextCursor cursor(text, length);
    while (!cursor.atEnd() && isPrintableASCII(cursor.peek())) cursor.skip(1);
    return cursor.atEnd();
}

char* CleanseDiskString(const char* text, std::size_t length, char* buffer, std::size_t size) {
    if (size == 0) return buffer;
    const string_view name = trimmed(halvane::textOf(text, length), isPrintableASCII);
    return copyCleansed(name.substr(0, size - 1), buffer, isPrintableASCII);
}

char* CleanseHFSVolumeName(const char* text, std::size_t length, char* buffer, std::size_t size) {
    if (size == 0) return buffer;
    const string_view name = trimmed(halvane::textOf(text, length), isPrintableInUTF8);
    const std::size_t kept = TruncateUTF8(name.data(), name.size(), size - 1);
    return copyCleansed(name.substr(0, kept), buffer, isPrintableInUTF8);
}
