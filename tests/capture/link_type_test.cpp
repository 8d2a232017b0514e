#include "halvane/capture/link_type.h"

#include <gtest/gtest.h>

using namespace halvane::capture;

namespace {

TEST(LinkType, IsKnownByTheNumbersOf80211) {
    for (const int number : {105, 119, 127, 163, 192}) {
        const auto linkType = linkTypeOfNumber(number);
        ASSERT_TRUE(linkType) << number;
        EXPECT_EQ(static_cast<int>(*linkType), number);
    }
    for (const int number : {-1, 0, 1, 104, 106, 113, 276}) EXPECT_FALSE(linkTypeOfNumber(number));
}

}  // namespace
