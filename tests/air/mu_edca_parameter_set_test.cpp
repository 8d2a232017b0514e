#include "halvane/air/mu_edca_parameter_set.h"

#include <gtest/gtest.h>

#include "halvane/air/access_category.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirMuEdcaParameterSet, DecodesEveryField) {
    const auto element = MuEdcaParameterSet::decode(bytesOf("05 00A401 20A402 404303 623204"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->qosInfo.updateCount(), 5);
    for (const auto category : {AccessCategoryIndex::BestEffort, AccessCategoryIndex::Background,
                                AccessCategoryIndex::Video, AccessCategoryIndex::Voice}) {
        const auto& record = element->recordOf(category);
        EXPECT_EQ(record.priority.category(), category);
        EXPECT_EQ(record.timer, static_cast<int>(category) + 1);
        EXPECT_EQ(record.priority.aifsn(), category == AccessCategoryIndex::Voice ? 2 : 0);
    }
    EXPECT_EQ(element->recordOf(AccessCategoryIndex::Voice).window.max(), 7);
}

TEST(AirMuEdcaParameterSet, Has13Octets) {
    EXPECT_EQ(MuEdcaParameterSet::decode(Bytes(13))->encode(), Bytes(13));
    EXPECT_FALSE(MuEdcaParameterSet::decode(Bytes(12)));
    EXPECT_EQ(MuEdcaParameterSet{}.encode(), Bytes(13));
}

}  // namespace
