#include "tools/halvane/survey/survey.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/ie/mac.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

struct Frame {
    std::uint8_t last;
    Bytes elements = ssidElement("net");
    int signal = -50;
};

void hear(Survey& survey, const Frame& frame, std::uint64_t number = 0) {
    auto record = HalvaneMAC::initWithMAC({0x02, 0, 0, 0, 0, frame.last});
    record.setRSSI(Number(frame.signal));
    record.setInformationElements(ByteBuffer(frame.elements));
    survey.add({record}, {.number = number, .signal = frame.signal});
}

std::string addressesIn(const Survey& survey) {
    std::string text;
    for (const Network& network : survey.networks()) {
        text += std::to_string(network.bssid.octets()[5]) + ' ';
    }
    return text;
}

TEST(Survey, KeepsTheOrderOfFirstSightings) {
    Survey survey;
    for (const std::uint8_t last : Bytes{9, 1, 5, 1, 9}) hear(survey, {last});
    EXPECT_EQ(addressesIn(survey), "9 1 5 ");
    EXPECT_EQ(survey.networks()[0].statistics->frames(), 2u);
    EXPECT_EQ(survey.letGoCount(), 0u);
}

TEST(Survey, LetsTheNetworkGoThatWasLongestNotHeard) {
    Survey survey(2);
    for (const std::uint8_t last : Bytes{1, 2, 1, 3}) hear(survey, {last});
    EXPECT_EQ(addressesIn(survey), "1 3 ");
    EXPECT_EQ(survey.letGoCount(), 1u);
    hear(survey, {2});
    EXPECT_EQ(addressesIn(survey), "3 2 ");
    EXPECT_EQ(survey.letGoCount(), 2u);
    EXPECT_EQ(survey.size(), 2u);
}

TEST(Survey, TakesNoRecordWithoutAnAddress) {
    Survey survey;
    survey.add({HalvaneMAC::initWithMAC(ByteBuffer())}, {});
    EXPECT_EQ(survey.size(), 0u);
}

TEST(Survey, ListsNetworksThatShareABeacon) {
    const Bytes shared =
        joined({ssidElement("one"),
                element(71, {2, 0, 14, 83, 2, 1, 0, 0, 3, 't', 'w', 'o', 85, 3, 1, 0, 0})});
    Survey survey;
    hear(survey, {0x20, shared});
    const auto networks = survey.networks();
    ASSERT_EQ(networks.size(), 2u);
    EXPECT_NE(networks[0].heard, nullptr);
    EXPECT_EQ(networks[1].heard, nullptr);
    EXPECT_EQ(networks[1].bssid.octets()[5], 0x21);
    EXPECT_EQ(nameOf(networks[1]), "two");
    EXPECT_EQ(networks[1].statistics, networks[0].statistics);

    hear(survey, {0x21, ssidElement("two")});
    const auto heard = survey.networks();
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_NE(heard[1].heard, nullptr);
}

std::string tellingOf(const Survey& survey) {
    std::string text;
    for (const Network& network : survey.networks()) {
        const auto sighting = network.heard->sighting();
        text += network.bssid.text() + ' ' + std::string(nameOf(network)) + ' ' +
                std::to_string(network.statistics->frames()) + ' ' +
                std::to_string(network.statistics->signal.median().value_or(0)) + ' ' +
                sighting.record.RSSI()->description() + '\n';
    }
    return text;
}

// Every sequence of six of these frames, cut in two anywhere.
TEST(Survey, AddsAnotherAsIfItsFramesWereItsOwn) {
    const std::vector<Frame> frames = {{1, element(0, {}), -40},
                                       {1, ssidElement("home"), -60},
                                       {2, ssidElement("other"), -50},
                                       {1, ssidElement("later"), -70}};
    constexpr std::size_t kLength = 6;
    std::size_t sequences = 1;
    for (std::size_t i = 0; i < kLength; ++i) sequences *= frames.size();
    for (std::size_t i = 0; i < sequences; i += 7) {
        Survey whole;
        for (std::size_t rest = i, k = 0; k < kLength; ++k, rest /= frames.size()) {
            hear(whole, frames[rest % frames.size()], k);
        }
        for (std::size_t cut = 0; cut <= kLength; ++cut) {
            Survey first;
            Survey second;
            for (std::size_t rest = i, k = 0; k < kLength; ++k, rest /= frames.size()) {
                hear(k < cut ? first : second, frames[rest % frames.size()], k);
            }
            first.add(std::move(second));
            ASSERT_EQ(tellingOf(first), tellingOf(whole)) << i << ' ' << cut;
        }
    }
}

TEST(Survey, KnowsWhatWasHeardLastAfterAddingAnother) {
    Survey survey(3);
    for (const std::uint8_t last : Bytes{1, 2, 3}) hear(survey, {last});
    Survey later(3);
    for (const std::uint8_t last : Bytes{3, 1}) hear(later, {last});
    survey.add(std::move(later));
    hear(survey, {4});
    EXPECT_EQ(addressesIn(survey), "1 3 4 ");
}

TEST(Survey, AddsTheNumbersOfKnownNetworks) {
    Survey survey(2);
    hear(survey, {1});
    hear(survey, {2, element(0, {})});
    const Bytes elements = ssidElement("net");
    const auto add = [&](std::uint8_t last) {
        const capture::BeaconFrame beacon = {.bssid = MacAddress({0x02, 0, 0, 0, 0, last}),
                                             .elements = elements};
        return survey.addNumbers(beacon, {.signalDBm = -40}, {.number = 7, .signal = -40});
    };
    EXPECT_FALSE(add(3));  // unknown
    EXPECT_FALSE(add(2));  // without a name
    EXPECT_TRUE(add(1));
    EXPECT_EQ(survey.networks()[0].statistics->frames(), 2u);
    EXPECT_EQ(survey.networks()[0].heard->sighting().record.RSSI(), Number(-40));
    EXPECT_EQ(survey.networks()[1].statistics->frames(), 1u);
    hear(survey, {3});  // the second was not heard for the longest time
    EXPECT_EQ(addressesIn(survey), "1 3 ");
}

}  // namespace
