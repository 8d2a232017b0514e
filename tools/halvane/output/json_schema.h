// JSON Schemas (draft 2020-12) of what commands print, made from the tables of properties.
//
// A schema describes the document of --format=json. Its definition "record" describes one record,
// as a line of --format=jsonl has it.
#ifndef TOOLS_HALVANE_OUTPUT_JSON_SCHEMA_H
#define TOOLS_HALVANE_OUTPUT_JSON_SCHEMA_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

// A table whose members an object has.
struct SchemaPart {
    PropertyRows table;
    bool mayBeAbsent = false;  // all of its members
};

// An object that a command prints.
struct SchemaRecord {
    std::string_view name;      // of the definition
    std::string_view sentence;  // what it is
    std::vector<SchemaPart> parts;
};

enum class SchemaForm {
    Array,   // of records
    Object,  // one record
    Lines,   // a record per line; there is no other document
};

struct CommandSchema {
    std::string_view command;
    SchemaForm form = SchemaForm::Array;
    std::string_view sentence{};          // what the document is
    std::vector<SchemaRecord> records{};  // the kinds that there are, at least one
};

// The tables that the schema's records refer to, each once, without those of the records.
std::vector<PropertyRows> tablesOf(const CommandSchema& schema);

// Writes the schema, one document.
void writeJSON(JSONWriter& writer, const CommandSchema& schema);

}  // namespace halvane::tool

#endif
