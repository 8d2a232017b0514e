#include "tools/halvane/output/screen.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace halvane::tool;

namespace {

TEST(Redrawn, WritesTheLinesThatDiffer) {
    EXPECT_EQ(redrawn({"a", "b", "c"}, {"a", "x", "c"}), "\x1B[?2026h\x1B[2;1Hx\x1B[K\x1B[?2026l");
    EXPECT_EQ(redrawn({"a", "b"}, {"a", ""}), "\x1B[?2026h\x1B[2;1H\x1B[K\x1B[?2026l");
}

TEST(Redrawn, WritesNothingIfNothingDiffers) {
    EXPECT_EQ(redrawn({"a", "b"}, {"a", "b"}), "");
    EXPECT_EQ(redrawn({}, {}), "");
}

TEST(Redrawn, WritesAllLinesOnAnotherScreen) {
    const std::string all = "\x1B[?2026h\x1B[H\x1B[2J\x1B[1;1Ha\x1B[K\x1B[2;1Hb\x1B[K\x1B[?2026l";
    EXPECT_EQ(redrawn({}, {"a", "b"}), all);
    EXPECT_EQ(redrawn({"a"}, {"a", "b"}), all);
    EXPECT_EQ(redrawn({"a", "b", "c"}, {"a", "b"}), all);
}

}  // namespace
