#include "halvane/platform/plist/xml_property_list_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "halvane/base/number.h"
#include "halvane/base/result.h"
#include "halvane/platform/plist/plain_property_list_internal.h"
#include "halvane/platform/plist/xml_outline_internal.h"
#include "halvane/platform/plist/xml_property_list_reader_internal.h"
#include "halvane/platform/plist/xml_scalar_internal.h"
#include "halvane/platform/plist/xml_source_internal.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

namespace {

// Returns an element name as one word, which compares faster than a text; 0 for a name longer than
// all names of property lists.
constexpr std::uint64_t nameWord(std::string_view name) {
    std::uint64_t word = 0;
    if (name.size() > sizeof word) return 0;
    for (const char c : name) word = word << 8 | static_cast<unsigned char>(c);
    return word;
}

constexpr std::uint64_t kKeyName = nameWord("key");

// A start tag, or the tag of an element without content.
struct Tag {
    std::string_view name;
    std::size_t offset = 0;  // the offset of its "<"
    bool isWhole = false;    // "<array/>": there is no end tag
    bool hasAttribute = false;
    bool isVersion10Alone = false;  // the attributes are version="1.0" and nothing else
};

// A part of an element's content.
struct Piece {
    enum class Kind { Text, Cdata, Start, End };
    Kind kind = Kind::End;
    std::string_view text;  // text with its references unresolved, or the contents of a CDATA
                            // section
    Tag tag;                // the tag of a Start
};

// Splits the markup of a document into pieces. Comments and processing instructions are skipped.
// REQUIRES: xmlOutline() accepted the document, so that all markup is known to end.
class Scanner {
  public:
    Scanner(std::string_view document, std::size_t root, XmlRefusal& refusal)
        : document_(document), position_(root), refusal_(refusal) {}

    // Reads the tag at the position.
    bool readTag(Tag& tag) {
        tag = {};
        tag.offset = position_++;
        tag.name = name();
        if (tag.name.empty()) return refuse(position_, "malformed tag");
        for (;;) {
            const bool isSpaced = skipSpace();
            tag.isWhole = skip("/");
            if (skip(">")) return true;
            if (tag.isWhole || !isSpaced) return refuse(position_, "malformed tag");
            const bool isFirst = !std::exchange(tag.hasAttribute, true);
            bool isVersion10 = false;
            if (!skipAttribute(isVersion10)) return refuse(position_, "malformed attribute");
            tag.isVersion10Alone = isFirst && isVersion10;
        }
    }

    // Reads the next piece of the content of `tag`'s element. Its end tag is a piece too.
    bool readPiece(const Tag& tag, Piece& piece) {
        for (;;) {
            if (tag.isWhole) {
                piece.kind = Piece::Kind::End;
                return true;
            }
            const auto rest = document_.substr(position_);
            if (rest.starts_with("<!--")) {
                if (!skipThrough("-->", 4)) return false;
            } else if (rest.starts_with("<?")) {
                if (!skipThrough("?>", 2)) return false;
            } else {
                return readPiece(tag, rest, piece);
            }
        }
    }

    bool refuse(std::size_t offset, std::string_view reason) {
        refusal_ = {offset, reason};
        return false;
    }

    std::size_t offsetOf(std::string_view text) const {
        return static_cast<std::size_t>(text.data() - document_.data());
    }

  private:
    bool readPiece(const Tag& tag, std::string_view rest, Piece& piece) {
        constexpr std::string_view kCdata = "<![CDATA[";
        if (!rest.starts_with('<')) {
            piece.kind = Piece::Kind::Text;
            piece.text = rest.substr(0, rest.find('<'));
            position_ += piece.text.size();
            return !piece.text.empty() || refuse(position_, "malformed XML");
        }
        if (rest.starts_with("</")) {
            piece.kind = Piece::Kind::End;
            return skipEndTag(tag);
        }
        if (rest.starts_with(kCdata)) {
            piece.kind = Piece::Kind::Cdata;
            const std::size_t start = position_ + kCdata.size();
            if (!skipThrough("]]>", kCdata.size())) return false;
            piece.text = document_.substr(start, position_ - 3 - start);
            return true;
        }
        piece.kind = Piece::Kind::Start;
        return readTag(piece.tag);
    }

    bool skipEndTag(const Tag& tag) {
        position_ += 2;
        const std::size_t start = position_;
        if (name() != tag.name) return refuse(start, "end tag of another element");
        skipSpace();
        return skip(">") || refuse(position_, "malformed tag");
    }

    // Skips an attribute. `isVersion10` receives whether it is version="1.0".
    bool skipAttribute(bool& isVersion10) {
        const auto attribute = name();
        skipSpace();
        if (attribute.empty() || !skip("=")) return false;
        skipSpace();
        const char quote = position_ < document_.size() ? document_[position_] : '\0';
        if (quote != '"' && quote != '\'') return false;
        const std::size_t start = position_ + 1;
        const std::size_t end = document_.find(quote, start);
        if (end == std::string_view::npos) return false;
        isVersion10 = attribute == "version" && document_.substr(start, end - start) == "1.0";
        position_ = end + 1;
        return true;
    }

    std::string_view name() {
        const auto isNamePart = [](char c, bool isFirst) {
            const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
            if (isLetter || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80) {
                return true;
            }
            return !isFirst && ((c >= '0' && c <= '9') || c == '-' || c == '.');
        };
        const std::size_t start = position_;
        while (position_ < document_.size() &&
               isNamePart(document_[position_], position_ == start)) {
            ++position_;
        }
        return document_.substr(start, position_ - start);
    }

    bool skipSpace() {
        const std::size_t start = position_;
        while (position_ < document_.size() &&
               isXmlSpace(static_cast<unsigned char>(document_[position_]))) {
            ++position_;
        }
        return position_ > start;
    }

    bool skip(std::string_view literal) {
        if (!document_.substr(position_).starts_with(literal)) return false;
        position_ += literal.size();
        return true;
    }

    bool skipThrough(std::string_view end, std::size_t from) {
        const std::size_t found = document_.find(end, position_ + from);
        if (found == std::string_view::npos) return refuse(position_, "malformed XML");
        position_ = found + end.size();
        return true;
    }

    std::string_view document_;
    std::size_t position_;
    XmlRefusal& refusal_;
};

// Builds values while it reads the markup. A tree of the document would need more memory than the
// values.
class Reader {
  public:
    Reader(Scanner& scanner, XmlVersion version, bool isTextLiteral)
        : scanner_(scanner), version_(version), isTextLiteral_(isTextLiteral) {}

    bool readPlist(PropertyListValue& value) {
        Tag plist;
        if (!scanner_.readTag(plist)) return false;
        if (plist.name != "plist") return refuse(plist, "root element other than <plist>");
        if (plist.hasAttribute && !plist.isVersion10Alone) {
            return refuse(plist, "attribute of <plist> other than version=\"1.0\"");
        }
        std::size_t count = 0;
        const bool isRead = eachElement(plist, [&](const Tag& tag) {
            if (++count > 1) return refuse(tag, "more than one value in <plist>");
            return read(tag, 1, value);
        });
        return isRead && (count == 1 || refuse(plist, "no value in <plist>"));
    }

  private:
    struct Kind {
        std::uint64_t name;
        bool (Reader::*read)(const Tag&, int, PropertyListValue&);
    };

    bool read(const Tag& tag, int level, PropertyListValue& value) {
        return read(tag, nameWord(tag.name), level, value);
    }

    bool read(const Tag& tag, std::uint64_t name, int level, PropertyListValue& value) {
        // Frequent kinds come first.
        static constexpr std::array<Kind, 9> kKinds = {{
            {nameWord("string"), &Reader::readString},
            {nameWord("integer"), &Reader::readInteger},
            {nameWord("dict"), &Reader::readDictionary},
            {nameWord("true"), &Reader::readBoolean<true>},
            {nameWord("false"), &Reader::readBoolean<false>},
            {nameWord("data"), &Reader::readData},
            {nameWord("array"), &Reader::readArray},
            {nameWord("real"), &Reader::readReal},
            {nameWord("date"), &Reader::readDate},
        }};
        if (level > kPropertyListMaxDepth) return refuse(tag, "nested too deep");
        const auto kind = std::ranges::find(kKinds, name, &Kind::name);
        if (kind == kKinds.end()) return refuse(tag, "unknown element");
        if (tag.hasAttribute) return refuse(tag, "attribute");
        return (this->*kind->read)(tag, level, value);
    }

    // The values wait until their number is known: an array that grows needs twice the room.
    bool readArray(const Tag& tag, int level, PropertyListValue& value) {
        const std::size_t before = waiting_.size();
        const bool isRead = eachElement(
            tag, [&](const Tag& child) { return read(child, level + 1, waiting_.emplace_back()); });
        if (!isRead) return false;
        const auto first = waiting_.begin() + static_cast<std::ptrdiff_t>(before);
        value = PropertyListArray(std::make_move_iterator(first),
                                  std::make_move_iterator(waiting_.end()));
        waiting_.resize(before);
        return true;
    }

    bool readDictionary(const Tag& tag, int level, PropertyListValue& value) {
        value = PropertyListDictionary();
        auto& dictionary = *value.as<PropertyListDictionary>();
        std::string key;
        bool isKeyNext = true;
        const bool isRead = eachElement(tag, [&](const Tag& child) {
            const std::uint64_t name = nameWord(child.name);
            const bool isKey = name == kKeyName;
            if (isKey != isKeyNext) {
                return refuse(child, isKeyNext ? "value without a key" : "key without a value");
            }
            isKeyNext = !isKeyNext;
            if (isKey) return readKey(child, key);
            const auto [held, isNew] = dictionary.enter(key);
            return isNew ? read(child, name, level + 1, *held)
                         : refuse(child, "second value of a key");
        });
        return isRead && (isKeyNext || refuse(tag, "key without a value"));
    }

    bool readKey(const Tag& tag, std::string& key) {
        if (tag.hasAttribute) return refuse(tag, "attribute");
        return readText(tag, key);
    }

    bool readString(const Tag& tag, int, PropertyListValue& value) {
        std::string text;
        if (!readText(tag, text)) return false;
        value = std::move(text);
        return true;
    }

    bool readInteger(const Tag& tag, int, PropertyListValue& value) {
        return readNumber(tag, readXmlInteger, "malformed integer", value);
    }
    bool readReal(const Tag& tag, int, PropertyListValue& value) {
        return readNumber(tag, readXmlReal, "malformed real", value);
    }
    bool readNumber(const Tag& tag, std::errc (*readForm)(std::string_view, Number&),
                    std::string_view malformed, PropertyListValue& value) {
        if (!readText(tag, scratch_)) return false;
        Number number;
        const std::errc status = readForm(scratch_, number);
        if (status == std::errc::result_out_of_range) return refuse(tag, "number out of range");
        if (status != std::errc()) return refuse(tag, malformed);
        value = number;
        return true;
    }

    template <bool kValue>
    bool readBoolean(const Tag& tag, int, PropertyListValue& value) {
        value = kValue;
        Piece piece;
        if (!scanner_.readPiece(tag, piece)) return false;
        return piece.kind == Piece::Kind::End || refuse(tag, "boolean that is not empty");
    }

    bool readDate(const Tag& tag, int, PropertyListValue& value) {
        if (!readText(tag, scratch_)) return false;
        const auto date = readXmlDate(scratch_);
        if (!date) return refuse(tag, "malformed date");
        value = *date;
        return true;
    }

    bool readData(const Tag& tag, int, PropertyListValue& value) {
        if (!readText(tag, scratch_)) return false;
        auto bytes = readXmlData(scratch_);
        if (!bytes) return refuse(tag, "malformed base64");
        value = std::move(*bytes);
        return true;
    }

    // Reads the text of an element that holds only text, in one piece or around comments.
    bool readText(const Tag& tag, std::string& text) {
        text.clear();
        for (Piece piece; scanner_.readPiece(tag, piece);) {
            switch (piece.kind) {
                case Piece::Kind::End:
                    return true;
                case Piece::Kind::Start:
                    return refuse(piece.tag, "element within text");
                case Piece::Kind::Cdata:
                    text += piece.text;
                    break;
                case Piece::Kind::Text:
                    if (!appendData(piece.text, text)) return false;
            }
        }
        return false;
    }

    bool appendData(std::string_view data, std::string& text) {
        if (isTextLiteral_) {
            text += data;
            return true;
        }
        const auto refusal = appendCharacterData(text, data, version_);
        if (!refusal) return true;
        return scanner_.refuse(scanner_.offsetOf(data) + refusal->offset, refusal->reason);
    }

    // Visits the children of an element that holds only elements, until `visit` returns false.
    template <typename Visit>
    bool eachElement(const Tag& tag, Visit visit) {
        for (Piece piece; scanner_.readPiece(tag, piece);) {
            switch (piece.kind) {
                case Piece::Kind::End:
                    return true;
                case Piece::Kind::Start:
                    if (!visit(piece.tag)) return false;
                    break;
                case Piece::Kind::Cdata:
                    return refuseText(piece.text);
                case Piece::Kind::Text:
                    if (!isXmlBlank(piece.text)) return refuseText(piece.text);
            }
        }
        return false;
    }

    bool refuseText(std::string_view text) {
        const auto stray = std::ranges::find_if_not(text, isXmlSpace);
        const auto before = static_cast<std::size_t>(stray - text.begin());
        return scanner_.refuse(scanner_.offsetOf(text) + before, "text between values");
    }

    bool refuse(const Tag& tag, std::string_view reason) {
        return scanner_.refuse(tag.offset, reason);
    }

    Scanner& scanner_;
    XmlVersion version_;
    bool isTextLiteral_;
    std::string scratch_;
    std::deque<PropertyListValue> waiting_;  // the values of the open arrays, those of the
                                             // innermost last
};

using Reading = Result<PropertyListValue, XmlRefusal>;

// Reads the document after its declaration, with plain line ends.
Reading readBody(std::string_view body, XmlVersion version, PlainReading plainReading) {
    if (plainReading == PlainReading::Tried) {
        if (auto value = plainPropertyList(body, version)) return *std::move(value);
    }
    const auto outline = xmlOutline(body, kPropertyListMaxDepth + 1);
    if (!outline) return Unexpected(outline.error());
    XmlRefusal refusal{};
    Scanner scanner(body, outline->root, refusal);
    PropertyListValue value;
    if (Reader(scanner, version, outline->isTextLiteral).readPlist(value)) return value;
    return Unexpected(refusal);
}

Reading readDocument(std::string_view xml, PlainReading plainReading) {
    const auto declaration = xmlDeclaration(xml);
    if (!declaration) return Unexpected(declaration.error());
    const XmlVersion version = declaration->version;
    if (const auto refused = refusedXmlCharacter(xml, version)) return Unexpected(*refused);
    const auto source = xml.substr(declaration->size);
    // Most documents have only plain line ends and need no copy.
    auto value = hasOtherLineEnds(source, version)
                     ? readBody(withPlainLineEnds(source, version), version, plainReading)
                     : readBody(source, version, plainReading);
    if (value) return value;
    const auto [offset, reason] = value.error();
    const std::size_t before = offsetBeforePlainLineEnds(source, version, offset);
    return Unexpected(XmlRefusal{declaration->size + before, reason});
}

}  // namespace

Result<PropertyListValue, XmlPropertyListError> propertyListFromXml(std::string_view xml,
                                                                    PlainReading plainReading) {
    auto value = readDocument(xml, plainReading);
    if (value) return *std::move(value);
    return Unexpected(XmlPropertyListError{value.error().offset, value.error().reason});
}

Result<PropertyListValue, XmlPropertyListError> propertyListFromXml(std::string_view xml) {
    return propertyListFromXml(xml, PlainReading::Tried);
}

}  // namespace halvane
