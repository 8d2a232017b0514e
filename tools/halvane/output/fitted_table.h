// Tables that fit the terminal: a line of headers, then one line a row, with one blank between the
// columns.
//
// For one thread.
#ifndef TOOLS_HALVANE_OUTPUT_FITTED_TABLE_H
#define TOOLS_HALVANE_OUTPUT_FITTED_TABLE_H

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/text_table.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

inline constexpr std::size_t kAnyWidth = std::numeric_limits<std::size_t>::max();

struct FittedColumn {
    const char* name;    // for options
    const char* header;  // ASCII
    Align align;
    std::size_t least;              // cells, if nothing else is narrower
    std::size_t most;               // cells; kAnyWidth: never cut
    std::size_t from = 0;           // stands where the table is at least as wide as this
    std::size_t below = kAnyWidth;  // and narrower than this
    bool isLeftOutUntold = false;   // does not stand if each cell is empty or "-"
    bool isJoinedToNext = false;    // no blank after it
};

// How a table that is too wide becomes narrower.
struct Squeeze {
    const char* column;    // by name
    std::size_t least;     // cells
    std::size_t from = 0;  // only where the table is at least as wide as this
};

struct TableDesign {
    std::span<const FittedColumn> columns;
    std::span<const Squeeze> squeezes;  // each takes what it can before the next one
};

struct FittedCell {
    ShownText text;
    Meaning meaning = Meaning::Plain;
};

class FittedTable {
  public:
    // Without a width all columns stand that have no end (`below`), and nothing is cut.
    // REQUIRES: `design` outlives the table.
    FittedTable(const TableDesign& design, std::optional<std::size_t> width);

    // The columns that stand by the width, as indexes into the design. Each row has a cell for each
    // of these, in this order, whether the column is left out or not.
    const std::vector<std::size_t>& standing() const { return standing_; }

    // Makes room for a row.
    void fit(std::span<const FittedCell> row);

    // Decides about the widths. Call it after the last fit().
    void settle();

    // Lines with a newline and without blanks at their end. `mark` stands where a text is cut.
    // REQUIRES: settle() was called.
    std::string header(const Theme& theme) const;
    std::string line(std::span<const FittedCell> row, const Theme& theme,
                     const ShownText& mark) const;

    // The cells of a column, which is one of standing(); 0 if it is left out. And where it begins
    // on the line, from 0.
    std::size_t cellsOf(std::size_t standing) const { return places_[standing].cells; }
    std::size_t beginOf(std::size_t standing) const { return places_[standing].begin; }

    // Whether the header has to follow the last row too: the first has scrolled away.
    static bool repeatsHeader(std::size_t rows, std::optional<std::size_t> terminalLines);

  private:
    struct Place {
        std::size_t cells = 0;
        std::size_t begin = 0;
        bool isTold = false;
        bool isLeftOut = false;
    };

    const FittedColumn& columnOf(std::size_t standing) const {
        return design_.columns[standing_[standing]];
    }
    std::size_t lineCells() const;
    void leaveOutUntold();
    void squeeze();
    void placeColumns();
    std::size_t lastOf(std::span<const FittedCell> row) const;

    TableDesign design_;
    std::optional<std::size_t> width_;
    std::vector<std::size_t> standing_;
    std::vector<Place> places_;  // as `standing_`
};

}  // namespace halvane::tool

#endif
