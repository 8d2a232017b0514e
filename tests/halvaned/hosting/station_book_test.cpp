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

TEST(StationBook, NotesWhenAStationCameAndWent) {
    StationBook book;
    book.note(change(Kind::Joined, 1), 100);
    book.note(change(Kind::Authorized, 1), 150);
    ASSERT_EQ(book.list().size(), 1U);
    HalvaneClient client = book.list()[0];
    EXPECT_TRUE(client.isAssociated());
    EXPECT_EQ(client.createTime(), 100U);
    EXPECT_EQ(client.joinTime(), 100U);
    EXPECT_EQ(client.leftTime(), 0U);
    EXPECT_EQ(client.deauthReason(), 0U);
    EXPECT_EQ(book.count("wlan0"), 1U);

    book.note(change(Kind::Left, 1), 300);
    client = book.list()[0];
    EXPECT_FALSE(client.isAssociated());
    EXPECT_EQ(client.joinTime(), 100U);
    EXPECT_EQ(client.leftTime(), 300U);
    EXPECT_EQ(client.deauthReason(), 3U);
    EXPECT_EQ(book.count("wlan0"), 0U);
}

TEST(StationBook, KeepsTheFirstTimeOfAStationThatComesBack) {
    StationBook book;
    book.note(change(Kind::Joined, 1), 100);
    book.note(change(Kind::Joined, 2), 110);
    book.note(change(Kind::Kicked, 1), 200);
    EXPECT_EQ(book.list()[0].deauthReason(), 1U);
    book.note(change(Kind::Joined, 1), 300);
    ASSERT_EQ(book.list().size(), 2U);
    const HalvaneClient client = book.list()[0];
    EXPECT_EQ(client.mac(), station(1).buffer());
    EXPECT_EQ(client.createTime(), 100U);
    EXPECT_EQ(client.joinTime(), 300U);
    EXPECT_EQ(book.count("wlan0"), 2U);
}

TEST(StationBook, CountsAStationThatJoinsAgainOnce) {
    StationBook book;
    book.note(change(Kind::Joined, 1), 100);
    book.note(change(Kind::Joined, 1), 200);
    EXPECT_EQ(book.count("wlan0"), 1U);
    EXPECT_EQ(book.list()[0].joinTime(), 200U);
    book.note(change(Kind::Left, 1), 300);
    book.note(change(Kind::Left, 1), 400);
    EXPECT_EQ(book.count("wlan0"), 0U);
    EXPECT_EQ(book.list()[0].leftTime(), 300U);
}

TEST(StationBook, LetsAStationThatIsAuthorizedJoinFirst) {
    StationBook book;
    book.note(change(Kind::Authorized, 1), 100);
    EXPECT_TRUE(book.list()[0].isAssociated());
    EXPECT_EQ(book.list()[0].joinTime(), 100U);
}

TEST(StationBook, DistinguishesTheSameStationAtTwoInterfaces) {
    StationBook book;
    book.note(change(Kind::Joined, 1, "wlan0"), 100);
    book.note(change(Kind::Joined, 1, "wlan1"), 200);
    book.note(change(Kind::Left, 1, "wlan0"), 300);
    EXPECT_EQ(book.count("wlan0"), 0U);
    EXPECT_EQ(book.count("wlan1"), 1U);
    EXPECT_EQ(book.list().size(), 2U);
}

TEST(StationBook, AddsWhatHostapdTells) {
    StationBook book;
    book.note(change(Kind::Joined, 1), 60'000'000);
    StationRecord record{.address = station(1)};
    record.signal = -52;
    record.capabilities = 0x0431;
    record.elements = {1, 1, 0x82};
    record.connectedTime = 30;
    book.note("wlan0", record, 36, 70'000'000);
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
    book.note(change(Kind::Joined, 1), 5'000'000);
    StationRecord record{.address = station(1)};
    record.connectedTime = 4'000'000'000;
    book.note("wlan0", record, 0, 6'000'000);
    EXPECT_EQ(book.list()[0].joinTime(), 5'000'000U);
    EXPECT_FALSE(book.list()[0].channel());
}

TEST(StationBook, TakesNoRecordOfAStationThatIsNotThere) {
    StationBook book;
    book.note("wlan0", {.address = station(1)}, 1, 100);
    EXPECT_TRUE(book.list().empty());
    book.note(change(Kind::Joined, 1), 100);
    book.note(change(Kind::Left, 1), 200);
    StationRecord record{.address = station(1)};
    record.signal = -40;
    book.note("wlan0", record, 1, 300);
    EXPECT_FALSE(book.list()[0].RSSI());
}

TEST(StationBook, ForgetsThoseThatLeftFirst) {
    StationBook book;
    book.note(change(Kind::Joined, 0, "wlan1"), 1);
    constexpr auto kCount = static_cast<std::uint16_t>(StationBook::kMostGone + 2);
    for (std::uint16_t i = 1; i <= kCount; ++i) book.note(change(Kind::Joined, i), i);
    // From the last one on.
    for (std::uint16_t i = kCount; i >= 1; --i) book.note(change(Kind::Left, i), 100'000U - i);
    const auto list = book.list();
    ASSERT_EQ(list.size(), StationBook::kMostGone + 1);
    EXPECT_EQ(list.front().mac(), station(0).buffer());
    EXPECT_EQ(list[1].mac(), station(1).buffer());
    EXPECT_EQ(list.back().mac(), station(kCount - 2).buffer());
}

}  // namespace
}  // namespace halvane::hosting
