// Holds the quick reader of plain property lists to the results of the careful one.
#ifndef TESTS_SUPPORT_BOTH_PLIST_READERS_H
#define TESTS_SUPPORT_BOTH_PLIST_READERS_H

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string_view>
#include <variant>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/platform/plist/xml_property_list_reader_internal.h"

namespace halvane::testing {

inline bool areIdentical(const Number& a, const Number& b) {
    if (a.isReal() || b.isReal()) {
        return a.isReal() && b.isReal() &&
               std::bit_cast<std::uint64_t>(a.real()) == std::bit_cast<std::uint64_t>(b.real());
    }
    return a.isSigned() == b.isSigned() && a == b;
}

// Whether all that can be asked of two values is the same. Equality leaves out the type of numbers
// and the order of keys, and a NaN is equal to nothing.
inline bool areIdentical(const PropertyListValue& a, const PropertyListValue& b) {
    if (a.variant().index() != b.variant().index()) return false;
    if (a.as<Number>() != nullptr) return areIdentical(*a.as<Number>(), *b.as<Number>());
    const auto areAllIdentical = [](const auto& members, const auto& others, auto areSame) {
        return std::equal(members.begin(), members.end(), others.begin(), others.end(), areSame);
    };
    if (const auto* array = a.as<PropertyListArray>()) {
        return areAllIdentical(*array, *b.as<PropertyListArray>(),
                               [](auto& value, auto& other) { return areIdentical(value, other); });
    }
    if (const auto* dictionary = a.as<PropertyListDictionary>()) {
        return areAllIdentical(
            *dictionary, *b.as<PropertyListDictionary>(), [](auto& entry, auto& other) {
                return entry.first == other.first && areIdentical(entry.second, other.second);
            });
    }
    return a == b;
}

// What propertyListFromXml() returns.
using PropertyListReading = Result<PropertyListValue, XmlPropertyListError>;

// Whether two readers return the same value, or the same error.
inline bool areIdentical(const PropertyListReading& a, const PropertyListReading& b) {
    if (!a || !b) return !a && !b && a.error() == b.error();
    return areIdentical(*a, *b);
}

// Whether a text is read alike with and without the quick reader.
inline bool isReadAlike(std::string_view xml) {
    return areIdentical(propertyListFromXml(xml), propertyListFromXml(xml, PlainReading::Skipped));
}

}  // namespace halvane::testing

#endif
