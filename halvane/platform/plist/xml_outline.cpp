#include <algorithm>
#include <array>
#include <optional>

#include "halvane/platform/plist/xml_outline_internal.h"

namespace halvane {

namespace {

constexpr auto kNowhere = std::string_view::npos;

class Outliner {
  public:
    Outliner(std::string_view document, std::size_t maxDepth)
        : document_(document), maxDepth_(maxDepth) {}

    Result<XmlOutline, XmlRefusal> outline() {
        if (!skipDocument()) return Unexpected(refusal_);
        return XmlOutline{*root_, isTextLiteral()};
    }

  private:
    struct Markup {
        std::string_view opening;
        bool (Outliner::*skip)();
    };

    bool skipDocument() {
        for (;;) {
            const std::size_t markup = std::min(document_.find('<', position_), document_.size());
            if (depth_ == 0 && !isBlankUpTo(markup)) return false;
            position_ = markup;
            if (markup == document_.size()) break;
            if (!skipMarkup()) return false;
        }
        if (!root_) return refuse(position_, "no root element");
        return depth_ == 0 || refuse(position_, "element without an end");
    }

    bool skipMarkup() {
        static constexpr std::array<Markup, 4> kRareMarkup = {{
            {"<!--", &Outliner::skipComment},
            {"<![CDATA[", &Outliner::skipCdata},
            {"<!DOCTYPE", &Outliner::skipDoctype},
            {"<?", &Outliner::skipInstruction},
        }};
        const char mark = position_ + 1 < document_.size() ? document_[position_ + 1] : '\0';
        if (mark == '/') return skipEndTag();
        if (mark == '!' || mark == '?') {
            for (const Markup& markup : kRareMarkup) {
                if (isAt(markup.opening)) return (this->*markup.skip)();
            }
        }
        return skipStartTag();
    }

    bool skipStartTag() {
        if (depth_ == 0 && root_) return refuse(position_, "more than one root element");
        if (depth_ == maxDepth_) return refuse(position_, "nested too deep");
        if (!root_) root_ = position_;
        const std::size_t start = position_;
        if (!skipThrough(">", position_, "tag without an end")) return false;
        // A tag with ">" in a quoted value ends too early here. No tag of a property list holds a
        // ">".
        const bool isEmptyElement = position_ - start > 2 && document_[position_ - 2] == '/';
        if (!isEmptyElement) ++depth_;
        return true;
    }

    bool skipEndTag() {
        if (depth_ == 0) return refuse(position_, "end tag without a start tag");
        --depth_;
        return skipThrough(">", position_, "tag without an end");
    }

    bool skipComment() {
        const std::size_t start = position_;
        if (!skipThrough("--", start + 4, "comment without an end")) return false;
        if (!isAt(">")) return refuse(position_ - 2, "\"--\" within a comment");
        ++position_;
        return true;
    }

    bool skipCdata() {
        if (depth_ == 0) return refuse(position_, "text outside of the root element");
        return skipThrough("]]>", position_ + 9, "CDATA section without an end");
    }

    // XML 1.0 production 16: the name "xml" is reserved for declarations.
    bool skipInstruction() {
        const std::size_t name = position_ + 2;
        const std::size_t nameEnd =
            std::min(document_.find_first_of(" \t\n?", name), document_.size());
        const auto target = document_.substr(name, nameEnd - name);
        if (!isName(target) || isReserved(target)) {
            return refuse(position_, "processing instruction of no permitted name");
        }
        return skipThrough("?>", nameEnd, "processing instruction without an end");
    }

    // Declarations of an internal subset are markup nested in that of the DOCTYPE line.
    bool skipDoctype() {
        if (root_ || hasDoctype_) return refuse(position_, "DOCTYPE line out of place");
        if (!isSpaceAt(position_ + 9)) return refuse(position_, "malformed DOCTYPE line");
        hasDoctype_ = true;
        const std::size_t start = position_;
        position_ += 9;
        for (int depth = 1; depth > 0;) {
            position_ = std::min(document_.find_first_of("<>\"'", position_), document_.size());
            if (position_ == document_.size()) return refuse(start, "DOCTYPE line without an end");
            if (!skipPartOfDoctype(depth)) return false;
        }
        return true;
    }

    bool skipPartOfDoctype(int& depth) {
        if (isAt("<!--")) return skipComment();
        if (isAt("<?")) return skipInstruction();
        if (isAt("<")) ++depth;
        if (isAt(">")) --depth;
        const auto mark = document_.substr(position_, 1);
        ++position_;
        return mark == "<" || mark == ">" || skipThrough(mark, position_, "quote without an end");
    }

    bool isTextLiteral() const {
        return document_.find('&') == kNowhere && document_.find("]]>") == kNowhere;
    }

    static bool isName(std::string_view text) {
        const auto isNameStart = [](char c) {
            return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == ':' ||
                   static_cast<unsigned char>(c) >= 0x80;
        };
        const auto isNamePart = [isNameStart](char c) {
            return isNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
        };
        return !text.empty() && isNameStart(text[0]) && std::ranges::all_of(text, isNamePart);
    }

    static bool isReserved(std::string_view name) {
        return name.size() == 3 && (name[0] == 'x' || name[0] == 'X') &&
               (name[1] == 'm' || name[1] == 'M') && (name[2] == 'l' || name[2] == 'L');
    }

    bool isSpaceAt(std::size_t offset) const {
        return offset < document_.size() &&
               isXmlSpace(static_cast<unsigned char>(document_[offset]));
    }

    bool isAt(std::string_view literal) const {
        return document_.compare(position_, literal.size(), literal) == 0;
    }

    bool isBlankUpTo(std::size_t end) {
        const auto text = document_.substr(position_, end - position_);
        const auto stray = std::ranges::find_if_not(text, isXmlSpace);
        if (stray == text.end()) return true;
        const auto before = static_cast<std::size_t>(stray - text.begin());
        return refuse(position_ + before, "text outside of the root element");
    }

    // Moves behind the next `end` from `from` on. Without one, refuses the markup at the position.
    bool skipThrough(std::string_view end, std::size_t from, std::string_view reason) {
        const std::size_t found = document_.find(end, from);
        if (found == kNowhere) return refuse(position_, reason);
        position_ = found + end.size();
        return true;
    }

    bool refuse(std::size_t offset, std::string_view reason) {
        refusal_ = {offset, reason};
        return false;
    }

    std::string_view document_;
    std::size_t position_ = 0;
    std::size_t maxDepth_;
    XmlRefusal refusal_{};
    std::size_t depth_ = 0;
    bool hasDoctype_ = false;
    std::optional<std::size_t> root_;
};

}  // namespace

Result<XmlOutline, XmlRefusal> xmlOutline(std::string_view document, std::size_t maxDepth) {
    return Outliner(document, maxDepth).outline();
}

}  // namespace halvane
