// Tables of properties, one for each record class. All JSON output comes from these tables.
//
// A table is a tuple of rows in the order of output. A row has a key and a reader. The return type
// of the reader determines the property's kind, and whether it may be absent:
//
//   bool                       Boolean
//   any other integer          Integer
//   Number                     Number
//   std::string, const char*   Text
//   std::string_view           Text, of a constant
//   ShownOctets                Text
//   Address                    Address
//   ByteBuffer                 Bytes
//   a class with a table       Object
//   a list of these            Array
//   std::optional or std::shared_ptr of these: the same, and it may be absent
//
// A new property is a new row.
#ifndef TOOLS_HALVANE_OUTPUT_PROPERTY_TABLE_H
#define TOOLS_HALVANE_OUTPUT_PROPERTY_TABLE_H

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/inline_list.h"
#include "halvane/base/number.h"

#include "tools/halvane/output/json_key.h"

namespace halvane::tool {

// --- Values that are no type of the library ---

// Shown as "02:1A:2B:3C:4D:5E".
struct Address {
    std::span<const std::uint8_t> bytes;
};

// Shown as escapedText() of them.
struct ShownOctets {
    std::span<const std::uint8_t> octets;
};

// Absent if the address is empty. Valid as long as the buffer's bytes.
inline std::optional<Address> addressIn(const ByteBuffer& address) {
    if (address.empty()) return std::nullopt;
    return Address{address.bytes()};
}
inline std::optional<Address> addressIn(const std::optional<ByteBuffer>& address) {
    return address ? addressIn(*address) : std::nullopt;
}

inline std::optional<ShownOctets> shownOctetsIn(const std::optional<ByteBuffer>& octets) {
    if (!octets) return std::nullopt;
    return ShownOctets{octets->bytes()};
}

// --- Rows and tables ---

template <typename Read>
struct Property {
    JSONKey key;
    Read read;  // of a record
};
template <typename Read>
Property(JSONKey, Read) -> Property<Read>;

// The row of a property whose key is the name of its getter.
#define HALVANE_PROPERTY(getter)                                                      \
    ::halvane::tool::Property {                                                       \
#getter, [](const auto& record) -> decltype(auto) { return record.getter(); } \
    }

// The table of a record class; empty for a class without one.
template <typename Record>
inline constexpr std::tuple<> kProperties;

template <typename Type>
concept Tabled = !std::same_as<decltype(kProperties<Type>), const std::tuple<>>;

// Calls `take` with each row of the record's table, in order.
template <typename Record, typename Take>
constexpr void forEachProperty(Take take) {
    std::apply([&take](const auto&... row) { (take(row), ...); }, kProperties<Record>);
}

// --- Descriptions of tables, without a record ---

enum class PropertyKind : std::uint8_t {
    Boolean,
    Integer,
    Number,  // an integer or a real one
    Text,
    Address,
    Bytes,  // as lower-case hexadecimal digits
    Object,
    Array,
};

struct PropertyDescription {
    std::string_view key;
    PropertyKind kind;
    bool mayBeAbsent;
    PropertyKind itemKind;  // of an array; `kind` otherwise
    // The rows of an object, or of an array's objects. Empty for any other kind.
    std::span<const PropertyDescription> members;
};

// Type is what a reader returns, without its reference, pointer or optional.
template <typename Type>
struct KindOf;
template <std::integral Type>
struct KindOf<Type> : std::integral_constant<PropertyKind, PropertyKind::Integer> {};
template <>
struct KindOf<bool> : std::integral_constant<PropertyKind, PropertyKind::Boolean> {};
template <>
struct KindOf<Number> : std::integral_constant<PropertyKind, PropertyKind::Number> {};
template <>
struct KindOf<std::string> : std::integral_constant<PropertyKind, PropertyKind::Text> {};
template <>
struct KindOf<std::string_view> : std::integral_constant<PropertyKind, PropertyKind::Text> {};
template <>
struct KindOf<const char*> : std::integral_constant<PropertyKind, PropertyKind::Text> {};
template <>
struct KindOf<ShownOctets> : std::integral_constant<PropertyKind, PropertyKind::Text> {};
template <>
struct KindOf<Address> : std::integral_constant<PropertyKind, PropertyKind::Address> {};
template <>
struct KindOf<ByteBuffer> : std::integral_constant<PropertyKind, PropertyKind::Bytes> {};
template <Tabled Type>
struct KindOf<Type> : std::integral_constant<PropertyKind, PropertyKind::Object> {};
template <typename Item>
struct KindOf<std::vector<Item>> : std::integral_constant<PropertyKind, PropertyKind::Array> {};
template <typename Item, std::size_t Capacity>
struct KindOf<InlineList<Item, Capacity>>
    : std::integral_constant<PropertyKind, PropertyKind::Array> {};

// The parts of such a type.
template <typename Type>
struct Parts {
    using Value = Type;
    static constexpr bool kMayBeAbsent = false;
};
template <typename Type>
struct Parts<std::optional<Type>> {
    using Value = Type;
    static constexpr bool kMayBeAbsent = true;
};
template <typename Type>
struct Parts<std::shared_ptr<Type>> : Parts<std::optional<Type>> {};

template <typename Type>
struct ItemOf {
    using Item = Type;
};
template <typename Type>
struct ItemOf<std::vector<Type>> {
    using Item = Type;
};
template <typename Type, std::size_t Capacity>
struct ItemOf<InlineList<Type, Capacity>> {
    using Item = Type;
};

template <typename Record>
constexpr auto describedProperties();

// The table's rows, in order.
template <typename Record>
inline constexpr auto kPropertyDescriptions = describedProperties<Record>();

template <typename Record, typename Read>
constexpr PropertyDescription describedProperty(const Property<Read>& row) {
    using Returned = std::remove_cvref_t<std::invoke_result_t<const Read&, const Record&>>;
    using Value = typename Parts<Returned>::Value;
    using Item = typename ItemOf<Value>::Item;
    PropertyDescription description = {
        row.key.text, KindOf<Value>::value, Parts<Returned>::kMayBeAbsent, KindOf<Item>::value, {}};
    if constexpr (Tabled<Item>) description.members = kPropertyDescriptions<Item>;
    return description;
}

template <typename Record>
constexpr auto describedProperties() {
    return std::apply(
        [](const auto&... row) { return std::array{describedProperty<Record>(row)...}; },
        kProperties<Record>);
}

}  // namespace halvane::tool

#endif
