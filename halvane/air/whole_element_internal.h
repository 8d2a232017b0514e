// Whether the decoder of an element takes its body.
#ifndef HALVANE_AIR_WHOLE_ELEMENT_INTERNAL_H
#define HALVANE_AIR_WHOLE_ELEMENT_INTERNAL_H

#include "halvane/air/element_range.h"

namespace halvane::air {

// True for an element without a decoder.
bool isWhole(const Element& element);

}  // namespace halvane::air

#endif
