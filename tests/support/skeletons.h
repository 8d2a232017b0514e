// Skeleton representations on their way: through XML and back, and with values of the wrong kind.
#ifndef TESTS_SUPPORT_SKELETONS_H
#define TESTS_SUPPORT_SKELETONS_H

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/platform/xml_property_list.h"
#include "halvane/platform/xml_property_list_reader.h"

namespace halvane::testing {

// The skeleton as the other side of a connection reads it; an empty one, and a failure, where it
// does not come through.
inline PropertyListDictionary throughXml(const PropertyListDictionary& skeleton) {
    const auto text = xmlPropertyList(skeleton);
    const auto value = text ? propertyListFromXml(*text) : std::nullopt;
    const auto* dictionary = value ? value->as<PropertyListDictionary>() : nullptr;
    EXPECT_NE(dictionary, nullptr) << text.value_or("no XML");
    return dictionary != nullptr ? *dictionary : PropertyListDictionary();
}

// A value of each kind that a skeleton can hold, and a null one.
inline std::vector<PropertyListValue> valuesOfEveryKind() {
    return {PropertyListValue(),
            true,
            7,
            2.5,
            "text",
            ByteBuffer{1, 2, 3},
            Date(),
            PropertyListArray{1, "x", PropertyListDictionary()},
            PropertyListDictionary()};
}

// Those of them that are neither number nor boolean, which stand in for each other.
inline std::vector<PropertyListValue> valuesThatAreNoNumber() {
    auto values = valuesOfEveryKind();
    std::erase_if(values, [](const PropertyListValue& value) {
        return value.as<bool>() != nullptr || value.as<Number>() != nullptr;
    });
    return values;
}

// Those of them that are of another kind than `Kind`.
template <typename Kind>
std::vector<PropertyListValue> valuesOfOtherKinds() {
    auto values = valuesOfEveryKind();
    std::erase_if(values,
                  [](const PropertyListValue& value) { return value.as<Kind>() != nullptr; });
    return values;
}

}  // namespace halvane::testing

#endif
