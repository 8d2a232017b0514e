#include "halvane/platform/plist/xml_property_list.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

using halvane::ByteBuffer;
using halvane::Date;
using halvane::kXmlPropertyListMaxDepth;
using halvane::Number;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::propertyListFromXml;
using halvane::PropertyListObject;
using halvane::PropertyListValue;
using halvane::xmlPropertyList;
using halvane::XmlPropertyListRefusal;

namespace {

std::string document(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" + content +
           "</plist>\n";
}

PropertyListDictionary dictionary(std::initializer_list<PropertyListDictionary::Entry> entries) {
    PropertyListDictionary result;
    for (const auto& [key, value] : entries) result.set(key, value);
    return result;
}

// The character data of the only element of a written string, as an XML reader returns it. The
// reader has its default options: it drops character data that is only white space.
std::string readBack(const std::string& xml) {
    pugi::xml_document parsed;
    const auto result = parsed.load_buffer(xml.data(), xml.size());
    EXPECT_TRUE(result) << result.description() << "\n" << xml;
    return parsed.child("plist").child("string").child_value();
}

std::string xmlOf(const PropertyListValue& value) {
    const auto xml = xmlPropertyList(value);
    EXPECT_TRUE(xml.has_value());
    return xml.value_or("");
}

std::string utf8(char32_t codePoint) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    if (codePoint < 0x80) return {byte(codePoint)};
    if (codePoint < 0x800) return {byte(0xC0 | codePoint >> 6), byte(0x80 | (codePoint & 0x3F))};
    if (codePoint < 0x10000) {
        return {byte(0xE0 | codePoint >> 12), byte(0x80 | (codePoint >> 6 & 0x3F)),
                byte(0x80 | (codePoint & 0x3F))};
    }
    return {byte(0xF0 | codePoint >> 18), byte(0x80 | (codePoint >> 12 & 0x3F)),
            byte(0x80 | (codePoint >> 6 & 0x3F)), byte(0x80 | (codePoint & 0x3F))};
}

class OpaqueObject : public PropertyListObject {
  public:
    std::optional<std::string> description() const override { return "opaque"; }
    int typeNumber() const override { return 1; }
};

TEST(XmlPropertyList, WritesEveryKindInTheWellKnownForm) {
    const PropertyListValue value = dictionary({
        {"ssid", "Caf\xC3\xA9 <5 GHz> & \"more\""},
        {"channel", 44},
        {"rssi", -61},
        {"rate", 6.5},
        {"hidden", false},
        {"enabled", true},
        {"since", *Date::fromFields({2026, 11, 21, 7, 0, 0})},
        {"bssid", ByteBuffer{0x00, 0x11, 0x22, 0x33, 0x44, 0x55}},
        {"clients", PropertyListArray{"one", dictionary({{"aid", 1}}), PropertyListArray{2}}},
    });
    EXPECT_EQ(xmlOf(value), R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
	<key>ssid</key>
	<string>Caf)"
                            "\xC3\xA9"
                            R"( &lt;5 GHz&gt; &amp; "more"</string>
	<key>channel</key>
	<integer>44</integer>
	<key>rssi</key>
	<integer>-61</integer>
	<key>rate</key>
	<real>6.5</real>
	<key>hidden</key>
	<false/>
	<key>enabled</key>
	<true/>
	<key>since</key>
	<date>2026-11-21T07:00:00Z</date>
	<key>bssid</key>
	<data>
	ABEiM0RV
	</data>
	<key>clients</key>
	<array>
		<string>one</string>
		<dict>
			<key>aid</key>
			<integer>1</integer>
		</dict>
		<array>
			<integer>2</integer>
		</array>
	</array>
</dict>
</plist>
)");
}

TEST(XmlPropertyList, WritesTheEmptyValueOfEachKind) {
    EXPECT_EQ(xmlOf(PropertyListDictionary()), document("<dict/>\n"));
    EXPECT_EQ(xmlOf(PropertyListArray()), document("<array/>\n"));
    EXPECT_EQ(xmlOf(""), document("<string></string>\n"));
    EXPECT_EQ(xmlOf(ByteBuffer()), document("<data>\n</data>\n"));
    EXPECT_EQ(xmlOf(dictionary({{"", ""}})),
              document("<dict>\n\t<key></key>\n\t<string></string>\n</dict>\n"));
}

TEST(XmlPropertyList, WritesNumbersByTheirKind) {
    struct Row {
        Number number;
        const char* element;
    };
    const auto infinity = std::numeric_limits<double>::infinity();
    const auto nan = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Row> rows = {
        {Number(0), "<integer>0</integer>"},
        {Number(std::numeric_limits<std::int64_t>::min()),
         "<integer>-9223372036854775808</integer>"},
        {Number(std::numeric_limits<std::int64_t>::max()),
         "<integer>9223372036854775807</integer>"},
        {Number(std::numeric_limits<std::uint64_t>::max()),
         "<integer>18446744073709551615</integer>"},
        {Number(54.0), "<real>54</real>"},
        {Number(0.1), "<real>0.1</real>"},
        {Number(-0.0), "<real>-0</real>"},
        {Number(1.0 / 3), "<real>0.3333333333333333</real>"},
        {Number(5e-324), "<real>5e-324</real>"},
        {Number(std::numeric_limits<double>::max()), "<real>1.7976931348623157e+308</real>"},
        {Number(infinity), "<real>+infinity</real>"},
        {Number(-infinity), "<real>-infinity</real>"},
        {Number(nan), "<real>nan</real>"},
        {Number(std::copysign(nan, -1.0)), "<real>nan</real>"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(xmlOf(row.number), document(std::string(row.element) + "\n"));
    }
}

TEST(XmlPropertyList, WritesDatesAtTheEndsOfTheirRange) {
    struct Row {
        Date::Fields fields;
        const char* text;
    };
    const std::vector<Row> rows = {
        {{1, 1, 1, 0, 0, 0}, "0001-01-01T00:00:00Z"},
        {{1970, 1, 1, 0, 0, 0}, "1970-01-01T00:00:00Z"},
        {{2024, 2, 29, 23, 59, 59}, "2024-02-29T23:59:59Z"},
        {{9999, 12, 31, 23, 59, 59}, "9999-12-31T23:59:59Z"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(xmlOf(*Date::fromFields(row.fields)),
                  document("<date>" + std::string(row.text) + "</date>\n"));
    }
}

// RFC 4648 clause 10.
TEST(XmlPropertyList, WritesDataAsPaddedBase64) {
    struct Row {
        const char* text;
        const char* base64;
    };
    const std::vector<Row> rows = {
        {"f", "Zg=="},        {"fo", "Zm8="},        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(xmlOf(ByteBuffer::fromText(row.text)),
                  document("<data>\n" + std::string(row.base64) + "\n</data>\n"));
    }
    EXPECT_EQ(xmlOf(ByteBuffer{0xFB, 0xFF, 0xFE}), document("<data>\n+//+\n</data>\n"));
}

TEST(XmlPropertyList, WrapsDataAfter76Characters) {
    const std::string line(76, 'A');
    const auto zeros = [](std::size_t count) {
        return ByteBuffer(std::vector<std::uint8_t>(count, 0));
    };
    EXPECT_EQ(xmlOf(zeros(57)), document("<data>\n" + line + "\n</data>\n"));
    EXPECT_EQ(xmlOf(zeros(58)), document("<data>\n" + line + "\nAA==\n</data>\n"));
    EXPECT_EQ(xmlOf(PropertyListArray{zeros(115)}),
              document("<array>\n\t<data>\n\t" + line + "\n\t" + line + "\n\tAA==\n\t</data>\n" +
                       "</array>\n"));
}

TEST(XmlPropertyList, EscapesWhatCharacterDataCannotHold) {
    struct Row {
        const char* text;
        const char* content;
    };
    const std::vector<Row> rows = {
        {"a&b<c>d", "a&amp;b&lt;c&gt;d"},
        {"]]>", "]]&gt;"},
        {"'\"", "'\""},
        {"a\tb\nc", "a\tb\nc"},
        {"a\rb\r\nc", "a&#13;b&#13;\nc"},
        {"\x7F\xC2\x80\xC2\x85\xE2\x80\xA8", "\x7F\xC2\x80\xC2\x85\xE2\x80\xA8"},
        {" ", "&#32;"},
        {"\n \t", "&#10; \t"},
        {" a ", " a "},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(xmlOf(row.text), document("<string>" + std::string(row.content) + "</string>\n"));
    }
}

// XML 1.0 production 2. All other control characters stand for themselves.
bool hasXmlPlace(char32_t codePoint) {
    return codePoint >= 0x20 || codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
}

TEST(XmlPropertyList, ReadsBackOrRefusesEveryControlCharacterAlone) {
    for (char32_t codePoint = 0; codePoint <= 0xFF; ++codePoint) {
        SCOPED_TRACE(static_cast<unsigned>(codePoint));
        const std::string text = utf8(codePoint);
        for (const std::string& whole : {text, "a" + text + "\xC2\x85" + text + "b"}) {
            const auto xml = xmlPropertyList(whole);
            ASSERT_EQ(xml.has_value(), hasXmlPlace(codePoint));
            if (xml) {
                EXPECT_EQ(readBack(*xml), whole);
            } else {
                EXPECT_EQ(xml.error().character, codePoint);
            }
        }
    }
}

TEST(XmlPropertyList, TellsTheFirstThatXmlDoesNotHave) {
    const auto refusalOf = [](const PropertyListValue& value) {
        const auto xml = xmlPropertyList(value);
        EXPECT_FALSE(xml);
        return xml ? XmlPropertyListRefusal() : xml.error();
    };
    const auto isRefusedFor = [&](const PropertyListValue& value, char32_t character) {
        constexpr std::string_view kReason = "a character that XML 1.0 does not have";
        return refusalOf(value) == XmlPropertyListRefusal{kReason, character};
    };
    EXPECT_TRUE(isRefusedFor(PropertyListArray{"a", "b\x1B\x01"}, U'\x1B'));
    EXPECT_TRUE(isRefusedFor(dictionary({{"key\x07", "\x08"}}), U'\x07'));
    EXPECT_TRUE(isRefusedFor("\xEF\xBF\xBE", U'\uFFFE'));
    EXPECT_EQ(refusalOf("\xFF").reason, "text that is not UTF-8");
    EXPECT_EQ(refusalOf("\xFF").character, std::nullopt);
    EXPECT_EQ(refusalOf(PropertyListArray{PropertyListValue()}).reason, "a null value");
    EXPECT_EQ(refusalOf(PropertyListValue::Object()).reason, "a value of no property-list kind");
    PropertyListValue deep;
    for (int level = 0; level <= kXmlPropertyListMaxDepth; ++level) {
        deep = PropertyListArray{std::move(deep)};
    }
    EXPECT_EQ(refusalOf(deep).reason, "a value that is nested too deep");
}

// Every character that XML 1.0 knows (production 2), ascending, in texts of some thousands.
std::vector<std::string> textsOfEveryCharacter() {
    constexpr std::size_t kLongest = 1 << 14;
    constexpr std::pair<char32_t, char32_t> kRanges[] = {
        {0x9, 0xA}, {0xD, 0xD}, {0x20, 0xD7FF}, {0xE000, 0xFFFD}, {0x10000, 0x10FFFF}};
    std::vector<std::string> texts(1);
    for (const auto& [first, last] : kRanges) {
        for (char32_t codePoint = first; codePoint <= last; ++codePoint) {
            if (texts.back().size() >= kLongest) texts.emplace_back();
            texts.back() += utf8(codePoint);
        }
    }
    return texts;
}

TEST(XmlPropertyList, IsReadBackByAnotherReaderWithEveryCharacter) {
    for (const std::string& text : textsOfEveryCharacter()) {
        const auto xml = xmlOf(dictionary({{text, text}}));
        EXPECT_TRUE(xml.starts_with("<?xml version=\"1.0\"")) << xml.substr(0, 21);
        pugi::xml_document parsed;
        const auto result = parsed.load_buffer(xml.data(), xml.size());
        ASSERT_TRUE(result) << result.description() << " at " << result.offset;
        const auto dict = parsed.child("plist").child("dict");
        EXPECT_EQ(dict.child("key").child_value(), text);
        EXPECT_EQ(dict.child("string").child_value(), text);
    }
}

TEST(XmlPropertyList, ReadsBackAwkwardText) {
    const std::vector<std::string> texts = {
        "",
        " ",
        "  ",
        "\n",
        "\r\n",
        "\t\t",
        "\r",
        " leading",
        "trailing ",
        "]]>",
        "<![CDATA[x]]>",
        "<!-- no comment -->",
        "&amp;",
        "&#65;",
        "\"'`",
        "\xF0\x9F\x93\xB6",
        "\xF4\x8F\xBF\xBF",
        "\xEF\xBB\xBF",
        "\xEF\xBF\xBD",
        "\xED\x9F\xBF\xEE\x80\x80",
        "\xF0\x9F\xBF\xBE",
        "line\xE2\x80\xA8line",
    };
    for (const auto& text : texts) EXPECT_EQ(readBack(xmlOf(text)), text);
}

TEST(XmlPropertyList, ReadsBackEveryKindAsItsElement) {
    struct Row {
        PropertyListValue value;
        const char* element;
        const char* content;
    };
    const std::vector<Row> rows = {
        {PropertyListDictionary(), "dict", ""},
        {PropertyListArray(), "array", ""},
        {"text", "string", "text"},
        {7u, "integer", "7"},
        {0.5, "real", "0.5"},
        {true, "true", ""},
        {false, "false", ""},
        {Date(), "date", "1970-01-01T00:00:00Z"},
        {ByteBuffer{1, 2, 3}, "data", "\nAQID\n"},
    };
    for (const Row& row : rows) {
        const auto xml = xmlOf(row.value);
        pugi::xml_document parsed;
        ASSERT_TRUE(parsed.load_buffer(xml.data(), xml.size()));
        const auto list = parsed.child("plist");
        EXPECT_STREQ(list.attribute("version").value(), "1.0");
        EXPECT_STREQ(list.first_child().name(), row.element);
        EXPECT_STREQ(list.first_child().child_value(), row.content);
        EXPECT_EQ(list.first_child(), list.last_child());
    }
}

TEST(XmlPropertyList, ReadsBackKeysLikeStrings) {
    const std::string key = " \r&<\x7F\xC2\x85";
    const auto xml = xmlOf(dictionary({{key, "x"}}));
    pugi::xml_document parsed;
    ASSERT_TRUE(parsed.load_buffer(xml.data(), xml.size()));
    EXPECT_EQ(parsed.select_node("/plist/dict/key").node().child_value(), key);
}

TEST(XmlPropertyList, KeepsTheOrderOfInsertion) {
    PropertyListDictionary many;
    std::string expected = "<dict>\n";
    for (int i = 40; i > 0; --i) {
        many.set(std::to_string(i), i);
        const auto text = std::to_string(i);
        expected += "\t<key>" + text + "</key>\n\t<integer>" + text + "</integer>\n";
    }
    EXPECT_EQ(xmlOf(many), document(expected + "</dict>\n"));
}

TEST(XmlPropertyList, IsAbsentForTextThatXmlCannotCarry) {
    using namespace std::string_literals;
    const std::vector<std::string> texts = {
        "\0"s,
        "a\0b"s,
        "\xEF\xBF\xBE"s,      // U+FFFE
        "\xEF\xBF\xBF"s,      // U+FFFF
        "\x80"s,              // continuation byte alone
        "\xBF"s,              //
        "\xC0\x80"s,          // overlong
        "\xC1\xBF"s,          // overlong
        "\xC3"s,              // ends early
        "\xC3("s,             // no continuation
        "\xE0\x9F\xBF"s,      // overlong
        "\xE2\x80"s,          // ends early
        "\xE2\x80("s,         // no second continuation
        "\xED\xA0\x80"s,      // surrogate
        "\xED\xBF\xBF"s,      // surrogate
        "\xF0\x8F\xBF\xBF"s,  // overlong
        "\xF0\x9F\x93"s,      // ends early
        "\xF4\x90\x80\x80"s,  // beyond U+10FFFF
        "\xF5\x80\x80\x80"s,  // beyond U+10FFFF
        "\xFF"s,
    };
    for (const auto& text : texts) {
        EXPECT_FALSE(xmlPropertyList(text));
        EXPECT_FALSE(xmlPropertyList("good" + text));
        EXPECT_FALSE(xmlPropertyList(dictionary({{text, 1}})));
        EXPECT_FALSE(xmlPropertyList(PropertyListArray{1, dictionary({{"k", text}})}));
    }
}

TEST(XmlPropertyList, IsAbsentForNullsAndForeignObjectsAnywhere) {
    const std::vector<PropertyListValue> values = {
        PropertyListValue(),
        PropertyListValue::Object(std::make_shared<OpaqueObject>()),
        PropertyListValue::Object(),
    };
    for (const auto& value : values) {
        EXPECT_FALSE(xmlPropertyList(value));
        EXPECT_FALSE(xmlPropertyList(PropertyListArray{1, value}));
        EXPECT_FALSE(xmlPropertyList(dictionary({{"a", PropertyListArray{value}}})));
    }
}

PropertyListValue nestedArrays(int levels) {
    PropertyListArray array;
    for (int level = 1; level < levels; ++level) {
        PropertyListArray outer;
        outer.emplace_back(std::move(array));
        array = std::move(outer);
    }
    return array;
}

PropertyListValue nestedDictionaries(int levels) {
    PropertyListValue value = "innermost";
    for (int level = 1; level < levels; ++level) {
        PropertyListDictionary outer;
        outer.set("k", std::move(value));
        value = std::move(outer);
    }
    return value;
}

TEST(XmlPropertyList, IsAbsentBeyondTheDepthLimit) {
    EXPECT_TRUE(xmlPropertyList(nestedArrays(256)).has_value());
    EXPECT_FALSE(xmlPropertyList(nestedArrays(257)));
    EXPECT_TRUE(xmlPropertyList(nestedDictionaries(256)).has_value());
    EXPECT_FALSE(xmlPropertyList(nestedDictionaries(257)));
    EXPECT_FALSE(xmlPropertyList(nestedArrays(2000)));
}

// The writer looks through long texts in blocks.
TEST(XmlPropertyList, CarriesSpecialCharactersAtEveryPlaceOfALongText) {
    for (const std::string special : {"&", "<", ">", "\r", "\x7F", "\xC3\xA9"}) {
        for (std::size_t place = 0; place <= 40; ++place) {
            std::string text(40, 'x');
            text.insert(place, special);
            const auto xml = xmlPropertyList(text);
            ASSERT_TRUE(xml.has_value());
            EXPECT_EQ(propertyListFromXml(*xml), PropertyListValue(text)) << *xml;
        }
    }
}

TEST(XmlPropertyList, RefusesABadByteAtEveryPlaceOfALongText) {
    for (std::size_t place = 0; place < 40; ++place) {
        std::string text(40, 'x');
        text[place] = '\xFF';
        EXPECT_FALSE(xmlPropertyList(text).has_value()) << place;
        text[place] = '\0';
        EXPECT_FALSE(xmlPropertyList(text).has_value()) << place;
    }
}

}  // namespace
