#include <cstddef>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/plist/plain_property_list_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/platform/plist/xml_text_internal.h"

#include "tests/support/both_plist_readers.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::Date;
using halvane::plainPropertyList;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::XmlVersion;
using halvane::testing::areIdentical;
using halvane::testing::isReadAlike;

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

std::string plist(const std::string& content) {
    return "<plist version=\"1.0\">" + content + "</plist>";
}

// Whether the quick reader reads the document. Fails the test if the careful reader does not agree.
bool isPlain(const std::string& body) {
    EXPECT_TRUE(isReadAlike(body)) << body;
    return plainPropertyList(body, XmlVersion::V1_0).has_value();
}

PropertyListValue everyKind() {
    PropertyListDictionary inner;
    inner.set("a key of more than 15 characters", "text < & >");
    inner.set("", PropertyListArray());
    PropertyListDictionary dictionary;
    dictionary.set("integer", -7);
    dictionary.set("large", 18446744073709551615u);
    dictionary.set("real", 0.1);
    dictionary.set("true", true);
    dictionary.set("false", false);
    dictionary.set("data", ByteBuffer{1, 2, 3, 4, 5});
    dictionary.set("date", *Date::fromFields({2026, 11, 21, 7, 0, 0}));
    dictionary.set("string \xC3\xA9", " \n ");
    dictionary.set("array", PropertyListArray{1, PropertyListDictionary(), inner, inner});
    return dictionary;
}

TEST(PlainPropertyList, IsWhatTheWriterWrites) {
    const PropertyListValue value = everyKind();
    const auto xml = halvane::xmlPropertyList(value);
    ASSERT_TRUE(xml.has_value());
    ASSERT_TRUE(xml->starts_with(kDeclaration));
    const auto read = plainPropertyList(xml->substr(kDeclaration.size()), XmlVersion::V1_0);
    ASSERT_TRUE(read.has_value());
    EXPECT_TRUE(areIdentical(*read, value));
    EXPECT_TRUE(isReadAlike(*xml));
}

TEST(PlainPropertyList, HasTheFormsOfOtherWriters) {
    const std::vector<std::string> bodies = {
        plist("<true/>"),
        "<plist><true/></plist>\n",
        "\n<!DOCTYPE plist PUBLIC \"-//X//DTD PLIST 1.0//EN\" \"http://example.org/p.dtd\">\n" +
            plist("<false/>"),
        "<!DOCTYPE plist>" + plist("<true/>"),
        plist("<integer>0</integer>"),
        plist("<integer> +0x1F\n</integer>"),
        plist("<integer>&#49;</integer>"),
        plist("<real>-1.5e-7</real>"),
        plist("<real>+infinity</real>"),
        plist("<real>nan</real>"),
        plist("<date>2024-02-29T23:59:59Z</date>"),
        plist("<data></data>"),
        plist("<data>\n\tAAEC\n\tAw==\n</data>"),
        plist("<string></string>"),
        plist("<string> a&lt;b&#xe9; </string>"),
        plist("<string>]]</string>"),
        plist("<dict/>"),
        plist("<dict></dict>"),
        plist("<array/>"),
        plist("<array> <array/> <dict/> </array>"),
        plist("<dict><key>a</key><true/>\n<key>&#97;b</key> <true/></dict>"),
    };
    for (const auto& body : bodies) EXPECT_TRUE(isPlain(body)) << body;
}

// The careful reader accepts these.
TEST(PlainPropertyList, LeavesRareFormsToTheCarefulReader) {
    const std::vector<std::string> bodies = {
        plist("<true></true>"),
        plist("<string/>"),
        plist("<data/>"),
        plist("<array ></array>"),
        plist("<array></array >"),
        plist("<!-- --><true/>"),
        plist("<?a?><true/>"),
        plist("<string><![CDATA[a]]></string>"),
        plist("<string>a<!-- -->b</string>"),
        plist("<dict><key/><true/></dict>"),
        plist("<true/>") + "<!-- -->",
        "<plist version='1.0'><true/></plist>",
        "<plist ><true/></plist>",
        "<!DOCTYPE plist SYSTEM 'a>b'>" + plist("<true/>"),
        "<!DOCTYPE plist SYSTEM \"a>b\">" + plist("<true/>"),
        "<!DOCTYPE plist [<!ENTITY a \"b\">]>" + plist("<true/>"),
        "<!DOCTYPE\nplist>" + plist("<true/>"),
    };
    for (const auto& body : bodies) {
        EXPECT_FALSE(isPlain(body)) << body;
        EXPECT_TRUE(halvane::propertyListFromXml(body).has_value()) << body;
    }
}

TEST(PlainPropertyList, LeavesErrorsToTheCarefulReader) {
    const std::vector<std::string> bodies = {
        "",
        "<plist>",
        "<plist version=\"1.1\"><true/></plist>",
        "<list><true/></list>",
        plist(""),
        plist("<true/><true/>"),
        plist("<true/>x"),
        plist("x<true/>"),
        plist("<true/>") + "x",
        plist("<true/>") + plist("<true/>"),
        plist("<key>a</key>"),
        plist("<other/>"),
        plist("<string>a</integer>"),
        plist("<string>&other;</string>"),
        plist("<string>]]></string>"),
        plist("<string>a"),
        plist("<integer></integer>"),
        plist("<integer>1x</integer>"),
        plist("<integer>18446744073709551616</integer>"),
        plist("<real>1e309</real>"),
        plist("<date>2023-02-29T23:59:59Z</date>"),
        plist("<data>A</data>"),
        plist("<array>"),
        plist("<array></dict>"),
        plist("<array>x</array>"),
        plist("<dict><key>a</key></dict>"),
        plist("<dict><true/></dict>"),
        plist("<dict><key>a</key><key>b</key></dict>"),
        plist("<dict><key>a</key><true/><true/></dict>"),
        plist("<dict><key>a</key><true/><key>&#97;</key><true/></dict>"),
        "<!DOCTYPE plist \"" + plist("<true/>"),
        "<!DOCTYPE a><!DOCTYPE a>" + plist("<true/>"),
        "x" + plist("<true/>"),
    };
    for (const auto& body : bodies) {
        EXPECT_FALSE(isPlain(body)) << body;
        EXPECT_FALSE(halvane::propertyListFromXml(body).has_value()) << body;
    }
}

TEST(PlainPropertyList, NestsToTheDepthLimitAndNoDeeper) {
    const auto nested = [](std::size_t levels, const std::string& start, const std::string& end) {
        std::string xml = "<array/>";
        for (; levels > 1; --levels) xml = start + xml + end;
        return plist(xml);
    };
    for (const auto& [start, end] : {std::pair<std::string, std::string>{"<array>", "</array>"},
                                     {"<dict><key>k</key>", "</dict>"}}) {
        EXPECT_TRUE(isPlain(nested(256, start, end)));
        EXPECT_FALSE(isPlain(nested(257, start, end)));
    }
}

// Each dictionary gets the room of the one before it at the same level.
TEST(PlainPropertyList, HoldsDictionariesOfAnySizeOneAfterAnother) {
    std::string items;
    for (const std::size_t size : {0u, 1u, 5u, 4u, 9u, 0u, 16u, 1u, 17u, 16u, 40u, 2u, 300u, 3u}) {
        items += "<dict>";
        for (std::size_t i = 0; i < size; ++i) {
            items += "<key>" + std::to_string(i) + "</key><dict><key>a</key><true/></dict>";
        }
        items += "</dict>";
    }
    EXPECT_TRUE(isPlain(plist("<array>" + items + "</array>")));
}

// Text of every length, with the mark in each place, since readers take text in blocks.
TEST(PlainPropertyList, FindsAReferenceAtEveryPlaceOfALongText) {
    for (std::size_t place = 0; place <= 130; ++place) {
        const std::string text =
            std::string(place, 'x') + "&amp;\xC3\xA9" + std::string(130 - place, 'y');
        EXPECT_TRUE(isPlain(plist("<string>" + text + "</string>")));
        EXPECT_FALSE(isPlain(plist("<string>" + text + "]]></string>")));
    }
}

// A document in plain form with every kind, small enough to break at every byte.
std::string sample() {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//X\" \"http://x\">\n"
           "<plist version=\"1.0\">\n<dict><key>k&amp;</key><array>\n\t<true/><false/>"
           "<integer>-7</integer><integer>0x1F</integer><real>1e3</real><dict/><array/></array>"
           "<key>d</key><data>AAE=</data><key>s</key><string>\xC3\xA9 ]]&lt;</string>"
           "<key>t</key><date>2026-11-21T07:00:00Z</date></dict>\n</plist>\n";
}

halvane::testing::Bytes bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

void expectReadAlike(const ByteBuffer& xml) {
    EXPECT_TRUE(isReadAlike(xml.text())) << xml.text();
}

TEST(PlainPropertyList, IsReadAlikeWhereverItIsCut) {
    halvane::testing::forEachPrefix(bytesOf(sample()), expectReadAlike);
}

TEST(PlainPropertyList, IsReadAlikeWithAnyByteInAnyPlace) {
    const auto bytes = bytesOf(sample());
    std::vector<std::size_t> offsets(bytes.size());
    for (std::size_t i = 0; i < offsets.size(); ++i) offsets[i] = i;
    halvane::testing::forEachValueAt(bytes, offsets, expectReadAlike);
}

TEST(PlainPropertyList, IsReadAlikeWithAnyByteRepeatedOrLeftOut) {
    const std::string xml = sample();
    for (std::size_t i = 0; i < xml.size(); ++i) {
        for (const std::size_t count : {0u, 2u}) {
            const std::string changed =
                xml.substr(0, i) + std::string(count, xml[i]) + xml.substr(i + 1);
            expectReadAlike(halvane::testing::exactHeapCopy(bytesOf(changed)));
        }
    }
}

// XML 1.1 has other line ends and other characters.
TEST(PlainPropertyList, IsReadAlikeInVersion11) {
    for (const std::string content :
         {"<string>&#1;</string>", "<string>a\xC2\x85\x62</string>", "<array>\xE2\x80\xA8</array>",
          "<array>\xC2\x85<true/></array>", "<array>\r\n<true/>\r</array>"}) {
        EXPECT_TRUE(isReadAlike("<?xml version=\"1.1\"?>" + plist(content))) << content;
        EXPECT_TRUE(isReadAlike("<?xml version=\"1.0\"?>" + plist(content))) << content;
    }
}

}  // namespace
