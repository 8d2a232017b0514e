#include "tools/halvane/output/json_schema.h"

#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/golden_file.h"
#include "tests/support/written_json.h"
#include "tools/halvane/commands/command_schemas.h"
#include "tools/halvane/output/folded_case.h"
#include "tools/halvane/output/property_meanings.h"
#include "tools/halvane/output/property_table.h"

using halvane::testing::expectGolden;
using halvane::testing::jsonOf;

namespace halvane::tool {

namespace {

// Calls `take` with every table that a schema uses, and with its command.
template <typename Take>
void forEachTable(Take take) {
    for (const CommandSchema& schema : commandSchemas()) {
        for (const SchemaRecord& record : schema.records) {
            for (const SchemaPart& part : record.parts) take(schema, part.table);
        }
        for (const PropertyRows& table : tablesOf(schema)) take(schema, table);
    }
}

TEST(JSONSchema, HasASentenceForEachProperty) {
    forEachTable([](const CommandSchema&, const PropertyRows& table) {
        for (const PropertyDescription& row : table.rows()) {
            const PropertyMeaning* const meaning = meaningOf(table.table(), row.key);
            ASSERT_NE(meaning, nullptr) << table.table() << "." << row.key;
            EXPECT_TRUE(meaning->sentence.ends_with('.')) << table.table() << "." << row.key;
        }
    });
}

TEST(JSONSchema, HasNoSentenceWithoutAProperty) {
    std::set<const PropertyMeaning*> used;
    forEachTable([&](const CommandSchema&, const PropertyRows& table) {
        for (const PropertyDescription& row : table.rows()) {
            used.insert(meaningOf(table.table(), row.key));
        }
    });
    for (const PropertyMeaning& meaning : propertyMeanings()) {
        EXPECT_TRUE(used.contains(&meaning)) << meaning.table << "." << meaning.key;
    }
}

TEST(JSONSchema, NamesEachTableOnce) {
    std::map<std::string_view, const PropertyDescription*> tables;
    forEachTable([&](const CommandSchema&, const PropertyRows& table) {
        EXPECT_NE(table.table(), "");
        ASSERT_FALSE(table.empty()) << table.table();
        const auto [place, isNew] = tables.emplace(table.table(), &table[0]);
        EXPECT_TRUE(isNew || place->second == &table[0]) << table.table();
    });
    EXPECT_GT(tables.size(), 40u);
}

// A definition of that name would replace another one.
TEST(JSONSchema, NamesEachDefinitionOnce) {
    for (const CommandSchema& schema : commandSchemas()) {
        std::set<std::string_view> names = {"record"};
        std::size_t count = 1;
        for (const SchemaRecord& record : schema.records) names.insert(record.name), ++count;
        for (const PropertyRows& table : tablesOf(schema)) names.insert(table.table()), ++count;
        EXPECT_EQ(names.size(), count) << schema.command;
    }
}

TEST(JSONSchema, RepeatsNoKeyOfARecord) {
    for (const CommandSchema& schema : commandSchemas()) {
        for (const SchemaRecord& record : schema.records) {
            std::set<std::string_view> keys;
            for (const SchemaPart& part : record.parts) {
                for (const PropertyDescription& row : part.table.rows()) {
                    EXPECT_TRUE(keys.insert(row.key).second) << schema.command << ": " << row.key;
                }
            }
        }
    }
}

TEST(JSONSchema, IsMadeOfTheTables) {
    const auto schema = jsonOf(*schemaOf("config"));
    EXPECT_EQ(schema["$id"], "urn:halvane:schema:config");
    EXPECT_EQ(schema["$ref"], "#/$defs/record");
    const auto& record = schema["$defs"]["configuration"];
    EXPECT_EQ(record["additionalProperties"], false);
    EXPECT_EQ(record["properties"]["ssid"]["pattern"], "^([0-9a-f]{2})*$");
    EXPECT_EQ(record["properties"]["eapolRetryInterval"]["unit"], "ms");
    EXPECT_EQ(record["properties"]["allowPIN"]["type"], "boolean");
    const auto required = record["required"].get<std::set<std::string>>();
    EXPECT_TRUE(required.contains("channel"));
    EXPECT_FALSE(required.contains("ssid"));
}

TEST(JSONSchema, OfDecodeTellsNetworksFramesAndBuffersApart) {
    const auto schema = jsonOf(*schemaOf("decode"));
    EXPECT_EQ(schema["items"]["$ref"], "#/$defs/record");
    EXPECT_EQ(schema["$defs"]["record"]["anyOf"].size(), 3u);
    EXPECT_TRUE(schema["$defs"]["network"]["properties"].contains("firstSeen"));
    EXPECT_FALSE(schema["$defs"]["frame"]["properties"].contains("firstSeen"));
    EXPECT_TRUE(schema["$defs"]["frame"]["properties"].contains("time"));
    EXPECT_FALSE(schema["$defs"]["buffer"]["properties"].contains("frame"));
    EXPECT_FALSE(schema["$defs"].contains("bss"));
    EXPECT_EQ(schema["$defs"]["wpsElement"]["properties"]["tlvs"]["$ref"], "#/$defs/wpsAttributes");
}

TEST(JSONSchema, OfTablesThatHoldThemselvesEnds) {
    const auto schema = jsonOf(*schemaOf("elements"));
    EXPECT_EQ(schema["$defs"]["field"]["properties"]["fields"]["items"]["$ref"], "#/$defs/field");
    EXPECT_EQ(schema["$defs"]["field"]["properties"]["elements"]["items"]["$ref"],
              "#/$defs/decodedElement");
}

TEST(JSONSchema, IsThereForCommandsWithJSONAlone) {
    EXPECT_EQ(schemaOf("pin"), nullptr);
    EXPECT_EQ(schemaOf(""), nullptr);
}

// --- The document of all keys ---

std::string nameOf(PropertyKind kind, const PropertyRows& members) {
    switch (kind) {
        case PropertyKind::Boolean:
            return "Boolean";
        case PropertyKind::Integer:
            return "integer";
        case PropertyKind::Number:
            return "number";
        case PropertyKind::Text:
            return "text";
        case PropertyKind::Address:
            return "address";
        case PropertyKind::Bytes:
            return "octets";
        case PropertyKind::Scalar:
            return "Boolean, integer or text";
        case PropertyKind::Object:
            // Anchors of headings have small letters.
            return "[" + std::string(members.table()) + "](#" + foldedCase(members.table()) + ")";
        case PropertyKind::Array:
            return "array";
    }
    return "";
}

std::string lineOf(std::string_view table, const PropertyDescription& row, bool mayBeAbsent) {
    const PropertyMeaning* const meaning = meaningOf(table, row.key);
    if (meaning == nullptr) return "";
    std::string value = nameOf(row.kind, row.members);
    if (row.kind == PropertyKind::Array) value += " of " + nameOf(row.itemKind, row.members);
    if (!meaning->unit.empty()) value += ", " + std::string(meaning->unit);
    return "| `" + std::string(row.key) + "` | " + value + " | " + (mayBeAbsent ? "" : "always") +
           " | " + std::string(meaning->sentence) + " |\n";
}

std::string linesOf(const SchemaPart& part) {
    std::string lines;
    for (const PropertyDescription& row : part.table.rows()) {
        lines += lineOf(part.table.table(), row, part.mayBeAbsent || row.mayBeAbsent);
    }
    return lines;
}

constexpr const char* kTableHead = "| key | value | | meaning |\n| --- | --- | --- | --- |\n";

std::string commandText(const CommandSchema& schema) {
    std::string text = "\n## halvane " + std::string(schema.command) + "\n\n" +
                       std::string(schema.sentence) + '\n';
    for (const SchemaRecord& record : schema.records) {
        text += "\n" + std::string(record.sentence) + "\n\n" + kTableHead;
        for (const SchemaPart& part : record.parts) text += linesOf(part);
    }
    return text;
}

// A record may also be a member, as elements are of fields that hold elements.
void addWithMembers(const PropertyRows& table, std::map<std::string_view, PropertyRows>& objects) {
    objects.emplace(table.table(), table);
    for (const PropertyDescription& row : table.rows()) {
        const bool hasTable =
            row.kind == PropertyKind::Object ||
            (row.kind == PropertyKind::Array && row.itemKind == PropertyKind::Object);
        if (hasTable) objects.emplace(row.members.table(), row.members);
    }
}

std::string documentText() {
    std::string text =
        "# The keys of the JSON output\n\n"
        "The tests make this document from the tables that the tool writes its JSON by "
        "(`HALVANE_UPDATE_GOLDEN=1`\nwrites it again). `halvane schema COMMAND` prints the same "
        "as a JSON Schema. A key without \"always\" is\nleft out where there is no value. Octets "
        "are lower-case hexadecimal digits.\n";
    std::map<std::string_view, PropertyRows> objects;
    for (const CommandSchema& schema : commandSchemas()) {
        text += commandText(schema);
        for (const PropertyRows& table : tablesOf(schema)) addWithMembers(table, objects);
    }
    text += "\n## Objects\n";
    for (const auto& [name, table] : objects) {
        text += "\n### " + std::string(name) + "\n\n" + kTableHead + linesOf({table});
    }
    return text;
}

TEST(JSONSchema, IsDocumented) {
    expectGolden(documentText(), std::filesystem::path(HALVANE_DOCS) / "json.md");
}

}  // namespace

}  // namespace halvane::tool
