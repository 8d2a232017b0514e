#include "halvane/air/vendor_attribute.h"

#include "halvane/base/byte_cursor.h"

namespace halvane::air {

const ByteBuffer* findAttribute(const VendorAttributes& attributes, std::uint16_t id) {
    for (const VendorAttribute& attribute : attributes) {
        if (attribute.id == id) return &attribute.value;
    }
    return nullptr;
}

std::optional<std::uint8_t> attributeOctet(const VendorAttributes& attributes, std::uint16_t id) {
    const ByteBuffer* value = findAttribute(attributes, id);
    return value ? ByteCursor(*value).u8() : std::nullopt;
}

std::optional<std::uint16_t> attributeNumber(const VendorAttributes& attributes, std::uint16_t id) {
    const ByteBuffer* value = findAttribute(attributes, id);
    return value ? ByteCursor(*value).u16be() : std::nullopt;
}

std::string_view attributeText(const VendorAttributes& attributes, std::uint16_t id) {
    const ByteBuffer* value = findAttribute(attributes, id);
    return value ? value->text() : std::string_view();
}

}  // namespace halvane::air
