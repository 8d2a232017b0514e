#include "halvane/utils/text_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/utils/byte_set_internal.h"
#include "halvane/utils/substring_search_internal.h"
#include "halvane/utils/text_cursor_internal.h"

namespace {

// As the C library's searches do, the functions take a text that they must not change, and hand
// out a place in it that its owner may.
char* placeIn(std::string_view text, std::size_t position) {
    if (position == std::string_view::npos) return nullptr;
    return const_cast<char*>(text.data()) + position;
}

std::string_view bytesOf(const void* bytes, std::size_t length) {
    return halvane::textOf(static_cast<const char*>(bytes), length);
}

}  // namespace

char* stristr(const char* text, const char* pattern) {
    return strncasestr(text, SIZE_MAX, pattern);
}

char* strncasestr(const char* text, std::size_t length, const char* pattern) {
    const std::string_view searched(text, strnlen(text, length));
    return placeIn(searched, halvane::findIgnoringCase(searched, pattern));
}

std::size_t strnspn(const char* text, std::size_t length, const char* accepted) {
    const halvane::ByteSet set(accepted);
    std::size_t span = 0;
    while (span < length && set.contains(text[span])) ++span;  // a NUL is in no set
    return span;
}

std::size_t strnspnx(const char* text, std::size_t length, const char* accepted) {
    return strnspn(text, length, accepted);
}

void* BoyerMooreSearch(const void* text, std::size_t textLength, const void* pattern,
                       std::size_t patternLength) {
    const std::string_view searched = bytesOf(text, textLength);
    return placeIn(searched, halvane::findBytes(searched, bytesOf(pattern, patternLength)));
}
