#include "halvane/platform/xml_property_list_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>
#include <new>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "halvane/platform/xml_outline_internal.h"
#include "halvane/platform/xml_source_internal.h"
#include "halvane/platform/xml_text_internal.h"

namespace halvane {

namespace {

// The whole of `text` as a number in the form that std::from_chars reads.
template <typename Value>
std::errc readWhole(std::string_view text, Value& value) {
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc()) return result.ec;
    return result.ptr == end ? std::errc() : std::errc::invalid_argument;
}

std::errc readInteger(std::string_view text, Number& number) {
    std::int64_t narrow = 0;
    const std::errc status = readWhole(text, narrow);
    number = narrow;
    if (status != std::errc::result_out_of_range) return status;
    std::uint64_t wide = 0;
    if (text.starts_with('-')) return status;
    const std::errc wideStatus = readWhole(text, wide);
    number = wide;
    return wideStatus;
}

std::errc readReal(std::string_view text, Number& number) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    static constexpr std::array<std::pair<std::string_view, double>, 3> kNames = {
        {{"nan", std::numeric_limits<double>::quiet_NaN()},
         {"+infinity", kInfinity},
         {"-infinity", -kInfinity}}};
    for (const auto& [name, value] : kNames) {
        if (text != name) continue;
        number = value;
        return {};
    }
    // What is left of names, which std::from_chars has more of.
    if (text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return std::errc::invalid_argument;
    }
    double value = 0;
    const std::errc status = readWhole(text, value);
    number = value;
    return status;
}

// "2026-11-21T07:00:00Z": the form as a pattern, where a digit stands for the field it belongs to.
std::optional<Date> readDate(std::string_view text) {
    constexpr std::string_view kForm = "0000-11-22T33:44:55Z";
    std::array<unsigned, 6> fields{};
    if (text.size() != kForm.size()) return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool isField = kForm[i] >= '0' && kForm[i] <= '5';
        if (!isField) {
            if (text[i] != kForm[i]) return std::nullopt;
            continue;
        }
        if (text[i] < '0' || text[i] > '9') return std::nullopt;
        unsigned& field = fields[static_cast<std::size_t>(kForm[i] - '0')];
        field = field * 10 + static_cast<unsigned>(text[i] - '0');
    }
    const auto [year, month, day, hour, minute, second] = fields;
    return Date::fromFields({static_cast<int>(year), month, day, hour, minute, second});
}

constexpr std::uint8_t kNoDigit = 0xFF;
constexpr auto kBase64Values = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    std::uint8_t value = 0;
    const auto fill = [&](unsigned char first, unsigned char last) {
        for (unsigned byte = first; byte <= last; ++byte) values[byte] = value++;
    };
    fill('A', 'Z');
    fill('a', 'z');
    fill('0', '9');
    fill('+', '+');
    fill('/', '/');
    return values;
}();

// RFC 4648 clause 4. Digits come in groups of four, the last one padded with "=", and bits that
// belong to no byte are 0.
std::optional<ByteBuffer> readBase64(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    std::size_t digits = 0, padding = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const std::uint8_t value = kBase64Values[byte];
        if (value == kNoDigit) {
            if (isXmlSpace(byte)) continue;
            if (c != '=') return std::nullopt;
            ++padding;
            continue;
        }
        if (padding > 0) return std::nullopt;
        bits = bits << 6 | value;
        if (++digits % 4 != 0) continue;
        for (const int shift : {16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(bits >> shift));
        bits = 0;
    }
    const std::size_t rest = digits % 4;
    if (rest == 1 || padding != (4 - rest) % 4) return std::nullopt;
    bits <<= 6 * padding;
    if (rest >= 2) bytes.push_back(static_cast<std::uint8_t>(bits >> 16));
    if (rest == 3) bytes.push_back(static_cast<std::uint8_t>(bits >> 8));
    const bool hasStrayBits =
        (rest == 2 && (bits & 0xFFFF) != 0) || (rest == 3 && (bits & 0xFF) != 0);
    if (hasStrayBits) return std::nullopt;
    return ByteBuffer(bytes);
}

// The name of an element as one word, which is quicker to compare than a text; 0 for one that is
// longer than any of a property list.
constexpr std::uint64_t nameWord(const char* name) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < sizeof word; ++i) {
        if (name[i] == '\0') return word;
        word = word << 8 | static_cast<unsigned char>(name[i]);
    }
    return name[sizeof word] == '\0' ? word : 0;
}

constexpr std::uint64_t kKeyName = nameWord("key");

// Values from the tree of a parsed document. A text that stands before the first child of an
// element is the element's own value; further ones are nodes.
class Reader {
  public:
    // `parsed` is what the parser was given: the texts of the tree are in it.
    Reader(const char* parsed, XmlVersion version, bool isTextLiteral, XmlRefusal& refusal)
        : parsed_(parsed), version_(version), isTextLiteral_(isTextLiteral), refusal_(refusal) {}

    bool readPlist(pugi::xml_node plist, PropertyListValue& value) {
        if (std::string_view(plist.name()) != "plist") {
            return refuse(plist, "root element other than <plist>");
        }
        const auto attribute = plist.first_attribute();
        const bool isVersion10 = std::string_view(attribute.name()) == "version" &&
                                 std::string_view(attribute.value()) == "1.0";
        if (attribute && (!isVersion10 || attribute.next_attribute())) {
            return refuse(plist, "attribute of <plist> other than version=\"1.0\"");
        }
        std::size_t count = 0;
        const bool isRead = eachElement(plist, [&](pugi::xml_node element) {
            if (++count > 1) return refuse(element, "more than one value in <plist>");
            return read(element, 1, value);
        });
        return isRead && (count == 1 || refuse(plist, "no value in <plist>"));
    }

  private:
    struct Kind {
        std::uint64_t name;
        bool (Reader::*read)(pugi::xml_node, int, PropertyListValue&);
    };

    bool read(pugi::xml_node element, int level, PropertyListValue& value) {
        return read(element, nameWord(element.name()), level, value);
    }

    bool read(pugi::xml_node element, std::uint64_t name, int level, PropertyListValue& value) {
        // The more frequent come first.
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
        if (level > kPropertyListMaxDepth) return refuse(element, "nested too deep");
        const auto kind = std::ranges::find(kKinds, name, &Kind::name);
        if (kind == kKinds.end()) return refuse(element, "unknown element");
        if (element.first_attribute()) return refuse(element, "attribute");
        return (this->*kind->read)(element, level, value);
    }

    bool readArray(pugi::xml_node element, int level, PropertyListValue& value) {
        value = PropertyListArray();
        auto& array = *value.as<PropertyListArray>();
        return eachElement(element, [&](pugi::xml_node child) {
            return read(child, level + 1, array.emplace_back());
        });
    }

    bool readDictionary(pugi::xml_node element, int level, PropertyListValue& value) {
        value = PropertyListDictionary();
        auto& dictionary = *value.as<PropertyListDictionary>();
        std::string key;
        bool isKeyNext = true;
        const bool isRead = eachElement(element, [&](pugi::xml_node child) {
            const std::uint64_t name = nameWord(child.name());
            const bool isKey = name == kKeyName;
            if (isKey != isKeyNext) {
                return refuse(child, isKeyNext ? "value without a key" : "key without a value");
            }
            isKeyNext = !isKeyNext;
            if (isKey) return readKey(child, key);
            const auto [held, isNew] = dictionary.enter(std::move(key));
            return isNew ? read(child, name, level + 1, *held)
                         : refuse(child, "second value of a key");
        });
        return isRead && (isKeyNext || refuse(element, "key without a value"));
    }

    bool readKey(pugi::xml_node element, std::string& key) {
        if (element.first_attribute()) return refuse(element, "attribute");
        return readText(element, key);
    }

    bool readString(pugi::xml_node element, int, PropertyListValue& value) {
        std::string text;
        if (!readText(element, text)) return false;
        value = std::move(text);
        return true;
    }

    bool readInteger(pugi::xml_node element, int, PropertyListValue& value) {
        return readNumber(element, halvane::readInteger, "malformed integer", value);
    }
    bool readReal(pugi::xml_node element, int, PropertyListValue& value) {
        return readNumber(element, halvane::readReal, "malformed real", value);
    }
    bool readNumber(pugi::xml_node element, std::errc (*readForm)(std::string_view, Number&),
                    std::string_view malformed, PropertyListValue& value) {
        if (!readText(element, scratch_)) return false;
        Number number;
        const std::errc status = readForm(scratch_, number);
        if (status == std::errc::result_out_of_range) return refuse(element, "number out of range");
        if (status != std::errc()) return refuse(element, malformed);
        value = number;
        return true;
    }

    template <bool kValue>
    bool readBoolean(pugi::xml_node element, int, PropertyListValue& value) {
        value = kValue;
        const bool isEmpty = !element.first_child() && *element.value() == '\0';
        return isEmpty || refuse(element, "boolean that is not empty");
    }

    bool readDate(pugi::xml_node element, int, PropertyListValue& value) {
        if (!readText(element, scratch_)) return false;
        const auto date = halvane::readDate(scratch_);
        if (!date) return refuse(element, "malformed date");
        value = *date;
        return true;
    }

    bool readData(pugi::xml_node element, int, PropertyListValue& value) {
        if (!readText(element, scratch_)) return false;
        auto bytes = readBase64(scratch_);
        if (!bytes) return refuse(element, "malformed base64");
        value = std::move(*bytes);
        return true;
    }

    // The text of an element that holds nothing else, in one piece or around comments.
    bool readText(pugi::xml_node element, std::string& text) {
        text.clear();
        if (!appendData(element, text)) return false;
        for (auto child = element.first_child(); child; child = child.next_sibling()) {
            if (child.type() == pugi::node_element) return refuse(child, "element within text");
            if (child.type() == pugi::node_cdata) {
                text += child.value();
            } else if (!appendData(child, text)) {
                return false;
            }
        }
        return true;
    }

    bool appendData(pugi::xml_node node, std::string& text) {
        if (isTextLiteral_) {
            text += node.value();
            return true;
        }
        const auto refusal = appendCharacterData(text, node.value(), version_);
        if (!refusal) return true;
        return refuse(offsetOf(node.value()) + refusal->offset, refusal->reason);
    }

    // Visits the elements of one that holds elements alone, until `visit` answers false.
    template <typename Visit>
    bool eachElement(pugi::xml_node container, Visit visit) {
        if (!isXmlBlank(container.value())) return refuseText(container);
        for (auto child = container.first_child(); child; child = child.next_sibling()) {
            if (child.type() == pugi::node_element) {
                if (!visit(child)) return false;
            } else if (child.type() == pugi::node_cdata || !isXmlBlank(child.value())) {
                return refuseText(child);
            }
        }
        return true;
    }

    bool refuseText(pugi::xml_node node) {
        const std::string_view text = node.value();
        const auto stray = std::ranges::find_if_not(text, isXmlSpace);
        const auto before = static_cast<std::size_t>(stray - text.begin());
        return refuse(offsetOf(node.value()) + before, "text between values");
    }

    bool refuse(pugi::xml_node element, std::string_view reason) {
        return refuse(offsetOf(element.name()) - 1, reason);  // its "<"
    }
    bool refuse(std::size_t offset, std::string_view reason) {
        refusal_ = {offset, reason};
        return false;
    }

    std::size_t offsetOf(const char* text) const {
        return static_cast<std::size_t>(text - parsed_);
    }

    const char* parsed_;
    XmlVersion version_;
    bool isTextLiteral_;
    XmlRefusal& refusal_;
    std::string scratch_;
};

std::string_view reasonOf(pugi::xml_parse_status status) {
    switch (status) {
        case pugi::status_end_element_mismatch:
            return "end tag of another element";
        case pugi::status_bad_start_element:
        case pugi::status_bad_end_element:
        case pugi::status_unrecognized_tag:
            return "malformed tag";
        case pugi::status_bad_attribute:
            return "malformed attribute";
        default:
            return "malformed XML";
    }
}

// What follows the declaration, its line ends plain. The parser works in place, on `body`.
std::optional<PropertyListValue> readBody(std::string& body, XmlVersion version,
                                          XmlRefusal& refusal) {
    const auto outline = xmlOutline(body, kPropertyListMaxDepth + 1, refusal);
    if (!outline) return std::nullopt;

    // References are left to the reader, since the parser takes any; comments and processing
    // instructions make no nodes; white space makes one only where it can be part of a text.
    constexpr unsigned kOptions = pugi::parse_cdata | pugi::parse_embed_pcdata;
    const unsigned blanks =
        outline->isTextSplit ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single;
    pugi::xml_document tree;
    // With its terminator, so that the parser need not put one in the place of the last character.
    const std::size_t size = body.size() - outline->root + 1;
    const auto result = tree.load_buffer_inplace(body.data() + outline->root, size,
                                                 kOptions | blanks, pugi::encoding_utf8);
    if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
    if (!result) {
        const auto parsed = static_cast<std::size_t>(result.offset);
        refusal = {outline->root + parsed, reasonOf(result.status)};
        return std::nullopt;
    }
    std::optional<PropertyListValue> value(std::in_place);
    Reader reader(body.data(), version, outline->isTextLiteral, refusal);
    if (!reader.readPlist(tree.document_element(), *value)) value.reset();
    return value;
}

std::optional<PropertyListValue> readDocument(std::string_view xml, XmlRefusal& refusal) {
    const auto declaration = xmlDeclaration(xml, refusal);
    if (!declaration) return std::nullopt;
    const XmlVersion version = declaration->version;
    if (const auto refused = refusedXmlCharacter(xml, version)) {
        refusal = *refused;
        return std::nullopt;
    }
    const auto source = xml.substr(declaration->size);
    auto body = withPlainLineEnds(source, version);
    auto value = readBody(body, version, refusal);
    if (!value) {
        refusal.offset =
            declaration->size + offsetBeforePlainLineEnds(source, version, refusal.offset);
    }
    return value;
}

}  // namespace

std::optional<PropertyListValue> propertyListFromXml(std::string_view xml,
                                                     std::optional<XmlPropertyListError>* error) {
    XmlRefusal refusal{};
    auto value = readDocument(xml, refusal);
    if (!value && error != nullptr) *error = XmlPropertyListError{refusal.offset, refusal.reason};
    return value;
}

}  // namespace halvane
