// The layout of a list of subelements.
#ifndef HALVANE_AIR_SUBELEMENT_INTERNAL_H
#define HALVANE_AIR_SUBELEMENT_INTERNAL_H

#include <cstdint>
#include <span>

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

// Of a list in which no subelement holds elements.
inline constexpr int kNoContainer = -1;

// `names` are those of the IDs. The data of the ID `container` holds elements. Octets that make no
// subelement are left.
inline constexpr auto kSubelementsLayout = [](auto& codec, auto& subelements,
                                              std::span<const ValueName> names,
                                              int container = kNoContainer) {
    codec.subelements(subelements, [&](auto& subelement) {
        codec.group("Subelement", [&] {
            codec.number("Subelement ID", subelement.id, {.names = names});
            codec.template sized<std::uint8_t>("Length", 0, [&] {
                if (subelement.id == container) return codec.elements("Data", subelement.body);
                codec.octets("Data", subelement.body);
            });
        });
    });
};

}  // namespace halvane::air

#endif
