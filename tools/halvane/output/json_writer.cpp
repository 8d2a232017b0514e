#include "tools/halvane/output/json_writer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/decimal_internal.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/hex_digits.h"
#include "halvane/base/hex_internal.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/utils/convert/hex_data.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kFirstCapacity = 4096;
constexpr std::size_t kMostDigits = 20;  // of 64 bits

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

bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char character) { return isPlain(character); });
}

// Characters that are looked at and copied together, eight a word.
using LongBlock = std::array<std::uint64_t, 2>;
using ShortBlock = std::array<std::uint64_t, 1>;

constexpr std::uint64_t wordOf(std::uint8_t character) {
    return character * std::uint64_t{0x0101010101010101};
}

// Sets the top bit of some character if one of them needs an escape. A character that is less than
// what is taken away from it borrows, and only characters beyond ASCII have that bit before.
constexpr std::uint64_t specialIn(std::uint64_t word) {
    const std::uint64_t controls = word - wordOf(' ');
    const std::uint64_t quotes = (word ^ wordOf('"')) - wordOf(1);
    const std::uint64_t backslashes = (word ^ wordOf('\\')) - wordOf(1);
    return controls | quotes | backslashes | word;
}

template <typename Block>
bool isPlain(const Block& characters) {
    std::uint64_t special = 0;
    for (const std::uint64_t word : characters) special |= specialIn(word);
    return (special & wordOf(0x80)) == 0;
}

// Copies a block unless one of its characters needs an escape. Returns whether it did.
template <typename Block>
bool copyPlainBlock(const char* text, char* place) {
    Block block;
    std::memcpy(&block, text, sizeof(Block));
    if (!isPlain(block)) return false;
    std::memcpy(place, &block, sizeof(Block));
    return true;
}

// Copies block by block up to the first that is not plain. Returns the number of characters. The
// last block overlaps the one before. REQUIRES: there are as many characters as a block has.
template <typename Block>
std::size_t copyPlainBlocks(std::string_view text, char* place) {
    const std::size_t last = text.size() - sizeof(Block);
    for (std::size_t i = 0; i < last; i += sizeof(Block)) {
        if (!copyPlainBlock<Block>(text.data() + i, place + i)) return i;
    }
    return copyPlainBlock<Block>(text.data() + last, place + last) ? text.size() : last;
}

// Copies the characters up to the first that needs an escape. Returns how many those are.
std::size_t copyPlain(std::string_view text, char* place) {
    std::size_t copied = 0;
    if (text.size() >= sizeof(LongBlock)) {
        copied = copyPlainBlocks<LongBlock>(text, place);
    } else if (text.size() >= sizeof(ShortBlock)) {
        copied = copyPlainBlocks<ShortBlock>(text, place);
    }
    for (; copied < text.size() && isPlain(text[copied]); ++copied) place[copied] = text[copied];
    return copied;
}

// A number below 1000. Most numbers are.
struct ShortNumber {
    std::array<char, 3> digits;  // and anything behind them
    std::uint8_t size;
};
constexpr auto kShortNumbers = [] {
    std::array<ShortNumber, 1000> numbers{};
    for (std::uint32_t i = 0; i < numbers.size(); ++i) {
        numbers[i].size = static_cast<std::uint8_t>(decimalSize(i));
        std::uint32_t rest = i;
        for (std::size_t k = numbers[i].size; k-- > 0; rest /= 10) {
            numbers[i].digits[k] = static_cast<char>('0' + rest % 10);
        }
    }
    return numbers;
}();

// Returns the place after the digits. REQUIRES: there is room for those of any number.
char* putDecimal(char* place, std::uint64_t number) {
    if (number >= kShortNumbers.size()) {
        return std::to_chars(place, place + kMostDigits, number).ptr;
    }
    const ShortNumber& text = kShortNumbers[number];
    std::memcpy(place, text.digits.data(), text.digits.size());
    return place + text.size;
}

// Few digits come from a table, many by whole blocks. REQUIRES: there is room for them and a
// terminator.
void putHexDigits(char* place, std::span<const std::uint8_t> bytes) {
    constexpr std::size_t kFew = 48;
    if (bytes.size() < kFew) return putHexPairs(place, bytes);
    DataToHexCStringEx(bytes.data(), bytes.size(), place, kHexDigitsLowercase);
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
    const auto capacity = static_cast<std::size_t>(limit_ - buffer_.get());
    const std::size_t larger = std::max({kFirstCapacity, capacity * 2, size() + count});
    auto buffer = std::make_unique_for_overwrite<char[]>(larger);
    end_ = std::copy(buffer_.get(), end_, buffer.get());
    limit_ = buffer.get() + larger;
    buffer_ = std::move(buffer);
}

void JSONWriter::keyAnywhere(const JSONKey& key) {
    char* const place = separated(roomFor(JSONKey::kRoom + 1));
    std::memcpy(place, key.member.data(), JSONKey::kRoom);
    endKey(place + key.memberSize);
}

void JSONWriter::signedInteger(std::int64_t value) {
    if (value >= 0) return unsignedInteger(static_cast<std::uint64_t>(value));
    end_ = putDecimal(opened('-', kMostDigits), 0 - static_cast<std::uint64_t>(value));
}

void JSONWriter::unsignedInteger(std::uint64_t value) {
    end_ = putDecimal(placeFor(kMostDigits), value);
}

// The two forms of std::to_chars, each with its shortest digits. A whole number gets a fraction, so
// that readers keep it as a real number.
void JSONWriter::real(double value) {
    constexpr double kLeastFixed = 1e-4, kFirstBeyondFixed = 1e15;
    if (!std::isfinite(value)) return null();
    char* const start = placeFor(kMostRealCharacters);
    const double magnitude = std::fabs(value);
    const bool isFixed =
        magnitude == 0 || (magnitude >= kLeastFixed && magnitude < kFirstBeyondFixed);
    const auto form = isFixed ? std::chars_format::fixed : std::chars_format::scientific;
    end_ = std::to_chars(start, start + kMostRealCharacters, value, form).ptr;
    if (isFixed && std::find(start, end_, '.') == end_) putRoomed(".0");
}

void JSONWriter::number(const Number& value) {
    if (value.isSigned()) return integer(value.int64());
    if (value.isUnsigned()) return integer(value.uint64());
    const double real = value.real();
    if (putWhole(real) || putTenths(real)) return;
    if (const auto whole = value.exactInt64()) return integer(*whole);
    if (const auto whole = value.exactUInt64()) return integer(*whole);
    this->real(real);
}

// Writes a whole number below 2^53; any other is left to slower ways.
bool JSONWriter::putWhole(double value) {
    constexpr double kLimit = 1LL << 53;
    if (!(std::fabs(value) < kLimit)) return false;
    const auto whole = static_cast<std::int64_t>(value);
    if (static_cast<double>(whole) != value) return false;
    integer(whole);
    return true;
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
    char* place = opened('"', text.size() + 1);
    const std::size_t plain = copyPlain(text, place);
    place += plain;
    if (plain < text.size()) place = putEscapes(place, text.substr(plain));
    *place = '"';
    end_ = place + 1;
}

char* JSONWriter::putEscapes(char* place, std::string_view text) {
    end_ = place;
    while (!text.empty()) {
        text.remove_prefix(putSpecial(text));
        makeRoom(text.size() + 1);
        const std::size_t plain = copyPlain(text, end_);
        end_ += plain;
        text.remove_prefix(plain);
    }
    return end_;
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
    char* const place = opened('"', 2 * bytes.size() + 1);
    char* const end = place + 2 * bytes.size();
    putHexDigits(place, bytes);
    *end = '"';
    end_ = end + 1;
}

void JSONWriter::hexDigits(std::span<const std::uint8_t> bytes) {
    makeRoom(HALVANE_HEX_TEXT_SIZE(bytes.size()));
    putHexDigits(end_, bytes);
    end_ += 2 * bytes.size();
}

void JSONWriter::addressString(std::span<const std::uint8_t> address) {
    const auto shown = address.first(std::min(address.size(), MacAddress::kSize));
    char* place = opened('"', 3 * shown.size() + 1);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (i > 0) *place++ = ':';
        *place++ = kUpperHexDigits[shown[i] >> 4];
        *place++ = kUpperHexDigits[shown[i] & 0x0F];
    }
    *place = '"';
    end_ = place + 1;
}

void JSONWriter::shownString(std::span<const std::uint8_t> octets) {
    const std::string_view text(reinterpret_cast<const char*>(octets.data()), octets.size());
    const bool isShownAsItIs = isPlain(text) && text.find('\x7F') == text.npos;
    string(isShownAsItIs ? text : std::string_view(escapedText(octets)));
}

}  // namespace halvane::tool
