// Supported Operating Classes (IEEE 802.11-2020, 9.4.2.53): the operating classes of annex E in
// which a station works.
#ifndef HALVANE_AIR_SUPPORTED_OPERATING_CLASSES_H
#define HALVANE_AIR_SUPPORTED_OPERATING_CLASSES_H

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

struct HALVANE_EXPORT SupportedOperatingClasses {
    static constexpr ElementId kId = ElementId::SupportedOperatingClasses;

    std::uint8_t currentClass = 0;
    // The octets after it. The value 0 ends the list of classes; the octets after it are pairs of
    // classes that work together. The value 130 is taken for the class of 80+80 MHz; stations list
    // it so, although the standard lets it introduce an extension of the current class.
    InlineList<std::uint8_t, 254> classes{};

    // Whether the class is listed before the first 0.
    bool supports(std::uint8_t operatingClass) const {
        const auto listed = std::find(classes.begin(), classes.end(), 0);
        return operatingClass != 0 && std::find(classes.begin(), listed, operatingClass) != listed;
    }

    static std::optional<SupportedOperatingClasses> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const SupportedOperatingClasses&,
                           const SupportedOperatingClasses&) = default;
};

}  // namespace halvane::air

#endif
