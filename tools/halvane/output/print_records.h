// Prints a list of records for programs: JSON, JSON lines or a property list.
#ifndef TOOLS_HALVANE_OUTPUT_PRINT_RECORDS_H
#define TOOLS_HALVANE_OUTPUT_PRINT_RECORDS_H

// The writeJSON() of a record's type is its caller's to include.
// IWYU pragma: no_include "tools/halvane/output/config_json.h"
// IWYU pragma: no_include "tools/halvane/output/json_schema.h"
#include <utility>
#include <vector>

#include "halvane/base/property_list_value.h"

#include "tools/halvane/output/format.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/property_list_output.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

// REQUIRES: `format` is JSON or JSON lines.
inline JSONWriter jsonWriterFor(Format format) {
    return JSONWriter(format == Format::JSON ? JSONWriter::Layout::Indented
                                             : JSONWriter::Layout::OneLine);
}

// Outputs the text of the writer, and clears it.
inline void putJSON(JSONWriter& writer) {
    put(writer.text());
    writer.clear();
}

// Prints one array, or one line per record.
// REQUIRES: the record's type has a writeJSON().
template <typename Record>
void printJSON(const std::vector<Record>& records, Format format) {
    JSONWriter writer = jsonWriterFor(format);
    if (format == Format::JSON) writer.beginArray();
    for (const Record& record : records) {
        writeJSON(writer, record);
        if (format != Format::JSON) writer.newline();
        if (writer.text().size() >= kJSONBatchSize) putJSON(writer);
    }
    if (format == Format::JSON) {
        writer.endArray();
        writer.newline();
    }
    putJSON(writer);
}

// `toPropertyList` returns a record's dictionary.
// REQUIRES: `format` is not text, which each command prints in its own way.
template <typename Record, typename ToPropertyList>
void printRecords(const std::vector<Record>& records, Format format,
                  ToPropertyList toPropertyList) {
    if (format != Format::PropertyList) return printJSON(records, format);
    PropertyListArray array;
    for (const Record& record : records) array.emplace_back(toPropertyList(record));
    putPropertyList(std::move(array));
}

// Prints the object of one record, and nothing else, in one of those formats. A property list holds
// only the dictionary.
template <typename Record>
void printRecord(const Record& record, PropertyListDictionary propertyList, Format format) {
    if (format == Format::PropertyList) return putPropertyList(std::move(propertyList));
    JSONWriter writer = jsonWriterFor(format);
    writeJSON(writer, record);
    writer.newline();
    putJSON(writer);
}

}  // namespace halvane::tool

#endif
