// How a decoded element tells its fields: their names, values and places.
#ifndef HALVANE_AIR_FIELD_SINK_H
#define HALVANE_AIR_FIELD_SINK_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/export.h"

namespace halvane::air {

// Where a field stands in the body of its element. A field that fills its octets has no bits.
struct FieldPlace {
    std::size_t offset = 0;      // of the field's first octet
    std::size_t size = 0;        // octets
    std::uint16_t firstBit = 0;  // of the octets; 0: the least significant bit of the first
    std::uint8_t bitCount = 0;   // 0: all bits of the octets
};

// A value of a field, and the standard's word for it.
struct ValueName {
    std::uint32_t value;    // of the field
    std::string_view name;  // as the standard has it
};

// How a number is to be read. Both spans live as long as the program.
struct NumberForm {
    std::string_view unit{};             // "TU", "dBm"; empty for a number without one
    std::span<const ValueName> names{};  // of its values; empty if they have none
    bool isSigned = false;               // two's complement

    // Empty if the value has no name.
    constexpr std::string_view nameOf(std::uint32_t value) const {
        for (const ValueName& row : names) {
            if (row.value == value) return row.name;
        }
        return {};
    }
};

// A field that holds elements, and where they stand in the body. A field that goes on in fragments
// has their headers between its octets.
struct ElementOctets {
    static constexpr std::size_t kHeaderSize = 2;   // octets of a fragment's header
    static constexpr std::size_t kPieceSize = 255;  // octets of a fragment, at most

    Octets octets{};                             // of all pieces, without the headers
    std::size_t fixedSize = 0;                   // octets before the first element
    std::size_t offset = 0;                      // of the first octet
    std::size_t firstPieceSize = octets.size();  // octets before the first fragment's header

    // The octets after the fixed ones.
    Octets elements() const {
        ByteCursor cursor(octets);
        cursor.skip(fixedSize);
        return cursor.rest();
    }
    // Where the octet `index` of the field stands in the body. The end is the octet after the last.
    constexpr std::size_t offsetOf(std::size_t index) const {
        const std::size_t last = index == octets.size() && index > 0 ? index - 1 : index;
        const std::size_t headers =
            last < firstPieceSize ? 0 : 1 + (last - firstPieceSize) / kPieceSize;
        return offset + index + kHeaderSize * headers;
    }
};

// Receives the fields of an element in their order. Labels are the standard's names and live as
// long as the program; everything else is valid during the call alone.
//
// Functions may throw; the exception reaches the caller of describe().
class HALVANE_EXPORT FieldSink {
  public:
    virtual ~FieldSink();

    // A single bit.
    virtual void flag(const FieldPlace& place, std::string_view label, bool value) = 0;
    // A number, to be read by `form`.
    virtual void number(const FieldPlace& place, std::string_view label, std::int64_t value,
                        const NumberForm& form) = 0;
    // A value in words, such as an address or the name of a cipher suite. Words of the sender, such
    // as the name of a network, come as escapedText().
    virtual void text(const FieldPlace& place, std::string_view label, std::string_view value) = 0;
    // Octets that the library does not look into.
    virtual void octets(const FieldPlace& place, std::string_view label, Octets value) = 0;
    // A field that holds elements. Returns whether the sink takes it; octets() tells one that it
    // does not take. The default takes none.
    virtual bool elements(std::string_view label, const ElementOctets& value);

    // The fields between these two calls are parts of one field, or of one item of a list:
    virtual void beginGroup(std::string_view label) = 0;
    virtual void endGroup() = 0;
};

}  // namespace halvane::air

#endif
