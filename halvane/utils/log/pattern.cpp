// Matches the names of categories with the patterns of settings.
#include <cstddef>
#include <string_view>
#include <vector>

#include "halvane/utils/log/pattern_internal.h"

namespace halvane::logging {

namespace {

// One character of a pattern, with a '*' after it if there is one.
struct Element {
    char character;
    bool isRepeated;

    bool takes(char other) const { return character == '.' || character == other; }
};

class Pattern {
  public:
    explicit Pattern(std::string_view text) {
        isAnchoredAtStart_ = text.starts_with('^');
        if (isAnchoredAtStart_) text.remove_prefix(1);
        while (!text.empty()) {
            if (text == "$") {
                isAnchoredAtEnd_ = true;
                return;
            }
            const bool isRepeated = text.size() > 1 && text[1] == '*';
            elements_.push_back({text[0], isRepeated});
            text.remove_prefix(isRepeated ? 2 : 1);
        }
    }

    // Follows all ways through the pattern at once, so that no pattern is slow.
    bool matches(std::string_view name) const {
        Places places(elements_.size() + 1, false);
        places.front() = true;
        skipRepeated(places);
        for (const char character : name) {
            if (places.back() && !isAnchoredAtEnd_) return true;
            places = placesBehind(places, character);
        }
        return places.back();
    }

  private:
    // The elements that may come next. The last place stands for a match of the whole pattern.
    using Places = std::vector<bool>;

    // A repeated element may be absent.
    void skipRepeated(Places& places) const {
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (places[i] && elements_[i].isRepeated) places[i + 1] = true;
        }
    }

    Places placesBehind(const Places& places, char character) const {
        Places next(places.size(), false);
        next.front() = !isAnchoredAtStart_;
        for (std::size_t i = 0; i < elements_.size(); ++i) {
            if (places[i] && elements_[i].takes(character)) {
                next[elements_[i].isRepeated ? i : i + 1] = true;
            }
        }
        skipRepeated(next);
        return next;
    }

    bool isAnchoredAtStart_ = false;
    bool isAnchoredAtEnd_ = false;
    std::vector<Element> elements_;
};

}  // namespace

bool __LogCategory_match(std::string_view pattern, std::string_view name) {
    return Pattern(pattern).matches(name);
}

}  // namespace halvane::logging
