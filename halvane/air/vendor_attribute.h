// The attributes of the Wi-Fi Alliance's elements: an identifier, a length, and a value.
//
// Plain values and functions without state. Any thread may call them.
#ifndef HALVANE_AIR_VENDOR_ATTRIBUTE_H
#define HALVANE_AIR_VENDOR_ATTRIBUTE_H

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct VendorAttribute {
    std::uint16_t id = 0;
    ByteBuffer value{};

    friend bool operator==(const VendorAttribute&, const VendorAttribute&) = default;
};

// The attributes of an element, in its order.
using VendorAttributes = std::vector<VendorAttribute>;

// The value of the first attribute with the identifier; null if there is none.
HALVANE_EXPORT const ByteBuffer* findAttribute(const VendorAttributes& attributes,
                                               std::uint16_t id);

// The same as a number, the most significant octet first; absent if the value is shorter. Further
// octets are ignored.
HALVANE_EXPORT std::optional<std::uint8_t> attributeOctet(const VendorAttributes& attributes,
                                                          std::uint16_t id);
HALVANE_EXPORT std::optional<std::uint16_t> attributeNumber(const VendorAttributes& attributes,
                                                            std::uint16_t id);
// The same as text, whose encoding is not checked; empty if there is none. Valid as long as
// `attributes` is unchanged.
HALVANE_EXPORT std::string_view attributeText(const VendorAttributes& attributes, std::uint16_t id);

}  // namespace halvane::air

#endif
