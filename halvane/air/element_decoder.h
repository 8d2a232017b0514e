// The functions of an element's decoder, for tables that hold decoders of many elements.
#ifndef HALVANE_AIR_ELEMENT_DECODER_H
#define HALVANE_AIR_ELEMENT_DECODER_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

// All functions are null for an element without a decoder.
struct ElementDecoder {
    // Tells the fields of a body, up to the damage if there is any.
    std::optional<ElementDamage> (*describe)(Octets body, FieldSink& sink) = nullptr;
    // Whether a body can be decoded.
    bool (*isWhole)(Octets body) = nullptr;
    // Decodes a body and encodes it again; absent for a body that cannot be decoded.
    std::optional<std::vector<std::uint8_t>> (*rebuild)(Octets body) = nullptr;
};

// The functions of a decoder for the element type T.
template <typename T>
bool isWholeBy(Octets body) {
    return T::decode(body).has_value();
}

// The functions of a decoder for the element type T.
template <typename T>
std::optional<std::vector<std::uint8_t>> rebuildBy(Octets body) {
    const auto element = T::decode(body);
    if (!element) return std::nullopt;
    return element->encode();
}

// The decoder of an element that is a type of its own, such as Rsn.
template <typename T>
constexpr ElementDecoder decoderOf() {
    return {&T::describe, &isWholeBy<T>, &rebuildBy<T>};
}

}  // namespace halvane::air

#endif
