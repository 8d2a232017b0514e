#include "tools/halvane/output/finding_text.h"

#include <gtest/gtest.h>

#include "halvane/air/finding.h"

#include "tools/halvane/output/theme.h"

using namespace halvane;
using namespace halvane::tool;

namespace {

TEST(FindingText, HasTheColourOfItsSeverity) {
    EXPECT_EQ(meaningOf(air::Severity::Error), Meaning::Danger);
    EXPECT_EQ(meaningOf(air::Severity::Warning), Meaning::Caution);
    EXPECT_EQ(meaningOf(air::Severity::Note), Meaning::Plain);
}

TEST(FindingText, RefersToAClauseOrToADocument) {
    EXPECT_EQ(findingReference(air::findingInfo(air::FindingKind::LoadHigh)),
              "load-high, clause 9.4.2.27");
    EXPECT_EQ(findingReference(air::findingInfo(air::FindingKind::WpsOn)),
              "wps-on, Wi-Fi Simple Configuration 2.0");
}

}  // namespace
