#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <nettle/base64.h>
#include <span>
#include <utility>

#include "halvane/base/utf8_internal.h"
#include "halvane/platform/plist/xml_scalar_internal.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

namespace {

// Reads all of `text` as a number in the form of std::from_chars.
template <typename Value, typename... Base>
std::errc readWhole(std::string_view text, Value& value, Base... base) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, base...);
    if (result.ec != std::errc()) return result.ec;
    return result.ptr == end ? std::errc() : std::errc::invalid_argument;
}

std::string_view withoutBlanksAround(std::string_view text) {
    const auto isBlank = [](char c) { return isXmlSpace(static_cast<unsigned char>(c)); };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool skip(std::string_view& text, std::string_view prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(prefix.size());
    return true;
}

constexpr std::uint8_t kNoDigit = 64;

// RFC 4648 table 1.
constexpr auto kBase64Digits = [] {
    constexpr std::string_view kAlphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> digits{};
    digits.fill(kNoDigit);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i) {
        digits[byteAt(kAlphabet, i)] = static_cast<std::uint8_t>(i);
    }
    return digits;
}();

// Decodes the groups of four digits at the start of `text`, with white space between them, and
// removes them. Returns the number of bytes. That is nearly all of a text, and much faster than a
// decoder that may stop after each digit.
std::size_t decodeWholeGroups(std::string_view& text, std::uint8_t* bytes) {
    std::size_t size = 0;
    while (text.size() >= 4) {
        if (isXmlSpace(byteAt(text, 0))) {
            text.remove_prefix(1);
            continue;
        }
        std::uint32_t group = 0;
        std::uint32_t seen = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            const std::uint32_t digit = kBase64Digits[byteAt(text, i)];
            seen |= digit;
            group = group << 6 | digit;
        }
        if ((seen & kNoDigit) != 0) break;
        bytes[size++] = static_cast<std::uint8_t>(group >> 16);
        bytes[size++] = static_cast<std::uint8_t>(group >> 8);
        bytes[size++] = static_cast<std::uint8_t>(group);
        text.remove_prefix(4);
    }
    return size;
}

}  // namespace

std::errc readXmlInteger(std::string_view text, Number& number) {
    text = withoutBlanksAround(text);
    const bool isNegative = skip(text, "-");
    if (!isNegative) skip(text, "+");
    const bool isHexadecimal = skip(text, "0x") || skip(text, "0X");
    std::uint64_t magnitude = 0;
    const std::errc status =
        isHexadecimal ? readWhole(text, magnitude, 16) : readWhole(text, magnitude);
    if (status != std::errc()) return status;
    constexpr std::uint64_t kSignedLimit = std::uint64_t{1} << 63;
    if (isNegative && magnitude > kSignedLimit) return std::errc::result_out_of_range;
    if (isNegative) {
        number = static_cast<std::int64_t>(0 - magnitude);
    } else if (magnitude < kSignedLimit) {
        number = static_cast<std::int64_t>(magnitude);
    } else {
        number = magnitude;
    }
    return {};
}

std::errc readXmlReal(std::string_view text, Number& number) {
    text = withoutBlanksAround(text);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    static constexpr std::array<std::pair<std::string_view, double>, 7> kNames = {
        {{"nan", std::numeric_limits<double>::quiet_NaN()},
         {"+infinity", kInfinity},
         {"-infinity", -kInfinity},
         {"infinity", kInfinity},
         {"+inf", kInfinity},
         {"-inf", -kInfinity},
         {"inf", kInfinity}}};
    double value = 0;
    // Names are rare. std::from_chars accepts other ones, too.
    if (readWhole(text, value) == std::errc() && std::isfinite(value)) {
        number = value;
        return {};
    }
    for (const auto& [name, named] : kNames) {
        if (text != name) continue;
        number = named;
        return {};
    }
    // What is no name is malformed before it is out of range.
    if (text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return std::errc::invalid_argument;
    }
    // A plus sign, which std::from_chars does not accept.
    if (skip(text, "+") && text.starts_with('-')) return std::errc::invalid_argument;
    const std::errc status = readWhole(text, value);
    if (status == std::errc()) number = value;
    return status;
}

// In the pattern a digit is the index of its field.
std::optional<Date> readXmlDate(std::string_view text) {
    constexpr std::string_view kForm = "0000-11-22T33:44:55Z";
    std::array<unsigned, 6> fields{};
    if (text.size() != kForm.size()) return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool isField = kForm[i] >= '0' && kForm[i] <= '5';
        if (!isField) {
            if (text[i] != kForm[i]) return std::nullopt;
            continue;
        }
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
        unsigned& field = fields[static_cast<std::size_t>(kForm[i] - '0')];
        field = field * 10 + static_cast<unsigned>(text[i] - '0');
    }
    const auto [year, month, day, hour, minute, second] = fields;
    return Date::fromFields({static_cast<int>(year), month, day, hour, minute, second});
}

std::optional<ByteBuffer> readXmlData(std::string_view text) {
    // The decoder skips these as white space, but they are not white space in XML.
    for (const char other : {'\v', '\f'}) {
        if (text.find(other) != std::string_view::npos) return std::nullopt;
    }
    const auto bytes =
        std::make_unique_for_overwrite<std::uint8_t[]>(BASE64_DECODE_LENGTH(text.size()));
    const std::size_t before = decodeWholeGroups(text, bytes.get());
    std::size_t size = 0;
    base64_decode_ctx context;
    ::base64_decode_init(&context);
    const bool isRead = ::base64_decode_update(&context, &size, bytes.get() + before, text.size(),
                                               text.data()) != 0 &&
                        ::base64_decode_final(&context) != 0;
    // The decoder accepts a single digit with three "=".
    constexpr unsigned kMostPadding = 2;
    if (!isRead || context.padding > kMostPadding) return std::nullopt;
    return ByteBuffer(std::span(bytes.get(), before + size));
}

}  // namespace halvane
