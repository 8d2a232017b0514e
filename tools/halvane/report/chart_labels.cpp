#include "tools/halvane/report/chart_labels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "halvane/base/utf8_internal.h"

#include "tools/halvane/output/unicode.h"
#include "tools/halvane/report/chart_scale.h"

namespace halvane::tool {

namespace {

constexpr double kLineHeight = 12.5;  // pixels between two baselines
constexpr double kMargin = 3;         // pixels between two names
constexpr double kAboveRoof = 5;      // pixels between baseline and roof
constexpr double kHighest = 34;       // the highest baseline
constexpr double kSteps[] = {12, 24, 36};
constexpr double kLeaderTo = 1;  // pixels above the roof
constexpr double kAscent = 9;    // pixels of a name above its baseline

// Widths of characters, pixels.
constexpr double kWide = 12.5;
constexpr double kBroad = 11;
constexpr double kCapital = 8.2;
constexpr double kSmall = 7.1;
constexpr double kNarrow = 4.2;
constexpr double kLigature = 30;  // characters that are whole words

double widthOfCharacter(char32_t character) {
    constexpr std::u32string_view kBroadLetters = U"MWmw@%";
    constexpr std::u32string_view kNarrowLetters = U"iIjlt.,:;|!'`()[]{}fr ";
    if (isCombining(character) || !isVisible(character)) return 0;
    if (character >= 0xFDF0 && character <= 0xFDFD) return kLigature;
    if (cellsOf(character, AmbiguousWidth::Two) > 1) return kWide;
    if (kBroadLetters.find(character) != kBroadLetters.npos) return kBroad;
    if (kNarrowLetters.find(character) != kNarrowLetters.npos) return kNarrow;
    const bool isSmall = character >= U'a' && character <= U'z';
    return isSmall || (character >= U'0' && character <= U'9') ? kSmall : kCapital;
}

// A place at one width of the picture, in pixels.
struct Box {
    double left, right, baseline;
    std::optional<double> leaderBottom{};  // a line down to here, below the middle

    double middle() const { return (left + right) / 2; }
    double top() const { return baseline - kAscent; }
};

bool leaderMeets(const Box& leader, const Box& box) {
    if (!leader.leaderBottom) return false;
    const bool isAcross =
        leader.middle() > box.left - kMargin && leader.middle() < box.right + kMargin;
    return isAcross && box.baseline > leader.baseline && box.top() < *leader.leaderBottom;
}

bool collide(const Box& one, const Box& other) {
    const bool isNear = std::abs(one.baseline - other.baseline) < kLineHeight &&
                        one.left < other.right + kMargin && other.left < one.right + kMargin;
    return isNear || leaderMeets(one, other) || leaderMeets(other, one);
}

// Places of a name, the best first.
std::vector<PlacedLabel> candidatesOf(const LabelWish& wish, double pictureWidth) {
    const double half = wish.width / 2 / pictureWidth * 100;
    const double middle = (wish.left + wish.right) / 2;
    const double y = wish.roof - kAboveRoof;
    std::vector<PlacedLabel> candidates = {
        {middle, y}, {wish.left + half, y}, {wish.right - half, y}};
    for (const double step : kSteps) candidates.push_back({middle, y - step, true});
    std::erase_if(candidates, [&](const PlacedLabel& place) {
        return place.y < kHighest || place.x - half < ChartScale::kLeft ||
               place.x + half > ChartScale::kRight;
    });
    return candidates;
}

class Placer {
  public:
    explicit Placer(std::span<const LabelWish> wishes) : wishes_(wishes), places_(wishes.size()) {}

    // Places the names that have none yet.
    void place(std::size_t level, double pictureWidth) {
        std::vector<Box> boxes;
        for (std::size_t i = 0; i < wishes_.size(); ++i) {
            if (places_[i]) boxes.push_back(boxOf(wishes_[i], *places_[i], pictureWidth));
        }
        for (std::size_t i = 0; i < wishes_.size(); ++i) {
            if (!places_[i]) placeOne(i, level, pictureWidth, boxes);
        }
    }

    std::vector<std::optional<PlacedLabel>> take() { return std::move(places_); }

  private:
    static Box boxOf(const LabelWish& wish, const PlacedLabel& place, double pictureWidth) {
        const double middle = place.x / 100 * pictureWidth;
        Box box{middle - wish.width / 2, middle + wish.width / 2, place.y};
        if (place.hasLeader) box.leaderBottom = wish.roof - kLeaderTo;
        return box;
    }

    void placeOne(std::size_t index, std::size_t level, double pictureWidth,
                  std::vector<Box>& boxes) {
        for (PlacedLabel candidate : candidatesOf(wishes_[index], pictureWidth)) {
            const Box box = boxOf(wishes_[index], candidate, pictureWidth);
            const auto meets = [&](const Box& other) { return collide(box, other); };
            if (std::ranges::any_of(boxes, meets)) continue;
            candidate.level = level;
            places_[index] = candidate;
            boxes.push_back(box);
            return;
        }
    }

    std::span<const LabelWish> wishes_;
    std::vector<std::optional<PlacedLabel>> places_;
};

}  // namespace

double textWidth(std::string_view text) {
    double width = 0;
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        width += character ? widthOfCharacter(character->codePoint) : kCapital;
        text.remove_prefix(character ? character->size : 1);
    }
    return width;
}

std::vector<std::optional<PlacedLabel>> placeLabels(std::span<const LabelWish> wishes,
                                                    const ChartWidths& widths) {
    Placer placer(wishes);
    for (std::size_t level = 0; level < widths.size(); ++level) placer.place(level, widths[level]);
    return placer.take();
}

}  // namespace halvane::tool
