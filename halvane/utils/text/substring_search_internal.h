// The first place of one text in another, in linear time.
#ifndef HALVANE_UTILS_TEXT_SUBSTRING_SEARCH_INTERNAL_H
#define HALVANE_UTILS_TEXT_SUBSTRING_SEARCH_INTERNAL_H

#include <cstddef>
#include <string_view>

namespace halvane {

// The first position of `pattern` in `text`, 0 for an empty one; npos where there is none.
std::size_t findBytes(std::string_view text, std::string_view pattern);

// The same, with the letters A-Z taken for a-z.
std::size_t findIgnoringCase(std::string_view text, std::string_view pattern);

// The slower search that both fall back to where the text defeats the faster one, for tests.
std::size_t findBytesTwoWay(std::string_view text, std::string_view pattern);
std::size_t findIgnoringCaseTwoWay(std::string_view text, std::string_view pattern);

}  // namespace halvane

#endif
