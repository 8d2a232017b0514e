// A hardware address in a description, in the form of FancyFormatting; "(null)" if it is absent.
#ifndef HALVANE_MODEL_ADDRESS_TEXT_INTERNAL_H
#define HALVANE_MODEL_ADDRESS_TEXT_INTERNAL_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/describe.h"
#include "halvane/ie/fancy_formatting.h"

namespace halvane {

inline std::string addressText(const std::optional<ByteBuffer>& address) {
    return address ? FancyFormatting::formattedMAC(*address) : describe(address);
}

}  // namespace halvane

#endif
