#include "halvane/model/config_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/memory_allows_internal.h"
#include "halvane/base/status.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/model/config_parser_internal.h"
#include "halvane/model/fallible_internal.h"
#include "halvane/platform/os/secret_internal.h"
#include "halvane/utils/convert/hardware_address.h"
#include "halvane/utils/convert/hex_data.h"
#include "halvane/utils/text/compare.h"
#include "halvane/utils/text/split.h"

namespace halvane::ConfigParser {

namespace {

std::nullopt_t fail(std::optional<Error>* error, HalvaneStatus status) {
    storeError(error, status);
    return std::nullopt;
}

bool isWord(std::string_view text, std::string_view word) {
    return text.size() == word.size() && memicmp(text.data(), word.data(), text.size()) == 0;
}

std::string_view withoutLeadingSpace(std::string_view text) {
    return {std::ranges::find_if_not(text, isSpace), text.end()};
}

// The C layer takes a null pointer for a missing text, so an empty text needs another one.
const char* placeOf(std::string_view text) {
    return text.data() != nullptr ? text.data() : "";
}

// Absent if an item of the list is not in `words`.
std::optional<std::vector<std::string>> knownWordsOf(std::string_view text,
                                                     std::span<const std::string_view> words) {
    std::vector<std::string> found;
    const char* const end = text.data() + text.size();
    const char* next = nullptr;
    std::size_t length = 0;
    for (const char* at = text.data(); TextSep(at, end, ",", &length, &next); at = next) {
        const std::string_view piece(at, length);
        const auto word = std::ranges::find_if(
            words, [piece](std::string_view known) { return isWord(piece, known); });
        if (word == words.end()) return std::nullopt;
        found.emplace_back(*word);
    }
    return found;
}

struct HexReading {
    std::size_t written = 0;
    std::size_t total = 0;
    std::string_view rest;  // the text after the digits
};

HexReading readHex(std::string_view text, std::uint8_t* bytes, std::size_t capacity) {
    HexReading reading;
    const char* end = nullptr;
    HexToData(placeOf(text), text.size(), kHexToDataFlagNoOddDigit, bytes, capacity,
              &reading.written, &reading.total, &end);
    reading.rest = text.substr(static_cast<std::size_t>(end - placeOf(text)));
    return reading;
}

// Characters after the digits are harmless, but digits after a gap suggest lost digits.
HalvaneStatus statusOf(const HexReading& reading, std::size_t capacity) {
    const std::string_view rest = withoutLeadingSpace(reading.rest);
    if (rest.empty()) return kStatusOK;
    if (isHexDigit(rest.front())) {
        return reading.written == capacity ? kStatusTruncated : kStatusDigitsAfterGap;
    }
    return reading.total > 0 ? kStatusOK : kStatusMalformed;
}

}  // namespace

std::optional<std::vector<std::string>> convertParamStringToArray_error(
    std::string_view text, std::span<const std::string_view> words, std::optional<Error>* error) {
    auto found = ifMemoryAllows([&] { return knownWordsOf(text, words); });
    if (!found) return fail(error, kStatusNoMemory);
    if (!*found) return fail(error, kStatusUnsupported);
    clearError(error);
    return std::move(*found);
}

std::optional<ByteBuffer> dataFromHexWithin(std::string_view text, std::size_t capacity,
                                            std::optional<Error>* error) {
    // The bytes may be a passphrase.
    const auto scratch = ifMemoryAllows([capacity] { return secretMemory(capacity); });
    if (!scratch) return fail(error, kStatusNoMemory);
    const HexReading reading = readHex(text, scratch->get(), capacity);
    const HalvaneStatus status = statusOf(reading, capacity);
    if (status != kStatusOK) return fail(error, status);
    if (reading.written != reading.total && error != nullptr) {
        return fail(error, kStatusUnsupported);
    }
    auto bytes = ifMemoryAllows([&] { return secretBuffer({scratch->get(), reading.written}); });
    if (!bytes) return fail(error, kStatusNoMemory);
    return bytes;
}

std::optional<ByteBuffer> convertToDataFromHex(std::string_view text, std::optional<Error>* error) {
    return dataFromHexWithin(text.substr(0, text.find('\0')), 2 * utf16Length(text) + 2, error);
}

std::optional<std::int64_t> convertToInteger(std::string_view text, std::optional<Error>* error) {
    std::string_view number = withoutLeadingSpace(text);
    const bool hasPlus = number.starts_with('+');
    if (hasPlus) number.remove_prefix(1);
    std::int64_t value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    const bool hasTwoSigns = hasPlus && number.starts_with('-');
    if (result.ec != std::errc() || hasTwoSigns) return fail(error, kStatusUnsupported);
    return value;
}

std::optional<bool> convertToBool(std::string_view text, std::optional<Error>* error) {
    if (isWord(text, "yes")) return true;
    if (isWord(text, "no")) return false;
    return fail(error, kStatusUnsupported);
}

std::optional<ByteBuffer> convertToBSSID(std::string_view text, std::optional<Error>* error) {
    if (!isUtf8(text)) return fail(error, kStatusUnsupported);
    std::array<std::uint8_t, kMACAddressSize> address{};
    const HalvaneStatus status =
        TextToHardwareAddress(placeOf(text), utf16Length(text), address.size(), address.data());
    if (status != kStatusOK) return fail(error, status);
    clearError(error);
    return ByteBuffer(address);
}

}  // namespace halvane::ConfigParser
