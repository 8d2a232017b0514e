#include "tools/halvane/output/element_summary.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/element_range.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/output/element_list.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::rsnElement;
using halvane::testing::wpaElement;

namespace {

std::optional<ElementSummary> summaryOf(const Bytes& octets) {
    const ElementList list(octets);
    return elementSummary(list, *list.range().begin(), {});
}

std::string textOf(std::string_view hex) {
    const auto summary = summaryOf(bytesOf(hex));
    return summary ? summary->text : "none";
}

std::string headingOf(const Bytes& octets) {
    const ElementList list(octets);
    return elementHeading(*list.range().begin());
}

TEST(ElementSummary, SaysWhatTheFieldsMeanTogether) {
    EXPECT_EQ(textOf("0003636166"), "caf");
    EXPECT_EQ(textOf("0000"), "(hidden)");
    EXPECT_EQ(textOf("00031B5B6D"), "\\x1B[m");
    EXPECT_EQ(textOf("030106"), "channel 6");
}

TEST(ElementSummary, HasALineForEachFieldOfRSN) {
    const auto summary = summaryOf(rsnElement(2));
    ASSERT_TRUE(summary);
    EXPECT_GE(summary->lines.size(), 3u);
}

TEST(ElementSummary, IsAbsentForDamageAndForOctetsBehindTheFields) {
    EXPECT_EQ(textOf("0300"), "none");
    EXPECT_EQ(textOf("03020607"), "none");
    EXPECT_EQ(textOf("0B050100800000"), "none") << "BSS Load has none";
}

TEST(ElementSummary, HasTheNameThatPeopleUse) {
    EXPECT_EQ(headingOf(bytesOf("030106")), "DS Parameter Set");
    EXPECT_EQ(headingOf(wpaElement(2)), "Vendor 00-50-F2:1, WPA");
}

}  // namespace
