// Prints a list of records for programs: JSON, JSON lines or a property list.
#ifndef TOOLS_HALVANE_OUTPUT_PRINT_RECORDS_H
#define TOOLS_HALVANE_OUTPUT_PRINT_RECORDS_H

#include <utility>
#include <vector>

#include "halvane/base/property_list_value.h"

#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_value.h"
#include "tools/halvane/output/property_list_output.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

// `toJSON` gives a record's object, `toPropertyList` its dictionary.
// REQUIRES: `format` is not text, which each command has its own way of.
template <typename Record, typename ToJSON, typename ToPropertyList>
void printRecords(const std::vector<Record>& records, Format format, ToJSON toJSON,
                  ToPropertyList toPropertyList) {
    if (format == Format::PropertyList) {
        PropertyListArray array;
        for (const Record& record : records) array.emplace_back(toPropertyList(record));
        return putPropertyList(std::move(array));
    }
    JSON array = JSON::array();
    for (const Record& record : records) {
        JSON object = toJSON(record);
        if (format == Format::JSON) {
            array.push_back(std::move(object));
        } else {
            put(object.dump() + '\n');
        }
    }
    if (format == Format::JSON) put(array.dump(2) + '\n');
}

// The object of a record and nothing else, in one of those formats; as a property list its
// dictionary alone.
inline void printRecord(const JSON& json, PropertyListDictionary propertyList, Format format) {
    if (format == Format::PropertyList) return putPropertyList(std::move(propertyList));
    put(json.dump(format == Format::JSON ? 2 : -1) + '\n');
}

}  // namespace halvane::tool

#endif
