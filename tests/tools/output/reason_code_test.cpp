#include "tools/halvane/output/reason_code.h"

#include <gtest/gtest.h>

using halvane::tool::reasonText;

namespace {

TEST(ReasonCode, HasItsWords) {
    EXPECT_EQ(reasonText(5, true), "5 AP is full");
    EXPECT_EQ(reasonText(5, false),
              "5 Disassociated because AP is unable to handle all currently associated STAs");
    EXPECT_EQ(reasonText(4, false), "4 Disassociated due to inactivity");
    EXPECT_EQ(reasonText(15, true), "15 4-way handshake timeout");
    EXPECT_EQ(reasonText(39, true), "39 timeout");
}

TEST(ReasonCode, IsANumberWithoutWords) {
    for (const bool isBrief : {true, false}) {
        EXPECT_EQ(reasonText(0, isBrief), "0");
        EXPECT_EQ(reasonText(65535, isBrief), "65535");
    }
}

}  // namespace
