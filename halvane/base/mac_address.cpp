#include "halvane/base/mac_address.h"

#include "halvane/base/ascii_internal.h"

namespace halvane {

namespace {

// The lengths of the text with and without separators.
constexpr std::size_t kSeparatedLength = 3 * MacAddress::kSize - 1;
constexpr std::size_t kPlainLength = 2 * MacAddress::kSize;

// The distance from one pair to the next. Absent if the length or the first separator is wrong.
std::optional<std::size_t> strideOf(std::string_view text) {
    if (text.size() == kPlainLength) return 2;
    if (text.size() != kSeparatedLength || (text[2] != ':' && text[2] != '-')) return std::nullopt;
    return 3;
}

}  // namespace

std::optional<MacAddress> MacAddress::fromText(std::string_view text) {
    const auto stride = strideOf(text);
    if (!stride) return std::nullopt;
    Octets octets{};
    for (std::size_t i = 0; i < kSize; ++i) {
        const std::string_view pair = text.substr(i * *stride, *stride);
        if (!isHexDigit(pair[0]) || !isHexDigit(pair[1])) return std::nullopt;
        if (pair.size() > 2 && pair[2] != text[2]) return std::nullopt;
        octets[i] = static_cast<std::uint8_t>(digitValue(pair[0]) << 4 | digitValue(pair[1]));
    }
    return MacAddress(octets);
}

std::string MacAddress::text() const {
    std::string text;
    text.reserve(kSeparatedLength);
    for (const std::uint8_t octet : octets_) {
        if (!text.empty()) text += ':';
        appendHexOctet(text, octet, kLowerHexDigits);
    }
    return text;
}

}  // namespace halvane
