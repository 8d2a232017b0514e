// Non-Inheritance (IEEE 802.11-2020, 9.4.2.240): the elements of the sender that do not hold for
// the profile in which this element stands.
#ifndef HALVANE_AIR_NON_INHERITANCE_H
#define HALVANE_AIR_NON_INHERITANCE_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

struct HALVANE_EXPORT NonInheritance {
    static constexpr ElementId kId = ElementId::NonInheritance;

    using Numbers = InlineList<std::uint8_t, 255>;

    Numbers ids{};
    std::optional<Numbers> extensionIds{};  // senders leave an empty list out
    ByteBuffer rest{};

    // Whether elements of this kind do not hold. The ID 255 has no kind without its extension.
    bool contains(ElementId id) const;

    static std::optional<NonInheritance> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const NonInheritance&, const NonInheritance&) = default;
};

}  // namespace halvane::air

#endif
