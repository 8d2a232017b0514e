#include "tools/halvane/output/damage_report.h"

#include <gtest/gtest.h>

namespace halvane::tool {

namespace {

TEST(DamageReport, CountsAllAndKeepsTheFirst) {
    DamageReport report;
    EXPECT_EQ(report.count, 0u);
    report.note(7, "one");
    report.note(3, "another");
    EXPECT_EQ(report.count, 2u);
    EXPECT_EQ(report.firstOctet, 7u);
    EXPECT_EQ(report.firstProblem, "one");
}

}  // namespace

}  // namespace halvane::tool
