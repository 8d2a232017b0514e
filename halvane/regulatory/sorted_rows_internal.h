// Finds the rows of a constant table that belong together.
#ifndef HALVANE_REGULATORY_SORTED_ROWS_INTERNAL_H
#define HALVANE_REGULATORY_SORTED_ROWS_INTERNAL_H

#include <algorithm>
#include <cstddef>
#include <span>

namespace halvane {

// Returns the rows whose `column` is `key`. (clang 14 cannot compile the result of
// std::ranges::equal_range, hence two searches.)
// REQUIRES: the table is sorted by that column.
template <typename Row, std::size_t count, typename Key>
constexpr std::span<const Row> rowsOf(const Row (&table)[count], Key Row::*column, Key key) {
    return std::span(std::ranges::lower_bound(table, key, {}, column),
                     std::ranges::upper_bound(table, key, {}, column));
}

}  // namespace halvane

#endif
