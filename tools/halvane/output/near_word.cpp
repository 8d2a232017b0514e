#include "tools/halvane/output/near_word.h"

#include <algorithm>
#include <string>
#include <vector>

#include "halvane/base/similar_word_internal.h"

#include "tools/halvane/output/folded_case.h"

namespace halvane::tool {

std::optional<std::size_t> nearWord(std::string_view typed,
                                    std::span<const std::string_view> words) {
    std::vector<std::string> folded;
    folded.reserve(words.size());
    for (const std::string_view word : words) folded.push_back(foldedCase(word));
    const std::string meant = foldedCase(typed);
    const auto found = similarWord(meant, folded);
    if (!found) return std::nullopt;
    return static_cast<std::size_t>(std::ranges::find(folded, *found) - folded.begin());
}

}  // namespace halvane::tool
