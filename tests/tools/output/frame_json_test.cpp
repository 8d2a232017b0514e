#include "tools/halvane/output/frame_json.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/radio_header.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/maker_lookup.h"
#include "tools/halvane/output/record_json.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;
using capture::BeaconSubtype;
using Layout = JSONWriter::Layout;

namespace {

Bytes timElement(std::uint8_t count, std::uint8_t period, std::uint8_t bitmap) {
    return element(5, {count, period, bitmap, bitmap});
}

Bytes elementsWith(const Bytes& tim) {
    return joined({ssidElement("home"), element(1, {0x82, 0x84, 0x8B, 0x96}), element(3, {6}), tim,
                   element(7, {'D', 'E', ' ', 1, 13, 20}), rsnElement(2),
                   htCapabilitiesElement(0x0002, 2), htOperationElement(6, 5), wpsElement()});
}

struct Frame {
    Bytes elements = elementsWith(timElement(0, 1, 0));
    std::uint8_t last = 1;  // of the address
    BeaconSubtype subtype = BeaconSubtype::Beacon;
    std::uint16_t interval = 100;
    std::uint16_t capabilities = 0x0411;
    std::optional<int> frequency = 2437;
    std::optional<int> signal = -50;
    bool isCut = false;
    std::optional<std::int64_t> time = 1'700'000'000'000'000'000;

    capture::Sighting sighting() const {
        return capture::sightingOf({.subtype = subtype,
                                    .bssid = MacAddress({0x02, 0, 0, 0, 0, last}),
                                    .beaconInterval = interval,
                                    .capabilities = capabilities,
                                    .elements = elements,
                                    .isCut = isCut},
                                   {.frequencyMHz = frequency, .signalDBm = signal});
    }
};

std::optional<std::string_view> makerOf(const MacAddress& address) {
    if (address.octets()[5] != 1) return std::nullopt;
    return "Maker";
}

// Writes frames with and without kept text, and compares the two.
class Trial {
  public:
    explicit Trial(Layout layout = Layout::OneLine) : writer_(layout), plain_(layout) {}

    // Returns whether kept text was used.
    bool write(const Frame& frame) {
        const capture::Sighting sighting = frame.sighting();
        const FrameOrigin origin = {++number_, frame.subtype, frame.time};
        const std::uint64_t before = json_.repeats();
        writer_.clear();
        json_.write(writer_, sighting, origin, makerOf);
        plain_.clear();
        writeJSON(plain_, sighting, origin, nullptr, makerOf);
        EXPECT_EQ(writer_.text(), plain_.text());
        return json_.repeats() > before;
    }

    // Of the last frame.
    std::string_view text() const { return writer_.text(); }

  private:
    JSONWriter writer_;
    JSONWriter plain_;
    FrameJSON json_;
    std::uint64_t number_ = 0;
};

TEST(FrameJSON, KeepsTheTextOfElementsThatStay) {
    for (const Layout layout : {Layout::OneLine, Layout::Indented}) {
        Trial trial(layout);
        EXPECT_FALSE(trial.write({}));
        EXPECT_TRUE(trial.write({}));
        EXPECT_TRUE(trial.write({.signal = -71}));
        EXPECT_TRUE(trial.write({.signal = std::nullopt}));
        EXPECT_TRUE(trial.write({.time = std::nullopt}));
        EXPECT_TRUE(trial.write({.time = 1'700'000'000'123'456'789}));
    }
}

TEST(FrameJSON, KeepsTheTextWhileOnlyCountAndBitmapOfTIMChange) {
    Trial trial;
    EXPECT_FALSE(trial.write({.elements = elementsWith(timElement(0, 3, 0))}));
    EXPECT_TRUE(trial.write({.elements = elementsWith(timElement(2, 3, 0))}));
    EXPECT_TRUE(trial.write({.elements = elementsWith(timElement(1, 3, 0xFF))}));
    EXPECT_FALSE(trial.write({.elements = elementsWith(timElement(1, 4, 0xFF))}));
    EXPECT_FALSE(trial.write({.elements = elementsWith(element(5, {1, 4, 0}))}));
    EXPECT_FALSE(trial.write({.elements = elementsWith(element(5, {1}))}));
    EXPECT_FALSE(trial.write({.elements = elementsWith(element(5, {2}))}));
}

// Each of them, between two of the usual frame.
TEST(FrameJSON, WritesAnewWhatDependsOnOtherFacts) {
    const std::vector<Frame> others = {
        {.last = 2},         {.subtype = BeaconSubtype::ProbeResponse},
        {.interval = 1000},  {.capabilities = 0x0401},
        {.frequency = 5180}, {.frequency = std::nullopt},
        {.signal = 1},       {.isCut = true},
    };
    for (const Frame& other : others) {
        Trial trial;
        EXPECT_FALSE(trial.write({}));
        EXPECT_FALSE(trial.write(other));
        trial.write({});
        EXPECT_TRUE(trial.write({}));
    }
}

// Every octet of the elements, beside those of TIM, changes the text: what is written is always
// that of the frame itself.
TEST(FrameJSON, WritesTheElementsOfTheFrame) {
    const Bytes elements = elementsWith(timElement(0, 1, 0));
    for (std::size_t i = 0; i < elements.size(); ++i) {
        Trial trial;
        trial.write({});
        Frame changed;
        changed.elements[i] ^= 1;
        trial.write(changed);
        trial.write({});
    }
}

// The texts of a finding are the same in all frames, but not its places.
TEST(FrameJSON, WritesTheSameFindingsOfOtherElements) {
    for (const Layout layout : {Layout::OneLine, Layout::Indented}) {
        Trial trial(layout);
        for (const std::string_view name : {"a", "bb", "ccc"}) {
            const Bytes elements = joined({ssidElement(name), wpsElement(), ssidElement(name)});
            EXPECT_FALSE(trial.write({.elements = elements}));
            EXPECT_NE(trial.text().find("element-duplicated"), std::string_view::npos);
            EXPECT_NE(trial.text().find("element-order"), std::string_view::npos);
        }
    }
}

// After an element that the walks read in different ways, none is TIM for both.
TEST(FrameJSON, TrustsNoTIMBehindLongElements) {
    for (const std::size_t size : {253u, 254u, 255u}) {
        const auto elementsOf = [&](std::uint8_t count) {
            return joined({element(221, Bytes(size)), timElement(count, 1, 0)});
        };
        Trial trial;
        EXPECT_FALSE(trial.write({.elements = elementsOf(0)}));
        EXPECT_EQ(trial.write({.elements = elementsOf(7)}), size == 253);
        EXPECT_TRUE(trial.write({.elements = elementsOf(7)}));
    }
}

TEST(FrameJSON, WritesHostileElements) {
    Trial trial;
    forEachHostileForm(elementsWith(timElement(0, 1, 0)), {1, 7, 13, 16}, [&](const auto& form) {
        const Bytes elements(form.bytes().begin(), form.bytes().end());
        trial.write({.elements = elements});
        trial.write({.elements = elements});
    });
}

TEST(FrameJSON, DropsTheTextIfItBecomesTooMuch) {
    Trial trial;
    trial.write({});
    Frame large;
    for (int i = 0; i < 200; ++i) {
        const Bytes more = element(200, Bytes(250));
        large.elements.insert(large.elements.end(), more.begin(), more.end());
    }
    for (unsigned last = 2; last < 200; ++last) {
        large.last = static_cast<std::uint8_t>(last);
        trial.write(large);
    }
    EXPECT_FALSE(trial.write({}));
    EXPECT_TRUE(trial.write({}));
}

}  // namespace
