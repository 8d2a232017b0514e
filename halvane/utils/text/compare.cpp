#include "halvane/utils/text/compare.h"

#include <cstdint>
#include <cstring>

#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace {

using halvane::orderIgnoringCase;
using halvane::orderOfBytes;

// Each comparison has a parameter that orders two bytes: -1, 0 or 1.

// Compares the text, up to the length of `prefix`, with `prefix`. A NUL of the text is less than
// any byte there.
template <auto order>
int comparePrefix(const char* text, std::size_t length, const char* prefix) {
    for (std::size_t i = 0; prefix[i] != '\0'; ++i) {
        if (i == length) return -1;
        if (const int found = order(text[i], prefix[i]); found != 0) return found;
    }
    return 0;
}

template <auto order>
int compareWhole(const char* text, std::size_t length, const char* cstring) {
    for (std::size_t i = 0; i < length; ++i) {
        if (const int found = order(text[i], cstring[i]); found != 0) return found;
        // A terminated text ends with the C string. Any other text continues with this NUL.
        if (cstring[i] == '\0') return length == SIZE_MAX ? 0 : 1;
    }
    return cstring[length] == '\0' ? 0 : -1;
}

template <auto order>
int compareSuffix(const char* text, std::size_t length, const char* suffix) {
    const std::size_t size = halvane::textOf(text, length).size();
    const std::size_t suffixSize = std::strlen(suffix);
    if (size < suffixSize) return -1;
    return compareWhole<order>(text + (size - suffixSize), suffixSize, suffix);
}

}  // namespace

int strncmpx(const char* text, std::size_t length, const char* cstring) {
    return compareWhole<orderOfBytes>(text, length, cstring);
}

int strnicmpx(const char* text, std::size_t length, const char* cstring) {
    return compareWhole<orderIgnoringCase>(text, length, cstring);
}

int strcmp_prefix(const char* text, const char* prefix) {
    return comparePrefix<orderOfBytes>(text, SIZE_MAX, prefix);
}

int stricmp_prefix(const char* text, const char* prefix) {
    return comparePrefix<orderIgnoringCase>(text, SIZE_MAX, prefix);
}

int strncmp_prefix(const char* text, std::size_t length, const char* prefix) {
    return comparePrefix<orderOfBytes>(text, length, prefix);
}

int strnicmp_prefix(const char* text, std::size_t length, const char* prefix) {
    return comparePrefix<orderIgnoringCase>(text, length, prefix);
}

int strncmp_suffix(const char* text, std::size_t length, const char* suffix) {
    return compareSuffix<orderOfBytes>(text, length, suffix);
}

int strnicmp_suffix(const char* text, std::size_t length, const char* suffix) {
    return compareSuffix<orderIgnoringCase>(text, length, suffix);
}

int memicmp(const void* a, const void* b, std::size_t length) {
    const auto* const first = static_cast<const char*>(a);
    const auto* const second = static_cast<const char*>(b);
    for (std::size_t i = 0; i < length; ++i) {
        if (const int found = orderIgnoringCase(first[i], second[i]); found != 0) return found;
    }
    return 0;
}
