#include "halvane/utils/text/value_text.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>

namespace {

const char* textOfValue(int value, va_list pairs) {
    while (const char* const text = va_arg(pairs, const char*)) {
        if (va_arg(pairs, int) == value) return text;
    }
    return nullptr;
}

}  // namespace

const char* MapValueToString(int value, const char* format, char* buffer, std::size_t size, ...) {
    va_list pairs;
    va_start(pairs, size);
    const char* const text = textOfValue(value, pairs);
    va_end(pairs);
    if (text != nullptr) return text;
    if (format == nullptr || buffer == nullptr || size == 0) return format;
    buffer[0] = '\0';  // stays if the format fails
    std::snprintf(buffer, size, format, value);
    return buffer;
}

const char* NumberToOrdinalSuffixCString(int number) {
    const int lastTwo = std::abs(number % 100);
    if (lastTwo / 10 == 1) return "th";
    switch (lastTwo % 10) {
        case 1:
            return "st";
        case 2:
            return "nd";
        case 3:
            return "rd";
        default:
            return "th";
    }
}
