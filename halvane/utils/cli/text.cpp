// String arrays and numbers in text.
#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/integer_internal.h"

namespace {

constexpr std::size_t kGreatestCount = SIZE_MAX / sizeof(char*) / 2;

// Makes room for one more element. The capacity is a power of two computed from the count alone.
// The allocator therefore gets the same size as before, unless the count passes such a power.
// Nothing is assumed about an array from elsewhere. Returns null, and leaves the array unchanged,
// if memory runs out.
char** withRoomForOneMore(char** array, std::size_t count) {
    if (count >= kGreatestCount) return nullptr;
    const std::size_t size = std::bit_ceil(count + 1) * sizeof(char*);
    return static_cast<char**>(std::realloc(count > 0 ? array : nullptr, size));
}

}  // namespace

extern "C" std::int32_t StringArray_Append(char*** array, std::size_t* count, const char* text) {
    if (text == nullptr) return kStatusNoMemory;
    char* const copy = ::strdup(text);
    if (copy == nullptr) return kStatusNoMemory;
    char** const grown = withRoomForOneMore(*array, *count);
    if (grown == nullptr) {
        std::free(copy);
        return kStatusNoMemory;
    }
    grown[*count] = copy;
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
