// The word that somebody meant, whatever its case is.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_OUTPUT_NEAR_WORD_H
#define TOOLS_HALVANE_OUTPUT_NEAR_WORD_H

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace halvane::tool {

// Returns the place of the word that `typed` was meant to be. Absent if none is near, or if several
// are equally near. Of words that differ in case alone the first counts.
std::optional<std::size_t> nearWord(std::string_view typed,
                                    std::span<const std::string_view> words);

}  // namespace halvane::tool

#endif
