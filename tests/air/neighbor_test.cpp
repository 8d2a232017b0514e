#include "halvane/air/neighbor.h"

#include <array>
#include <gtest/gtest.h>
#include <utility>

using namespace halvane::air;

namespace {

TEST(AirNeighbors, AreEmptyOnceMovedFrom) {
    const std::array<Neighbor, 2> two{};
    Neighbors list(two);
    const Neighbors moved = std::move(list);
    EXPECT_EQ(moved.size(), 2u);
    EXPECT_TRUE(list.empty());  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(list.begin(), list.end());
    list = moved;
    EXPECT_EQ(list, moved);
}

}  // namespace
