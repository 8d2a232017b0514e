#include "tools/halvaned/hosting/station_book.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/model/client.h"
#include "halvane/model/station_change.h"

#include "tools/halvaned/hostapd/control_message.h"
#include "tools/halvaned/hostapd/hosted_stations.h"

namespace halvane::hosting {
namespace {

using Kind = StationChange::Kind;

MacAddress station(std::uint16_t number) {
    return MacAddress({2, 0, 0, 0, static_cast<std::uint8_t>(number >> 8),
                       static_cast<std::uint8_t>(number & 0xFF)});
}

StationChange change(Kind kind, std::uint16_t number, std::string interface = "wlan0") {
    return {kind, station(number), std::move(interface)};
}

// Each interface has one network.
bool note(StationBook& book, const StationChange& change, std::uint64_t now) {
    return book.note(change.interface, change, now);
}

TEST(StationBook, NotesWhenAStationCameAndWent) {
    StationBook book;
    note(book, change(Kind::Joined, 1), 100);
    note(book, change(Kind::Authorized, 1), 150);
    ASSERT_EQ(book.list().size(), 1U);
    HalvaneClient client = book.list()[0];
    EXPECT_TRUE(client.isAssociated());
    EXPECT_EQ(client.createTime(), 100U);
    EXPECT_EQ(client.joinTime(), 100U);
    EXPECT_EQ(client.leftTime(), 0U);
    EXPECT_EQ(client.deauthReason(), 0U);

    note(book, change(Kind::Left, 1), 300);
    client = book.list()[0];
    EXPECT_FALSE(client.isAssociated());
    EXPECT_EQ(client.joinTime(), 100U);
    EXPECT_EQ(client.leftTime(), 300U);
    EXPECT_EQ(client.deauthReason(), 3U);
}

TEST(StationBook, KeepsTheFirstTimeOfAStationThatComesBack) {
    StationBook book;
    note(book, change(Kind::Joined, 1), 100);
    note(book, change(Kind::Joined, 2), 110);
    note(book, change(Kind::Kicked, 1), 200);
    EXPECT_EQ(book.list()[0].deauthReason(), 1U);
    note(book, change(Kind::Joined, 1), 300);
    ASSERT_EQ(book.list().size(), 2U);
    const HalvaneClient client = book.list()[0];
    EXPECT_EQ(client.mac(), station(1).buffer());
    EXPECT_EQ(client.createTime(), 100U);
    EXPECT_EQ(client.joinTime(), 300U);
}

TEST(StationBook, CountsAStationThatJoinsAgainOnce) {
    StationBook book;
    note(book, change(Kind::Joined, 1), 100);
    note(book, change(Kind::Joined, 1), 200);
    EXPECT_EQ(book.list()[0].joinTime(), 200U);
    note(book, change(Kind::Left, 1), 300);
    note(book, change(Kind::Left, 1), 400);
    EXPECT_EQ(book.list()[0].leftTime(), 300U);
}

TEST(StationBook, LetsAStationThatIsAuthorizedJoinFirst) {
    StationBook book;
    note(book, change(Kind::Authorized, 1), 100);
    EXPECT_TRUE(book.list()[0].isAssociated());
    EXPECT_EQ(book.list()[0].joinTime(), 100U);
}

TEST(StationBook, DistinguishesTheSameStationAtTwoInterfaces) {
    StationBook book;
    note(book, change(Kind::Joined, 1, "wlan0"), 100);
    note(book, change(Kind::Joined, 1, "wlan1"), 200);
    note(book, change(Kind::Left, 1, "wlan0"), 300);
    ASSERT_EQ(book.list().size(), 2U);
    EXPECT_FALSE(book.list()[0].isAssociated());
    EXPECT_TRUE(book.list()[1].isAssociated());
}

TEST(StationBook, FollowsAStationToAnotherNetworkOfTheInterface) {
    StationBook book;
    EXPECT_TRUE(book.note("wlan0", change(Kind::Joined, 1, "wlan0"), 100));
    EXPECT_TRUE(book.note("wlan0", change(Kind::Joined, 1, "wlan0_1"), 200));
    // The first network notices last.
    EXPECT_FALSE(book.note("wlan0", change(Kind::Left, 1, "wlan0"), 300));
    EXPECT_FALSE(book.note("wlan0", change(Kind::Kicked, 1, "wlan0"), 300));
    EXPECT_FALSE(book.note("wlan0", change(Kind::Authorized, 1, "wlan0"), 300));
    ASSERT_EQ(book.list().size(), 1U);
    EXPECT_TRUE(book.list()[0].isAssociated());
    EXPECT_EQ(book.list()[0].joinTime(), 200U);

    StationRecord record{.address = station(1)};
    record.signal = -60;
    book.note("wlan0", {"wlan0", record}, 1, 400);
    EXPECT_FALSE(book.list()[0].RSSI());
    book.note("wlan0", {"wlan0_1", record}, 1, 400);
    EXPECT_EQ(book.list()[0].RSSI(), Number(std::int64_t{-60}));

    EXPECT_TRUE(book.note("wlan0", change(Kind::Left, 1, "wlan0_1"), 500));
    EXPECT_FALSE(book.list()[0].isAssociated());
}

TEST(StationBook, AddsWhatHostapdTells) {
    StationBook book;
    note(book, change(Kind::Joined, 1), 60'000'000);
    StationRecord record{.address = station(1)};
    record.signal = -52;
    record.capabilities = 0x0431;
    record.elements = {1, 1, 0x82};
    record.connectedTime = 30;
    book.note("wlan0", {"wlan0", record}, 36, 70'000'000);
    const HalvaneClient client = book.list()[0];
    EXPECT_EQ(client.RSSI(), Number(std::int64_t{-52}));
    EXPECT_EQ(client.channel(), Number(std::int64_t{36}));
    EXPECT_EQ(client.capabilities(), 0x0431);
    EXPECT_EQ(client.IEs().size(), 1U);
    // It was there before the daemon knew of it.
    EXPECT_EQ(client.joinTime(), 40'000'000U);
}

TEST(StationBook, BelievesNoTimeBeforeTheStartOfTheSystem) {
    StationBook book;
    note(book, change(Kind::Joined, 1), 5'000'000);
    StationRecord record{.address = station(1)};
    record.connectedTime = 4'000'000'000;
    book.note("wlan0", {"wlan0", record}, 0, 6'000'000);
    EXPECT_EQ(book.list()[0].joinTime(), 5'000'000U);
    EXPECT_FALSE(book.list()[0].channel());
}

TEST(StationBook, TakesNoRecordOfAStationThatIsNotThere) {
    StationBook book;
    book.note("wlan0", {"wlan0", {.address = station(1)}}, 1, 100);
    EXPECT_TRUE(book.list().empty());
    note(book, change(Kind::Joined, 1), 100);
    note(book, change(Kind::Left, 1), 200);
    StationRecord record{.address = station(1)};
    record.signal = -40;
    book.note("wlan0", {"wlan0", record}, 1, 300);
    EXPECT_FALSE(book.list()[0].RSSI());
}

TEST(StationBook, ForgetsThoseThatLeftFirst) {
    StationBook book;
    note(book, change(Kind::Joined, 0, "wlan1"), 1);
    constexpr auto kCount = static_cast<std::uint16_t>(StationBook::kMostGone + 2);
    for (std::uint16_t i = 1; i <= kCount; ++i) note(book, change(Kind::Joined, i), i);
    // From the last one on.
    for (std::uint16_t i = kCount; i >= 1; --i) note(book, change(Kind::Left, i), 100'000U - i);
    const auto list = book.list();
    ASSERT_EQ(list.size(), StationBook::kMostGone + 1);
    EXPECT_EQ(list.front().mac(), station(0).buffer());
    EXPECT_EQ(list[1].mac(), station(1).buffer());
    EXPECT_EQ(list.back().mac(), station(kCount - 2).buffer());
}

}  // namespace
}  // namespace halvane::hosting
