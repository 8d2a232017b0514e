// docs/air.md states the library's tables as they are. HALVANE_UPDATE_GOLDEN=1 in the environment
// writes the table of findings anew.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_info.h"
#include "halvane/air/finding.h"
#include "halvane/air/rule.h"

using namespace halvane::air;

namespace {

constexpr const char* kPath = HALVANE_DOCS "/air.md";

using Lines = std::vector<std::string>;

Lines documentLines() {
    std::ifstream file(kPath);
    Lines lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    EXPECT_FALSE(lines.empty()) << kPath;
    return lines;
}

struct Range {
    Lines::iterator begin;
    Lines::iterator end;
};

// The rows below the titles of the only table that begins with `titles`.
Range tableIn(Lines& lines, std::string_view titles) {
    const auto isRow = [](const std::string& line) { return line.starts_with('|'); };
    const auto head = std::ranges::find_if(
        lines, [&](const std::string& line) { return line.starts_with(titles); });
    EXPECT_NE(head, lines.end()) << titles;
    if (lines.end() - head < 2) return {lines.end(), lines.end()};
    return {head + 2, std::find_if_not(head + 2, lines.end(), isRow)};
}

std::vector<std::string> cellsOf(const std::string& row) {
    std::vector<std::string> cells;
    std::istringstream stream(row);
    std::string cell;
    std::getline(stream, cell, '|');
    while (std::getline(stream, cell, '|')) {
        const auto first = cell.find_first_not_of(' ');
        const auto last = cell.find_last_not_of(' ');
        cells.push_back(first == std::string::npos ? "" : cell.substr(first, last - first + 1));
    }
    return cells;
}

Lines findingRows() {
    Lines rows;
    for (const FindingInfo& info : findingInfos()) {
        std::ostringstream row;
        row << "| `" << info.id << "` | " << severityName(info.severity) << " | " << info.sentence
            << " | " << info.clause << " |";
        rows.push_back(row.str());
    }
    return rows;
}

TEST(AirDocumentation, ListsEveryFinding) {
    constexpr std::string_view kTitles = "| Identifier | Severity |";
    const Lines expected = findingRows();
    Lines lines = documentLines();
    auto table = tableIn(lines, kTitles);
    if (std::getenv("HALVANE_UPDATE_GOLDEN") != nullptr) {
        const auto place = lines.erase(table.begin, table.end);
        lines.insert(place, expected.begin(), expected.end());
        std::ofstream file(kPath, std::ios::binary);
        for (const std::string& line : lines) file << line << '\n';
        table = tableIn(lines, kTitles);
    }
    EXPECT_EQ(Lines(table.begin, table.end), expected);
}

TEST(AirDocumentation, ListsEveryRule) {
    Lines lines = documentLines();
    const auto table = tableIn(lines, "| Rule | Sentence |");
    std::vector<Lines> written;
    for (auto row = table.begin; row != table.end; ++row) {
        const auto cells = cellsOf(*row);
        ASSERT_EQ(cells.size(), 3u) << *row;
        written.push_back({cells[1], cells[2]});
    }
    std::vector<Lines> expected;
    for (int i = 0; i <= static_cast<int>(Rule::FrameCut); ++i) {
        const RuleInfo& info = ruleInfo(static_cast<Rule>(i));
        expected.push_back({std::string(info.sentence), std::string(info.clause)});
    }
    EXPECT_EQ(written, expected);
}

// The rows of elements in the document: the clause of each name.
std::map<std::string, std::string> writtenElements() {
    Lines lines = documentLines();
    const auto table = tableIn(lines, "| Element | Clause |");
    std::map<std::string, std::string> clauses;
    for (auto row = table.begin; row != table.end; ++row) {
        const auto cells = cellsOf(*row);
        EXPECT_EQ(cells.size(), 4u) << *row;
        if (cells.size() != 4) continue;
        EXPECT_TRUE(clauses.emplace(cells[0], cells[1]).second) << cells[0] << " stands twice";
    }
    return clauses;
}

TEST(AirDocumentation, ListsEveryDecodedElement) {
    auto written = writtenElements();
    // The ID 68 is that of another element too, and the ID 133 one vendor's.
    EXPECT_EQ(written.erase("WAPI"), 1u);
    for (const ElementInfo& info : elementInfos()) {
        const std::string name(info.name);
        if (info.decoder.describe == nullptr || name == "CCX Device Name") continue;
        EXPECT_TRUE(written.contains(name)) << name << " is missing";
        if (!info.clause.empty()) {
            EXPECT_EQ(written[name], info.clause) << name;
        }
        written.erase(name);
    }
    for (const auto& [name, clause] : written) ADD_FAILURE() << name << " is not decoded";
}

TEST(AirDocumentation, ListsEveryDecodedVendorElement) {
    Lines lines = documentLines();
    const auto table = tableIn(lines, "| OUI, type | Element |");
    std::string names;
    for (auto row = table.begin; row != table.end; ++row) names += cellsOf(*row).at(1) + ", ";
    for (const VendorElementInfo& info : vendorElementInfos()) {
        if (info.decoder.describe == nullptr) continue;
        EXPECT_NE(names.find(std::string(info.name) + ", "), std::string::npos) << info.name;
    }
}

}  // namespace
