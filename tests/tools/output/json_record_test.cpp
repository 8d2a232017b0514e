#include "tools/halvane/output/json_record.h"

#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/vendor.h"
#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/regulatory/sku.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/json_tree.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/output/config_properties.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/maker_lookup.h"
#include "tools/halvane/output/model_properties.h"
#include "tools/halvane/output/record_json.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/output/regulatory_properties.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;
namespace fs = std::filesystem;

namespace {

using Layout = JSONWriter::Layout;

template <typename Record>
std::string textOf(const Record& record, Layout layout) {
    JSONWriter writer(layout);
    writeObject(writer, record);
    return std::string(writer.text());
}

// --- Values of every kind in the tables ---

bool isOf(PropertyKind kind, const JSON& value) {
    switch (kind) {
        case PropertyKind::Boolean:
            return value.is_boolean();
        case PropertyKind::Integer:
            return value.is_number_integer();
        case PropertyKind::Number:
            return value.is_number() || value.is_null();
        case PropertyKind::Text:
        case PropertyKind::Address:
            return value.is_string();
        case PropertyKind::Bytes:
            return value.is_string() && value.get<std::string>().find_first_not_of(
                                            "0123456789abcdef") == std::string::npos;
        case PropertyKind::Scalar:
            return value.is_boolean() || value.is_number_integer() || value.is_string();
        case PropertyKind::Object:
            return value.is_object();
        case PropertyKind::Array:
            return value.is_array();
    }
    return false;
}

void expectDescribed(const JSON& object, std::span<const PropertyDescription> table) {
    auto member = object.begin();
    for (const PropertyDescription& row : table) {
        if (member == object.end() || member.key() != row.key) {
            EXPECT_TRUE(row.mayBeAbsent) << row.key << " in " << object;
            continue;
        }
        const JSON& value = member.value();
        EXPECT_TRUE(isOf(row.kind, value)) << row.key << ": " << value;
        if (row.kind == PropertyKind::Object) expectDescribed(value, row.members);
        if (row.kind == PropertyKind::Array) {
            for (const JSON& item : value) {
                EXPECT_TRUE(isOf(row.itemKind, item)) << row.key << ": " << item;
                if (row.itemKind == PropertyKind::Object) expectDescribed(item, row.members);
            }
        }
        ++member;
    }
    EXPECT_TRUE(member == object.end()) << member.key() << " has no row";
}

// In both layouts the record equals the output of the other library from its tree, and matches its
// table.
template <typename Record>
void expectAsOfTree(const Record& record) {
    const JSON tree = treeOf(record);
    EXPECT_EQ(textOf(record, Layout::OneLine), tree.dump());
    EXPECT_EQ(textOf(record, Layout::Indented), tree.dump(2));
    expectDescribed(tree, kPropertyDescriptions<Record>);
}

// --- Records ---

HalvaneMAC recordOf(const Bytes& elements) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, 1});
    record.setRSSI(Number(-61));
    record.setInformationElements(ByteBuffer(elements));
    return record;
}

class HostileElements {
  public:
    Bytes next() {
        Bytes bytes;
        const unsigned count = below(12);
        for (unsigned i = 0; i < count; ++i) {
            const Bytes one = anyElement();
            bytes.insert(bytes.end(), one.begin(), one.end());
        }
        if (below(8) == 0) bytes.resize(below(static_cast<unsigned>(bytes.size()) + 1));
        return bytes;
    }

  private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
    std::uint8_t octet() { return static_cast<std::uint8_t>(below(256)); }
    void append(Bytes& bytes, std::size_t count) {
        while (count-- > 0) bytes.push_back(octet());
    }
    Bytes anyElement() {
        constexpr std::uint8_t kIds[] = {0, 1, 3, 7, 45, 48, 50, 61, 221, 221, 221};
        const std::uint8_t id = kIds[below(std::size(kIds))];
        if (id == 221) return element(id, vendorBody());
        Bytes body;
        append(body, id == 45 ? 26 : id == 61 ? 22 : id == 48 ? 0 : below(33));
        if (id == 48) return rsnElement(octet());
        return element(id, body);
    }
    Bytes vendorBody() {
        if (below(3) > 0) return wpsBody();
        Bytes body(kVendorOUI.begin(), kVendorOUI.end());
        body.push_back(static_cast<std::uint8_t>(below(6)));
        append(body, below(12));
        return body;
    }
    Bytes wpsBody() {
        Bytes body = {0x00, 0x50, 0xF2, 4};
        while (body.size() < 200) {
            const unsigned type = below(4) > 0 ? 0x1001 + below(0x65) : 0x1054;
            const unsigned length = type == 0x1054 ? 8 : 1u << below(6);
            body.insert(body.end(),
                        {static_cast<std::uint8_t>(type >> 8), static_cast<std::uint8_t>(type), 0,
                         static_cast<std::uint8_t>(length)});
            if (type == 0x1054) {
                appendDeviceType(body);
            } else {
                append(body, length);
            }
        }
        return body;
    }
    void appendDeviceType(Bytes& body) {
        body.insert(body.end(), {0, static_cast<std::uint8_t>(below(12))});
        if (below(2) == 0) {
            body.insert(body.end(), kVendorSMI.begin(), kVendorSMI.end());
        } else {
            body.insert(body.end(), {0x00, 0x50, 0xF2, 4});
        }
        body.insert(body.end(), {0, static_cast<std::uint8_t>(below(5))});
    }

    std::mt19937 random_{20};
};

TEST(JSONRecord, OfHostileElementsIsWhatAnotherLibraryWrites) {
    HostileElements elements;
    for (int i = 0; i < 300; ++i) {
        const Bytes bytes = elements.next();
        SCOPED_TRACE(ByteBuffer(bytes).hex());
        expectAsOfTree(recordOf(bytes));
        if (::testing::Test::HasFailure()) return;
    }
}

TEST(JSONRecord, OfEverySampleIsWhatAnotherLibraryWrites) {
    std::size_t count = 0;
    for (const auto& entry : fs::directory_iterator(HALVANE_SAMPLES)) {
        if (!entry.path().extension().string().starts_with(".pcap")) continue;
        auto reader = CaptureReader::open(entry.path().string());
        ASSERT_TRUE(reader) << reader.error().text;
        while (const auto frame = reader->next()) {
            if (frame->beacon() == nullptr) continue;
            expectAsOfTree(capture::sightingOf(*frame->beacon(), frame->radio).record);
            ++count;
        }
    }
    EXPECT_GT(count, 20u);
}

TEST(JSONRecord, OfNothingIsWhatAnotherLibraryWrites) {
    const auto record = HalvaneMAC::initWithSkeletonRepresentation({});
    EXPECT_EQ(textOf(record, Layout::OneLine), R"({"capabilities":0})");
    expectAsOfTree(record);
    expectAsOfTree(HalvaneClient::initWithMAC({}));
    expectAsOfTree(HalvaneDevice::initWithSkeletonRepresentation({}));
    expectAsOfTree(HalvaneBSSConfig::initWithSkeletonRepresentation({}));
    expectAsOfTree(HalvaneBSSConfig::init());
}

TEST(JSONRecord, OfNumbersOfEveryKindIsWhatAnotherLibraryWrites) {
    for (const Number& number :
         {Number(-61), Number(-61.5), Number(UINT64_MAX), Number(1e300), Number(1e-300),
          Number(-0.0), Number(0.30000000000000004), Number(std::nan(""))}) {
        auto record = recordOf({});
        record.setRSSI(number);
        record.setNoise(number);
        record.setChannel(number);
        expectAsOfTree(record);
    }
}

TEST(JSONRecord, OfTheRegulatoryTablesIsWhatAnotherLibraryWrites) {
    for (const HalvaneSKU& sku : HalvaneSKU::createDefaultSKUList()) {
        const JSON tree = treeOf(sku);
        EXPECT_TRUE(textOf(sku, Layout::OneLine) == tree.dump()) << *sku.friendlyName();
        EXPECT_TRUE(textOf(sku, Layout::Indented) == tree.dump(2)) << *sku.friendlyName();
        expectDescribed(tree["countries"][0], kPropertyDescriptions<HalvaneCountry>);
    }
}

TEST(JSONRecord, OfAFrameBeginsWithItsOrigin) {
    const capture::Sighting sighting{recordOf(ssidElement("home")), Number(1)};
    JSONWriter writer;
    writeJSON(writer, sighting, FrameOrigin{7, capture::BeaconSubtype::ProbeResponse});
    EXPECT_EQ(
        writer.text().substr(0, 80),
        R"({"frame":7,"subtype":"probe-response","radioChannel":1,"mac":"02:00:00:00:00:01")");
    writer.clear();
    writeJSON(writer, sighting, std::nullopt);
    EXPECT_EQ(writer.text().substr(0, 43), R"({"radioChannel":1,"mac":"02:00:00:00:00:01")");
    EXPECT_EQ(JSON::parse(writer.text())["SSID"], "home");
}

// A network with a country and with attributes of Wi-Fi Protected Setup.
Bytes elementsWithTexts() {
    const Bytes country = element(7, {'D', 'E', ' ', 1, 13, 20});
    const Bytes setup = element(
        221, {0x00, 0x50, 0xF2, 4, 0x10, 0x11, 0, 2, 'a', 0x1B, 0x10, 0x21, 0, 3, 'b', '"', 'c'});
    return joined({ssidElement("home"), country, setup});
}

TEST(JSONRecord, EndsWithTheTextsOfItsOctets) {
    JSONWriter writer;
    writeJSON(writer, {recordOf(elementsWithTexts()), std::nullopt}, std::nullopt);
    const std::string text(writer.text());
    const std::string end =
        R"(,"countryCodeText":"DE ","wpsText":{"deviceName":"a\\x1B","manufacturer":"b\"c"}})";
    ASSERT_GT(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
    const JSON record = JSON::parse(text);
    EXPECT_EQ(record["countryIE"]["countryCode"], "444520");
    EXPECT_EQ(record["wpsIE"]["tlvs"]["deviceName"], "611b");
    EXPECT_FALSE(record["wpsIE"]["tlvs"].contains("deviceNameText"));
}

TEST(JSONRecord, HasNoTextsWithoutOctets) {
    JSONWriter writer;
    writeJSON(writer, {recordOf(joined({ssidElement("home"), wpsElement()})), std::nullopt},
              std::nullopt);
    const JSON record = JSON::parse(writer.text());
    EXPECT_TRUE(record.contains("wpsIE"));
    EXPECT_FALSE(record.contains("wpsText"));
    EXPECT_FALSE(record.contains("countryCodeText"));
}

TEST(JSONRecord, OfAClientHasTheTextsToo) {
    auto client = HalvaneClient::initWithMAC({0x02, 0, 0, 0, 0, 1});
    client.setInformationElements(ByteBuffer(elementsWithTexts()));
    expectAsOfTree(client);
    const JSON object = JSON::parse(textOf(client, Layout::OneLine));
    EXPECT_EQ(object["wpsText"]["manufacturer"], "b\"c");
    EXPECT_EQ(object["countryCodeText"], "DE ");
}

TEST(JSONRecord, EndsWithTheMakerThatIsKnown) {
    const capture::Sighting sighting{recordOf(ssidElement("home")), std::nullopt};
    const auto endOf = [&](const MakerOf& makerOf) {
        JSONWriter writer;
        writeJSON(writer, sighting, std::nullopt, nullptr, makerOf);
        const JSON record = JSON::parse(writer.text());
        return (--record.end()).key() + "=" + (--record.end()).value().dump();
    };
    EXPECT_EQ(endOf([](const MacAddress& address) {
                  EXPECT_EQ(address.buffer().hex(), "020000000001");
                  return std::optional<std::string_view>("Lantern \"1\"");
              }),
              R"(maker="Lantern \"1\"")");
    EXPECT_EQ(endOf([](const MacAddress&) { return std::optional<std::string_view>(); }),
              endOf({}));
    EXPECT_TRUE(endOf({}).starts_with("findings=")) << endOf({});
}

}  // namespace
