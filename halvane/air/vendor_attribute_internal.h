// How the attributes of the Wi-Fi Alliance's elements are told.
#ifndef HALVANE_AIR_VENDOR_ATTRIBUTE_INTERNAL_H
#define HALVANE_AIR_VENDOR_ATTRIBUTE_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/vendor_attribute.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

// An attribute that the library names. `tell` reads its value for the sink; null: octets.
struct AttributeRow {
    std::uint16_t id;
    std::string_view name;
    void (*tell)(ElementReader& reader) = nullptr;
};

// The names for the identifier.
template <std::size_t Size>
constexpr std::array<ValueName, Size> attributeNames(const AttributeRow (&rows)[Size]) {
    std::array<ValueName, Size> names{};
    for (std::size_t i = 0; i < Size; ++i) names[i] = {rows[i].id, rows[i].name};
    return names;
}

inline void tellAttribute(ElementReader& reader, std::span<const AttributeRow> rows,
                          std::uint16_t id) {
    for (const AttributeRow& row : rows) {
        if (row.id == id && row.tell != nullptr) return row.tell(reader);
    }
    ByteBuffer value;
    if (reader.hasMore()) reader.octets("Value", value);
}

// Values of common kinds.
inline void tellText(ElementReader& reader) {
    ByteBuffer value;
    reader.text("Value", value);
}
inline void tellAddress(ElementReader& reader) {
    MacAddress value;
    reader.address("Value", value);
}
inline void tellFlag(ElementReader& reader) {
    static constexpr ValueName kNames[] = {{0, "no"}, {1, "yes"}};
    std::uint8_t value = 0;
    reader.number("Value", value, {.names = kNames});
}
template <typename Number>
void tellBigEndian(ElementReader& reader) {
    Number value = 0;
    reader.bigEndian("Value", value);
}
// A value of `Size` octets with these bits.
template <std::size_t Size, const auto& kFields>
void tellBitFields(ElementReader& reader) {
    BitOctets<Size> value;
    reader.bits(value, kFields);
}

// Attributes up to the end. `Id` is the type of the identifier on the air, `header` reads it, and
// `sized` the length and what it counts.
template <typename Codec, typename List, typename Header, typename Sized>
void attributesLayout(Codec& codec, List& attributes, std::span<const AttributeRow> rows,
                      Header header, Sized sized) {
    codec.listToEnd(attributes, [&](auto& attribute) {
        codec.group("Attribute", [&] {
            header(attribute.id);
            sized([&] {
                codec.opaque(attribute.value, [&](ElementReader& reader) {
                    tellAttribute(reader, rows, attribute.id);
                });
            });
        });
    });
}

}  // namespace halvane::air

#endif
