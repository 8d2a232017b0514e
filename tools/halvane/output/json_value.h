// Plain values as JSON.
//
// Byte data is lower-case hexadecimal; absent values are left out of their object.
#ifndef TOOLS_HALVANE_OUTPUT_JSON_VALUE_H
#define TOOLS_HALVANE_OUTPUT_JSON_VALUE_H

#include <concepts>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

#include "tools/halvane/output/format.h"  // before JSON, which its enumerators would shadow

namespace halvane::tool {

// Keys in the order in which they were added, so that the same record gives the same text.
using JSON = nlohmann::ordered_json;

inline JSON jsonOf(bool value) {
    return value;
}
inline JSON jsonOf(std::integral auto value) {
    return value;
}
inline JSON jsonOf(const std::string& text) {
    return text;
}
inline JSON jsonOf(const ByteBuffer& bytes) {
    return bytes.hex();
}
inline JSON jsonOf(const Number& number) {
    if (const auto value = number.exactInt64()) return *value;
    if (const auto value = number.exactUInt64()) return *value;
    return number.real();
}

// Adds a member; a null one, as an absent value makes, is left out.
inline void putMember(JSON& object, const char* key, JSON value) {
    if (!value.is_null()) object.emplace(key, std::move(value));
}
template <typename Value>
void putMember(JSON& object, const char* key, const std::optional<Value>& value) {
    if (value) putMember(object, key, jsonOf(*value));
}

}  // namespace halvane::tool

#endif
