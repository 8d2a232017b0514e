// The document tree of a record. Another library makes it from the same tables.
#ifndef TESTS_SUPPORT_JSON_TREE_H
#define TESTS_SUPPORT_JSON_TREE_H

#include <concepts>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"
#include "halvane/base/number.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/output/property_table.h"

namespace halvane::testing {

// Members in the order in which they were added.
using JSON = nlohmann::ordered_json;

template <tool::Tabled Record>
JSON treeOf(const Record& record);

inline JSON treeOf(std::integral auto value) {
    return value;
}
inline JSON treeOf(const std::string& text) {
    return text;
}
inline JSON treeOf(const char* text) {
    return text;
}
inline JSON treeOf(const ByteBuffer& bytes) {
    return bytes.hex();
}
inline JSON treeOf(const tool::Address& address) {
    return FancyFormatting::formattedMAC(ByteBuffer(address.bytes));
}
inline JSON treeOf(const tool::ShownOctets& text) {
    return escapedText(text.octets);
}
inline JSON treeOf(const Number& number) {
    if (const auto value = number.exactInt64()) return *value;
    if (const auto value = number.exactUInt64()) return *value;
    return number.real();
}
template <typename Item>
JSON treeOf(const std::vector<Item>& items) {
    JSON array = JSON::array();
    for (const Item& item : items) array.push_back(treeOf(item));
    return array;
}

template <typename Value>
void addMember(JSON& object, std::string_view key, const Value& value) {
    object.emplace(std::string(key), treeOf(value));
}
template <typename Value>
void addMember(JSON& object, std::string_view key, const std::optional<Value>& value) {
    if (value) addMember(object, key, *value);
}
template <typename Value>
void addMember(JSON& object, std::string_view key, const std::shared_ptr<Value>& value) {
    if (value) addMember(object, key, *value);
}

template <tool::Tabled Record>
void addMembers(JSON& object, const Record& record) {
    tool::forEachProperty<Record>(
        [&](const auto& row) { addMember(object, row.key.text, std::invoke(row.read, record)); });
}

template <tool::Tabled Record>
JSON treeOf(const Record& record) {
    JSON object = JSON::object();
    addMembers(object, record);
    return object;
}

}  // namespace halvane::testing

#endif
