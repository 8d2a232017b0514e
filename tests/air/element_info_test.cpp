#include "halvane/air/element_info.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::ElementSample;
using halvane::testing::kElementSamples;
using halvane::testing::kVendorSamples;
using namespace halvane::air;

namespace {

// Looks at every field, and holds that fields come in the order of their places and within the
// body.
class FieldChecker : public FieldSink {
  public:
    explicit FieldChecker(std::size_t size) : size_(size) {}

    void flag(const FieldPlace& place, std::string_view label, bool) override {
        see(place, label);
        EXPECT_EQ(place.bitCount, 1);
    }
    void number(const FieldPlace& place, std::string_view label, std::int64_t,
                const NumberForm&) override {
        see(place, label);
    }
    void text(const FieldPlace& place, std::string_view label, std::string_view value) override {
        see(place, label);
        EXPECT_FALSE(value.empty()) << label;
    }
    void octets(const FieldPlace& place, std::string_view label, Octets value) override {
        see(place, label);
        EXPECT_EQ(value.size(), place.size) << label;
    }
    void beginGroup(std::string_view label) override {
        EXPECT_FALSE(label.empty());
        ++depth_;
    }
    void endGroup() override { --depth_; }

    // The octets of the body that fields tell, from its first on without a gap.
    std::size_t told() const { return told_; }
    int depth() const { return depth_; }

  private:
    void see(const FieldPlace& place, std::string_view label) {
        EXPECT_FALSE(label.empty());
        EXPECT_LE(place.offset + place.size, size_) << label;
        EXPECT_LE((place.firstBit + place.bitCount + 7u) / 8, place.size) << label;
        EXPECT_LE(place.offset, told_) << label << " leaves a gap";
        told_ = std::max(told_, place.offset + place.size);
    }

    const std::size_t size_;
    std::size_t told_ = 0;
    int depth_ = 0;
};

void checkBody(const ElementDecoder& decoder, const ByteBuffer& body) {
    FieldChecker checker(body.size());
    const auto damage = decoder.describe(body.bytes(), checker);
    const auto rebuilt = decoder.rebuild(body.bytes());
    EXPECT_EQ(rebuilt.has_value(), !damage.has_value()) << body.hex();
    EXPECT_EQ(checker.depth(), 0);
    if (damage) {
        EXPECT_LE(damage->offset + damage->remaining, body.size()) << body.hex();
        return;
    }
    EXPECT_EQ(ByteBuffer(*rebuilt), body);
    EXPECT_EQ(checker.told(), body.size()) << body.hex();
}

void checkDecoder(const ElementDecoder& decoder, std::string_view hex) {
    const Bytes sample = bytesOf(hex);
    const auto rebuilt = decoder.rebuild(sample);
    ASSERT_TRUE(rebuilt) << hex;
    EXPECT_EQ(*rebuilt, sample);
    halvane::testing::forEachPrefix(sample, [&](const auto& body) { checkBody(decoder, body); });
    std::vector<std::size_t> offsets(sample.size());
    for (std::size_t i = 0; i < offsets.size(); ++i) offsets[i] = i;
    halvane::testing::forEachValueAt(sample, offsets,
                                     [&](const auto& body) { checkBody(decoder, body); });
    Bytes longer = sample;
    longer.insert(longer.end(), {1, 2, 3});
    checkBody(decoder, ByteBuffer(longer));
}

TEST(ElementInfo, HasEachNumberOnce) {
    for (const ElementInfo& info : elementInfos()) {
        EXPECT_EQ(elementInfo(info.id), &info) << info.name;
        EXPECT_FALSE(info.name.empty());
    }
    EXPECT_EQ(elementInfo(ElementId{2}), nullptr);
    EXPECT_EQ(elementInfo(ElementId{0xFFFF}), nullptr);
    EXPECT_EQ(elementInfo(ElementId::ExtensionMissing), nullptr);
}

TEST(ElementInfo, NamesElements) {
    const auto nameOf = [](const Bytes& bytes) {
        return elementName(*ElementRange(bytes).begin());
    };
    EXPECT_EQ(nameOf(element(48, {})), "RSN");
    EXPECT_EQ(nameOf(element(255, {108})), "EHT Capabilities");
    EXPECT_EQ(nameOf(element(2, {})), "Reserved (2)");
    EXPECT_EQ(nameOf(element(255, {200})), "Reserved (255/200)");
    EXPECT_EQ(nameOf(element(255, {})), "Reserved (255)");
    EXPECT_EQ(nameOf(element(221, {0x50, 0x6F, 0x9A, 28})), "OWE Transition Mode");
    EXPECT_EQ(nameOf(element(221, {0x50, 0x6F, 0x9A, 99})), "Wi-Fi Alliance");
    EXPECT_EQ(nameOf(element(221, {0x50, 0x6F, 0x9A})), "Wi-Fi Alliance");
    EXPECT_EQ(nameOf(element(221, {0x50, 0x6F})), "Vendor Specific");
}

// The Wi-Fi Alliance's list of assigned numbers.
TEST(ElementInfo, NamesTheElementsOfTheWiFiAlliance) {
    const std::pair<std::uint8_t, std::string_view> names[] = {
        {18, "OSEN"},
        {19, "NAN"},
        {27, "Multi-AP"},
        {28, "OWE Transition Mode"},
        {29, "Roaming Consortium Selection"},
        {30, "Configurator Connectivity"},
        {31, "SAE-PK"},
        {34, "QoS Management"},
        {35, "Wi-Fi Alliance Capabilities"},
        {44, "RSN Selection"},
    };
    for (const auto& [type, name] : names) {
        const Bytes body = {0x50, 0x6F, 0x9A, type};
        ASSERT_NE(vendorElementInfo(body), nullptr);
        EXPECT_EQ(vendorElementInfo(body)->name, name);
    }
}

TEST(ElementInfo, OrdersTheTypesOfAVendor) {
    const auto rows = vendorElementInfos();
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (rows[i].oui != rows[i - 1].oui) continue;
        ASSERT_TRUE(rows[i - 1].type) << rows[i].name << " is hidden by the vendor's own row";
        if (rows[i].type) {
            EXPECT_LT(*rows[i - 1].type, *rows[i].type) << rows[i].name;
        }
    }
}

// Every prefix of a valid body, and every value of each of its octets: what decodes is encoded with
// the same octets, and each of them is told.
TEST(ElementDecoders, KeepEveryOctet) {
    for (const ElementSample& sample : kElementSamples) {
        SCOPED_TRACE(elementInfo(sample.id)->name);
        checkDecoder(elementInfo(sample.id)->decoder, sample.hex);
    }
    for (const auto& sample : kVendorSamples) {
        const Bytes head = {sample.oui[0], sample.oui[1], sample.oui[2], sample.type};
        SCOPED_TRACE(vendorElementInfo(head)->name);
        checkDecoder(vendorElementInfo(head)->decoder, sample.hex);
    }
}

TEST(ElementDecoders, AreAllTried) {
    for (const ElementInfo& info : elementInfos()) {
        if (info.decoder.describe == nullptr) continue;
        EXPECT_TRUE(std::ranges::any_of(kElementSamples, [&](const ElementSample& sample) {
            return sample.id == info.id;
        })) << info.name;
    }
    for (const VendorElementInfo& info : vendorElementInfos()) {
        if (info.decoder.describe == nullptr) continue;
        EXPECT_TRUE(std::ranges::any_of(kVendorSamples, [&](const auto& sample) {
            return sample.oui == info.oui && sample.type == info.type;
        })) << info.name;
    }
}

// A clause stands alone or after its amendment; a document alone where it stands as a whole.
TEST(ElementInfo, NamesAClauseForEachElement) {
    const std::regex form(R"((802\.11[a-z]{1,2} |)9\.4\.2\.[0-9]+|12\.2\.9)"
                          R"(|802\.11(-2020|[a-z]{2})|RFC [0-9]+|known from the field)");
    for (const ElementInfo& info : elementInfos()) {
        EXPECT_TRUE(std::regex_match(std::string(info.clause), form))
            << info.name << ": \"" << info.clause << '"';
    }
}

// Clauses of single elements that are not those of the elements beside them.
TEST(ElementInfo, NamesTheClausesOfSingleElements) {
    const std::pair<int, std::string_view> clauses[] = {
        {204, "9.4.2.168"},        {205, "9.4.2.169"},     {256 + 1, "802.11ai"},
        {256 + 9, "9.4.2.172"},    {256 + 10, "9.4.2.10"}, {256 + 14, "9.4.2.174"},
        {256 + 52, "802.11-2020"}, {256 + 54, "12.2.9"},   {256 + 89, "9.4.2.242"},
    };
    for (const auto& [number, clause] : clauses) {
        EXPECT_EQ(elementInfo(ElementId(number))->clause, clause) << number;
    }
}

// Two elements of one clause: one of them has the other's.
TEST(ElementInfo, NamesNoClauseTwice) {
    std::set<std::string_view> clauses;
    for (const ElementInfo& info : elementInfos()) {
        if (info.clause.find("9.4.2.") == std::string_view::npos) continue;
        EXPECT_TRUE(clauses.insert(info.clause).second) << info.name << ": " << info.clause;
    }
}

// Table 9-92: a run of numbers without a gap between 158 and 172; 802.11az: 94 to 105 after 255.
TEST(ElementInfo, NamesTheElementsOfDmgAndRanging) {
    const std::pair<int, std::string_view> names[] = {
        {154, "Channel Measurement Feedback"},
        {157, "Awake Window"},
        {158, "Multi-band"},
        {159, "ADDBA Extension"},
        {160, "NextPCP List"},
        {161, "PCP Handover"},
        {162, "DMG Link Margin"},
        {163, "Switching Stream"},
        {164, "Session Transition"},
        {165, "Dynamic Tone Pairing Report"},
        {166, "Cluster Report"},
        {167, "Relay Capabilities"},
        {168, "Relay Transfer Parameter Set"},
        {169, "BeamLink Maintenance"},
        {170, "Multiple MAC Sublayers"},
        {171, "U-PID"},
        {172, "DMG Link Adaptation Acknowledgment"},
        {174, "MCCAOP Advertisement Overview"},
        {256 + 94, "Secure LTF Parameters"},
        {256 + 100, "PASN Parameters"},
        {256 + 101, "Ranging Parameters"},
        {256 + 105, "LOS Likelihood"},
    };
    for (const auto& [number, name] : names) {
        const ElementInfo* const info = elementInfo(ElementId(number));
        ASSERT_NE(info, nullptr) << number;
        EXPECT_EQ(info->name, name) << number;
    }
    EXPECT_EQ(elementInfo(ElementId{156}), nullptr);
    EXPECT_EQ(elementInfo(ElementId{173}), nullptr);
}

}  // namespace
