#include "tools/halvane/output/element_json.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/output/json_writer.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::kElementSamples;
using namespace halvane::air;
using namespace halvane::tool;
using JSON = nlohmann::ordered_json;

namespace {

JSON listOf(std::string_view hex) {
    const Bytes octets = bytesOf(hex);
    JSONWriter writer(JSONWriter::Layout::OneLine);
    writeElements(writer, ElementRange(octets));
    return JSON::parse(writer.text());
}

// The first element, with its fields.
JSON objectOf(const Bytes& octets) {
    JSONWriter writer(JSONWriter::Layout::OneLine);
    writeElement(writer, *ElementRange(octets).begin());
    return JSON::parse(writer.text());
}

TEST(ElementJSON, ListsElementsWithTheirOctets) {
    EXPECT_EQ(listOf("0003636166 FF033B0D06").dump(),
              R"([{"id":0,"name":"SSID","offset":0,"bytes":"636166"},)"
              R"({"id":255,"extension":59,"name":"HE 6 GHz Band Capabilities","offset":5,)"
              R"("bytes":"0d06"}])");
    EXPECT_EQ(listOf("").dump(), "[]");
}

TEST(ElementJSON, EndsWithOctetsThatMakeNoElement) {
    EXPECT_EQ(listOf("030106 301401").dump(),
              R"([{"id":3,"name":"DSSS Parameter Set","offset":0,"bytes":"06"},)"
              R"({"offset":3,"bytes":"301401"}])");
    EXPECT_EQ(listOf("30").dump(), R"([{"offset":0,"bytes":"30"}])");
}

TEST(ElementJSON, TellsFieldsWithTheirPlaces) {
    const JSON load = objectOf(bytesOf("0B05 0500 80 3412"));
    EXPECT_EQ(load.at("clause"), "9.4.2.27");
    EXPECT_FALSE(load.contains("damage"));
    EXPECT_EQ(load.at("fields").at(0).dump(),
              R"({"name":"Station Count","offset":0,"size":2,"value":5})");
    EXPECT_EQ(load.at("fields").at(1).dump(),
              R"({"name":"Channel Utilization","offset":2,"size":1,"value":128,"unit":"/255"})");
}

// ERP: bit 0 is a flag; TWT's groups are nested.
TEST(ElementJSON, TellsBitsAndGroups) {
    const JSON erp = objectOf(bytesOf("2A01 02"));
    EXPECT_EQ(erp.at("fields").at(1).dump(),
              R"({"name":"Use_Protection","offset":0,"size":1,"bit":1,"bits":1,"value":true})");
    const JSON rsn = objectOf(bytesOf("3008 0100 000FAC04 0000"));
    EXPECT_EQ(rsn.at("fields").at(1).at("value"), "CCMP-128");
    const JSON country = objectOf(bytesOf("0706 555320 240114"));
    const JSON& triplet = country.at("fields").back();
    EXPECT_EQ(triplet.at("name"), "Triplet");
    EXPECT_EQ(triplet.at("fields").size(), 3u);
}

TEST(ElementJSON, TellsTheOctetOfDamage) {
    const JSON load = objectOf(bytesOf("0B03 0500 80"));
    EXPECT_EQ(load.at("damage"), 3);
    EXPECT_EQ(load.at("fields").size(), 2u);
    EXPECT_EQ(objectOf(bytesOf("DD05 0050F201 01")).at("damage"), 4);
}

TEST(ElementJSON, EscapesTextOnce) {
    const JSON name = objectOf(bytesOf("0007 1B5B B2 22 5C C3A9"));
    EXPECT_EQ(name.at("fields").at(0).at("value"), "\\x1B[\\xB2\"\\\\\xC3\xA9");
    const JSON device = objectOf(bytesOf("DD0A 000B86010300 1B5B 5C E9"));
    EXPECT_EQ(device.at("fields").back().at("value"), "\\x1B[\\\\\\xE9");
}

TEST(ElementJSON, NamesOctetsWithoutDecoder) {
    const JSON unknown = objectOf(bytesOf("0201FF"));
    EXPECT_EQ(unknown.dump(), R"j({"id":2,"name":"Reserved (2)","offset":0,"bytes":"ff"})j");
}

// Each octet of a field lies within the body, whatever the element is.
void expectPlaces(const JSON& fields, std::size_t size) {
    for (const JSON& field : fields) {
        if (field.contains("fields")) {
            expectPlaces(field.at("fields"), size);
            continue;
        }
        EXPECT_LE(field.at("offset").get<std::size_t>() + field.at("size").get<std::size_t>(), size)
            << field.dump();
    }
}

TEST(ElementJSON, IsWellFormedForEverySample) {
    for (const auto& sample : kElementSamples) {
        Bytes body = bytesOf(sample.hex);
        const std::size_t size = body.size();
        if (const auto extension = extensionOf(sample.id)) body.insert(body.begin(), *extension);
        const JSON object = objectOf(element(idOctetOf(sample.id), body));
        ASSERT_TRUE(object.contains("fields")) << object.dump();
        EXPECT_FALSE(object.contains("damage")) << object.dump();
        expectPlaces(object.at("fields"), size);
    }
}

}  // namespace
