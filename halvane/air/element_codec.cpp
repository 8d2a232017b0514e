#include "halvane/air/element_codec_internal.h"
#include "halvane/base/escaped_text.h"
#include "halvane/ie/fancy_formatting.h"

namespace halvane::air {

namespace {

constexpr std::size_t kSuiteSize = 4;

// A number of `width` bits, in two's complement if its form says so.
std::int64_t valueOf(std::uint64_t value, std::size_t width, const NumberForm& form) {
    if (!form.isSigned || width >= 64) return static_cast<std::int64_t>(value);
    const std::uint64_t sign = std::uint64_t{1} << (width - 1);
    return static_cast<std::int64_t>((value ^ sign) - sign);
}

Suite suiteOf(Octets octets) {
    return {{octets[0], octets[1], octets[2]}, octets[3]};
}

}  // namespace

FieldSink::~FieldSink() = default;

bool FieldSink::elements(std::string_view, const ElementOctets&) {
    return false;
}

void ElementReader::address(std::string_view label, MacAddress& value) {
    const auto part = take(MacAddress::kSize);
    if (!part) return;
    value = MacAddress::fromBytes(*part).value_or(MacAddress());
    if (sink_) {
        sink_->text(placeBefore(part->size()), label,
                    FancyFormatting::formattedMAC(value.buffer()));
    }
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

void ElementReader::elements(std::string_view label, ByteBuffer& value, std::size_t fixedSize) {
    const auto part = take(remaining());
    if (!part) return;
    value = ByteBuffer(*part);
    if (!sink_) return;
    const FieldPlace place = placeBefore(part->size());
    const bool isTaken =
        part->size() > fixedSize &&
        sink_->elements(label, {.octets = *part, .fixedSize = fixedSize, .offset = place.offset});
    if (!isTaken) sink_->octets(place, label, *part);
}

std::vector<std::uint8_t> ElementReader::takePieces(std::uint8_t fragmentId) {
    std::vector<std::uint8_t> body;
    body.reserve(2 * kFullPiece);  // a full piece and one fragment are usual
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

void ElementReader::text(std::string_view label, ByteBuffer& value, std::size_t size) {
    const auto part = take(size);
    if (!part) return;
    value = ByteBuffer(*part);
    if (!sink_ || size == 0) return;
    const std::string_view shown = value.text().substr(0, value.text().find_last_not_of('\0') + 1);
    if (shown.empty()) return sink_->octets(placeBefore(size), label, *part);
    sink_->text(placeBefore(size), label, escapedText(shown));
}

void ElementReader::tellRemaining() {
    ByteBuffer left;
    octets("Further octets", left);
}

void ElementReader::tellNumber(const FieldPlace& place, std::string_view label, std::uint64_t value,
                               std::size_t width, const NumberForm& form) {
    sink_->number(place, label, valueOf(value, width, form), form);
}

void BitTeller::run(const BitField& part) {
    const std::size_t end = 8 * octets_.size();
    if (part.first >= end) return;
    FieldPlace bits = place_;
    bits.firstBit = part.first;
    bits.bitCount = static_cast<std::uint8_t>(std::min<std::size_t>(part.count, end - part.first));
    const std::uint32_t value = bitsOf(octets_, part.first, bits.bitCount);
    if (part.count == 1 && part.form.names.empty()) {
        sink_.flag(bits, part.label, value != 0);
    } else {
        sink_.number(bits, part.label, valueOf(value, bits.bitCount, part.form), part.form);
    }
}

}  // namespace halvane::air
