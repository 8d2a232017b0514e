#include "tools/halvane/output/format.h"

#include <gtest/gtest.h>

using namespace halvane::tool;

namespace {

TEST(Format, HasFourNames) {
    EXPECT_EQ(formatNamed("text"), Format::Text);
    EXPECT_EQ(formatNamed("json"), Format::JSON);
    EXPECT_EQ(formatNamed("jsonl"), Format::JSONLines);
    EXPECT_EQ(formatNamed("plist"), Format::PropertyList);
}

}  // namespace
