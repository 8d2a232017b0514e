#include "tools/halvane/output/wrapped_text.h"

#include <string>
#include <utility>

namespace halvane::tool {

namespace {

std::size_t cellsOf(const TextPart& part) {
    std::size_t cells = part.words.empty() ? 0 : part.words.size() - 1;
    for (const ShownText& word : part.words) cells += word.cells();
    return cells;
}

class Wrapper {
  public:
    explicit Wrapper(std::size_t width) : width_(width) {}

    void add(const TextPart& part) {
        if (!line_.isEmpty()) {
            const std::size_t cells = line_.cells() + part.joiner.size() + cellsOf(part);
            if (part.beginsLine || cells > width_) {
                endLine();
            } else {
                line_.append(ownText(part.joiner, {}));
            }
        }
        bool isFirst = true;
        for (const ShownText& word : part.words) addWord(word, std::exchange(isFirst, false));
    }

    std::vector<ShownText> lines() {
        if (!line_.isEmpty()) endLine();
        return std::move(lines_);
    }

  private:
    void endLine() {
        line_.dropTrailingBlanks();
        lines_.push_back(std::exchange(line_, {}));
    }

    void addWord(const ShownText& word, bool isFirst) {
        if (!isFirst && !line_.isEmpty()) {
            if (line_.cells() + 1 + word.cells() > width_) {
                endLine();
            } else {
                line_.append(ownText(" ", {}));
            }
        }
        if (line_.cells() + word.cells() <= width_) return line_.append(word);
        addUnits(word);
    }

    void addUnits(const ShownText& word) {
        std::string_view rest = word.octets();
        for (const TextUnit& unit : word.units()) {
            if (!line_.isEmpty() && line_.cells() + unit.cells > width_) endLine();
            line_.append(rest.substr(0, unit.size), unit);
            rest.remove_prefix(unit.size);
        }
    }

    std::size_t width_;
    ShownText line_;
    std::vector<ShownText> lines_;
};

}  // namespace

TextPart TextPart::own(std::string_view text, std::string_view joiner) {
    TextPart part{.joiner = joiner};
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        if (!word.empty()) part.words.push_back(ownText(word, {}));
        text.remove_prefix(word.size() < text.size() ? word.size() + 1 : word.size());
    }
    return part;
}

TextPart TextPart::foreign(ShownText text, std::string_view joiner) {
    TextPart part{.joiner = joiner};
    part.words.push_back(std::move(text));
    return part;
}

std::vector<ShownText> wrapped(const std::vector<TextPart>& parts, std::size_t width) {
    Wrapper wrapper(width);
    for (const TextPart& part : parts) wrapper.add(part);
    return wrapper.lines();
}

}  // namespace halvane::tool
