#include "tools/halvane/output/element_json.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/element_writer.h"
#include "halvane/air/multi_link.h"
#include "halvane/base/byte_buffer.h"

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
    const ElementList list(octets);
    DamageReport report;
    writeElement(writer, list, *list.range().begin(), report);
    return JSON::parse(writer.text());
}

// Each list of elements that a field of the object holds, at any depth.
void collectLists(const JSON& value, std::vector<JSON>& lists) {
    if (value.is_object() && value.contains("elements")) lists.push_back(value.at("elements"));
    if (!value.is_structured()) return;
    for (const JSON& item : value) collectLists(item, lists);
}

std::vector<JSON> listsIn(const JSON& object) {
    std::vector<JSON> lists;
    collectLists(object, lists);
    return lists;
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

TEST(ElementJSON, TellsTheElementsThatFieldsHold) {
    const JSON profiles = objectOf(bytesOf("4711 02 0007 53021104 000161 0005 0003616263"));
    const auto lists = listsIn(profiles);
    ASSERT_EQ(lists.size(), 2u);
    ASSERT_EQ(lists[0].size(), 2u);
    EXPECT_EQ(lists[0][0].at("name"), "Nontransmitted BSSID Capability");
    EXPECT_EQ(lists[0][0].at("offset"), 5);
    EXPECT_EQ(lists[0][1].at("offset"), 9);
    EXPECT_EQ(lists[1][0].at("offset"), 14);
    EXPECT_EQ(lists[1][0].at("fields")[0].at("value"), "abc");
    const JSON& field = profiles.at("fields")[1].at("fields")[2];
    EXPECT_EQ(field.at("name"), "Data");
    EXPECT_EQ(field.at("offset"), 3);
    EXPECT_EQ(field.at("size"), 7);
    EXPECT_EQ(field.at("value"), "53021104000161");
}

TEST(ElementJSON, EndsAListWithOctetsThatMakeNoElement) {
    const auto lists = listsIn(objectOf(bytesOf("4709 02 0006 000161 3014 01")));
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists[0].back().dump(), R"({"offset":8,"bytes":"301401"})");
}

// A link's profile that is so long that both the subelement and the element have fragments. The
// offset of each element of the profile is where its number stands.
TEST(ElementJSON, PlacesElementsBehindFragments) {
    Bytes profile = bytesOf("1104");
    for (int id = 1; id < 60; ++id) {
        const Bytes part =
            element(static_cast<std::uint8_t>(id), Bytes(static_cast<std::size_t>(id)));
        profile.insert(profile.end(), part.begin(), part.end());
    }
    MultiLink multiLink;
    multiLink.common.mldAddress.emplace();
    multiLink.subelements.emplace_back().link.emplace();
    multiLink.subelements[0].link->profile = halvane::ByteBuffer(profile);
    Bytes octets;
    appendElement(octets, MultiLink::kId, multiLink.encode());
    ASSERT_GT(octets.size(), 1000u);
    const auto lists = listsIn(objectOf(octets));
    ASSERT_EQ(lists.size(), 1u);
    ASSERT_EQ(lists[0].size(), 59u);
    std::size_t wrong = 0;
    for (const JSON& item : lists[0]) {
        wrong += octets.at(item.at("offset").get<std::size_t>()) != item.at("id") ? 1 : 0;
    }
    EXPECT_EQ(wrong, 0u);
}

// Multiple BSSID in a profile of Multiple BSSID, and so on.
TEST(ElementJSON, LooksIntoSoManyListsOnly) {
    Bytes octets;
    for (int depth = 0; depth < 40; ++depth) {
        Bytes body = {1};
        const Bytes profile = element(0, octets);
        body.insert(body.end(), profile.begin(), profile.end());
        octets = element(71, body);
    }
    EXPECT_EQ(listsIn(objectOf(octets)).size(), ElementList::kMaxDepth);
}

// HE Capabilities with the widths 40/80 and 160 MHz (bits 1 to 3 of the PHY capabilities: 0x0C), so
// that EHT Capabilities have the maps up to 80 MHz and at 160 MHz.
constexpr std::string_view kHe = "FF1A23 000000000000 0C00000000000000000000 AAFFAAFF AAFFAAFF";
constexpr std::string_view kEht = "FF126C 0000 000000000000000000 222222 444444";

std::vector<std::string> groupsOf(const JSON& object) {
    std::vector<std::string> names;
    for (const JSON& field : object.at("fields")) names.push_back(field.at("name"));
    return names;
}

TEST(ElementJSON, TellsTheMapsOfEhtByTheHeCapabilitiesOfTheSender) {
    const std::vector<std::string> maps = {
        "EHT MAC Capabilities Information", "EHT PHY Capabilities Information",
        "EHT-MCS Map (BW <= 80 MHz, Except 20 MHz-Only Non-AP STA)", "EHT-MCS Map (BW = 160 MHz)"};
    const std::string eht(kEht);
    EXPECT_EQ(groupsOf(objectOf(bytesOf(eht + std::string(kHe)))), maps);
    EXPECT_EQ(groupsOf(objectOf(bytesOf(eht))).back(),
              "Supported EHT-MCS And NSS Set And EHT PPE Thresholds");
    // A profile inherits the HE Capabilities that it does not have.
    const auto lists = listsIn(objectOf(bytesOf("4717 02 0014" + eht + std::string(kHe))));
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(groupsOf(lists[0][0]), maps);
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
