#include "halvane/air/wmm.h"

#include <gtest/gtest.h>

#include "halvane/air/access_category.h"
#include "halvane/base/byte_buffer.h"

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// The usual parameters of a BSS, by the table of the WMM document: best effort 15/1023, AIFSN 3;
// voice 3/7, AIFSN 2, 47 * 32 us.
TEST(AirWmm, DecodesParameters) {
    const auto wmm = Wmm::decode(bytesOf("01 01 84 00 03A40000 27A40000 42435E00 62322F00 07"));
    ASSERT_TRUE(wmm && wmm->parameters);
    EXPECT_EQ(wmm->subtype(), WmmSubtype::Parameter);
    EXPECT_EQ(wmm->version, 1);
    EXPECT_EQ(wmm->parameterSetCount(), 4);
    EXPECT_TRUE(wmm->isUapsdSupported());
    const auto& records = wmm->parameters->records;
    EXPECT_EQ(records[0].priority.category(), AccessCategoryIndex::BestEffort);
    EXPECT_EQ(records[0].priority.aifsn(), 3);
    EXPECT_EQ(records[0].window.min(), 15);
    EXPECT_EQ(records[0].window.max(), 1023);
    EXPECT_EQ(records[1].priority.category(), AccessCategoryIndex::Background);
    EXPECT_EQ(records[2].txopLimit, 94);
    EXPECT_EQ(records[3].priority.category(), AccessCategoryIndex::Voice);
    EXPECT_EQ(records[3].priority.aifsn(), 2);
    EXPECT_FALSE(records[3].priority.isAdmissionMandatory());
    EXPECT_EQ(records[3].window.min(), 3);
    EXPECT_EQ(records[3].window.max(), 7);
    EXPECT_EQ(wmm->rest, ByteBuffer({7}));
    EXPECT_FALSE(Wmm::decode(bytesOf("01 01 84 00 03A40000 27A40000 42435E00 62322F")));
}

TEST(AirWmm, DecodesInformation) {
    const auto wmm = Wmm::decode(bytesOf("00 01 03"));
    ASSERT_TRUE(wmm);
    EXPECT_EQ(wmm->subtype(), WmmSubtype::Information);
    EXPECT_EQ(wmm->parameterSetCount(), 3);
    EXPECT_FALSE(wmm->isUapsdSupported() || wmm->parameters);
    EXPECT_FALSE(Wmm::decode(bytesOf("00 01")));
}

TEST(AirWmm, KeepsTheOctetsOfOtherSubtypes) {
    const auto wmm = Wmm::decode(bytesOf("02 01 AABB"));
    ASSERT_TRUE(wmm);
    EXPECT_FALSE(wmm->qosInfo || wmm->isUapsdSupported());
    EXPECT_EQ(wmm->rest, ByteBuffer({0xAA, 0xBB}));
}

}  // namespace
