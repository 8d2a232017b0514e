// Reading a skeleton representation: never validates, never fails.
//
// A missing key reads as nothing. A number and a boolean stand in for each other; any other value
// of the wrong kind reads as a missing one.
#ifndef HALVANE_BASE_SKELETON_INTERNAL_H
#define HALVANE_BASE_SKELETON_INTERNAL_H

#include <cstdint>
#include <optional>
#include <string_view>

#include "halvane/base/property_list_value.h"

namespace halvane::skeleton {

inline std::optional<Number> numberFor(const PropertyListDictionary& skeleton,
                                       std::string_view key) {
    const auto* value = skeleton.find(key);
    if (value == nullptr) return std::nullopt;
    if (const auto* number = value->as<Number>()) return *number;
    if (const auto* boolean = value->as<bool>()) return Number(*boolean ? 1 : 0);
    return std::nullopt;
}

inline std::int64_t int64For(const PropertyListDictionary& skeleton, std::string_view key) {
    return numberFor(skeleton, key).value_or(0).int64();
}

inline std::uint64_t uint64For(const PropertyListDictionary& skeleton, std::string_view key) {
    return numberFor(skeleton, key).value_or(0).uint64();
}

inline bool boolFor(const PropertyListDictionary& skeleton, std::string_view key) {
    return numberFor(skeleton, key).value_or(0) != Number(0);
}

// The empty buffer for a missing key.
inline ByteBuffer dataFor(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto* value = skeleton.find(key);
    const auto* data = value != nullptr ? value->as<ByteBuffer>() : nullptr;
    return data != nullptr ? *data : ByteBuffer();
}

// Writes the value where there is one.
template <typename Value>
void setIfPresent(PropertyListDictionary& skeleton, const char* key,
                  const std::optional<Value>& value) {
    if (value) skeleton.set(key, *value);
}

}  // namespace halvane::skeleton

#endif
