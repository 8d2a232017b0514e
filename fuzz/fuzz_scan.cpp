// Any text under formats of every conversion, also chosen by the input: never reads past the stated
// length, integers agree with naive code, and values are stored only where they may be.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "halvane/utils/scan_time.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

namespace {

void checkFixedFormats(const char* text, std::size_t size) {
    char word[32];
    char set[32];
    int number = 0;
    long long wide = 0;
    const char* place = nullptr;
    std::size_t length = 0;

    const int words = SNScanF(text, size, "%31s %31[a-z0-9]%n", word, set, &number);
    REQUIRE(words <= 3);
    SNScanF(text, size, "%i %lld %x %hho", &number, &wide, &number, word);
    if (SNScanF(text, size, "%&[^=]=%&#s", &place, &length, &place, &length) > 0) {
        REQUIRE(place >= text && place + length <= text + size);
    }
}

// Decimal digits, modulo 2^64.
void checkDecimal(const std::string& text) {
    std::uint64_t expected = 0;
    std::size_t at = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    const bool isNegative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    const std::size_t first = at;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        expected = expected * 10 + static_cast<std::uint64_t>(text[at] - '0');
    }
    if (isNegative) expected = 0 - expected;
    std::uint64_t number = 0;
    int consumed = -1;
    REQUIRE(SNScanF(text.data(), text.size(), "%llu%n", &number, &consumed) ==
            (at > first ? 1 : 0));
    if (at == first) return;
    REQUIRE(number == expected && consumed == static_cast<int>(at));
    std::int16_t narrow = 0;
    REQUIRE(SNScanF(text.data(), text.size(), "%hd", &narrow) == 1);
    REQUIRE(narrow == static_cast<std::int16_t>(expected));
}

// The members of a set. A bracket that ends the set early is not followed by a second conversion.
std::string setOf(halvane::fuzzing::ByteSource& source) {
    std::string members = source.text(8);
    if (members.find(']') != std::string::npos) std::ranges::replace(members, '%', '/');
    return members;
}

// A conversion that the input chooses, with room for everything that its width admits.
void checkOwnFormat(halvane::fuzzing::ByteSource source) {
    std::string format = "%";
    constexpr const char* kFlags[] = {"", "#", "*", "&", "&#"};
    const std::string flag = source.oneOf(kFlags);
    const std::size_t width = source.byte();
    format += flag + (width > 0 ? std::to_string(width) : "255");
    constexpr const char* kConversions[] = {"c",  "s",  "[",  "[^",  "b", "p",
                                            "jx", "zi", "to", "hhd", "k"};
    const std::string any = source.oneOf(kConversions);
    const std::string conversion = flag[0] == '&' && any.find_first_of("cs[") != 0 ? "s" : any;
    format += conversion;
    if (conversion[0] == '[') format += setOf(source) + "]";
    format = format.c_str();
    const std::string text = source.restText();
    if (flag[0] == '&') {
        const char* place = nullptr;
        std::size_t length = 0;
        if (SNScanF(text.data(), text.size(), format.c_str(), &place, &length) == 1 &&
            place != nullptr) {
            REQUIRE(place >= text.data() && place + length <= text.data() + text.size());
        }
        return;
    }
    std::vector<char> room(std::max<std::size_t>(width, 255) + 1);
    const int count = SNScanF(text.data(), text.size(), format.c_str(), room.data());
    REQUIRE(count >= 0 && count <= 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* text = reinterpret_cast<const char*>(data);
    checkFixedFormats(text, size);
    checkDecimal(std::string(text, size));
    checkOwnFormat(halvane::fuzzing::ByteSource(data, size));
    return 0;
}
