#include "halvane/service/subscribers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

namespace halvane {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Subscribers, StandInTheOrderInWhichTheyCame) {
    Subscribers subscribers;
    for (const char* const name : {":1.9", ":1.2", ":1.5", ":1.2"}) subscribers.add(name);
    EXPECT_THAT(subscribers.names(), ElementsAre(":1.9", ":1.2", ":1.5"));
    subscribers.remove(":1.9");
    subscribers.remove(":1.7");
    subscribers.add(":1.9");
    EXPECT_THAT(subscribers.names(), ElementsAre(":1.2", ":1.5", ":1.9"));
    Subscribers moved = std::move(subscribers);
    moved.remove(":1.5");
    EXPECT_THAT(moved.names(), ElementsAre(":1.2", ":1.9"));
    moved.clear();
    EXPECT_THAT(moved.names(), IsEmpty());
    moved.add(":1.2");
    EXPECT_THAT(moved.names(), ElementsAre(":1.2"));
}

// The name may be the list's own.
TEST(Subscribers, LetOneGoByItsOwnName) {
    Subscribers subscribers;
    subscribers.add(":1.2");
    subscribers.remove(subscribers.names().front());
    EXPECT_THAT(subscribers.names(), IsEmpty());
}

}  // namespace

}  // namespace halvane
