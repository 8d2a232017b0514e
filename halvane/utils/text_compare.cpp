#include "halvane/utils/text_compare.h"

#include <cstdint>
#include <cstring>

#include "halvane/utils/ignore_case_internal.h"

namespace {

constexpr char asItIs(char character) {
    return character;
}

// The order of two bytes: -1, 0 or 1.
template <auto letterOf>
int orderOf(char a, char b) {
    const auto first = static_cast<unsigned char>(letterOf(a));
    const auto second = static_cast<unsigned char>(letterOf(b));
    return (first > second) - (first < second);
}

// The text up to the length of `prefix`, with it.
template <auto letterOf>
int comparePrefix(const char* text, std::size_t length, const char* prefix) {
    for (std::size_t i = 0; prefix[i] != '\0'; ++i) {
        if (i == length || text[i] == '\0') return -1;
        if (const int order = orderOf<letterOf>(text[i], prefix[i]); order != 0) return order;
    }
    return 0;
}

template <auto letterOf>
int compareWhole(const char* text, std::size_t length, const char* cstring) {
    std::size_t i = 0;
    for (; i < length && text[i] != '\0'; ++i) {
        // The terminator of a shorter C string is less than any byte of the text.
        if (const int order = orderOf<letterOf>(text[i], cstring[i]); order != 0) return order;
    }
    return cstring[i] == '\0' ? 0 : -1;
}

template <auto letterOf>
int compareSuffix(const char* text, std::size_t length, const char* suffix) {
    const std::size_t size = strnlen(text, length);
    const std::size_t suffixSize = std::strlen(suffix);
    if (size < suffixSize) return -1;
    return compareWhole<letterOf>(text + (size - suffixSize), suffixSize, suffix);
}

}  // namespace

int strncmpx(const char* text, std::size_t length, const char* cstring) {
    return compareWhole<asItIs>(text, length, cstring);
}

int strnicmpx(const char* text, std::size_t length, const char* cstring) {
    return compareWhole<halvane::lowerOf>(text, length, cstring);
}

int strcmp_prefix(const char* text, const char* prefix) {
    return comparePrefix<asItIs>(text, SIZE_MAX, prefix);
}

int stricmp_prefix(const char* text, const char* prefix) {
    return comparePrefix<halvane::lowerOf>(text, SIZE_MAX, prefix);
}

int strncmp_prefix(const char* text, std::size_t length, const char* prefix) {
    return comparePrefix<asItIs>(text, length, prefix);
}

int strnicmp_prefix(const char* text, std::size_t length, const char* prefix) {
    return comparePrefix<halvane::lowerOf>(text, length, prefix);
}

int strncmp_suffix(const char* text, std::size_t length, const char* suffix) {
    return compareSuffix<asItIs>(text, length, suffix);
}

int strnicmp_suffix(const char* text, std::size_t length, const char* suffix) {
    return compareSuffix<halvane::lowerOf>(text, length, suffix);
}

int memicmp(const void* a, const void* b, std::size_t length) {
    const auto* const first = static_cast<const char*>(a);
    const auto* const second = static_cast<const char*>(b);
    for (std::size_t i = 0; i < length; ++i) {
        const int order = orderOf<halvane::lowerOf>(first[i], second[i]);
        if (order != 0) return order;
    }
    return 0;
}
