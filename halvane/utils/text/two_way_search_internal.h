// The two-way search (Crochemore and Perrin, Journal of the ACM 38, 1991), with and without regard
// to case. It needs at most twice as many comparisons as the text has bytes.
#ifndef HALVANE_UTILS_TEXT_TWO_WAY_SEARCH_INTERNAL_H
#define HALVANE_UTILS_TEXT_TWO_WAY_SEARCH_INTERNAL_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "halvane/utils/text/ignore_case_internal.h"

namespace halvane {

// How a search compares bytes: unchanged, or as lower-case letters.
struct ExactBytes {
    static constexpr unsigned char at(std::string_view text, std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    }
    static bool equal(const char* a, const char* b, std::size_t size) {
        return std::memcmp(a, b, size) == 0;
    }
};

struct BytesIgnoringCase {
    static constexpr unsigned char at(std::string_view text, std::size_t index) {
        return static_cast<unsigned char>(lowerOf(text[index]));
    }
    static bool equal(const char* a, const char* b, std::size_t size) {
        return equalsIgnoringCase({a, size}, {b, size});
    }
};

// The start of a pattern's greatest suffix, and the period of that suffix.
struct MaximalSuffix {
    std::size_t start;
    std::size_t period;
};

// In the order of the bytes, or in the reverse order.
template <typename Bytes>
MaximalSuffix maximalSuffix(std::string_view pattern, bool reversed) {
    MaximalSuffix suffix = {0, 1};
    std::size_t candidate = 1;  // where a greater suffix may begin
    std::size_t matched = 0;    // bytes in common with the greatest one so far
    while (candidate + matched < pattern.size()) {
        const auto a = Bytes::at(pattern, candidate + matched);
        const auto b = Bytes::at(pattern, suffix.start + matched);
        if (a == b) {
            ++matched;
            if (matched == suffix.period) {
                candidate += matched;
                matched = 0;
            }
        } else if ((a < b) != reversed) {
            candidate += matched + 1;
            matched = 0;
            suffix.period = candidate - suffix.start;
        } else {
            suffix = {candidate, 1};
            ++candidate;
            matched = 0;
        }
    }
    return suffix;
}

template <typename Bytes>
class TwoWaySearch {
  public:
    explicit TwoWaySearch(std::string_view pattern) : pattern_(pattern) {
        const auto ascending = maximalSuffix<Bytes>(pattern, false);
        const auto descending = maximalSuffix<Bytes>(pattern, true);
        const auto critical = std::max(
            ascending, descending, [](const auto& a, const auto& b) { return a.start < b.start; });
        split_ = critical.start;
        period_ = critical.period;
        isPeriodic_ = split_ + period_ <= pattern.size() &&
                      Bytes::equal(pattern.data(), pattern.data() + period_, split_);
        // A pattern without a period cannot match again within its longer half.
        if (!isPeriodic_) period_ = std::max(split_, pattern.size() - split_) + 1;
    }

    std::size_t find(std::string_view text) const {
        std::size_t known = 0;  // bytes at the pattern's start that are known to match
        for (std::size_t position = 0; position + pattern_.size() <= text.size();) {
            const std::string_view window = text.substr(position, pattern_.size());
            const std::size_t right = matchRight(window, known);
            if (right < pattern_.size()) {
                position += right - split_ + 1;
                known = 0;
            } else if (matchesLeft(window, known)) {
                return position;
            } else {
                position += period_;
                known = isPeriodic_ ? pattern_.size() - period_ : 0;
            }
        }
        return std::string_view::npos;
    }

  private:
    // Returns the first index from the split on that differs.
    std::size_t matchRight(std::string_view window, std::size_t known) const {
        std::size_t index = std::max(split_, known);
        while (index < pattern_.size() && Bytes::at(window, index) == Bytes::at(pattern_, index)) {
            ++index;
        }
        return index;
    }

    bool matchesLeft(std::string_view window, std::size_t known) const {
        if (known >= split_) return true;
        return Bytes::equal(window.data() + known, pattern_.data() + known, split_ - known);
    }

    std::string_view pattern_;
    std::size_t split_;
    std::size_t period_;
    bool isPeriodic_;
};

}  // namespace halvane

#endif
