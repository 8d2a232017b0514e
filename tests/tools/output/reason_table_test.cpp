#include "tools/halvane/output/reason_table.h"

#include <gtest/gtest.h>

using namespace halvane::tool;

namespace {

const std::vector<ReasonRow> kRows = {
    {"Width",
     {TextPart::own("160 MHz"), TextPart::own("5170 to 5330", ", "),
      TextPart::own("centre 5250", ", ")},
     {TextPart::own("VHT Operation @259: width 1, CCFS0 42, CCFS1 50"),
      TextPart::own("|50 - 42| = 8: 160 MHz at 50")},
     Meaning::Header,
     true},
    {"", {TextPart::own("value")}, {}},
};

TEST(ReasonTable, HasThreeColumns) {
    EXPECT_EQ(reasonLines(kRows, {.width = 80}),
              "Width       160 MHz                VHT Operation @259: width 1, CCFS0 42, CCFS1\n"
              "            5170 to 5330           50; |50 - 42| = 8: 160 MHz at 50\n"
              "            centre 5250\n"
              "            value\n");
}

TEST(ReasonTable, HasWiderValuesFrom120ColumnsOn) {
    EXPECT_EQ(reasonLines(kRows, {.width = 120}),
              "Width       160 MHz, 5170 to 5330          VHT Operation @259: width 1, CCFS0 42, "
              "CCFS1 50; |50 - 42| = 8: 160 MHz at 50\n"
              "            centre 5250\n"
              "            value\n");
}

TEST(ReasonTable, PutsReasonsBelowValuesOnANarrowTerminal) {
    EXPECT_EQ(reasonLines(kRows, {.width = 40}),
              "Width       160 MHz, 5170 to 5330\n"
              "            centre 5250\n"
              "  VHT Operation @259: width 1, CCFS0 42,\n"
              "  CCFS1 50; |50 - 42| = 8: 160 MHz at 50\n"
              "            value\n");
}

TEST(ReasonTable, HangsTextBehindAHead) {
    EXPECT_EQ(hangingLines(ownText("note  ", {}), Meaning::Plain, {TextPart::own("one two three")},
                           Meaning::Plain, {.width = 14}),
              "note  one two\n"
              "      three\n");
}

}  // namespace
