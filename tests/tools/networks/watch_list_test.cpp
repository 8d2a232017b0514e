#include "tools/halvane/networks/watch_list.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/radio_header.h"

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/network_order.h"
#include "tools/halvane/networks/watched_signal.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_moment.h"

using halvane::MacAddress;
using halvane::capture::BeaconFrame;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::tool;
using namespace std::chrono_literals;

namespace {

using State = NetworkMoment::State;
using Trend = NetworkMoment::Trend;
using Time = WatchList::Time;

MacAddress address(std::uint8_t last) {
    return MacAddress({0x02, 0, 0, 0, 0, last});
}

class WatchListTest : public ::testing::Test {
  protected:
    // A frame of a network, "a" for 1 and so on.
    void hear(std::uint8_t network, std::optional<int> signal, Time time) {
        const std::vector<std::uint8_t> elements = {0, 1, static_cast<std::uint8_t>('`' + network)};
        const BeaconFrame beacon{.bssid = address(network), .elements = elements};
        list_.add(halvane::capture::sightingOf(beacon, {.signalDBm = signal}), {.signal = signal},
                  time);
    }

    // From `begin` on, up to `end`, each 100 ms.
    void hearAll(std::uint8_t network, int signal, Time begin, Time end) {
        for (Time time = begin; time <= end; time += 100ms) hear(network, signal, time);
    }

    // The names of the rows, from the top.
    std::string rows(Time now) {
        list_.advance(now);
        std::string names;
        for (const Network& network : list_.rows({})) names += nameOf(network);
        return names;
    }

    NetworkMoment momentOf(std::uint8_t network, Time now) {
        list_.advance(now);
        for (const Network& row : list_.rows({})) {
            if (row.bssid == address(network)) return *row.moment;
        }
        ADD_FAILURE() << "no row";
        return {};
    }

    WatchList list_{4};
};

TEST_F(WatchListTest, ShowsTheMedianOfFourSeconds) {
    hear(1, -40, 1s);
    hear(1, -60, 5s);
    hear(1, -70, 6s);
    hear(1, -80, 7s);
    EXPECT_EQ(momentOf(1, 8s).signal, -70);
    EXPECT_EQ(momentOf(1, 8s).age, Time(1s).count());
    EXPECT_EQ(momentOf(1, 9500ms).signal, -70);  // the stronger of two
    EXPECT_EQ(momentOf(1, 10500ms).signal, -80);
    EXPECT_EQ(momentOf(1, 14s).signal, -70);  // up to its last frame
}

TEST_F(WatchListTest, HasNoSignalWhereNoneIsTold) {
    hear(1, std::nullopt, 1s);
    hear(2, 5, 1s);
    EXPECT_EQ(momentOf(1, 1s).signal, std::nullopt);
    EXPECT_EQ(momentOf(2, 1s).signal, std::nullopt);
}

TEST_F(WatchListTest, TellsAChangeOfFourDecibels) {
    hearAll(1, -60, 0s, 8s);
    hearAll(1, -56, 8100ms, 12s);
    hearAll(2, -60, 0s, 8s);
    hearAll(2, -63, 8100ms, 12s);
    hearAll(3, -60, 0s, 8s);
    hearAll(3, -64, 8100ms, 12s);
    EXPECT_EQ(momentOf(1, 12s).trend, Trend::Rising);
    EXPECT_EQ(momentOf(2, 12s).trend, Trend::Steady);
    EXPECT_EQ(momentOf(3, 12s).trend, Trend::Falling);
    EXPECT_EQ(momentOf(1, 8s).trend, Trend::Steady);
}

TEST_F(WatchListTest, RemembersAMinuteInStepsOfFiveSeconds) {
    hear(1, -50, 3s);
    hear(1, -60, 56s);
    hear(1, -70, 59s);
    hear(1, -80, 62s);
    const auto history = momentOf(1, 62s).history;
    EXPECT_EQ(history[0], -50);
    for (std::size_t i = 1; i < 10; ++i) EXPECT_EQ(history[i], std::nullopt) << i;
    EXPECT_EQ(history[10], -60);
    EXPECT_EQ(history[11], -70);
    EXPECT_EQ(momentOf(1, 63s).history[0], std::nullopt);
}

TEST_F(WatchListTest, MarksNewNetworksForTenSeconds) {
    hear(1, -50, 9900ms);
    hear(2, -50, 10s);
    EXPECT_EQ(momentOf(1, 10s).state, State::Known);  // all are new at the start
    EXPECT_EQ(momentOf(2, 10s).state, State::New);
    EXPECT_EQ(list_.counts().isNew, 1u);
    EXPECT_EQ(momentOf(2, 19900ms).state, State::New);
    EXPECT_EQ(momentOf(2, 20s).state, State::Known);
    EXPECT_EQ(list_.counts().isNew, 0u);
}

TEST_F(WatchListTest, SinksLostNetworksAndLetsThemGo) {
    hear(1, -40, 1s);
    hearAll(2, -80, 1s, 70s);
    EXPECT_EQ(rows(15900ms), "ab");
    EXPECT_EQ(momentOf(1, 15900ms).state, State::Known);
    EXPECT_EQ(rows(16s), "ba");
    EXPECT_EQ(momentOf(1, 16s).state, State::Lost);
    EXPECT_EQ(rows(60900ms), "ba");
    EXPECT_EQ(rows(61s), "b");
    EXPECT_EQ(list_.counts().networks, 2u);
    EXPECT_EQ(list_.counts().lost, 1u);
}

TEST_F(WatchListTest, TakesBackWhatWasLost) {
    hear(1, -40, 1s);
    hearAll(2, -80, 1s, 30s);
    EXPECT_EQ(rows(20s), "ba");
    hear(1, -40, 21s);
    EXPECT_EQ(rows(21s), "ab");
    EXPECT_EQ(list_.counts().lost, 0u);
    hearAll(2, -80, 22s, 99s);
    EXPECT_EQ(rows(90s), "b");
    hear(1, -40, 95s);
    EXPECT_EQ(rows(95s), "ab");
    EXPECT_EQ(momentOf(1, 95s).state, State::New);
}

TEST_F(WatchListTest, PutsNewNetworksToTheirPlaces) {
    hear(1, -60, 1s);
    hear(2, -40, 1s);
    hear(3, -80, 1s);
    EXPECT_EQ(rows(1s), "bac");
    hear(4, -60, 2s);
    EXPECT_EQ(rows(2s), "badc");
}

TEST_F(WatchListTest, KeepsItsOrderForFiveSecondsAndThreeDecibels) {
    hear(1, -50, 1s);
    hear(2, -60, 1s);
    EXPECT_EQ(rows(5s), "ab");
    hearAll(1, -50, 6s, 16s);
    hearAll(2, -40, 6s, 12s);
    EXPECT_EQ(rows(9900ms), "ab");  // 10 dB stronger, but not yet
    EXPECT_EQ(rows(10s), "ba");
    hearAll(2, -53, 12100ms, 16s);
    EXPECT_EQ(rows(16s), "ba");  // 3 dB weaker
    hearAll(1, -49, 16100ms, 22s);
    hearAll(2, -53, 16100ms, 22s);
    EXPECT_EQ(rows(22s), "ab");  // 4 dB
}

TEST_F(WatchListTest, StandsStillWhileItIsFrozen) {
    hear(1, -50, 1s);
    hear(2, -60, 1s);
    EXPECT_EQ(rows(1s), "ab");
    list_.freeze(true);
    hearAll(2, -40, 2s, 90s);
    EXPECT_EQ(rows(90s), "ab");
    list_.freeze(false);
    EXPECT_EQ(rows(91s), "b");
}

TEST_F(WatchListTest, PutsNewRowsToTheEndWhileItIsFrozen) {
    hear(1, -50, 1s);
    hear(2, -60, 1s);
    EXPECT_EQ(rows(1s), "ab");
    list_.freeze(true);
    hear(3, -40, 2s);
    EXPECT_EQ(rows(2s), "abc");
    list_.freeze(false);
    EXPECT_EQ(rows(3s), "cab");
}

TEST_F(WatchListTest, KeepsTheRowOfANetworkThatComesBackWhileItIsFrozen) {
    hear(1, -50, 1s);
    hearAll(2, -60, 1s, 50s);
    EXPECT_EQ(rows(20s), "ba");
    list_.freeze(true);
    hear(1, -50, 21s);
    EXPECT_EQ(rows(21s), "ba");
    list_.freeze(false);
    EXPECT_EQ(rows(22s), "ab");
}

TEST_F(WatchListTest, TakesAnotherOrderAtOnce) {
    hear(2, -50, 1s);
    hear(1, -60, 1s);
    hear(3, -70, 1s);
    EXPECT_EQ(rows(1s), "bac");
    list_.sortBy({.keys = {{networkColumnNamed("ssid", ListKind::Watch)}}});
    EXPECT_EQ(rows(2s), "abc");
    list_.sortBy({.keys = {{networkColumnNamed("ssid", ListKind::Watch)}}, .isReversed = true});
    list_.freeze(true);
    EXPECT_EQ(rows(3s), "cba");  // also while it is frozen: it was asked for
    list_.freeze(false);
    hear(4, -40, 4s);
    EXPECT_EQ(rows(4s), "dcba");
}

TEST_F(WatchListTest, PutsLostRowsBelowAllOthersInAnyOrder) {
    hear(1, -50, 1s);
    hearAll(2, -60, 1s, 20s);
    hearAll(3, -70, 1s, 20s);
    list_.sortBy({.keys = {{networkColumnNamed("ssid", ListKind::Watch)}}});
    EXPECT_EQ(rows(20s), "bca");
}

TEST_F(WatchListTest, TurnsTheOrderOfSignalsRound) {
    hearAll(1, -50, 0s, 6s);
    hearAll(2, -60, 0s, 6s);
    NetworkOrder order = defaultOrder();
    order.isReversed = true;
    list_.sortBy(order);
    EXPECT_EQ(rows(1s), "ba");
    hearAll(2, -47, 6100ms, 20s);
    hearAll(1, -50, 6100ms, 20s);
    EXPECT_EQ(rows(20s), "ba");  // 3 dB
    hearAll(2, -46, 20100ms, 30s);
    hearAll(1, -50, 20100ms, 30s);
    EXPECT_EQ(rows(30s), "ab");
}

TEST_F(WatchListTest, HoldsAValueForSixSeconds) {
    hear(1, -50, 1s);
    hear(1, -60, 2s);
    list_.advance(3s);
    const WatchedSignal* const signal = list_.signalOf(address(1));
    ASSERT_NE(signal, nullptr);
    EXPECT_EQ(signal->held(0s, 3s), -50);  // the stronger of two
    EXPECT_EQ(signal->held(1s, 3s), -60);
    EXPECT_EQ(signal->held(7s, 7999ms), -60);
    EXPECT_EQ(signal->held(7s, 8s), std::nullopt);
    EXPECT_EQ(signal->held(0s, 999ms), std::nullopt);
    EXPECT_EQ(signal->best(60s), -50);
    EXPECT_EQ(signal->best(61s), -60);
    EXPECT_EQ(signal->best(62s), std::nullopt);
    EXPECT_EQ(list_.signalOf(address(2)), nullptr);
}

TEST_F(WatchListTest, ShowsWhatPasses) {
    hear(1, -50, 1s);
    hear(2, -60, 1s);
    list_.advance(1s);
    NetworkFilter filter;
    filter.add("--ssid", "b", [](const Network& network) { return nameOf(network) == "b"; });
    const auto rows = list_.rows(filter);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].bssid, address(2));
}

TEST_F(WatchListTest, KeepsNoMoreNetworksThanItMay) {
    for (std::uint8_t network = 1; network <= 20; ++network) hear(network, -50, 1s);
    EXPECT_EQ(rows(1s), "qrst");
    EXPECT_EQ(list_.counts().networks, 4u);
    EXPECT_EQ(list_.survey().letGoCount(), 16u);
}

}  // namespace
