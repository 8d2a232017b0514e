// The tables of what tshark and Halvane call each field, and of where they differ.
#ifndef TESTS_JUDGE_FIELD_TABLE_H
#define TESTS_JUDGE_FIELD_TABLE_H

#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace halvane::testing {

using TableRow = std::vector<std::string>;

inline TableRow cellsOf(const std::string& line) {
    std::istringstream cells(line);
    TableRow row;
    for (std::string cell; std::getline(cells, cell, '\t');) row.push_back(cell);
    return row;
}

// The rows of a table of text after its row of titles. Tabs part the cells.
inline std::vector<TableRow> readTable(const std::string& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("no table " + path);
    std::vector<TableRow> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) rows.push_back(cellsOf(line));
    return rows;
}

// The element's name and tshark's name of the field.
using FieldKey = std::pair<std::string, std::string>;

struct FieldTable {
    std::map<FieldKey, std::set<std::string>> paths;  // of the same field in Halvane
    // Fields that both tell in their own way, by what they are: a row of any element is under "*".
    std::map<FieldKey, std::string> forms;
    std::map<FieldKey, std::string> differences;  // "value", "name" or "alone"
    std::map<std::string, std::string> lost;      // tshark's field, and what it shows or "*"

    static FieldTable read(const std::string& folder) {
        FieldTable table;
        for (const TableRow& row : readTable(folder + "/tshark_fields.tsv")) {
            table.paths[{row.at(0), row.at(1)}].insert(row.at(2));
        }
        for (const TableRow& row : readTable(folder + "/tshark_forms.tsv")) {
            table.forms[{row.at(0), row.at(1)}] = row.at(2);
        }
        for (const TableRow& row : readTable(folder + "/tshark_differences.tsv")) {
            table.differences[{row.at(0), row.at(1)}] = row.at(2);
        }
        for (const TableRow& row : readTable(folder + "/tshark_lost.tsv")) {
            table.lost[row.at(0)] = row.at(1);
        }
        return table;
    }

    bool isForm(const std::string& element, const std::string& field) const {
        return forms.contains({element, field}) || forms.contains({"*", field});
    }
};

}  // namespace halvane::testing

#endif
