// Octets that are longer than a length octet can tell go on in fragments: each piece but the last
// has 255 octets, and each after the first has a header of its own (IEEE 802.11-2020, 10.28.11).
#ifndef HALVANE_AIR_PIECES_INTERNAL_H
#define HALVANE_AIR_PIECES_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr std::size_t kFullPiece = 255;
inline constexpr std::size_t kPieceHeader = 2;  // ID and length

// Appends the length and the octets of `body`, and as many fragments of the ID `fragmentId` as it
// needs. A body that fills its last piece has an empty fragment after it if `endsEmpty`.
// REQUIRES: `body` is no part of `octets`.
void appendPieces(std::vector<std::uint8_t>& octets, std::uint8_t fragmentId, Octets body,
                  bool endsEmpty = false);

// Tells fields of joined octets with their places in the pieces, and the fragments' headers between
// them. A field that goes on in the next piece includes its header; octets are told by pieces.
class PieceSink final : public FieldSink {
  public:
    // The first piece's octets stand at `start`; the pieces hold `size` octets without headers.
    PieceSink(FieldSink& outer, std::uint8_t fragmentId, std::size_t start, std::size_t size,
              std::size_t fragments)
        : outer_(outer),
          fragmentId_(fragmentId),
          start_(start),
          size_(size),
          fragments_(fragments) {}

    void flag(const FieldPlace& place, std::string_view label, bool value) override;
    void number(const FieldPlace& place, std::string_view label, std::int64_t value,
                const NumberForm& form) override;
    void text(const FieldPlace& place, std::string_view label, std::string_view value) override;
    void octets(const FieldPlace& place, std::string_view label, Octets value) override;
    bool elements(std::string_view label, const ElementOctets& value) override;
    void beginGroup(std::string_view label) override { outer_.beginGroup(label); }
    void endGroup() override { outer_.endGroup(); }

    // Tells the headers that no field has reached.
    void finish() { tellHeaders(fragments_); }

  private:
    FieldPlace inPieces(FieldPlace place);
    void tellHeaders(std::size_t until);

    FieldSink& outer_;
    const std::uint8_t fragmentId_;
    const std::size_t start_;
    const std::size_t size_;
    const std::size_t fragments_;
    std::size_t told_ = 0;  // headers
};

// Where the octet `index` of `size` joined octets stands if the first stands at `start`. The end is
// the octet after the last.
std::size_t placeInPieces(std::size_t start, std::size_t size, std::size_t index);

}  // namespace halvane::air

#endif
