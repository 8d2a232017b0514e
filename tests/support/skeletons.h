// Skeletons as other processes may send them: through XML, and with any value at any key.
#ifndef TESTS_SUPPORT_SKELETONS_H
#define TESTS_SUPPORT_SKELETONS_H

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

namespace halvane::testing {

// The dictionary written as XML and read from it.
inline PropertyListDictionary throughXml(const PropertyListDictionary& skeleton) {
    const auto xml = xmlPropertyList(skeleton);
    EXPECT_TRUE(xml) << "has no XML form";
    const auto value = propertyListFromXml(xml.value_or(""));
    const auto* dictionary = value ? value->as<PropertyListDictionary>() : nullptr;
    EXPECT_NE(dictionary, nullptr) << xml.value_or("");
    return dictionary != nullptr ? *dictionary : PropertyListDictionary();
}

// One value of each kind, including empty and extreme ones.
inline std::vector<PropertyListValue> valuesOfEveryKind() {
    PropertyListDictionary dictionary;
    dictionary.set("key", "value");
    return {PropertyListValue(),
            true,
            0,
            INT64_MIN,
            UINT64_MAX,
            -0.5,
            "",
            "text",
            ByteBuffer(),
            ByteBuffer{0x00, 0xFF},
            Date(),
            PropertyListArray(),
            PropertyListArray{PropertyListValue(), "text", PropertyListArray()},
            PropertyListDictionary(),
            dictionary,
            PropertyListValue::Object()};
}

// A text of all ASCII characters that XML carries, and some of each length in UTF-8, up to the last
// one.
inline std::string awkwardText() {
    std::string text = "\t\n\r";
    for (char character = 0x20; character < 0x7F; ++character) text += character;
    return text +
           "\x7F\xC2\x80\xC2\x85\xC2\x9F\xC3\x89"
           "\xE2\x80\xA8\xE2\x80\x9C\xEF\xBF\xBD\xF0\x9F\x87\xAC\xF0\x9F\x87\xA7\xF4\x8F\xBF\xBD]]"
           ">";
}

}  // namespace halvane::testing

#endif
