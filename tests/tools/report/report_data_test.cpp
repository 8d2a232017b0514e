#include "tools/halvane/report/report_data.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <set>

#include "tests/tools/report/report_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::ownNamed;
using halvane::testing::ReportMaker;

namespace {

TEST(ReportData, HasTheStrongestFirst) {
    ReportMaker maker;
    maker.add({.name = "weak", .lastOctet = 0x10, .signal = -90});
    maker.add({.name = "untold", .lastOctet = 0x20});
    maker.add({.name = "strong", .lastOctet = 0x30, .signal = -30});
    const ReportData data = maker.data();
    ASSERT_EQ(data.networks.size(), 3u);
    EXPECT_EQ(data.networks[0].name.octets(), "strong");
    EXPECT_EQ(data.networks[1].name.octets(), "weak");
    EXPECT_EQ(data.networks[2].name.octets(), "untold");
    EXPECT_EQ(data.networks[0].id, "n-020000000030");
    EXPECT_FALSE(data.hasOwn);
    EXPECT_EQ(tintOf(data, false), Tint::Own);
}

TEST(ReportData, GroupsNetworksOfOneRadio) {
    ReportMaker maker;
    maker.add({.name = "a", .lastOctet = 0x10, .signal = -50});
    maker.add({.name = "b", .lastOctet = 0x1F, .signal = -40});
    maker.add({.name = "c", .lastOctet = 0x20, .signal = -60});
    maker.add({.name = "d", .lastOctet = 0x11, .signal = -70, .channel = 6});
    const ReportData data = maker.data(ownNamed("a"));
    ASSERT_EQ(data.radios.size(), 3u);
    EXPECT_EQ(data.radios[0].networks.size(), 2u);
    EXPECT_EQ(data.radios[0].signal, -40);
    EXPECT_TRUE(data.radios[0].isOwn);
    EXPECT_FALSE(data.radios[1].isOwn);
    EXPECT_EQ(data.nameOf(data.radios[0]).octets(), "b");
    EXPECT_EQ(tintOf(data, false), Tint::Other);
}

TEST(ReportData, GroupsByTheNameOfTheAccessPoint) {
    ReportMaker maker;
    maker.add({.name = "a", .lastOctet = 0x10, .signal = -50}).details.accessPoint = "AP#1";
    maker.add({.name = "b", .lastOctet = 0x80, .signal = -60}).details.accessPoint = "AP#1";
    maker.add({.name = "c", .lastOctet = 0x11, .signal = -60}).details.accessPoint = "AP#2";
    const ReportData data = maker.data();
    ASSERT_EQ(data.radios.size(), 2u);
    EXPECT_EQ(data.nameOf(data.radios[0]).octets(), "AP#1");
}

TEST(ReportData, PlacesNetworksWithinItsLimits) {
    ReportMaker maker;
    for (std::uint8_t i = 0; i < 5; ++i) {
        maker.add({.name = "x", .lastOctet = i, .signal = -30 - i});
    }
    ReportLimits limits;
    limits.rows = 2;
    limits.briefRows = 2;
    const ReportData data = maker.data({}, limits);
    using Place = ReportNetwork::Place;
    const Place expected[] = {Place::Row, Place::Row, Place::BriefRow, Place::BriefRow,
                              Place::Nowhere};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(data.networks[i].place, expected[i]);
}

TEST(ReportData, RanksEveryKindOfSecurity) {
    std::set<int> ranks;
    for (int i = 0; i <= static_cast<int>(air::Security::Broken); ++i) {
        ranks.insert(rankOf(static_cast<air::Security>(i)));
    }
    EXPECT_EQ(ranks.size(), 20u);
    EXPECT_EQ(*ranks.rbegin(), 19) << "a kind has no place";
    EXPECT_LT(rankOf(air::Security::Wep), rankOf(air::Security::Open));
    EXPECT_LT(rankOf(air::Security::Wpa2Personal), rankOf(air::Security::Wpa3Personal));
}

}  // namespace
