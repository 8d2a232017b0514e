#include "tools/halvane/output/text_table.h"

#include <cstdio>
#include <gtest/gtest.h>

#include "tests/support/captured_stream.h"

using namespace halvane::tool;
using halvane::testing::CapturedStream;

namespace {

using Rows = std::vector<std::vector<std::string>>;

// Returns the table that these rows make.
std::string textOf(TableLayout layout, const Rows& rows) {
    for (const auto& row : rows) layout.fit(row);
    std::string text = layout.titles();
    for (const auto& row : rows) text += layout.line(row);
    return text;
}

TEST(TableLayout, IsAsWideAsItsWidestCells) {
    TableLayout layout;
    layout.addColumn("Name", Align::Left);
    layout.addColumn("N", Align::Right);
    layout.addColumn("Rest", Align::Left);
    EXPECT_EQ(textOf(layout, {{"a", "1", "x"}, {"longer", "12345", ""}}),
              "Name        N  Rest\n"
              "a           1  x\n"
              "longer  12345  \n");
}

TEST(TableLayout, PadsALastColumnThatIsAlignedToTheRight) {
    TableLayout layout;
    layout.addColumn("Count", Align::Right);
    EXPECT_EQ(textOf(layout, {{"7"}}), "Count\n    7\n");
}

TEST(TableLayout, PadsNoLineForTheLongCellOfAnother) {
    TableLayout layout;
    layout.addColumn("Name", Align::Left);
    layout.addColumn("N", Align::Right);
    const std::string widest(kGreatestColumnWidth, 'w');
    const std::string longer(kGreatestColumnWidth + 1, 'l');
    EXPECT_EQ(textOf(layout, {{"a", "1"}, {longer, longer}, {"b", "22"}}),
              "Name   N\n"
              "a      1\n" +
                  longer + "  " + longer +
                  "\n"
                  "b     22\n");
    const std::string blanks(kGreatestColumnWidth - 4, ' ');
    EXPECT_EQ(textOf(layout, {{widest, "1"}}), "Name" + blanks + "  N\n" + widest + "  1\n");
}

TEST(TextTable, IsNoLongerThanItsCellsByMuch) {
    static constexpr Column<std::string> kColumns[] = {
        {"Name", Align::Left, [](const std::string& text) { return text; }},
        {"Length", Align::Right,
         [](const std::string& text) { return std::to_string(text.size()); }},
    };
    std::vector<std::string> records(5000, "x");
    records.emplace_back(100000, 'y');
    const CapturedStream output(stdout);
    printTable<std::string>(kColumns, records);
    EXPECT_LT(output.text().size(), 300000u);
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
