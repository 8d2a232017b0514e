#include "halvane/air/element_range.h"

#include <algorithm>
#include <cstdint>
#include <memory>

namespace halvane::air {

namespace {

constexpr std::size_t kHeaderSize = 2;
constexpr std::size_t kFullPiece = 255;

// An element or a fragment of one.
struct Piece {
    Octets octets;  // with the header

    std::uint8_t id() const { return octets[0]; }
    Octets body() const {
        ByteCursor cursor(octets);
        cursor.skip(kHeaderSize);
        return cursor.rest();
    }
    bool isFull() const { return octets.size() == kHeaderSize + kFullPiece; }
};

// Absent, and nothing is taken, if the piece does not fit.
std::optional<Piece> takePiece(ByteCursor& cursor) {
    const auto length = cursor.peek(1);
    if (!length || cursor.remaining() < kHeaderSize + *length) return std::nullopt;
    return Piece{*cursor.take(kHeaderSize + *length)};
}

// Takes the fragments that follow a full piece. Only a full one goes on in a fragment.
void skipFragments(ByteCursor& cursor) {
    while (cursor.peek() == idOctetOf(ElementId::Fragment)) {
        const auto fragment = takePiece(cursor);
        if (!fragment || !fragment->isFull()) return;
    }
}

}  // namespace

std::size_t Element::offsetOfBody(std::size_t index) const {
    const std::size_t extension = extensionOf(id) ? 1 : 0;
    const std::size_t inPieces = index + extension;
    const std::size_t last = index == body.size() && inPieces > 0 ? inPieces - 1 : inPieces;
    const std::size_t piece = isFragmented() ? last / kFullPiece : 0;
    return offset + kHeaderSize * (piece + 1) + inPieces;
}

void ElementIterator::read() {
    ByteCursor whole = next_;
    const auto piece = takePiece(next_);
    isAtEnd_ = !piece;
    if (!piece) return;
    element_.id = static_cast<ElementId>(piece->id());
    element_.body = piece->body();
    element_.offset = whole.position();
    element_.octets = piece->octets;
    if (element_.isFragmented()) element_.joined_.reset();
    if (piece->isFull()) {
        skipFragments(next_);
        element_.octets = *whole.take(next_.position() - whole.position());
        if (element_.octets.size() > piece->octets.size()) join();
    }
    if (element_.id == ElementId::ExtensionMissing) takeExtension();
}

// Copies the bodies of all pieces one after the other.
void ElementIterator::join() {
    const std::shared_ptr<std::uint8_t[]> block(new std::uint8_t[element_.octets.size()]);
    std::uint8_t* end = block.get();
    ByteCursor pieces(element_.octets);
    while (const auto piece = takePiece(pieces)) end = std::ranges::copy(piece->body(), end).out;
    element_.body = {block.get(), end};
    element_.joined_ = block;
}

void ElementIterator::takeExtension() {
    ByteCursor body(element_.body);
    const auto extension = body.u8();
    if (!extension) return;
    element_.id = extensionElement(*extension);
    element_.body = body.rest();
}

}  // namespace halvane::air
