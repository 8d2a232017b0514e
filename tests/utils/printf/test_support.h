// The output of a format through the callback front end, compared with the other front ends.
#ifndef TESTS_UTILS_PRINTF_TEST_SUPPORT_H
#define TESTS_UTILS_PRINTF_TEST_SUPPORT_H

#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/utils/printf.h"

namespace halvane::testing {

inline std::int32_t appendToString(const char* text, std::size_t length, void* string) {
    static_cast<std::string*>(string)->append(text, length);
    return static_cast<std::int32_t>(length);
}

// The output, which may hold NUL bytes. Fails the test if the count, the heap string or an exact
// memory area differs, or if the call fails.
inline std::string printed(const char* format, ...) {
    std::string text;
    va_list arguments;
    va_start(arguments, format);
    va_list forHeap;
    va_copy(forHeap, arguments);
    va_list forMemory;
    va_copy(forMemory, arguments);

    const int length = VCPrintF(appendToString, &text, format, arguments);
    EXPECT_EQ(length, static_cast<int>(text.size())) << format;

    char* heap = nullptr;
    EXPECT_EQ(VASPrintF(&heap, format, forHeap), length) << format;
    if (heap != nullptr) {
        EXPECT_EQ(std::string(heap, text.size()), text) << format;
    }
    std::free(heap);

    std::vector<char> memory(text.size());
    EXPECT_EQ(VMemPrintF(memory.data(), memory.size(), format, forMemory), length) << format;
    EXPECT_EQ(std::string(memory.begin(), memory.end()), text) << format;

    va_end(forMemory);
    va_end(forHeap);
    va_end(arguments);
    return text;
}

}  // namespace halvane::testing

#endif
