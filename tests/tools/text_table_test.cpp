#include "tools/halvane/text_table.h"

#include <gtest/gtest.h>

#include "tests/support/captured_stream.h"

using namespace halvane::tool;
using halvane::testing::CapturedStream;

namespace {

TEST(TextTable, IsAsWideAsItsWidestCells) {
    TextTable table;
    table.addColumn("Name", Align::Left);
    table.addColumn("N", Align::Right);
    table.addColumn("Rest", Align::Left);
    table.addRow({"a", "1", "x"});
    table.addRow({"longer", "12345", ""});
    EXPECT_EQ(table.text(),
              "Name        N  Rest\n"
              "a           1  x\n"
              "longer  12345  \n");
}

TEST(TextTable, PadsALastColumnThatIsAlignedToTheRight) {
    TextTable table;
    table.addColumn("Count", Align::Right);
    table.addRow({"7"});
    EXPECT_EQ(table.text(), "Count\n    7\n");
}

TEST(TextTable, HasItsTitlesWhereThereIsNoRecord) {
    static constexpr Column<int> kColumns[] = {
        {"Number", Align::Right, [](const int& number) { return std::to_string(number); }},
    };
    const CapturedStream output(stdout);
    printTable<int>(kColumns, {});
    printTable<int>(kColumns, {42});
    EXPECT_EQ(output.text(), "Number\nNumber\n    42\n");
}

}  // namespace
