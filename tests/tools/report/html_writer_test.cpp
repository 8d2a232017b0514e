#include "tools/halvane/report/html_writer.h"

#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <type_traits>

#include "tools/halvane/output/shown_text.h"

using namespace halvane::tool;
using namespace std::string_view_literals;

namespace {

std::string textOf(std::string_view text) {
    HtmlWriter html;
    html << HtmlText{text};
    return html.take();
}

TEST(HtmlWriter, TakesNoMarkupButLiterals) {
    static_assert(!std::is_convertible_v<std::string, Markup>);
    static_assert(!std::is_convertible_v<std::string_view, Markup>);
    HtmlWriter html;
    html << "<b>" << 12 << "</b>" << Fixed{1.25, 2} << Fixed{-3, 0};
    EXPECT_EQ(html.page(), "<b>12</b>1.25-3");
}

TEST(HtmlWriter, EscapesWhatIsMarkup) {
    EXPECT_EQ(textOf("</script><b x='1' y=\"2\">&amp;"),
              "&lt;/script&gt;&lt;b x=&#39;1&#39; y=&quot;2&quot;&gt;&amp;amp;");
    EXPECT_EQ(textOf("]]><!--"), "]]&gt;&lt;!--");
}

TEST(HtmlWriter, ShowsWhatIsInvisible) {
    EXPECT_EQ(textOf("a\0b\x1B\t\r\x7F"sv), "a\\x00b\\x1B\\x09\\x0D\\x7F");
    EXPECT_EQ(textOf("\xFF\xC3"), "\\xFF\\xC3");
    EXPECT_EQ(textOf("\u202Eevil\u200B\u0085\uFFFF"), "\\u{202E}evil\\u{200B}\\u{0085}\\u{FFFF}");
    EXPECT_EQ(textOf("\u2068caf\u00E9\u2069\n\U0001F4F6"), "\u2068caf\u00E9\u2069\n\U0001F4F6");
}

TEST(HtmlWriter, MakesTextThatXMLAccepts) {
    std::string all;
    for (int octet = 0; octet < 256; ++octet) all += static_cast<char>(octet);
    const std::string page = "<p title=\"" + textOf(all) + "\">" + textOf(all) + "</p>";
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(page.c_str()));
    EXPECT_EQ(document.first_child().first_child().next_sibling(), pugi::xml_node());
}

TEST(HtmlWriter, MarksEscapesOfNames) {
    HtmlWriter html;
    html << shownText("a\x1B\x07<b>", {}) << shownText("\\", {}) << shownText("(x)", {});
    EXPECT_EQ(html.page(),
              "a<span class=\"esc\">\\x1B\\x07</span>&lt;b&gt;<span class=\"esc\">\\\\</span>"
              "&quot;(x)&quot;");
}

TEST(HtmlWriter, WritesNumbersForPeople) {
    EXPECT_EQ(signedText(-42), "\u221242");
    EXPECT_EQ(signedText(7), "7");
    EXPECT_EQ(groupedText(0), "0");
    EXPECT_EQ(groupedText(999), "999");
    EXPECT_EQ(groupedText(1234567), "1\u202F234\u202F567");
}

}  // namespace
