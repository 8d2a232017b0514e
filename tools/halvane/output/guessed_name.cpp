#include "tools/halvane/output/guessed_name.h"

#include <cstddef>
#include <cstdint>
#include <iconv.h>

#include "halvane/base/utf8_internal.h"

#include "tools/halvane/output/unicode.h"

namespace halvane::tool {

namespace {

constexpr bool isOfPair(char octet) {
    const auto value = static_cast<unsigned char>(octet);
    return value >= 0xA1 && value <= 0xFE;
}

// The two octets of a character of GB 2312 are both above ASCII. Names of the West have such octets
// one by one.
bool hasPairsAlone(std::string_view octets) {
    for (std::size_t i = 0; i < octets.size(); ++i) {
        if (byteAt(octets, i) < 0x80) continue;
        if (i + 1 == octets.size() || !isOfPair(octets[i]) || !isOfPair(octets[i + 1]))
            return false;
        ++i;
    }
    return true;
}

// Returns the text in UTF-8; empty if it cannot be converted.
std::string convertedText(std::string_view octets, const char* characterSet) {
    iconv_t converter = ::iconv_open("UTF-8", characterSet);
    if (reinterpret_cast<std::intptr_t>(converter) == -1) return {};
    constexpr std::size_t kMostOctets = 4;  // of a character in UTF-8
    std::string input(octets);
    std::string text(kMostOctets * octets.size(), '\0');
    char* from = input.data();
    char* to = text.data();
    std::size_t fromLeft = input.size();
    std::size_t toLeft = text.size();
    const bool isWhole = ::iconv(converter, &from, &fromLeft, &to, &toLeft) == 0;
    ::iconv_close(converter);
    text.resize(isWhole ? text.size() - toLeft : 0);
    return text;
}

// Whether the text is UTF-8, and each of its characters passes.
template <typename Passes>
bool isUtf8Of(std::string_view text, Passes passes) {
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        if (!character || !passes(character->codePoint)) return false;
        text.remove_prefix(character->size);
    }
    return true;
}

}  // namespace

std::optional<std::string> nameInGB18030(std::string_view octets) {
    const bool isUtf8 = isUtf8Of(octets, [](char32_t) { return true; });
    if (isUtf8 || !hasPairsAlone(octets)) return std::nullopt;
    std::string text = convertedText(octets, "GB18030");
    if (text.empty() || !isUtf8Of(text, isVisible)) return std::nullopt;
    return text;
}

}  // namespace halvane::tool
