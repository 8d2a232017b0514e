#include "tools/halvane/options/format_option.h"

#include <gtest/gtest.h>
#include <string>

using namespace halvane::tool;

namespace {

TEST(Format, IsTextUnlessTyped) {
    EXPECT_EQ(*takeFormat(), Format::Text);
}

TEST(Format, IsForgottenOnceTaken) {
    gTypedFormat = "plist";
    EXPECT_EQ(*takeFormat(), Format::PropertyList);
    EXPECT_EQ(*takeFormat(), Format::Text);
}

TEST(Format, IsRefusedUnderAnyOtherName) {
    for (const char* name : {"", "JSON", "jsonl ", "xml"}) {
        gTypedFormat = name;
        const auto format = takeFormat();
        ASSERT_FALSE(format) << name;
        EXPECT_EQ(format.error().message,
                  "--format: '" + std::string(name) + "' is not text, json, jsonl or plist");
    }
    EXPECT_EQ(*takeFormat(), Format::Text) << "forgotten although refused";
}

}  // namespace
