#include "halvane/model/station_change.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <iterator>
#include <string>

#include "halvane/model/station_change_internal.h"

namespace halvane {

namespace {

TEST(StationChange, HasAWordOfEachKind) {
    EXPECT_STREQ(nameOf(StationChange::Kind::Authorized), "authorized");
    EXPECT_STREQ(nameOf(StationChange::Kind::Joined), "joined");
    EXPECT_STREQ(nameOf(StationChange::Kind::Kicked), "kicked");
    EXPECT_STREQ(nameOf(StationChange::Kind::Left), "left");
    EXPECT_STREQ(nameOf(static_cast<StationChange::Kind>(7)), "unknown");
}

TEST(StationChange, IsNotifiedUnderItsWord) {
    ASSERT_EQ(std::size(kStationNotifications), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        const auto kind = static_cast<StationChange::Kind>(i);
        EXPECT_EQ(kStationNotifications[i].kind, kind);
        EXPECT_EQ(kStationNotifications[i].command,
                  std::string("org.halvane.halvaned.status.client.") + nameOf(kind));
    }
}

}  // namespace

}  // namespace halvane
