#include "halvane/utils/text/xml_escape.h"

#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <random>
#include <string>
#include <string_view>

#include "tests/support/guarded_bytes.h"

namespace {

using halvane::testing::GuardedBytes;

// Escapes the text in three ways, which must agree.
std::string escaped(std::string_view text) {
    GuardedBytes guarded(text);
    std::size_t needed = 0;
    XMLEscape(guarded.chars(), guarded.size(), nullptr, &needed);
    GuardedBytes buffer(needed);
    std::size_t written = 0;
    XMLEscape(guarded.chars(), guarded.size(), buffer.chars(), &written);
    EXPECT_EQ(written, needed);
    char* copy = nullptr;
    std::size_t copied = 0;
    EXPECT_EQ(XMLEscapeCopy(guarded.chars(), guarded.size(), &copy, &copied), kStatusOK);
    EXPECT_EQ(std::string(copy, copied), buffer.text());
    EXPECT_EQ(copy[copied], '\0');
    std::free(copy);
    return std::string(buffer.text());
}

TEST(XMLEscape, ReplacesFiveCharacters) {
    EXPECT_EQ(escaped("&\"'<>"), "&amp;&quot;&#39;&lt;&gt;");
    EXPECT_EQ(escaped("a < b && c > 'd'"), "a &lt; b &amp;&amp; c &gt; &#39;d&#39;");
    EXPECT_EQ(escaped("&amp;"), "&amp;amp;");
    EXPECT_EQ(escaped(""), "");
    EXPECT_EQ(escaped("plain \xC3\xA9\n"), "plain \xC3\xA9\n");
    EXPECT_EQ(escaped(std::string_view("a\0<", 3)), std::string("a\0&lt;", 6));
}

TEST(XMLEscape, LeavesAllOtherBytes) {
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        const std::string_view text(&byte, 1);
        const bool isReplaced = std::string_view("&\"'<>").find(byte) != std::string_view::npos;
        EXPECT_EQ(escaped(text) == text, !isReplaced) << code;
    }
}

TEST(XMLEscape, TakesTerminatedTextAndNull) {
    char* copy = nullptr;
    EXPECT_EQ(XMLEscapeCopy("a<b", SIZE_MAX, &copy, nullptr), kStatusOK);
    EXPECT_STREQ(copy, "a&lt;b");
    std::free(copy);
    std::size_t needed = 99;
    XMLEscape(nullptr, 0, nullptr, &needed);
    EXPECT_EQ(needed, 0u);
    char text[4];
    XMLEscape(">", SIZE_MAX, text, nullptr);
    EXPECT_EQ(std::string(text, 4), "&gt;");
}

// An XML reader finds the text again, in an attribute and between tags.
TEST(XMLEscape, IsReadBackByAnXmlReader) {
    std::mt19937 random(13);
    const std::string_view alphabet = "ab &\"'<>]-!#;\xC3\xA9";
    for (int i = 0; i < 5000; ++i) {
        std::string text = "x";
        for (std::size_t size = random() % 12; size > 0; --size) {
            const char byte = alphabet[random() % (alphabet.size() - 1)];
            if (byte == '\xC3') {
                text += "\xC3\xA9";
            } else {
                text += byte;
            }
        }
        const std::string value = escaped(text);
        const std::string document = "<a b=\"" + value + "\" c='" + value + "'>" + value + "</a>";
        pugi::xml_document read;
        ASSERT_TRUE(read.load_buffer(document.data(), document.size())) << document;
        const auto element = read.child("a");
        ASSERT_EQ(element.attribute("b").value(), text);
        ASSERT_EQ(element.attribute("c").value(), text);
        ASSERT_EQ(element.child_value(), text);
    }
}

}  // namespace
