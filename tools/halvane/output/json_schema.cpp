#include "tools/halvane/output/json_schema.h"

#include <algorithm>

#include "tools/halvane/output/property_meanings.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kRecord = "record";

void writeReference(JSONWriter& writer, std::string_view definition) {
    writer.key("$ref");
    writer.string("#/$defs/" + std::string(definition));
}

void writeType(JSONWriter& writer, std::string_view type) {
    writer.key("type");
    writer.string(type);
}

void writePattern(JSONWriter& writer, std::string_view pattern) {
    writeType(writer, "string");
    writer.key("pattern");
    writer.string(pattern);
}

// Writes what a value of this kind is. `members` is the table of an object.
void writeKind(JSONWriter& writer, PropertyKind kind, const PropertyRows& members) {
    switch (kind) {
        case PropertyKind::Boolean:
            return writeType(writer, "boolean");
        case PropertyKind::Integer:
            return writeType(writer, "integer");
        case PropertyKind::Number:
            return writeType(writer, "number");
        case PropertyKind::Text:
            return writeType(writer, "string");
        case PropertyKind::Address:
            return writePattern(writer, "^[0-9A-F]{2}(:[0-9A-F]{2}){0,5}$");
        case PropertyKind::Bytes:
            return writePattern(writer, "^([0-9a-f]{2})*$");
        case PropertyKind::Scalar:
            writer.key("type");
            writer.beginArray();
            for (const char* const type : {"boolean", "integer", "string"}) writer.string(type);
            return writer.endArray();
        case PropertyKind::Object:
            return writeReference(writer, members.table());
        case PropertyKind::Array:
            return writeType(writer, "array");
    }
}

void writeProperty(JSONWriter& writer, std::string_view table, const PropertyDescription& row) {
    writer.name(row.key);
    writer.beginObject();
    if (const PropertyMeaning* const meaning = meaningOf(table, row.key)) {
        writer.key("description");
        writer.string(meaning->sentence);
        if (!meaning->unit.empty()) {
            writer.key("unit");
            writer.string(meaning->unit);
        }
    }
    writeKind(writer, row.kind, row.members);
    if (row.kind == PropertyKind::Array) {
        writer.key("items");
        writer.beginObject();
        writeKind(writer, row.itemKind, row.members);
        writer.endObject();
    }
    writer.endObject();
}

// Writes the definition of an object that has the members of these tables, and no others.
void writeObjectOf(JSONWriter& writer, const std::vector<SchemaPart>& parts) {
    writeType(writer, "object");
    writer.key("properties");
    writer.beginObject();
    for (const SchemaPart& part : parts) {
        for (const PropertyDescription& row : part.table.rows()) {
            writeProperty(writer, part.table.table(), row);
        }
    }
    writer.endObject();
    writer.key("required");
    writer.beginArray();
    for (const SchemaPart& part : parts) {
        for (const PropertyDescription& row : part.table.rows()) {
            if (!part.mayBeAbsent && !row.mayBeAbsent) writer.string(row.key);
        }
    }
    writer.endArray();
    writer.key("additionalProperties");
    writer.boolean(false);
}

// Writes the definition "record": the only kind, or one of several.
void writeRecord(JSONWriter& writer, const std::vector<SchemaRecord>& records) {
    writer.key("record");
    writer.beginObject();
    if (records.size() == 1) {
        writeReference(writer, records.front().name);
    } else {
        writer.key("anyOf");
        writer.beginArray();
        for (const SchemaRecord& record : records) {
            writer.beginObject();
            writeReference(writer, record.name);
            writer.endObject();
        }
        writer.endArray();
    }
    writer.endObject();
}

void writeDefinitions(JSONWriter& writer, const CommandSchema& schema) {
    writer.key("$defs");
    writer.beginObject();
    writeRecord(writer, schema.records);
    for (const SchemaRecord& record : schema.records) {
        writer.name(record.name);
        writer.beginObject();
        writer.key("description");
        writer.string(record.sentence);
        writeObjectOf(writer, record.parts);
        writer.endObject();
    }
    for (const PropertyRows& table : tablesOf(schema)) {
        writer.name(table.table());
        writer.beginObject();
        writeObjectOf(writer, {{table}});
        writer.endObject();
    }
    writer.endObject();
}

// Appends the tables that the rows refer to, and those that these refer to.
void addTables(std::vector<PropertyRows>& tables, PropertyDescriptions rows) {
    for (const PropertyDescription& row : rows) {
        if (row.members.empty()) continue;
        const std::string_view name = row.members.table();
        if (std::ranges::find(tables, name, &PropertyRows::table) != tables.end()) continue;
        tables.push_back(row.members);
        addTables(tables, row.members.rows());
    }
}

}  // namespace

std::vector<PropertyRows> tablesOf(const CommandSchema& schema) {
    std::vector<PropertyRows> tables;
    for (const SchemaRecord& record : schema.records) {
        for (const SchemaPart& part : record.parts) addTables(tables, part.table.rows());
    }
    std::erase_if(tables, [&](const PropertyRows& table) {
        return std::ranges::find(schema.records, table.table(), &SchemaRecord::name) !=
               schema.records.end();
    });
    return tables;
}

void writeJSON(JSONWriter& writer, const CommandSchema& schema) {
    writer.beginObject();
    writer.key("$schema");
    writer.string("https://json-schema.org/draft/2020-12/schema");
    writer.key("$id");
    writer.string("urn:halvane:schema:" + std::string(schema.command));
    writer.key("title");
    writer.string("halvane " + std::string(schema.command) +
                  (schema.form == SchemaForm::Lines ? " --format=jsonl" : " --format=json"));
    writer.key("description");
    writer.string(schema.sentence);
    if (schema.form == SchemaForm::Array) {
        writeType(writer, "array");
        writer.key("items");
        writer.beginObject();
        writeReference(writer, kRecord);
        writer.endObject();
    } else {
        writeReference(writer, kRecord);
    }
    writeDefinitions(writer, schema);
    writer.endObject();
}

}  // namespace halvane::tool
