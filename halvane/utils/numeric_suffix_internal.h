// The next numeric suffix, with chance from elsewhere.
#ifndef HALVANE_UTILS_NUMERIC_SUFFIX_INTERNAL_H
#define HALVANE_UTILS_NUMERIC_SUFFIX_INTERNAL_H

#include <cstdint>

namespace halvane {

// The number behind `number`, from `threshold` on with the low 7 bits of what `random` answers.
std::uint64_t nextSuffixNumber(std::uint64_t number, std::uint64_t threshold,
                               std::uint32_t (*random)());

}  // namespace halvane

#endif
