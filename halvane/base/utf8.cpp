#include <cstddef>
#include <string_view>

#include "halvane/base/utf8_internal.h"

namespace halvane {

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        if (!character) return false;
        text.remove_prefix(character->size);
    }
    return true;
}

std::size_t utf16Length(std::string_view text) {
    constexpr char32_t kFirstOfTwoUnits = 0x10000;
    std::size_t length = 0;
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        length += character && character->codePoint >= kFirstOfTwoUnits ? 2 : 1;
        text.remove_prefix(character ? character->size : 1);
    }
    return length;
}

}  // namespace halvane
