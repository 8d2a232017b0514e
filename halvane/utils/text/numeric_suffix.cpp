#include "halvane/utils/text/numeric_suffix.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>

#include "halvane/base/ascii_internal.h"
#include "halvane/platform/os/random_internal.h"
#include "halvane/utils/text/cursor_internal.h"
#include "halvane/utils/text/utf_text.h"

namespace {

using std::string_view;

constexpr std::uint64_t kFirstNumber = 2;  // the name without a number counts as the first

struct Suffix {
    std::size_t start;  // in the text
    string_view digits;
};

string_view trailingDigits(string_view text) {
    const auto start = std::find_if_not(text.rbegin(), text.rend(), halvane::isDigit).base();
    return {start, text.end()};
}

// Returns the suffix after `name`, including the character that joins both.
Suffix joinedSuffix(string_view name, char joint, string_view digits) {
    if (name.ends_with(joint)) name.remove_suffix(1);
    return {name.size(), digits};
}

std::optional<Suffix> parenthesisedSuffix(string_view text) {
    constexpr std::size_t kShortest = 4;
    if (text.size() < kShortest || !text.ends_with(')')) return std::nullopt;
    text.remove_suffix(1);
    const string_view digits = trailingDigits(text);
    text.remove_suffix(digits.size());
    if (digits.empty() || !text.ends_with('(')) return std::nullopt;
    text.remove_suffix(1);
    return joinedSuffix(text, ' ', digits);
}

std::optional<Suffix> dashedSuffix(string_view text) {
    const string_view digits = trailingDigits(text);
    if (digits.empty()) return std::nullopt;
    text.remove_suffix(digits.size());
    return joinedSuffix(text, '-', digits);
}

std::optional<Suffix> suffixOf(string_view text, bool parenthesised) {
    return parenthesised ? parenthesisedSuffix(text) : dashedSuffix(text);
}

std::uint64_t numberOf(string_view digits) {
    std::uint64_t number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() ? number : UINT64_MAX;
}

// The text of a suffix: opening characters, the digits of a number, and closing characters.
class SuffixText {
  public:
    SuffixText(std::uint64_t number, bool parenthesised) {
        append(parenthesised ? " (" : "-");
        char* const end = text_.data() + text_.size();
        size_ = static_cast<std::size_t>(std::to_chars(text_.data() + size_, end, number).ptr -
                                         text_.data());
        append(parenthesised ? ")" : "");
    }
    string_view text() const { return {text_.data(), size_}; }

  private:
    void append(string_view part) { size_ += part.copy(text_.data() + size_, part.size()); }

    static constexpr std::size_t kMostDigits = 20;
    std::array<char, kMostDigits + 3> text_;
    std::size_t size_ = 0;
};

std::uint32_t randomNumber() {
    std::uint32_t number = 0;
    halvane::fillRandom({&number, 1});
    return number;
}

std::uint64_t numberBehind(std::uint64_t number, std::uint64_t threshold) {
    constexpr std::uint32_t kSpread = 0x7F;
    const std::uint64_t step = number < threshold ? 1 : 1 + (randomNumber() & kSpread);
    return step <= UINT64_MAX - number ? number + step : kFirstNumber;
}

// Writes a suffix after the first `nameLength` bytes of `text`, within `capacity` bytes, and a
// terminator if the text has one.
HalvaneStatus append(char* text, std::size_t nameLength, bool isTerminated, std::size_t capacity,
                     const SuffixText& written, std::size_t* newLength) {
    const string_view suffix = written.text();
    const std::size_t needed = suffix.size() + (isTerminated ? 1 : 0);
    if (needed > capacity) return kStatusNoRoom;
    const std::size_t kept = TruncateUTF8(text, nameLength, capacity - needed);
    suffix.copy(text + kept, suffix.size());
    *newLength = kept + suffix.size();
    if (isTerminated) text[*newLength] = '\0';
    return kStatusOK;
}

// Returns the part of a name that precedes the suffix.
string_view trimmed(string_view name, bool parenthesised) {
    return parenthesised ? name.substr(0, name.find_last_not_of(' ') + 1) : name;
}

}  // namespace

bool ContainsNumericSuffix(const char* text, std::size_t length, bool parenthesised) {
    return suffixOf(halvane::textOf(text, length), parenthesised).has_value();
}

std::uint64_t RemoveNumericSuffix(const char* text, std::size_t length, bool parenthesised,
                                  std::size_t* newLength) {
    const string_view name = halvane::textOf(text, length);
    const auto suffix = suffixOf(name, parenthesised);
    *newLength = suffix ? suffix->start : name.size();
    return suffix ? numberOf(suffix->digits) : 0;
}

HalvaneStatus AppendNumericSuffix(char* text, std::size_t length, std::size_t capacity,
                                  std::uint64_t number, bool parenthesised,
                                  std::size_t* newLength) {
    const string_view name = trimmed(halvane::textOf(text, length), parenthesised);
    return append(text, name.size(), length == SIZE_MAX, capacity, {number, parenthesised},
                  newLength);
}

HalvaneStatus IncrementNumericSuffix(char* text, std::size_t length, std::size_t capacity,
                                     bool parenthesised, std::size_t* newLength) {
    return IncrementNumericSuffixEx(text, length, capacity, parenthesised, newLength,
                                    kNumericSuffixThreshold);
}

HalvaneStatus IncrementNumericSuffixEx(char* text, std::size_t length, std::size_t capacity,
                                       bool parenthesised, std::size_t* newLength,
                                       std::uint64_t threshold) {
    const string_view whole = halvane::textOf(text, length);
    const auto suffix = suffixOf(whole, parenthesised);
    const string_view name =
        trimmed(suffix ? whole.substr(0, suffix->start) : whole, parenthesised);
    const std::uint64_t number =
        suffix ? numberBehind(numberOf(suffix->digits), threshold) : kFirstNumber;
    return append(text, name.size(), length == SIZE_MAX, capacity, {number, parenthesised},
                  newLength);
}
