#include "halvane/air/edca_parameter_set.h"

#include <gtest/gtest.h>

#include "halvane/air/access_category.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// The defaults of 9.4.2.28 for OFDM: AIFSN 3, 7, 2, 2; windows 15-1023 (4, 10), 7-15 (3, 4), 3-7
// (2, 3); TXOP limits of 3.008 ms (94) and 1.504 ms (47).
TEST(AirEdcaParameterSet, DecodesEveryField) {
    const auto element =
        EdcaParameterSet::decode(bytesOf("75 00 03A40000 27A40000 42435E00 72322F00"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->qosInfo.updateCount(), 5);
    EXPECT_TRUE(element->qosInfo.isQAckSupported());
    EXPECT_TRUE(element->qosInfo.isQueueRequestSupported());
    EXPECT_TRUE(element->qosInfo.isTxopRequestSupported());
    const auto& background = element->recordOf(AccessCategoryIndex::Background);
    EXPECT_EQ(background.priority.category(), AccessCategoryIndex::Background);
    EXPECT_EQ(background.priority.aifsn(), 7);
    EXPECT_EQ(background.window.min(), 15);
    EXPECT_EQ(background.window.max(), 1023);
    const auto& video = element->recordOf(AccessCategoryIndex::Video);
    EXPECT_EQ(video.priority.category(), AccessCategoryIndex::Video);
    EXPECT_EQ(video.window.min(), 7);
    EXPECT_EQ(video.window.max(), 15);
    EXPECT_EQ(video.txopLimit, 94);
    EXPECT_FALSE(video.priority.isAdmissionMandatory());
    const auto& voice = element->recordOf(AccessCategoryIndex::Voice);
    EXPECT_EQ(voice.priority.category(), AccessCategoryIndex::Voice);
    EXPECT_TRUE(voice.priority.isAdmissionMandatory());
    EXPECT_EQ(voice.window.min(), 3);
    EXPECT_EQ(voice.txopLimit, 47);
}

TEST(AirEdcaParameterSet, Has18Octets) {
    EXPECT_TRUE(EdcaParameterSet::decode(Bytes(18)));
    EXPECT_FALSE(EdcaParameterSet::decode(Bytes(17)));
}

TEST(AirEdcaParameterSet, IsEncodedFromItsFields) {
    EdcaParameterSet element;
    element.records[3].txopLimit = 0x0102;
    EXPECT_EQ(element.encode(), bytesOf("00 00 00000000 00000000 00000000 00000201"));
}

}  // namespace
