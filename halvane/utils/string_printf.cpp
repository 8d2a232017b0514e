#include <cstdarg>
#include <cstdio>

#include "halvane/utils/string_printf_internal.h"

namespace halvane {

namespace {

void appendPrintFVAList(std::string& text, const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const auto length = static_cast<std::size_t>(std::vsnprintf(nullptr, 0, format, again));
    va_end(again);
    const auto start = text.size();
    text.resize(start + length + 1);
    std::vsnprintf(text.data() + start, length + 1, format, arguments);
    text.resize(start + length);
}

}  // namespace

std::string stringPrintF(const char* format, ...) {
    std::string text;
    va_list arguments;
    va_start(arguments, format);
    appendPrintFVAList(text, format, arguments);
    va_end(arguments);
    return text;
}

void appendPrintF(std::string& text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    appendPrintFVAList(text, format, arguments);
    va_end(arguments);
}

}  // namespace halvane
