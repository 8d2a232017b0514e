#include "halvane/utils/text/utf_text.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "halvane/base/utf8_internal.h"

namespace {

// Returns the number of bytes that a lead byte announces, itself included; 0 for other bytes.
std::size_t announcedSize(char lead) {
    constexpr int kLongest = 6;
    const int marks = std::countl_one(static_cast<unsigned char>(lead));
    if (marks == 0) return 1;
    return marks == 1 || marks > kLongest ? 0 : static_cast<std::size_t>(marks);
}

// Returns whether the sequence is the first half of a surrogate pair, written as a character.
bool isHighSurrogate(std::string_view sequence) {
    return sequence.size() > 1 && sequence[0] == '\xED' && (sequence[1] & 0xF0) == 0xA0;
}

// Returns the text up to its last whole character, without a lead byte whose character is
// incomplete.
std::string_view withoutPartialEnd(std::string_view text) {
    std::size_t lead = text.size();
    while (lead > 0 && halvane::isContinuation(text[lead - 1])) --lead;
    if (lead == 0) return {};
    --lead;
    const std::string_view last = text.substr(lead);
    const std::size_t size = announcedSize(last.front());
    const bool isWhole = size <= last.size() && !isHighSurrogate(last);
    return text.substr(0, isWhole ? lead + size : lead);
}

}  // namespace

std::size_t TruncateUTF8(const char* text, std::size_t length, std::size_t maximum) {
    if (length == SIZE_MAX) {
        // One more byte shows whether the text ends there.
        length = strnlen(text, maximum);
        if (length < maximum || text[maximum] == '\0') return length;
    } else if (length <= maximum) {
        return length;
    }
    return withoutPartialEnd({text, maximum}).size();
}

std::size_t UTF16strlen(const std::uint16_t* text, std::size_t length) {
    std::size_t count = 0;
    while (count < length && text[count] != 0) ++count;
    return count;
}
