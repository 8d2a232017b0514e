// Differences and sums of times that hostile captures tell. They stop at the ends of their type.
#ifndef TOOLS_HALVANE_SURVEY_SATURATED_H
#define TOOLS_HALVANE_SURVEY_SATURATED_H

#include <cstdint>
#include <limits>

namespace halvane::tool {

inline std::int64_t saturatedSum(std::int64_t left, std::int64_t right) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(left, right, &sum)) return sum;
    return right > 0 ? std::numeric_limits<std::int64_t>::max()
                     : std::numeric_limits<std::int64_t>::min();
}

inline std::int64_t saturatedDifference(std::int64_t left, std::int64_t right) {
    std::int64_t difference = 0;
    if (!__builtin_sub_overflow(left, right, &difference)) return difference;
    return right < 0 ? std::numeric_limits<std::int64_t>::max()
                     : std::numeric_limits<std::int64_t>::min();
}

}  // namespace halvane::tool

#endif
