// The formatting engine's text as a string.
#ifndef FUZZ_PRINTED_H
#define FUZZ_PRINTED_H

#include <cstddef>
#include <cstdlib>
#include <string>

#include "halvane/utils/printf.h"

#include "fuzz/require.h"

namespace halvane::fuzzing {

template <typename... Arguments>
std::string printed(const char* format, Arguments... arguments) {
    char* heap = nullptr;
    const int length = ASPrintF(&heap, format, arguments...);
    REQUIRE(length >= 0);
    const std::string text(heap, static_cast<std::size_t>(length));
    std::free(heap);
    return text;
}

}  // namespace halvane::fuzzing

#endif
