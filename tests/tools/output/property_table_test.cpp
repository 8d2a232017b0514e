#include "tools/halvane/output/property_table.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/output/config_properties.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/model_properties.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/output/regulatory_properties.h"

namespace halvane::tool {

namespace {

struct Inner {
    int count() const { return 1; }
};
struct Outer {
    bool flag() const { return true; }
    std::uint8_t octet() const { return 1; }
    Number measured() const { return Number(1); }
    std::optional<Number> perhaps() const { return Number(1); }
    std::string text() const { return "a"; }
    const char* literal() const { return "a"; }
    std::optional<ByteBuffer> bytes() const { return ByteBuffer(); }
    Inner inner() const { return {}; }
    std::shared_ptr<Inner> shared() const { return nullptr; }
    std::vector<Number> numbers() const { return {}; }
    std::optional<std::vector<Inner>> inners() const { return std::nullopt; }
    ByteBuffer address{1, 2};
};
// Holds others of its kind.
struct Tree {};

}  // namespace

template <>
inline constexpr auto kProperties<Inner> = std::tuple{HALVANE_PROPERTY(count)};
template <>
inline constexpr auto kProperties<Outer> = std::tuple{
    HALVANE_PROPERTY(flag),
    HALVANE_PROPERTY(octet),
    HALVANE_PROPERTY(measured),
    HALVANE_PROPERTY(perhaps),
    HALVANE_PROPERTY(text),
    HALVANE_PROPERTY(literal),
    HALVANE_PROPERTY(bytes),
    HALVANE_PROPERTY(inner),
    HALVANE_PROPERTY(shared),
    HALVANE_PROPERTY(numbers),
    HALVANE_PROPERTY(inners),
    Property{"address", [](const Outer& outer) { return addressIn(outer.address); }},
    Property{"shown", [](const Outer& outer) { return ShownOctets{outer.address.bytes()}; }},
};

template <>
inline constexpr std::string_view kTableName<Tree> = "tree";
template <>
inline constexpr auto kProperties<Tree> = std::tuple{
    Property{"value", [](const Tree&) { return ScalarValue(true); }},
    Property{"octets", [](const Tree&) { return HexOctets(); }},
    Property{"branches", [](const Tree&) { return Streamed<std::optional<std::vector<Tree>>>(); }},
};

namespace {

using Kind = PropertyKind;

TEST(PropertyTable, TellsKindAndPresenceByWhatTheReaderReturns) {
    struct Row {
        std::string_view key;
        Kind kind;
        bool mayBeAbsent;
        Kind itemKind;
        std::size_t members;
    };
    constexpr Row kRows[] = {
        {"flag", Kind::Boolean, false, Kind::Boolean, 0},
        {"octet", Kind::Integer, false, Kind::Integer, 0},
        {"measured", Kind::Number, false, Kind::Number, 0},
        {"perhaps", Kind::Number, true, Kind::Number, 0},
        {"text", Kind::Text, false, Kind::Text, 0},
        {"literal", Kind::Text, false, Kind::Text, 0},
        {"bytes", Kind::Bytes, true, Kind::Bytes, 0},
        {"inner", Kind::Object, false, Kind::Object, 1},
        {"shared", Kind::Object, true, Kind::Object, 1},
        {"numbers", Kind::Array, false, Kind::Number, 0},
        {"inners", Kind::Array, true, Kind::Object, 1},
        {"address", Kind::Address, true, Kind::Address, 0},
        {"shown", Kind::Text, false, Kind::Text, 0},
    };
    constexpr auto& kDescribed = kPropertyDescriptions<Outer>;
    ASSERT_EQ(kDescribed.size(), std::size(kRows));
    for (std::size_t i = 0; i < kDescribed.size(); ++i) {
        EXPECT_EQ(kDescribed[i].key, kRows[i].key);
        EXPECT_EQ(kDescribed[i].kind, kRows[i].kind) << kRows[i].key;
        EXPECT_EQ(kDescribed[i].mayBeAbsent, kRows[i].mayBeAbsent) << kRows[i].key;
        EXPECT_EQ(kDescribed[i].itemKind, kRows[i].itemKind) << kRows[i].key;
        EXPECT_EQ(kDescribed[i].members.size(), kRows[i].members) << kRows[i].key;
    }
    EXPECT_EQ(kDescribed[7].members[0].key, "count");
}

TEST(PropertyTable, MayContainItself) {
    constexpr auto& kDescribed = kPropertyDescriptions<Tree>;
    EXPECT_EQ(kDescribed[0].kind, Kind::Scalar);
    EXPECT_EQ(kDescribed[1].kind, Kind::Bytes);
    EXPECT_EQ(kDescribed[2].kind, Kind::Array);
    EXPECT_TRUE(kDescribed[2].mayBeAbsent);
    EXPECT_EQ(kDescribed[2].members.table(), "tree");
    EXPECT_EQ(&kDescribed[2].members[0], &kDescribed[0]);
    EXPECT_EQ(kDescribed[0].members.table(), "");
    EXPECT_TRUE(kDescribed[0].members.empty());
}

TEST(PropertyTable, LeavesStreamedMembersToTheWriterOfTheRecord) {
    JSONWriter writer;
    writeObject(writer, Tree());
    EXPECT_EQ(writer.text(), R"({"value":true,"octets":""})");
}

TEST(PropertyTable, AnEmptyAddressIsAbsent) {
    EXPECT_FALSE(addressIn(ByteBuffer()));
    EXPECT_FALSE(addressIn(std::optional<ByteBuffer>()));
    EXPECT_FALSE(addressIn(std::optional(ByteBuffer())));
    EXPECT_TRUE(addressIn(std::optional(ByteBuffer{1})));
}

void expectDistinctKeys(std::span<const PropertyDescription> table, std::string path) {
    std::set<std::string_view> keys;
    for (const PropertyDescription& row : table) {
        EXPECT_TRUE(keys.insert(row.key).second) << path << "." << row.key;
        if (!row.members.empty())
            expectDistinctKeys(row.members, path + "." + std::string(row.key));
    }
}

TEST(PropertyTable, HasEachKeyOnce) {
    expectDistinctKeys(kPropertyDescriptions<HalvaneClient>, "client");
    expectDistinctKeys(kPropertyDescriptions<HalvaneInterface>, "interface");
    expectDistinctKeys(kPropertyDescriptions<HalvaneBSSConfig>, "config");
    expectDistinctKeys(kPropertyDescriptions<HalvaneSKU>, "sku");
}

// One object holds all three.
TEST(PropertyTable, OfAFrameRepeatsNoKeyOfItsRecord) {
    std::set<std::string_view> keys;
    std::size_t count = 0;
    for (const std::span<const PropertyDescription> table :
         {std::span<const PropertyDescription>(kPropertyDescriptions<FrameOrigin>),
          std::span<const PropertyDescription>(kPropertyDescriptions<capture::Sighting>),
          std::span<const PropertyDescription>(kPropertyDescriptions<HalvaneMAC>)}) {
        count += table.size();
        for (const PropertyDescription& row : table) keys.insert(row.key);
    }
    EXPECT_EQ(keys.size(), count);
    EXPECT_EQ(count, 2u + 1u + 21u);
}

TEST(PropertyTable, OfAConfigurationHasEveryFieldOfItsSkeletonAndTheTextOfTheSSID) {
    EXPECT_EQ(kPropertyDescriptions<HalvaneBSSConfig>.size(), 43u + 1u);
}

}  // namespace

}  // namespace halvane::tool
