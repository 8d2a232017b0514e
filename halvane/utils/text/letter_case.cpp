#include "halvane/utils/text/letter_case.h"

#include <algorithm>
#include <cstring>

#include "halvane/utils/text/ignore_case_internal.h"

char* tolowerstr(char* text, std::size_t length) {
    std::transform(text, text + strnlen(text, length), text, halvane::lowerOf);
    return text;
}

char* toupperstr(char* text, std::size_t length) {
    std::transform(text, text + strnlen(text, length), text, halvane::upperOf);
    return text;
}
