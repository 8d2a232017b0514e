// Reads and writes skeleton representations.
//
// Reading never validates and never fails. A missing key reads as nothing. A number and a boolean
// substitute for each other. Any other value of the wrong kind reads as a missing one. A number out
// of the requested type's range reads as the nearest limit.
#ifndef HALVANE_BASE_SKELETON_INTERNAL_H
#define HALVANE_BASE_SKELETON_INTERNAL_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
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

inline std::uint16_t uint16For(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto value = std::min<std::uint64_t>(uint64For(skeleton, key), UINT16_MAX);
    return static_cast<std::uint16_t>(value);
}

inline bool boolFor(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto* value = skeleton.find(key);
    if (value == nullptr) return false;
    if (const auto* boolean = value->as<bool>()) return *boolean;
    const auto* number = value->as<Number>();
    return number != nullptr && *number != Number(0);
}

// Absent if the key is missing.
template <typename Kind>
std::optional<Kind> valueFor(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto* value = skeleton.find(key);
    const auto* kind = value != nullptr ? value->as<Kind>() : nullptr;
    return kind != nullptr ? std::optional(*kind) : std::nullopt;
}

// Empty if the key is missing.
inline ByteBuffer dataFor(const PropertyListDictionary& skeleton, std::string_view key) {
    return valueFor<ByteBuffer>(skeleton, key).value_or(ByteBuffer());
}

inline std::optional<std::string> textFor(const PropertyListDictionary& skeleton,
                                          std::string_view key) {
    return valueFor<std::string>(skeleton, key);
}

// Empty if the key is missing.
inline const PropertyListDictionary& dictionaryFor(const PropertyListDictionary& skeleton,
                                                   std::string_view key) {
    static const PropertyListDictionary nothing;
    const auto* value = skeleton.find(key);
    const auto* dictionary = value != nullptr ? value->as<PropertyListDictionary>() : nullptr;
    return dictionary != nullptr ? *dictionary : nothing;
}

inline bool isDictionary(const PropertyListValue& value) {
    return value.as<PropertyListDictionary>() != nullptr;
}

// Returns one record for each dictionary of an array, in order. Items that are not dictionaries are
// skipped, and so are skeletons that no record can be built from. Items of a moved-from array are
// freed one by one, so that a skeleton and its record do not both take memory for long.
template <typename Record, typename Array>
std::vector<Record> recordsOf(Array&& array) {
    using Built = decltype(Record::initWithSkeletonRepresentation({}));
    std::vector<Record> records;
    // Only dictionaries need room: an array of other items may be long. If a skeleton may fail to
    // make a record, the number of records is not known in advance.
    if constexpr (std::is_same_v<Built, Record>) {
        records.reserve(static_cast<std::size_t>(std::ranges::count_if(array, isDictionary)));
    }
    for (auto& item : array) {
        if (!isDictionary(item)) continue;
        Built record =
            Record::initWithSkeletonRepresentation(*item.template as<PropertyListDictionary>());
        if constexpr (!std::is_lvalue_reference_v<Array>) item = PropertyListValue();
        if constexpr (std::is_same_v<Built, Record>) {
            records.push_back(std::move(record));
        } else {
            if (record) records.push_back(std::move(*record));
        }
    }
    return records;
}

// The same for the array under a key; empty if the key is missing.
template <typename Record>
std::vector<Record> recordsFor(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto* value = skeleton.find(key);
    const auto* array = value != nullptr ? value->as<PropertyListArray>() : nullptr;
    return array != nullptr ? recordsOf<Record>(*array) : std::vector<Record>();
}

// Returns the skeletons of the records, in order.
template <typename Records>
PropertyListArray skeletonsOf(const Records& records) {
    PropertyListArray array;
    array.reserve(records.size());
    for (const auto& record : records) array.emplace_back(record.skeletonRepresentation());
    return array;
}

// Writes the value if there is one.
template <typename Value>
void setIfPresent(PropertyListDictionary& skeleton, const char* key,
                  const std::optional<Value>& value) {
    if (value) skeleton.set(key, *value);
}

}  // namespace halvane::skeleton

#endif
