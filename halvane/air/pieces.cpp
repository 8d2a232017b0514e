#include <algorithm>

#include "halvane/air/pieces_internal.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

void appendPieces(std::vector<std::uint8_t>& octets, std::uint8_t fragmentId, Octets body,
                  bool endsEmpty) {
    ByteCursor left(body);
    const auto appendPiece = [&] {
        const std::size_t size = std::min(left.remaining(), kFullPiece);
        const Octets piece = left.take(size).value_or(Octets());
        octets.push_back(static_cast<std::uint8_t>(size));
        octets.insert(octets.end(), piece.begin(), piece.end());
        return size;
    };
    std::size_t size = appendPiece();
    while (size == kFullPiece && (endsEmpty || !left.atEnd())) {
        octets.push_back(fragmentId);
        size = appendPiece();
    }
}

std::size_t placeInPieces(std::size_t start, std::size_t size, std::size_t index) {
    const std::size_t last = index == size && index > 0 ? index - 1 : index;
    return start + index + kPieceHeader * (last / kFullPiece);
}

void PieceSink::flag(const FieldPlace& place, std::string_view label, bool value) {
    outer_.flag(inPieces(place), label, value);
}

void PieceSink::number(const FieldPlace& place, std::string_view label, std::int64_t value,
                       const NumberForm& form) {
    outer_.number(inPieces(place), label, value, form);
}

void PieceSink::text(const FieldPlace& place, std::string_view label, std::string_view value) {
    outer_.text(inPieces(place), label, value);
}

void PieceSink::octets(const FieldPlace& place, std::string_view label, Octets value) {
    ByteCursor left(value);
    do {
        FieldPlace part = place;
        part.offset = place.offset + left.position();
        part.size = std::min(left.remaining(), kFullPiece - part.offset % kFullPiece);
        const Octets octets = left.take(part.size).value_or(Octets());
        outer_.octets(inPieces(part), label, octets);
    } while (!left.atEnd());
}

bool PieceSink::elements(std::string_view label, const ElementOctets& value) {
    ElementOctets inPieces = value;
    inPieces.offset = placeInPieces(start_, size_, value.offset);
    inPieces.firstPieceSize = kFullPiece - value.offset % kFullPiece;
    return outer_.elements(label, inPieces);
}

FieldPlace PieceSink::inPieces(FieldPlace place) {
    tellHeaders(std::min(place.offset / kFullPiece, fragments_));
    const std::size_t end = place.offset + place.size;
    const std::size_t start = placeInPieces(start_, size_, place.offset);
    place.size = place.size == 0 ? 0 : placeInPieces(start_, size_, end - 1) + 1 - start;
    place.offset = start;
    return place;
}

void PieceSink::tellHeaders(std::size_t until) {
    while (told_ < until) {
        ++told_;
        const std::size_t before = kFullPiece * told_;
        const std::size_t place = start_ + before + kPieceHeader * (told_ - 1);
        const std::size_t size = std::min(kFullPiece, size_ - before);
        outer_.beginGroup("Fragment");
        outer_.number({place, 1}, "Subelement ID", fragmentId_, {});
        outer_.number({place + 1, 1}, "Length", static_cast<std::int64_t>(size), {});
        outer_.endGroup();
    }
}

}  // namespace halvane::air
