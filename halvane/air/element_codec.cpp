#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr std::size_t kSuiteSize = 4;

// The two's complement of a number of `width` bits.
std::int64_t signedOf(std::uint64_t value, std::size_t width) {
    const std::uint64_t sign = std::uint64_t{1} << (width - 1);
    return static_cast<std::int64_t>((value ^ sign) - sign);
}

Suite suiteOf(Octets octets) {
    return {{octets[0], octets[1], octets[2]}, octets[3]};
}

}  // namespace

FieldSink::~FieldSink() = default;

void ElementReader::address(std::string_view label, MacAddress& value) {
    const auto part = take(MacAddress::kSize);
    if (!part) return;
    value = MacAddress::fromBytes(*part).value_or(MacAddress());
    if (sink_) sink_->text(placeBefore(part->size()), label, value.text());
}

void ElementReader::cipher(std::string_view label, Suite& value) {
    const auto part = take(kSuiteSize);
    if (!part) return;
    value = suiteOf(*part);
    if (sink_) sink_->text(placeBefore(kSuiteSize), label, cipherText(value));
}

void ElementReader::akm(std::string_view label, Suite& value) {
    const auto part = take(kSuiteSize);
    if (!part) return;
    value = suiteOf(*part);
    if (sink_) sink_->text(placeBefore(kSuiteSize), label, akmText(value));
}

void ElementReader::ssid(std::string_view label, Ssid& value, std::size_t size) {
    if (size > Ssid::kMaxSize) return fail();
    const auto part = take(size);
    if (!part) return;
    value = Ssid::fromBytes(*part).value_or(Ssid());
    if (sink_ && !value.empty()) sink_->text(placeBefore(size), label, value.text());
}

void ElementReader::octets(std::string_view label, ByteBuffer& value, std::size_t size) {
    const auto part = take(size);
    if (!part) return;
    value = ByteBuffer(*part);
    if (sink_) sink_->octets(placeBefore(size), label, *part);
}

std::vector<std::uint8_t> ElementReader::takePieces(std::uint8_t fragmentId) {
    std::vector<std::uint8_t> body;
    std::size_t size = kFullPiece;
    const auto takePiece = [&] {
        const Octets piece = cursor_.take(size).value_or(Octets());
        body.insert(body.end(), piece.begin(), piece.end());
    };
    takePiece();
    while (size == kFullPiece && hasFragmentAfter(0, fragmentId)) {
        size = peek(1).value_or(0);
        cursor_.skip(kPieceHeader);
        takePiece();
    }
    return body;
}

void ElementReader::tellNumber(const FieldPlace& place, std::string_view label, std::uint64_t value,
                               std::size_t width, const NumberForm& form) {
    const bool isNegative = form.isSigned && width < 64;
    sink_->number(place, label,
                  isNegative ? signedOf(value, width) : static_cast<std::int64_t>(value), form);
}

void ElementReader::tellBits(const FieldPlace& place, Octets octets,
                             std::span<const BitField> parts) {
    for (const BitField& part : parts) {
        FieldPlace bits = place;
        bits.firstBit = part.first;
        bits.bitCount = part.count;
        const std::uint32_t value = bitsOf(octets, part.first, part.count);
        if (part.count == 1 && part.form.names.empty()) {
            sink_->flag(bits, part.label, value != 0);
        } else {
            tellNumber(bits, part.label, value, part.count, part.form);
        }
    }
}

}  // namespace halvane::air
