#include "tools/halvane/output/json_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/hex_digits.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/utils/convert/hex_data.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kFirstCapacity = 4096;

// The most characters of a double: sign, 17 digits, point, and "0.000" before or "e-308" after the
// digits.
constexpr std::size_t kMostRealCharacters = 32;

// Characters that need no escape: ASCII without controls, quotes and backslashes.
constexpr auto kIsPlain = [] {
    std::array<bool, 256> isPlain{};
    for (std::size_t c = 0x20; c < 0x80; ++c) isPlain[c] = c != '"' && c != '\\';
    return isPlain;
}();

bool isPlain(char character) {
    return kIsPlain[static_cast<std::uint8_t>(character)];
}

std::size_t plainLength(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, isPlain) - text.begin());
}

// The letter of a short escape, or 0 if the character has none.
char escapeLetter(char character) {
    switch (character) {
        case '"':
        case '\\':
            return character;
        case '\b':
            return 'b';
        case '\f':
            return 'f';
        case '\n':
            return 'n';
        case '\r':
            return 'r';
        case '\t':
            return 't';
        default:
            return 0;
    }
}

}  // namespace

void JSONWriter::grow(std::size_t count) {
    const std::size_t capacity = std::max({kFirstCapacity, capacity_ * 2, size_ + count});
    auto buffer = std::make_unique_for_overwrite<char[]>(capacity);
    std::copy_n(buffer_.get(), size_, buffer.get());
    buffer_ = std::move(buffer);
    capacity_ = capacity;
}

// The two forms of std::to_chars, each with its shortest digits. A whole number gets a fraction, so
// that readers keep it as a real number.
void JSONWriter::real(double value) {
    constexpr double kLeastFixed = 1e-4, kFirstBeyondFixed = 1e15;
    if (!std::isfinite(value)) return null();
    beforeValue(kMostRealCharacters);
    char* const start = buffer_.get() + size_;
    const double magnitude = std::fabs(value);
    const bool isFixed =
        magnitude == 0 || (magnitude >= kLeastFixed && magnitude < kFirstBeyondFixed);
    const auto form = isFixed ? std::chars_format::fixed : std::chars_format::scientific;
    char* const end = std::to_chars(start, start + kMostRealCharacters, value, form).ptr;
    size_ += static_cast<std::size_t>(end - start);
    if (isFixed && std::find(start, end, '.') == end) putRoomed(".0");
}

void JSONWriter::number(const Number& value) {
    if (value.isSigned()) return integer(value.int64());
    if (value.isUnsigned()) return integer(value.uint64());
    if (const auto whole = value.exactInt64()) return integer(*whole);
    if (const auto whole = value.exactUInt64()) return integer(*whole);
    const double real = value.real();
    if (!putTenths(real)) this->real(real);
}

// Most rates are tenths, and their digits need no search: if a count of tenths below 2^53 rounds to
// the number, no shorter digits exist.
bool JSONWriter::putTenths(double value) {
    constexpr double kMost = 1e12;
    const double tenths = value * 10;
    if (!(tenths > 0 && tenths < kMost)) return false;
    const auto count = static_cast<std::int64_t>(tenths);
    if (static_cast<double>(count) / 10 != value) return false;
    integer(count / 10);
    makeRoom(2);
    put('.');
    put(static_cast<char>('0' + count % 10));
    return true;
}

void JSONWriter::string(std::string_view text) {
    beforeValue(text.size() + 2);
    put('"');
    putCharacters(text);
    makeRoom(1);
    put('"');
}

void JSONWriter::putCharacters(std::string_view text) {
    while (true) {
        const std::size_t plain = plainLength(text);
        makeRoom(plain);
        putRoomed(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty()) return;
        text.remove_prefix(putSpecial(text));
    }
}

std::size_t JSONWriter::putSpecial(std::string_view text) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD
    if (byteAt(text, 0) < 0x80) {
        putEscaped(text[0]);
        return 1;
    }
    const auto character = firstUtf8Character(text);
    verbatim(character ? text.substr(0, character->size) : kReplacement);
    return character ? character->size : 1;
}

void JSONWriter::putEscaped(char character) {
    makeRoom(6);
    put('\\');
    if (const char letter = escapeLetter(character)) return put(letter);
    putRoomed("u00");
    put(kLowerHexDigits[static_cast<std::uint8_t>(character) >> 4]);
    put(kLowerHexDigits[static_cast<std::uint8_t>(character) & 0x0F]);
}

void JSONWriter::hexString(std::span<const std::uint8_t> bytes) {
    // The terminator goes to the place of the closing quote.
    beforeValue(HALVANE_HEX_TEXT_SIZE(bytes.size()) + 1);
    put('"');
    DataToHexCStringEx(bytes.data(), bytes.size(), buffer_.get() + size_, kHexDigitsLowercase);
    size_ += 2 * bytes.size();
    put('"');
}

void JSONWriter::addressString(std::span<const std::uint8_t> address) {
    const auto shown = address.first(std::min(address.size(), MacAddress::kSize));
    beforeValue(3 * shown.size() + 2);
    put('"');
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (i > 0) put(':');
        put(kUpperHexDigits[shown[i] >> 4]);
        put(kUpperHexDigits[shown[i] & 0x0F]);
    }
    put('"');
}

void JSONWriter::shownString(std::span<const std::uint8_t> octets) {
    const std::string_view text(reinterpret_cast<const char*>(octets.data()), octets.size());
    // This loop also escapes only characters that need an escape.
    const bool isPlainText = plainLength(text) == text.size() && text.find('\x7F') == text.npos;
    string(isPlainText ? text : std::string_view(escapedText(octets)));
}

}  // namespace halvane::tool
