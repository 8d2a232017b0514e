// Two searches, each for patterns with and without regard to case.
//
// The skipping search is that of Boyer and Moore (Communications of the ACM 20, 1977) with
// Horspool's simplification, over pairs of bytes: the last two bytes of the window determine how
// far it can move. It reads few bytes of most texts, but compares many bytes repeatedly if pattern
// and text are repetitive. It counts these comparisons. When they exceed their proportion to the
// text, the two-way search takes over, which needs at most twice as many comparisons as the text
// has bytes.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "halvane/utils/text/ignore_case_internal.h"
#include "halvane/utils/text/substring_search_internal.h"

namespace halvane {

namespace {

using std::string_view;

// How bytes are compared: unchanged, or as lower-case letters. Pairs that compare equal have the
// same key.
struct Exact {
    static constexpr std::uint16_t keyOf(std::uint16_t pair) { return pair; }
    static constexpr unsigned char at(string_view text, std::size_t index) {
        return static_cast<unsigned char>(text[index]);
    }
    static bool equal(const char* a, const char* b, std::size_t size) {
        return std::memcmp(a, b, size) == 0;
    }
};

struct IgnoringCase {
    // The bit that marks a capital letter also differs between other characters, so some pairs have
    // the same key without being equal.
    static constexpr std::uint16_t keyOf(std::uint16_t pair) { return pair | 0x2020; }
    static constexpr unsigned char at(string_view text, std::size_t index) {
        return static_cast<unsigned char>(lowerOf(text[index]));
    }
    static bool equal(const char* a, const char* b, std::size_t size) {
        return equalsIgnoringCase({a, size}, {b, size});
    }
};

// --- Two-way search (Crochemore and Perrin, Journal of the ACM 38, 1991) ---

// The start of a pattern's greatest suffix, and the period of that suffix.
struct MaximalSuffix {
    std::size_t start;
    std::size_t period;
};

// In the order of the bytes, or in the reverse order.
template <typename Bytes>
MaximalSuffix maximalSuffix(string_view pattern, bool reversed) {
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
    explicit TwoWaySearch(string_view pattern) : pattern_(pattern) {
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

    std::size_t find(string_view text) const {
        std::size_t known = 0;  // bytes at the pattern's start that are known to match
        for (std::size_t position = 0; position + pattern_.size() <= text.size();) {
            const string_view window = text.substr(position, pattern_.size());
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
        return string_view::npos;
    }

  private:
    // Returns the first index from the split on that differs.
    std::size_t matchRight(string_view window, std::size_t known) const {
        std::size_t index = std::max(split_, known);
        while (index < pattern_.size() && Bytes::at(window, index) == Bytes::at(pattern_, index)) {
            ++index;
        }
        return index;
    }

    bool matchesLeft(string_view window, std::size_t known) const {
        if (known >= split_) return true;
        return Bytes::equal(window.data() + known, pattern_.data() + known, split_ - known);
    }

    string_view pattern_;
    std::size_t split_;
    std::size_t period_;
    bool isPeriodic_;
};

// --- Skipping search ---

// Limits the cost of failed windows: at most this many bytes may be compared in vain for each byte
// that the search has passed.
constexpr std::size_t kPatience = 4;

template <typename Bytes>
class SkippingSearch {
  public:
    // REQUIRES: the pattern has at least two bytes.
    explicit SkippingSearch(string_view pattern)
        : pattern_(pattern), last_(pattern.size() - 2), stride_(std::min(last_ + 1, kReach)) {
        for (std::size_t i = last_ - (stride_ - 1); i < last_; ++i) {
            distances_[hashAt(pattern.data() + i)] = static_cast<std::uint8_t>(last_ - i + 1);
        }
        std::uint8_t& entry = distances_[hashAt(pattern.data() + last_)];
        repeat_ = entry != 0 ? entry - std::size_t{1} : stride_;
        entry = 1;
    }

    // Returns the position, or npos. If it returns kGaveUp, the search must continue at `position`.
    // REQUIRES: the text is not shorter than the pattern.
    static constexpr std::size_t kGaveUp = string_view::npos - 1;
    std::size_t find(string_view text, std::size_t& position) const {
        const std::size_t end = text.size() - pattern_.size();
        const char* const lastPair = text.data() + last_;  // of the window at position 0
        std::size_t compared = 0;
        for (position = firstMet(lastPair, 0, end); position <= end;
             position = firstMet(lastPair, position, end)) {
            if (const std::size_t distance = distances_[hashAt(lastPair + position)] - 1u;
                distance > 0) {
                position += distance;
                continue;
            }
            if (Bytes::at(text, position) == Bytes::at(pattern_, 0)) {
                if (Bytes::equal(text.data() + position, pattern_.data(), pattern_.size())) {
                    return position;
                }
                compared += pattern_.size();
                if (compared / kPatience > position + pattern_.size()) return kGaveUp;
            }
            position += repeat_;
        }
        return string_view::npos;
    }

  private:
    // The greatest distance that an entry holds. Longer patterns are moved by less than possible.
    static constexpr std::size_t kReach = 254;

    // With a quarter of these entries, too many pairs of the text would share an entry with pairs
    // of the pattern. More entries would take longer to clear than a short search lasts.
    static constexpr unsigned kHashBits = 10;

    static std::size_t hashAt(const char* pair) {
        constexpr std::uint32_t kSpread = 0x6A4D;  // odd, with bits spread over the word
        std::uint16_t both;
        std::memcpy(&both, pair, sizeof(both));
        return (Bytes::keyOf(both) * kSpread & 0xFFFF) >> (16 - kHashBits);
    }

    // Returns the first window from `position` on, in steps of the stride, whose last pair may be
    // in the pattern. The next position to check does not depend on a result, so the processor can
    // read ahead.
    std::size_t firstMet(const char* lastPair, std::size_t position, std::size_t end) const {
        while (position <= end && distances_[hashAt(lastPair + position)] == 0) {
            position += stride_;
        }
        return position;
    }

    string_view pattern_;
    std::size_t last_;    // where the last pair of the pattern begins
    std::size_t stride_;  // how far a pair that is not in the pattern lets it move
    // Indexed by the hash of a pair: 1 plus its distance from the last pair of the pattern; 0 if it
    // is not there.
    std::array<std::uint8_t, 1 << kHashBits> distances_{};
    std::size_t repeat_;  // how far the last pair lets the pattern move
};

template <typename Bytes>
std::size_t findByte(string_view text, char pattern) {
    const auto place = std::ranges::find_if(text, [pattern](const char& byte) {
        return Bytes::at({&byte, 1}, 0) == Bytes::at({&pattern, 1}, 0);
    });
    return place == text.end() ? string_view::npos : static_cast<std::size_t>(place - text.begin());
}

template <typename Bytes>
std::size_t find(string_view text, string_view pattern) {
    if (pattern.empty()) return 0;
    if (pattern.size() > text.size()) return string_view::npos;
    if (pattern.size() == 1) return findByte<Bytes>(text, pattern.front());
    std::size_t position = 0;
    const std::size_t found = SkippingSearch<Bytes>(pattern).find(text, position);
    if (found != SkippingSearch<Bytes>::kGaveUp) return found;
    const std::size_t later = TwoWaySearch<Bytes>(pattern).find(text.substr(position));
    return later == string_view::npos ? later : position + later;
}

}  // namespace

std::size_t findBytes(string_view text, string_view pattern) {
    if (pattern.size() == 1) return text.find(pattern.front());
    return find<Exact>(text, pattern);
}

std::size_t findIgnoringCase(string_view text, string_view pattern) {
    return find<IgnoringCase>(text, pattern);
}

std::size_t findBytesTwoWay(string_view text, string_view pattern) {
    return TwoWaySearch<Exact>(pattern).find(text);
}

std::size_t findIgnoringCaseTwoWay(string_view text, string_view pattern) {
    return TwoWaySearch<IgnoringCase>(pattern).find(text);
}

}  // namespace halvane
