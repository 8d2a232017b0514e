// The attributes of a Wi-Fi Protected Setup element, each stored in a property.
//
// wps_attribute_list.h is the table of attributes, and so of the properties and parsers here. A
// property is absent until its attribute occurs. If an attribute is repeated, the last one counts,
// except that device types accumulate.
//
// Only the attributes that occur are stored, and they share the bytes of the given buffer: a set of
// few attributes is small and cheap to copy.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_IE_WPS_TLVS_H
#define HALVANE_IE_WPS_TLVS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/ie/wps_attributes.h"
#include "halvane/ie/wps_device_type.h"

namespace halvane {

class ByteCursor;

// The type of a property of each kind, in the order of WPSValueKind.
template <WPSValueKind kind>
using WPSValue =
    std::tuple_element_t<static_cast<std::size_t>(kind),
                         std::tuple<Number, Number, ByteBuffer, std::vector<ByteBuffer>,
                                    std::vector<HalvaneWPSDeviceType>>>;

class HALVANE_EXPORT HalvaneWPSTLVs {
  public:
    // An empty object: no attribute bytes, no property, not valid.
    HalvaneWPSTLVs() = default;

    // Decodes `data`, the attributes without an element's header. No buffer counts as an empty one.
    static HalvaneWPSTLVs initWithData(const std::optional<ByteBuffer>& data);

    // The attribute bytes.
    const std::optional<ByteBuffer>& rawTLVs() const { return rawTLVs_; }

    // False after a walk that refused a value and did not end exactly at the last byte. A walk that
    // ends there sets the flag again, whatever was refused before.
    bool isValid() const { return isValid_; }

    // For each attribute X:
    //   property()      the value; absent if the attribute did not occur; a reference that is valid
    //                   until the object is changed or destroyed
    //   setProperty()   stores a value, or clears it with std::nullopt
    //   parseDataElementX_withLength()
    //                   stores the value of `length` bytes, as the walk does; a length that is not
    //                   accepted stores nothing and clears isValid()
    // version() is a fraction: 2.5 for the byte 0x25. The other integers are unsigned. A Message
    // Type without a byte is accepted and stores nothing. A walk never makes vendorExtensions()
    // present: a vendor extension becomes the only item of an array that was set before, and is
    // dropped if there is none.
#define HALVANE_WPS_PARSER(name) \
    void parseDataElement##name##_withLength(const std::uint8_t* value, std::size_t length);
#define HALVANE_WPS_PROPERTY(type, name, kind, shortest, longest, property, setter, label) \
    const std::optional<WPSValue<WPSValueKind::kind>>& property() const;                   \
    void setter(std::optional<WPSValue<WPSValueKind::kind>> value);                        \
    HALVANE_WPS_PARSER(name)
#define HALVANE_WPS_PARSER_ONLY(type, name, kind, shortest, longest, property) \
    HALVANE_WPS_PARSER(name)
#include "halvane/ie/wps_attribute_list.h"
#undef HALVANE_WPS_PARSER

    // Walks rawTLVs() up to its end, a truncated header, or a length that exceeds the rest.
    // Properties whose attributes do not occur keep their values. Types without a row are skipped.
    // Authentication Type (0x1003) also sets authenticationTypeFlags().
    void parseTLVs();

    // One line for each present property, with a padded label, indented by four spaces; empty
    // without rawTLVs().
    std::string description() const;

  private:
    using Value = std::variant<std::optional<Number>, std::optional<ByteBuffer>,
                               std::optional<std::vector<ByteBuffer>>,
                               std::optional<std::vector<HalvaneWPSDeviceType>>>;

    // One present property. Its value is optional only so that a getter can return a reference to
    // it; it is never std::nullopt. The entries are sorted by property and unique.
    struct Entry {
        WPSProperty property;
        Value value;
    };

    // Returns the value, or null if the property is absent.
    const Value* find(WPSProperty property) const;

    // Returns the value to assign to; creates it if the property is absent.
    Value& slot(WPSProperty property);

    template <typename Held>
    const std::optional<Held>& get(WPSProperty property) const;
    template <typename Held>
    void set(WPSProperty property, std::optional<Held> value);

    void file(const WPSAttribute& attribute, ByteCursor value);
    void storeValue(const WPSAttribute& attribute, ByteCursor& value);
    void appendDeviceTypes(WPSProperty property, ByteCursor& value);

    std::optional<ByteBuffer> rawTLVs_;
    bool isValid_ = false;
    std::vector<Entry> entries_;
};

}  // namespace halvane

#endif
