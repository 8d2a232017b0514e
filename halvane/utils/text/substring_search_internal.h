// Finds the first occurrence of one text in another, in linear time.
#ifndef HALVANE_UTILS_TEXT_SUBSTRING_SEARCH_INTERNAL_H
#define HALVANE_UTILS_TEXT_SUBSTRING_SEARCH_INTERNAL_H

#include <cstddef>
#include <string_view>

namespace halvane {

// Returns the first position of `pattern` in `text`, 0 for an empty one; npos if there is none.
std::size_t findBytes(std::string_view text, std::string_view pattern);

// The same, treating the letters A-Z as a-z.
std::size_t findIgnoringCase(std::string_view text, std::string_view pattern);

}  // namespace halvane

#endif
