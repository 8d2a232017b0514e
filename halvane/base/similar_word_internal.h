// Finds the word that a mistyped one was meant to be.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_BASE_SIMILAR_WORD_INTERNAL_H
#define HALVANE_BASE_SIMILAR_WORD_INTERNAL_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace halvane {

// Longer words are compared with nothing, so that the work for any text is bounded.
inline constexpr std::size_t kLongestSimilarWord = 63;

// The number of letters to add, drop, replace, or swap with their neighbour that make `b` of `a`;
// a swapped letter is not changed again. The case of ASCII letters counts.
// REQUIRES: both are of at most kLongestSimilarWord octets.
constexpr std::size_t typingDistance(std::string_view a, std::string_view b) {
    using Row = std::array<std::size_t, kLongestSimilarWord + 1>;
    Row rows[3] = {};
    Row* before = &rows[0];  // of the letter before the one above
    Row* above = &rows[1];
    Row* row = &rows[2];
    for (std::size_t j = 0; j <= b.size(); ++j) (*row)[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        Row* const oldest = before;
        before = above;
        above = row;
        row = oldest;
        (*row)[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = (*above)[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            std::size_t least = std::min({replaced, (*above)[j] + 1, (*row)[j - 1] + 1});
            const bool isSwapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (isSwapped) least = std::min(least, (*before)[j - 2] + 1);
            (*row)[j] = least;
        }
    }
    return (*row)[b.size()];
}

// Collects the words that there are, and chooses the one that was meant.
class SimilarWord {
  public:
    // REQUIRES: `typed` and each offered word outlive this object.
    constexpr explicit SimilarWord(std::string_view typed)
        : typed_(typed), least_(std::max<std::size_t>(1, typed.size() / 3) + 1) {}

    constexpr void offer(std::string_view word) {
        const bool isShort = typed_.size() <= kLongestSimilarWord;
        if (!isShort || typed_.empty() || word.size() > kLongestSimilarWord) return;
        if (word.starts_with(typed_)) extension_.take(word);
        const std::size_t distance = typingDistance(typed_, word);
        // A word of which nothing is left was not meant.
        if (distance > least_ || distance >= std::max(typed_.size(), word.size())) return;
        if (distance < least_) near_ = nearAndAlike_ = Choice();
        least_ = distance;
        if (distance >= limit()) return;
        near_.take(word);
        if (word.front() == typed_.front()) nearAndAlike_.take(word);
    }

    // The nearest word, of several the one with the same first letter; otherwise the one that the
    // typed text begins. Absent if none is near, or if several are equally good.
    constexpr std::optional<std::string_view> found() const {
        if (near_.count == 1) return near_.only();
        if (near_.count > 1) return nearAndAlike_.only();
        return extension_.only();
    }

  private:
    struct Choice {
        std::string_view word{};
        std::size_t count = 0;

        constexpr void take(std::string_view taken) {
            if (count > 0 && word == taken) return;
            word = taken;
            ++count;
        }
        constexpr std::optional<std::string_view> only() const {
            return count == 1 ? std::optional(word) : std::nullopt;
        }
    };

    constexpr std::size_t limit() const { return std::max<std::size_t>(1, typed_.size() / 3) + 1; }

    std::string_view typed_;
    std::size_t least_;  // distance so far; at first beyond what counts as near
    Choice near_;
    Choice nearAndAlike_;  // those of them with the first letter of the typed text
    Choice extension_;
};

// The word of `words` that `typed` was meant to be.
template <typename Words>
constexpr std::optional<std::string_view> similarWord(std::string_view typed, const Words& words) {
    SimilarWord similar(typed);
    for (const auto& word : words) similar.offer(word);
    return similar.found();
}

}  // namespace halvane

#endif
