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
//   ByteBuffer, HexOctets      Bytes
//   ScalarValue                Scalar
//   a class with a table       Object
//   a list of these            Array
//   std::optional or std::shared_ptr of these: the same, and it may be absent
//   Streamed of any of these: the same; the table describes the member and does not write it
//
// A new property is a new row, and a sentence about it in property_meanings.cpp.
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
#include <variant>
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

// Shown as lower-case hexadecimal digits.
struct HexOctets {
    std::span<const std::uint8_t> octets;
};

// A value whose kind is known only when it is read.
using ScalarValue = std::variant<bool, std::int64_t, std::string_view, HexOctets>;

// A member that the record's own writer writes, behind those of the table.
template <typename Value>
struct Streamed {};

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

// The name of the table in schemas; empty for a record class without one.
template <typename Record>
inline constexpr std::string_view kTableName;

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
    Bytes,   // as lower-case hexadecimal digits
    Scalar,  // a Boolean, an integer or a text
    Object,
    Array,
};

struct PropertyDescription;
using PropertyDescriptions = std::span<const PropertyDescription>;

// The rows of a table. They are looked up on use, because a table may contain itself. Those of no
// table are empty.
class PropertyRows {
  public:
    constexpr PropertyRows() = default;
    constexpr PropertyRows(std::string_view table, PropertyDescriptions (*descriptions)())
        : table_(table), rows_(descriptions) {}

    constexpr std::string_view table() const { return table_; }
    constexpr PropertyDescriptions rows() const;

    constexpr operator PropertyDescriptions() const;
    constexpr bool empty() const;
    constexpr std::size_t size() const;
    constexpr const PropertyDescription& operator[](std::size_t index) const;

  private:
    std::string_view table_{};
    PropertyDescriptions (*rows_)() = nullptr;
};

struct PropertyDescription {
    std::string_view key;
    PropertyKind kind;
    bool mayBeAbsent;
    PropertyKind itemKind;  // of an array; `kind` otherwise
    // The rows of an object, or of an array's objects. Empty for any other kind.
    PropertyRows members;
};

constexpr PropertyDescriptions PropertyRows::rows() const {
    return rows_ != nullptr ? rows_() : PropertyDescriptions();
}
constexpr PropertyRows::operator PropertyDescriptions() const {
    return rows();
}
constexpr bool PropertyRows::empty() const {
    return rows().empty();
}
constexpr std::size_t PropertyRows::size() const {
    return rows().size();
}
constexpr const PropertyDescription& PropertyRows::operator[](std::size_t index) const {
    return rows()[index];
}

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
template <>
struct KindOf<HexOctets> : std::integral_constant<PropertyKind, PropertyKind::Bytes> {};
template <>
struct KindOf<ScalarValue> : std::integral_constant<PropertyKind, PropertyKind::Scalar> {};
template <Tabled Type>
struct KindOf<Type> : std::integral_constant<PropertyKind, PropertyKind::Object> {};
template <typename Item>
struct KindOf<std::vector<Item>> : std::integral_constant<PropertyKind, PropertyKind::Array> {};
template <typename Item, std::size_t Capacity>
struct KindOf<InlineList<Item, Capacity>>
    : std::integral_constant<PropertyKind, PropertyKind::Array> {};

// The parts of such a type.
template <typename Type>
struct PartsOf {
    using Value = Type;
    static constexpr bool kMayBeAbsent = false;
};
template <typename Type>
struct PartsOf<std::optional<Type>> {
    using Value = Type;
    static constexpr bool kMayBeAbsent = true;
};
template <typename Type>
struct PartsOf<std::shared_ptr<Type>> : PartsOf<std::optional<Type>> {};
template <typename Type>
struct PartsOf<Streamed<Type>> : PartsOf<Type> {};

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

// The same as a span. A function, and no constant one, because a table that contains itself refers
// to its rows before they are known.
template <typename Record>
PropertyDescriptions propertyDescriptions() {
    return kPropertyDescriptions<Record>;
}

// The same, with the table's name.
template <typename Record>
inline constexpr PropertyRows kPropertyRows = {kTableName<Record>, propertyDescriptions<Record>};

template <typename Record, typename Read>
constexpr PropertyDescription describedProperty(const Property<Read>& row) {
    using Returned = std::remove_cvref_t<std::invoke_result_t<const Read&, const Record&>>;
    using Value = typename PartsOf<Returned>::Value;
    using Item = typename ItemOf<Value>::Item;
    PropertyDescription description = {row.key.text,
                                       KindOf<Value>::value,
                                       PartsOf<Returned>::kMayBeAbsent,
                                       KindOf<Item>::value,
                                       {}};
    if constexpr (Tabled<Item>) description.members = kPropertyRows<Item>;
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
