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
#include <type_traits>

#include "halvane/utils/text/substring_search_internal.h"
#include "halvane/utils/text/two_way_search_internal.h"

namespace halvane {

namespace {

using std::string_view;

// Pairs that compare equal have the same key. Ignoring case, some others have it too: the bit that
// marks a capital letter also differs between other characters.
template <typename Bytes>
constexpr std::uint16_t keyOf(std::uint16_t pair) {
    return std::is_same_v<Bytes, BytesIgnoringCase> ? pair | 0x2020 : pair;
}

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
        return (keyOf<Bytes>(both) * kSpread & 0xFFFF) >> (16 - kHashBits);
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
    return find<ExactBytes>(text, pattern);
}

std::size_t findIgnoringCase(string_view text, string_view pattern) {
    return find<BytesIgnoringCase>(text, pattern);
}

}  // namespace halvane
