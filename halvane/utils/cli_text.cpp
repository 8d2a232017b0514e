// String arrays and numbers in text.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/text_integer_internal.h"

extern "C" std::int32_t StringArray_Append(char*** array, std::size_t* count, const char* text) {
    if (text == nullptr) return kStatusNoMemory;
    char* const copy = ::strdup(text);
    auto* const grown = static_cast<char**>(std::calloc(*count + 1, sizeof(char*)));
    if (copy == nullptr || grown == nullptr) {
        std::free(copy);
        std::free(grown);
        return kStatusNoMemory;
    }
    std::copy_n(*array, *count, grown);
    grown[*count] = copy;
    if (*count > 0) std::free(*array);
    *array = grown;
    ++*count;
    return kStatusOK;
}

extern "C" void StringArray_Free(char** array, std::size_t count) {
    if (count == 0) return;
    std::for_each_n(array, count, std::free);
    std::free(array);
}

namespace {

struct Conversion {
    std::int64_t value = 0;
    const char* end = nullptr;
    int error = 0;
};

Conversion convert(const char* text, int base) {
    if (!halvane::isIntegerBase(base)) return {0, text, EINVAL};
    halvane::TextCursor cursor(text, SIZE_MAX);
    const halvane::TextInteger integer = halvane::takeInteger(cursor, base);
    if (!integer.isThere) return {0, text, 0};
    const auto [value, isOutOfRange] = halvane::clamped<std::int64_t>(integer);
    return {value, cursor.position(), isOutOfRange ? ERANGE : 0};
}

}  // namespace

extern "C" std::int64_t StringToInteger64(const char* text, std::int64_t min, std::int64_t max,
                                          int base, const char** end, int* error) {
    Conversion result{0, nullptr, EINVAL};
    if (text != nullptr) result = convert(text, base);
    if (result.error == 0 && (result.value < min || result.value > max)) result.error = ERANGE;
    if (end != nullptr) *end = result.end;
    if (error != nullptr) *error = result.error;
    return result.value;
}
