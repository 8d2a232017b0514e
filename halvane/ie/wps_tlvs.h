// The attributes of a Wi-Fi Protected Setup element, each filed into a property of its own.
//
// wps_attribute_list.h is the table of attributes, hence of the properties and parsers here. A
// property is absent until its attribute is met; where an attribute is repeated the last one
// counts, except that device types add up.
//
// The attributes met are all that is stored, and their bytes are shared with the buffer that they
// came in: a set with few attributes is small and cheap to copy.
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

// What a property of each kind holds, in the order of WPSValueKind.
template <WPSValueKind kind>
using WPSValue =
    std::tuple_element_t<static_cast<std::size_t>(kind),
                         std::tuple<Number, Number, ByteBuffer, std::vector<ByteBuffer>,
                                    std::vector<HalvaneWPSDeviceType>>>;

class HALVANE_EXPORT HalvaneWPSTLVs {
  public:
    // An empty object: no attribute bytes, no property, not valid.
    HalvaneWPSTLVs() = default;

    // Walks `data`, the attributes without an element's header. Without a buffer the set is that
    // of an empty one.
    static HalvaneWPSTLVs initWithData(const std::optional<ByteBuffer>& data);

    // The attribute bytes.
    const std::optional<ByteBuffer>& rawTLVs() const { return rawTLVs_; }

    // False after a walk that rejected some value and then did not end exactly on the last byte.
    // A walk that ends there makes the flag true again, whatever was rejected before.
    bool isValid() const { return isValid_; }

    // Of each attribute X:
    //   property()      the value, absent while the attribute was not met; a reference that
    //                   lasts until the object is changed or destroyed
    //   setProperty()   stores a value, or clears it with std::nullopt
    //   parseDataElementX_withLength()
    //                   stores the value of `length` bytes, as the walk does; a length that is not
    //                   accepted stores nothing and clears isValid()
    // version() is a fraction, 2.5 for the byte 0x25; the other integers are unsigned. A Message
    // Type without a byte is accepted and stores nothing.
    // No walk ever makes vendorExtensions() present: a vendor extension becomes the only entry of
    // an array that was set before, and is dropped where there is none.
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

    // Walks rawTLVs() from its start to its end, a truncated header or a length that runs past the
    // end. Properties of attributes that are not met keep their values. Types without a row are
    // skipped. Authentication Type (0x1003) fills authenticationTypeFlags() too.
    void parseTLVs();

    // A line of each property that is present, four-space-indented, under padded labels; empty
    // without rawTLVs().
    std::string description() const;

  private:
    using Value = std::variant<std::optional<Number>, std::optional<ByteBuffer>,
                               std::optional<std::vector<ByteBuffer>>,
                               std::optional<std::vector<HalvaneWPSDeviceType>>>;

    // One property that is present, its value never std::nullopt: it is optional so that a getter
    // can hand out a reference. The entries are sorted by property, of which each has one.
    struct Entry {
        WPSProperty property;
        Value value;
    };

    // The value, or null where the property is absent.
    const Value* find(WPSProperty property) const;

    // The value to assign to; made where the property is absent.
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
