// Writes HTML. This is the one place that escapes text: markup can only be a literal of a source,
// and everything else is text, in an element or in a quoted attribute.
//
// The result is also well-formed XML. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_REPORT_HTML_WRITER_H
#define TOOLS_HALVANE_REPORT_HTML_WRITER_H

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

// A piece of markup. Only a literal converts to it, so that no text of others can be one.
class Markup {
  public:
    // NOLINTNEXTLINE(google-explicit-constructor)
    consteval Markup(const char* literal) : text_(literal) {}
    constexpr std::string_view text() const { return text_; }

  private:
    std::string_view text_;
};

// Text, for an element or between the quotes of an attribute: "&", "<", ">" and quotes become
// references. What is invisible (controls, octets that are no UTF-8) becomes \xNN or \u{NNNN}, but
// line feeds and the characters that isolate a name (U+2068, U+2069) stay.
struct HtmlText {
    std::string_view text;
};

// A number with that many digits behind the point, whatever the locale is.
struct Fixed {
    double value;
    int digits = 1;
};

class HtmlWriter {
  public:
    HtmlWriter& operator<<(Markup markup) {
        page_ += markup.text();
        return *this;
    }
    HtmlWriter& operator<<(HtmlText text);
    HtmlWriter& operator<<(Fixed number);
    // The tool's own escapes are marked.
    HtmlWriter& operator<<(const ShownText& text);

    template <std::integral T>
    requires(!std::same_as<T, char> && !std::same_as<T, bool>) HtmlWriter& operator<<(T number) {
        page_ += std::to_string(number);
        return *this;
    }

    // What another writer wrote.
    void append(const HtmlWriter& other) { page_ += other.page_; }

    const std::string& page() const { return page_; }
    std::string take() { return std::move(page_); }

    // A style sheet or a script, as the text of its element. It is the tool's own.
    // REQUIRES: `text` ends no element of this kind.
    void embed(std::string_view text) { page_ += text; }

  private:
    std::string page_;
};

// A number with the sign U+2212 where it is negative.
std::string signedText(std::int64_t number);

// Digits in groups of three, with narrow blanks (U+202F) between them.
std::string groupedText(std::uint64_t number);

}  // namespace halvane::tool

#endif
