#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>

#include "halvane/base/number.h"
#include "halvane/platform/plist/plain_property_list_internal.h"
#include "halvane/platform/plist/xml_scalar_internal.h"

namespace halvane {

namespace {

constexpr auto kNowhere = std::string_view::npos;

// Reads from left to right. A function that returns bool returns false to give up.
class PlainReader {
  public:
    PlainReader(std::string_view body, XmlVersion version)
        : rest_(body),
          version_(version),
          isTextLiteral_(body.find('&') == kNowhere && body.find("]]>") == kNowhere) {}

    bool readDocument(PropertyListValue& value) {
        skipBlanks();
        if (!skipDoctype()) return false;
        if (!skip("<plist version=\"1.0\">") && !skip("<plist>")) return false;
        if (!readValue(value, 1) || !skipTag("</plist>")) return false;
        skipBlanks();
        return rest_.empty();
    }

  private:
    bool readValue(PropertyListValue& value, int level) {
        if (level > kPropertyListMaxDepth) return false;
        skipBlanks();
        // Frequent kinds come first.
        if (skip("<integer>")) return readNumber(readXmlInteger, "</integer>", value);
        if (skip("<string>")) return readString(value);
        if (skip("<true/>")) return set(value, true);
        if (skip("<false/>")) return set(value, false);
        if (skip("<dict>")) return readDictionary(value, level);
        if (skip("<data>")) return readForm(readXmlData, "</data>", value);
        if (skip("<array>")) return readArray(value, level);
        if (skip("<real>")) return readNumber(readXmlReal, "</real>", value);
        if (skip("<date>")) return readForm(readXmlDate, "</date>", value);
        if (skip("<dict/>")) return set(value, PropertyListDictionary());
        if (skip("<array/>")) return set(value, PropertyListArray());
        return false;
    }

    template <typename Kind>
    static bool set(PropertyListValue& value, Kind held) {
        value.emplace(std::move(held));
        return true;
    }

    // The values wait until their number is known: an array that grows needs twice the room.
    bool readArray(PropertyListValue& value, int level) {
        const std::size_t before = waiting_.size();
        while (!skipTag("</array>")) {
            if (!readValue(waiting_.emplace_back(), level + 1)) return false;
        }
        const auto first = waiting_.begin() + static_cast<std::ptrdiff_t>(before);
        value.emplace(PropertyListArray(std::make_move_iterator(first),
                                        std::make_move_iterator(waiting_.end())));
        waiting_.resize(before);
        return true;
    }

    // Dictionaries at one depth are often alike, so each gets as much room as the last one needed.
    bool readDictionary(PropertyListValue& value, int level) {
        // A large dictionary must not make each small one behind it take as much memory.
        constexpr std::size_t kMostRoom = 16;
        std::uint8_t& room = rooms_[static_cast<std::size_t>(level)];
        auto& dictionary = value.emplace(PropertyListDictionary());
        dictionary.reserve(room);
        while (skipTag("<key>")) {
            std::string_view key;
            if (!readText("</key>", key)) return false;
            const auto [held, isNew] = dictionary.enter(key);
            if (!isNew || !readValue(*held, level + 1)) return false;
        }
        room = static_cast<std::uint8_t>(std::min(dictionary.size(), kMostRoom));
        return skip("</dict>");
    }

    bool readString(PropertyListValue& value) {
        std::string_view text;
        return readText("</string>", text) && set(value, std::string(text));
    }

    bool readNumber(std::errc (*read)(std::string_view, Number&), std::string_view end,
                    PropertyListValue& value) {
        std::string_view text;
        Number number;
        return readText(end, text) && read(text, number) == std::errc() && set(value, number);
    }

    template <typename Held>
    bool readForm(std::optional<Held> (*read)(std::string_view), std::string_view end,
                  PropertyListValue& value) {
        std::string_view text;
        if (!readText(end, text)) return false;
        auto held = read(text);
        return held && set(value, *std::move(held));
    }

    // Reads text and the end tag behind it. The text is valid until the next call.
    bool readText(std::string_view end, std::string_view& text) {
        text = rest_.substr(0, rest_.find('<'));
        rest_.remove_prefix(text.size());
        if (!skip(end)) return false;
        if (isTextLiteral_) return true;
        scratch_.clear();
        if (appendCharacterData(scratch_, text, version_)) return false;
        text = scratch_;
        return true;
    }

    // A DOCTYPE line ends at its first ">" if that is not quoted and nothing is nested before it.
    bool skipDoctype() {
        if (!skip("<!DOCTYPE ")) return true;
        const auto line = rest_.substr(0, rest_.find('>'));
        rest_.remove_prefix(line.size());
        const bool isPlain =
            line.find_first_of("<'") == kNowhere && std::ranges::count(line, '"') % 2 == 0;
        if (!isPlain || !skip(">")) return false;
        skipBlanks();
        return true;
    }

    // Skips white space and the tag; leaves a tag that is another one.
    bool skipTag(std::string_view tag) {
        skipBlanks();
        return skip(tag);
    }

    // Among the characters that XML allows, white space alone comes before "!".
    void skipBlanks() {
        const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
        rest_.remove_prefix(
            static_cast<std::size_t>(std::ranges::find_if_not(rest_, isBlank) - rest_.begin()));
    }

    bool skip(std::string_view literal) {
        if (!rest_.starts_with(literal)) return false;
        rest_.remove_prefix(literal.size());
        return true;
    }

    std::string_view rest_;
    XmlVersion version_;
    bool isTextLiteral_;  // there are no references, and no "]]>" that would be refused
    std::string scratch_;
    // The values of the open arrays, those of the innermost last.
    std::deque<PropertyListValue> waiting_;
    // The size of the last dictionary at each level.
    std::array<std::uint8_t, kPropertyListMaxDepth + 1> rooms_{};
};

}  // namespace

std::optional<PropertyListValue> plainPropertyList(std::string_view body, XmlVersion version) {
    PropertyListValue value;
    if (!PlainReader(body, version).readDocument(value)) return std::nullopt;
    return value;
}

}  // namespace halvane
