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
    std::uint8_t id;
    Octets body;
};

// Absent, and nothing is taken, if the piece does not fit.
std::optional<Piece> takePiece(ByteCursor& cursor) {
    ByteCursor ahead = cursor;
    const auto id = ahead.u8();
    const auto length = ahead.u8();
    if (!length) return std::nullopt;
    const auto body = ahead.take(*length);
    if (!body) return std::nullopt;
    cursor = ahead;
    return Piece{*id, *body};
}

// Takes the fragments that follow a piece. Only a full piece goes on in a fragment.
void skipFragments(ByteCursor& cursor, std::size_t pieceSize) {
    while (pieceSize == kFullPiece && cursor.peek() == idOctetOf(ElementId::Fragment)) {
        const auto fragment = takePiece(cursor);
        if (!fragment) return;
        pieceSize = fragment->body.size();
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
    skipFragments(next_, piece->body.size());
    element_.id = static_cast<ElementId>(piece->id);
    element_.body = piece->body;
    element_.offset = whole.position();
    element_.octets = *whole.take(next_.position() - whole.position());
    if (element_.octets.size() > kHeaderSize + piece->body.size()) {
        join();
    } else if (element_.isFragmented()) {
        element_.joined_ = ByteBuffer();
    }
    if (element_.id == ElementId::ExtensionMissing) takeExtension();
}

// Copies the bodies of all pieces one after the other.
void ElementIterator::join() {
    const std::shared_ptr<std::uint8_t[]> block(new std::uint8_t[element_.octets.size()]);
    std::uint8_t* end = block.get();
    ByteCursor pieces(element_.octets);
    while (const auto piece = takePiece(pieces)) end = std::ranges::copy(piece->body, end).out;
    element_.joined_ = ByteBuffer::sharing(block, static_cast<std::size_t>(end - block.get()));
    element_.body = element_.joined_.bytes();
}

void ElementIterator::takeExtension() {
    ByteCursor body(element_.body);
    const auto extension = body.u8();
    if (!extension) return;
    element_.id = extensionElement(*extension);
    element_.body = body.rest();
}

}  // namespace halvane::air
