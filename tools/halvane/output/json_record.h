// Writes any record that has a table of properties as JSON.
//
// A property's key is the member's name. Absent properties are left out; an empty list is an empty
// array.
#ifndef TOOLS_HALVANE_OUTPUT_JSON_RECORD_H
#define TOOLS_HALVANE_OUTPUT_JSON_RECORD_H

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <ranges>
#include <string_view>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

#include "tools/halvane/output/json_key.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

template <Tabled Record>
void writeObject(JSONWriter& writer, const Record& record);

// --- Values ---

inline void writeValue(JSONWriter& writer, std::same_as<bool> auto value) {
    writer.boolean(value);
}
inline void writeValue(JSONWriter& writer,
                       std::integral auto value) requires(!std::same_as<decltype(value), bool>) {
    writer.integer(value);
}
inline void writeValue(JSONWriter& writer, const Number& value) {
    writer.number(value);
}
inline void writeValue(JSONWriter& writer, std::string_view text) {
    writer.string(text);
}
inline void writeValue(JSONWriter& writer, const ShownOctets& text) {
    writer.shownString(text.octets);
}
inline void writeValue(JSONWriter& writer, const Address& address) {
    writer.addressString(address.bytes);
}
inline void writeValue(JSONWriter& writer, const ByteBuffer& bytes) {
    writer.hexString(bytes.bytes());
}
inline void writeValue(JSONWriter& writer, const HexOctets& hex) {
    writer.hexString(hex.octets);
}
// No text converts to such a value here.
inline void writeValue(JSONWriter& writer, const std::same_as<ScalarValue> auto& value) {
    std::visit([&writer](const auto& held) { writeValue(writer, held); }, value);
}
template <Tabled Record>
void writeValue(JSONWriter& writer, const Record& record) {
    writeObject(writer, record);
}
template <typename List>
concept ListOfValues = std::ranges::forward_range<List> && !Tabled<List> &&
                       !std::convertible_to<List, std::string_view>;

template <ListOfValues List>
void writeValue(JSONWriter& writer, const List& items) {
    writer.beginArray();
    for (const auto& item : items) writeValue(writer, item);
    writer.endArray();
}

// --- Members ---

template <typename Value>
void writeMember(JSONWriter& writer, const JSONKey& key, const Value& value) {
    writer.key(key);
    writeValue(writer, value);
}
template <typename Value>
void writeMember(JSONWriter& writer, const JSONKey& key, const std::optional<Value>& value) {
    if (value) writeMember(writer, key, *value);
}
template <typename Value>
void writeMember(JSONWriter& writer, const JSONKey& key, const std::shared_ptr<Value>& value) {
    if (value) writeMember(writer, key, *value);
}
template <typename Value>
void writeMember(JSONWriter&, const JSONKey&, const Streamed<Value>&) {}

// Writes into an open object.
template <Tabled Record>
void writeMembers(JSONWriter& writer, const Record& record) {
    forEachProperty<Record>(
        [&](const auto& row) { writeMember(writer, row.key, std::invoke(row.read, record)); });
}

template <Tabled Record>
void writeObject(JSONWriter& writer, const Record& record) {
    writer.beginObject();
    writeMembers(writer, record);
    writer.endObject();
}

}  // namespace halvane::tool

#endif
