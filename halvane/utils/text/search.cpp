#include "halvane/utils/text/search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/utils/text/byte_set_internal.h"
#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/substring_search_internal.h"

namespace {

using std::string_view;
using Find = std::size_t (*)(string_view text, string_view pattern);

// Like the searches of the C library, these functions take a constant text and return a mutable
// place in it, which its owner may change.
char* placeIn(string_view text, std::size_t position) {
    if (position == string_view::npos) return nullptr;
    return const_cast<char*>(text.data()) + position;
}

// Searches a text that ends after `length` bytes or at a NUL. The text is measured and searched in
// parts, each twice as long as the one before. The part read after a match is therefore
// proportional to the part before it, and a walk from match to match takes linear time.
char* placeBeforeNUL(const char* text, std::size_t length, string_view pattern, Find find) {
    constexpr std::size_t kFirstPart = 512;
    if (text == nullptr || pattern.empty()) return const_cast<char*>(text);
    std::size_t size = std::max(kFirstPart, 2 * pattern.size());
    while (true) {
        const string_view part(text, strnlen(text, std::min(size, length)));
        const std::size_t position = find(part, pattern);
        if (position != string_view::npos || part.size() < size) return placeIn(part, position);
        // The next match may begin in this part and end in the next one.
        const std::size_t passed = size - (pattern.size() - 1);
        text += passed;
        length -= passed;
        size *= 2;
    }
}

string_view bytesOf(const void* bytes, std::size_t length) {
    return halvane::textOf(static_cast<const char*>(bytes), length);
}

}  // namespace

char* stristr(const char* text, const char* pattern) {
    return strncasestr(text, SIZE_MAX, pattern);
}

char* strncasestr(const char* text, std::size_t length, const char* pattern) {
    return placeBeforeNUL(text, length, pattern, halvane::findIgnoringCase);
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
    const string_view wanted = bytesOf(pattern, patternLength);
    if (textLength == SIZE_MAX && text != nullptr) {
        return placeBeforeNUL(static_cast<const char*>(text), textLength, wanted,
                              halvane::findBytes);
    }
    const string_view searched = bytesOf(text, textLength);
    return placeIn(searched, halvane::findBytes(searched, wanted));
}
