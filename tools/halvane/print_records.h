// Prints a list of records for programs: JSON, JSON lines or a property list.
#ifndef TOOLS_HALVANE_PRINT_RECORDS_H
#define TOOLS_HALVANE_PRINT_RECORDS_H

#include <cstdio>
#include <utility>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/xml_property_list.h"

#include "tools/halvane/format.h"
#include "tools/halvane/json_value.h"

namespace halvane::tool {

// As XML; nothing where a value has no XML form.
inline void printPropertyList(const PropertyListValue& value) {
    std::fputs(xmlPropertyList(value).value_or("").c_str(), stdout);
}

// `toJSON` gives a record's object, `toPropertyList` its dictionary.
// REQUIRES: `format` is not text, which each command has its own way of.
template <typename Record, typename ToJSON, typename ToPropertyList>
void printRecords(const std::vector<Record>& records, Format format, ToJSON toJSON,
                  ToPropertyList toPropertyList) {
    if (format == Format::PropertyList) {
        PropertyListArray array;
        for (const Record& record : records) array.emplace_back(toPropertyList(record));
        return printPropertyList(std::move(array));
    }
    JSON array = JSON::array();
    for (const Record& record : records) {
        JSON object = toJSON(record);
        if (format == Format::JSON) {
            array.push_back(std::move(object));
        } else {
            std::puts(object.dump().c_str());
        }
    }
    if (format == Format::JSON) std::puts(array.dump(2).c_str());
}

// The object of a record and nothing else, in one of those formats; as a property list its
// dictionary alone.
inline void printRecord(const JSON& json, PropertyListDictionary propertyList, Format format) {
    if (format == Format::PropertyList) return printPropertyList(std::move(propertyList));
    std::puts(json.dump(format == Format::JSON ? 2 : -1).c_str());
}

}  // namespace halvane::tool

#endif
