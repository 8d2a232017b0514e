#include "tools/halvane/output/shown_text.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/utf8_internal.h"

namespace halvane::tool {

namespace {

// A character of received octets. Absent: an octet that begins no character.
struct Character {
    std::optional<char32_t> code;
    std::string_view octets;

    bool is(bool (*property)(char32_t)) const { return code && property(*code); }
};

std::vector<Character> charactersOf(std::string_view octets) {
    std::vector<Character> characters;
    while (!octets.empty()) {
        const auto first = firstUtf8Character(octets);
        const std::string_view own = octets.substr(0, first ? first->size : 1);
        characters.push_back({first ? std::optional(first->codePoint) : std::nullopt, own});
        octets.remove_prefix(own.size());
    }
    return characters;
}

bool isKeycapBase(char32_t character) {
    return character == '#' || character == '*' || (character >= '0' && character <= '9');
}

// The characters around one of them. What lies outside has no code.
class Neighbours {
  public:
    Neighbours(const std::vector<Character>& all, std::size_t index) : all_(all), index_(index) {}

    const Character& own() const { return all_[index_]; }
    Character before(std::size_t distance = 1) const {
        return distance > index_ ? Character{} : all_[index_ - distance];
    }
    Character after() const { return index_ + 1 < all_.size() ? all_[index_ + 1] : Character{}; }

  private:
    const std::vector<Character>& all_;
    std::size_t index_;
};

// Whether U+FE0F shows the symbol before it as an emoji, or is part of a keycap.
bool isPresentation(const Neighbours& at) {
    return at.before().is(isPictograph) ||
           (at.before().is(isKeycapBase) && at.after().code == kEnclosingKeycap);
}

// Whether U+200D joins two emoji to one.
bool isEmojiJoiner(const Neighbours& at) {
    const bool isAfterEmoji =
        at.before().is(isPictograph) || at.before().is(isEmojiModifier) ||
        (at.before().code == kEmojiPresentation && at.before(2).is(isPictograph));
    return isAfterEmoji && at.after().is(isPictograph) && at.after().is(isVisible);
}

bool isPartOfEmoji(const Neighbours& at) {
    if (at.own().code == kEmojiPresentation) return isPresentation(at);
    return at.own().code == kZeroWidthJoiner && isEmojiJoiner(at);
}

bool isUnsteady(char32_t character) {
    return character == kEmojiPresentation || character == kZeroWidthJoiner ||
           character == kEnclosingKeycap || isEmojiModifier(character) ||
           isRegionalIndicator(character);
}

std::string escapeOf(const Character& character) {
    if (character.code == U'\\') return "\\\\";
    if (character.code && *character.code >= 0x80) {
        char text[16];
        std::snprintf(text, sizeof text, "\\u{%04X}", static_cast<unsigned>(*character.code));
        return text;
    }
    std::string text = "\\x";
    appendHexOctet(text, byteAt(character.octets, 0), kUpperHexDigits);
    return text;
}

// Appends one character after the other.
class TextBuilder {
  public:
    explicit TextBuilder(const TextRules& rules) : rules_(rules) {}

    void append(const Neighbours& at) {
        if (isShownAsItIs(at)) {
            appendShown(at.own());
        } else {
            appendEscape(escapeOf(at.own()));
        }
    }

    void appendShown(const Character& character) {
        const char32_t code = *character.code;
        if (breaks_.beginsCluster(code)) flush();
        cluster_ += character.octets;
        unit_.cells += cellsOf(code, rules_.ambiguous);
        unit_.isUnsteady = unit_.isUnsteady || tool::isUnsteady(code);
        unit_.isRightToLeft = unit_.isRightToLeft || tool::isRightToLeft(code);
        hasBase_ = true;
    }

    ShownText take() {
        flush();
        return std::move(text_);
    }

  private:
    bool isShownAsItIs(const Neighbours& at) const {
        const auto code = at.own().code;
        if (!code || *code == '\\') return false;
        if (rules_.isASCII && *code >= 0x80) return false;
        if (!isVisible(*code)) return hasBase_ && isPartOfEmoji(at);
        return hasBase_ || !isCombining(*code);
    }

    void appendEscape(const std::string& escape) {
        flush();
        text_.append(escape, {.size = escape.size(), .cells = escape.size(), .isAdded = true});
        breaks_.restart();
        hasBase_ = false;
    }

    void flush() {
        if (cluster_.empty()) return;
        unit_.size = cluster_.size();
        text_.append(cluster_, unit_);
        cluster_.clear();
        unit_ = {};
    }

    const TextRules& rules_;
    ShownText text_;
    GraphemeBreaks breaks_;
    std::string cluster_;
    TextUnit unit_;
    bool hasBase_ = false;  // the character before is shown as it is
};

bool isShownBlank(const Character& character, const TextRules& rules) {
    return character.is(isBlank) && !(rules.isASCII && *character.code >= 0x80);
}

// Whether the text could be taken for something else without quotes.
bool needsQuotes(const std::vector<Character>& characters, const TextRules& rules) {
    if (characters.empty()) return false;
    const Character& first = characters.front();
    const char32_t sign = first.code.value_or(U'\0');
    return sign == U'(' || sign == U'"' || isShownBlank(first, rules) ||
           isShownBlank(characters.back(), rules);
}

}  // namespace

void ShownText::append(std::string_view octets, TextUnit unit) {
    octets_ += octets;
    cells_ += unit.cells;
    isUnsteady_ = isUnsteady_ || unit.isUnsteady;
    isRightToLeft_ = isRightToLeft_ || unit.isRightToLeft;
    units_.push_back(unit);
}

void ShownText::append(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        append(text.substr(i, 1), {.size = 1, .cells = 1, .isAdded = true});
    }
}

void ShownText::append(const ShownText& text) {
    std::string_view rest = text.octets_;
    for (const TextUnit& unit : text.units_) {
        append(rest.substr(0, unit.size), unit);
        rest.remove_prefix(unit.size);
    }
}

void ShownText::dropTrailingBlanks() {
    while (octets_.ends_with(' ')) {
        octets_.pop_back();
        units_.pop_back();
        --cells_;
    }
}

ShownText shownText(std::string_view octets, const TextRules& rules) {
    const std::vector<Character> characters = charactersOf(octets);
    TextBuilder builder(rules);
    for (std::size_t i = 0; i < characters.size(); ++i) builder.append({characters, i});
    ShownText text = builder.take();
    if (!needsQuotes(characters, rules)) return text;

    ShownText quoted;
    quoted.append("\"");
    quoted.append(text);
    quoted.append("\"");
    return quoted;
}

ShownText shownName(std::string_view ssid, const TextRules& rules) {
    const bool isHidden = std::ranges::all_of(ssid, [](char octet) { return octet == '\0'; });
    if (!isHidden) return shownText(ssid, rules);
    ShownText text;
    text.append(ssid.empty() ? "(hidden)" : "(hidden, " + std::to_string(ssid.size()) + ")");
    return text;
}

ShownText shownMesh(std::string_view meshID, const TextRules& rules) {
    ShownText text;
    text.append(meshID.empty() ? "(mesh)" : "(mesh) ");
    text.append(shownText(meshID, rules));
    return text;
}

ShownText shownHidden(const MacAddress& bssid) {
    const auto& octets = bssid.octets();
    std::string text;
    for (std::size_t i = octets.size() / 2; i < octets.size(); ++i) {
        text += text.empty() ? '(' : ':';
        appendHexOctet(text, octets[i], kUpperHexDigits);
    }
    ShownText shown;
    shown.append(text + ')');
    return shown;
}

ShownText ownText(std::string_view text, const TextRules& rules) {
    TextBuilder builder(rules);
    for (const Character& character : charactersOf(text)) builder.appendShown(character);
    return builder.take();
}

}  // namespace halvane::tool
