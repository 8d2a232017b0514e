#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <new>

#include "halvane/base/status.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

// No exception may cross the C layer, so a lack of memory passes it as a status.
std::int32_t appendPiece(const char* piece, std::size_t length, void* text) try {
    static_cast<std::string*>(text)->append(piece, length);
    return 0;
} catch (const std::bad_alloc&) {
    return kStatusNoMemory;
}

void throwIfNoMemory(int result) {
    if (result == kStatusNoMemory) throw std::bad_alloc();
}

}  // namespace

std::string stringPrintF(const char* format, ...) {
    std::string text;
    va_list arguments;
    va_start(arguments, format);
    const int result = VCPrintF(appendPiece, &text, format, arguments);
    va_end(arguments);
    throwIfNoMemory(result);
    return text;
}

void appendPrintF(std::string& text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = VCPrintF(appendPiece, &text, format, arguments);
    va_end(arguments);
    throwIfNoMemory(result);
}

}  // namespace halvane
