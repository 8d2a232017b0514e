// Where the body of an element ends too early.
#ifndef HALVANE_AIR_ELEMENT_DAMAGE_H
#define HALVANE_AIR_ELEMENT_DAMAGE_H

#include <cstddef>

#include "halvane/base/cxx20.h"

namespace halvane::air {

struct ElementDamage {
    std::size_t offset = 0;     // in the body, of the field that does not fit
    std::size_t remaining = 0;  // octets that are left for it

    friend constexpr bool operator==(const ElementDamage&, const ElementDamage&) = default;
};

}  // namespace halvane::air

#endif
