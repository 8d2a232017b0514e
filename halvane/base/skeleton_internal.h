// Reading and writing skeleton representations.
//
// Reading never validates and never fails. A missing key reads as nothing. A number and a boolean
// stand in for each other; any other value of the wrong kind reads as a missing one. A number that
// the type asked for cannot hold reads as the nearest one.
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
    return numberFor(skeleton, key).value_or(0) != Number(0);
}

// Absent for a missing key.
template <typename Kind>
std::optional<Kind> valueFor(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto* value = skeleton.find(key);
    const auto* kind = value != nullptr ? value->as<Kind>() : nullptr;
    return kind != nullptr ? std::optional(*kind) : std::nullopt;
}

// The empty buffer for a missing key.
inline ByteBuffer dataFor(const PropertyListDictionary& skeleton, std::string_view key) {
    return valueFor<ByteBuffer>(skeleton, key).value_or(ByteBuffer());
}

inline std::optional<std::string> textFor(const PropertyListDictionary& skeleton,
                                          std::string_view key) {
    return valueFor<std::string>(skeleton, key);
}

// The empty dictionary for a missing key.
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

// One record for each dictionary of an array, in order. What is no dictionary is passed over, and
// so is a skeleton that no record can be built from. An array that is moved from is
// emptied item by item, so that skeleton and record need memory one after the other.
template <typename Record, typename Array>
std::vector<Record> recordsOf(Array&& array) {
    using Built = decltype(Record::initWithSkeletonRepresentation({}));
    std::vector<Record> records;
    // Room for the dictionaries alone: an array of another kind may be long. Where a skeleton need
    // not make a record, how many there are is not known.
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

// The same for the array of a key; the empty list for a missing one.
template <typename Record>
std::vector<Record> recordsFor(const PropertyListDictionary& skeleton, std::string_view key) {
    const auto* value = skeleton.find(key);
    const auto* array = value != nullptr ? value->as<PropertyListArray>() : nullptr;
    return array != nullptr ? recordsOf<Record>(*array) : std::vector<Record>();
}

// The skeletons of the records, in order.
template <typename Records>
PropertyListArray skeletonsOf(const Records& records) {
    PropertyListArray array;
    array.reserve(records.size());
    for (const auto& record : records) array.emplace_back(record.skeletonRepresentation());
    return array;
}

// Writes the value where there is one.
template <typename Value>
void setIfPresent(PropertyListDictionary& skeleton, const char* key,
                  const std::optional<Value>& value) {
    if (value) skeleton.set(key, *value);
}

}  // namespace halvane::skeleton

#endif
