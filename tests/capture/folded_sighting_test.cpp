#include "halvane/capture/folded_sighting.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/radio_header.h"
#include "halvane/ie/mac.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/replaced_system.h"

using namespace halvane;
using namespace halvane::capture;
using namespace halvane::testing;

namespace {

std::vector<Sighting> someSightings() {
    std::vector<Sighting> sightings;
    for (const Bytes& elements :
         {Bytes{}, element(0, {}), joined({ssidElement("home"), htOperationElement(44, 1)}),
          ssidElement("other")}) {
        const auto number = static_cast<std::uint16_t>(sightings.size());
        auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, 1});
        record.setCapabilityField(number % 2 == 0 ? 0x0011 : 0x0001);
        record.setInformationElements(ByteBuffer(elements));
        if (number % 3 != 0) record.setRSSI(Number(-50 - number));
        const bool isOfRadio = number == 1;
        if (isOfRadio) record.setChannel(Number(11));
        sightings.push_back({record, Number(number + 1), isOfRadio,
                             number > 1 ? std::optional<int>(5180 + number) : std::nullopt});
    }
    return sightings;
}

std::string tellingOf(const FoldedSighting& folded) {
    const Sighting sighting = folded.sighting();
    return sighting.record.description() + sighting.radioChannel->description() +
           std::to_string(sighting.radioFrequency.value_or(0)) +
           std::to_string(sighting.isChannelOfRadio) +
           std::to_string(sighting.record.capabilities());
}

// Every sequence of four of these sightings, cut in two anywhere.
TEST(FoldedSighting, FoldsWhatWasFoldedAsIfOneByOne) {
    const ScopedUpTime clock;  // a description states the age in seconds
    const auto sightings = someSightings();
    constexpr std::size_t kLength = 4;
    for (std::size_t i = 0; i < 256; ++i) {
        const auto at = [&](std::size_t k) -> const Sighting& {
            return sightings[i >> (2 * k) & 3];
        };
        FoldedSighting whole(at(0));
        for (std::size_t k = 1; k < kLength; ++k) whole.fold(at(k));
        for (std::size_t cut = 1; cut < kLength; ++cut) {
            FoldedSighting first(at(0));
            for (std::size_t k = 1; k < cut; ++k) first.fold(at(k));
            FoldedSighting second(at(cut));
            for (std::size_t k = cut + 1; k < kLength; ++k) second.fold(at(k));
            first.fold(std::move(second));
            ASSERT_EQ(tellingOf(first), tellingOf(whole)) << i << ' ' << cut;
        }
    }
}

TEST(FoldedSighting, KeepsTheAddress) {
    EXPECT_EQ(FoldedSighting(someSightings()[0]).mac(), (ByteBuffer{2, 0, 0, 0, 0, 1}));
}

Sighting sightingWith(const Bytes& elements, bool isCut) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, 1});
    record.setInformationElements(ByteBuffer(elements));
    Sighting sighting{record};
    sighting.isCut = isCut;
    return sighting;
}

std::optional<ByteBuffer> elementsOf(const FoldedSighting& folded) {
    return folded.sighting().record.ieBuffer();
}

// Every sequence of three frames, named and nameless, cut and whole.
TEST(FoldedSighting, KeepsTheElementsOfAWholeFrame) {
    const Bytes hidden = joined({element(0, {}), htOperationElement(44, 1)});
    const std::vector<Sighting> sightings = {
        sightingWith(element(0, {}), true), sightingWith(ssidElement("cut"), true),
        sightingWith(hidden, false), sightingWith(ssidElement("home"), false)};
    for (std::size_t i = 0; i < 64; ++i) {
        const auto at = [&](std::size_t k) -> const Sighting& {
            return sightings[i >> (2 * k) & 3];
        };
        FoldedSighting one(at(0));
        one.fold(at(1));
        one.fold(at(2));
        FoldedSighting later(at(1));
        later.fold(at(2));
        FoldedSighting parts(at(0));
        parts.fold(std::move(later));
        EXPECT_EQ(elementsOf(one), elementsOf(parts)) << i;
        EXPECT_EQ(one.sighting().isCut, parts.sighting().isCut) << i;
        const bool hasWhole = !at(0).isCut || !at(1).isCut || !at(2).isCut;
        EXPECT_EQ(one.sighting().isCut, !hasWhole) << i;
    }
}

TEST(FoldedSighting, ReplacesACutFrameByAWholeOneOnly) {
    const Bytes whole = joined({ssidElement("home"), htOperationElement(44, 1)});
    FoldedSighting cutFirst(sightingWith(ssidElement("home"), true));
    cutFirst.fold(sightingWith(whole, false));
    EXPECT_EQ(elementsOf(cutFirst), ByteBuffer(whole));
    FoldedSighting wholeFirst(sightingWith(whole, false));
    wholeFirst.fold(sightingWith(ssidElement("home"), true));
    EXPECT_EQ(elementsOf(wholeFirst), ByteBuffer(whole));
}

// --- Frames whose numbers alone count ---

struct Frame {
    Bytes elements;
    RadioInfo radio;
    bool isCut;

    BeaconFrame beacon() const {
        return {.bssid = MacAddress({0x02, 0, 0, 0, 0, 1}),
                .beaconInterval = static_cast<std::uint16_t>(100 + elements.size()),
                .capabilities = static_cast<std::uint16_t>(elements.size()),
                .elements = elements,
                .isCut = isCut};
    }
    Sighting sighting() const { return sightingOf(beacon(), radio); }
};

std::string numbersOf(const FoldedSighting& folded) {
    const Sighting sighting = folded.sighting();
    const auto text = [](const std::optional<Number>& number) {
        return number ? number->description() + ' ' : "- ";
    };
    return sighting.record.description() + text(sighting.record.RSSI()) +
           text(sighting.record.noise()) + text(sighting.record.beaconInterval()) +
           text(sighting.radioChannel) + std::to_string(sighting.radioFrequency.value_or(0)) + ' ' +
           std::to_string(sighting.isChannelOfRadio) + ' ' + std::to_string(sighting.frames) + ' ' +
           std::to_string(sighting.isCut) + ' ' + std::to_string(sighting.isNameRevealed);
}

// Every sequence of three frames.
TEST(FoldedSighting, FoldsNumbersAsASightingOfThem) {
    const ScopedUpTime clock;
    const std::vector<Frame> frames = {
        {ssidElement("home"), {.frequencyMHz = 2437, .signalDBm = -50, .noiseDBm = -90}, false},
        {joined({ssidElement("home"), element(3, {11})}), {.channel = 3, .signalDBm = -60}, false},
        {joined({element(0, {}), htOperationElement(44, 1)}), {.frequencyMHz = 5180}, false},
        {ssidElement("home"), {.signalDBm = -70}, true},
        {element(0, {}), {}, true}};
    std::size_t folded = 0;
    for (const Frame& first : frames) {
        for (const Frame& second : frames) {
            for (const Frame& third : frames) {
                FoldedSighting expected(first.sighting());
                FoldedSighting actual(first.sighting());
                for (const Frame* const frame : {&second, &third}) {
                    const std::string before = numbersOf(actual);
                    expected.fold(frame->sighting());
                    if (actual.foldNumbers(frame->beacon(), frame->radio)) {
                        ++folded;
                    } else {
                        EXPECT_EQ(numbersOf(actual), before);
                        actual.fold(frame->sighting());
                    }
                    EXPECT_EQ(numbersOf(actual), numbersOf(expected));
                }
            }
        }
    }
    EXPECT_GT(folded, 100u);
}

// Every prefix of a beacon's elements, and every value of their numbers and lengths.
TEST(FoldedSighting, FoldsNumbersOfHostileElements) {
    const ScopedUpTime clock;
    const Bytes name = ssidElement("home");
    const Bytes parameters = element(3, {11});
    const Bytes elements = joined({name, parameters, htOperationElement(44, 1)});
    const std::size_t second = name.size();
    const std::size_t third = second + parameters.size();
    const Frame first = {name, {.channel = 3, .signalDBm = -60}, false};
    const auto check = [&](const ByteBuffer& hostile) {
        for (const RadioInfo& radio : {RadioInfo{}, RadioInfo{.frequencyMHz = 2437, .channel = 7},
                                       RadioInfo{.frequencyMHz = 2438, .channel = 7}}) {
            const auto bytes = hostile.bytes();
            const Frame next = {Bytes(bytes.begin(), bytes.end()), radio, false};
            FoldedSighting expected(first.sighting());
            FoldedSighting actual(first.sighting());
            expected.fold(next.sighting());
            ASSERT_TRUE(actual.foldNumbers(next.beacon(), next.radio));
            ASSERT_EQ(numbersOf(actual), numbersOf(expected)) << hostile.hex();
        }
    };
    forEachHostileForm(elements, {0, 1, second, second + 1, second + 2, third, third + 1}, check);
}

TEST(FoldedSighting, FoldsNoNumbersWhereTheElementsMayCount) {
    const Frame named = {ssidElement("home"), {}, false};
    const Frame hidden = {element(0, {}), {}, false};
    const Frame cut = {ssidElement("home"), {}, true};
    const auto folds = [](const Frame& first, const Frame& next) {
        return FoldedSighting(first.sighting()).foldNumbers(next.beacon(), next.radio);
    };
    EXPECT_TRUE(folds(named, named));
    EXPECT_TRUE(folds(named, hidden));
    EXPECT_TRUE(folds(named, cut));
    EXPECT_TRUE(folds(hidden, cut));
    EXPECT_FALSE(folds(hidden, named));
    EXPECT_FALSE(folds(cut, named));
}

}  // namespace
