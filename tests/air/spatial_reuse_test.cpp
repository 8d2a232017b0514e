#include "halvane/air/spatial_reuse.h"

#include <cstddef>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirSpatialReuse, DecodesEveryField) {
    const auto element =
        SpatialReuse::decode(bytesOf("1D 0A 02 14 2400000000000080 0100000000000000"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->isPsrDisallowed());
    EXPECT_FALSE(element->isNonSrgObssPdDisallowed());
    EXPECT_TRUE(element->isValue15Allowed());
    EXPECT_EQ(element->nonSrgMaxOffset, 10);
    ASSERT_TRUE(element->srg);
    EXPECT_EQ(element->srg->minOffset, 2);
    EXPECT_EQ(element->srg->maxOffset, 20);
    for (std::size_t color = 0; color < 64; ++color) {
        EXPECT_EQ(element->srg->bssColors.bit(color), color == 2 || color == 5 || color == 63);
    }
    EXPECT_TRUE(element->srg->partialBssids.bit(0));
}

TEST(AirSpatialReuse, NeedsWhatTheControlTells) {
    EXPECT_TRUE(SpatialReuse::decode(bytesOf("03")));
    EXPECT_FALSE(SpatialReuse::decode({}));
    EXPECT_FALSE(SpatialReuse::decode(bytesOf("04")));
    EXPECT_FALSE(SpatialReuse::decode(bytesOf("08 02 14 2400000000000080 01000000000000")));
}

TEST(AirSpatialReuse, IsEncodedFromItsFields) {
    SpatialReuse element;
    element.setNonSrgMaxOffset(12);
    EXPECT_EQ(element.encode(), bytesOf("04 0C"));
    element.setNonSrgMaxOffset({});
    element.setSrg(SpatialReuseGroup{.minOffset = 1, .maxOffset = 2});
    EXPECT_EQ(element.encode(), bytesOf("08 01 02 0000000000000000 0000000000000000"));
}

}  // namespace
