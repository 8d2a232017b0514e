#include <algorithm>
#include <optional>

#include "halvane/platform/plist/xml_source_internal.h"

namespace halvane {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNextLine = "\xC2\x85";           // U+0085
constexpr std::string_view kLineSeparator = "\xE2\x80\xA8";  // U+2028

// Reads XML 1.0 production 23 from left to right.
class DeclarationReader {
  public:
    DeclarationReader(std::string_view text, std::size_t position)
        : text_(text), position_(position) {}

    Result<XmlDeclaration, XmlRefusal> read() {
        XmlDeclaration declaration;
        const auto refuse = [&](std::string_view reason) {
            return Unexpected(XmlRefusal{position_, reason});
        };
        skip("<?xml");
        const auto version = attribute("version");
        if (version != "1.0" && version != "1.1")
            return refuse("XML version other than 1.0 and 1.1");
        if (version == "1.1") declaration.version = XmlVersion::V1_1;
        const auto encoding = attribute("encoding");
        if (encoding && !isUtf8(*encoding)) return refuse("encoding other than UTF-8");
        const auto standalone = attribute("standalone");
        if (standalone && standalone != "yes" && standalone != "no") {
            return refuse("malformed XML declaration");
        }
        skipSpace();
        if (!skip("?>")) return refuse("malformed XML declaration");
        declaration.size = position_;
        return declaration;
    }

  private:
    static bool isUtf8(std::string_view name) {
        const auto lower = [](char c) {
            return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        };
        return std::ranges::equal(name, std::string_view("utf-8"), {}, lower);
    }

    bool skip(std::string_view literal) {
        if (!text_.substr(position_).starts_with(literal)) return false;
        position_ += literal.size();
        return true;
    }

    bool skipSpace() {
        const std::size_t start = position_;
        while (position_ < text_.size() && isXmlSpace(byte(position_))) ++position_;
        return position_ > start;
    }

    char32_t byte(std::size_t position) const {
        return static_cast<unsigned char>(text_[position]);
    }

    // Returns the value of the attribute `name` if that comes next. Otherwise nothing is consumed.
    std::optional<std::string_view> attribute(std::string_view name) {
        const std::size_t start = position_;
        const auto value = skipSpace() && skip(name) ? assignedValue() : std::nullopt;
        if (!value) position_ = start;
        return value;
    }

    std::optional<std::string_view> assignedValue() {
        skipSpace();
        if (!skip("=")) return std::nullopt;
        skipSpace();
        for (const std::string_view quote : {"\"", "'"}) {
            if (!skip(quote)) continue;
            const std::size_t end = text_.find(quote, position_);
            if (end == std::string_view::npos) return std::nullopt;
            const auto value = text_.substr(position_, end - position_);
            position_ = end + 1;
            return value;
        }
        return std::nullopt;
    }

    std::string_view text_;
    std::size_t position_;
};

// Returns the number of bytes of the line end at `offset`; 0 if there is none.
std::size_t lineEndSize(std::string_view text, std::size_t offset, XmlVersion version) {
    const auto rest = text.substr(offset);
    const bool is11 = version == XmlVersion::V1_1;
    if (rest.starts_with('\r')) {
        if (rest.substr(1).starts_with('\n')) return 2;
        return is11 && rest.substr(1).starts_with(kNextLine) ? 1 + kNextLine.size() : 1;
    }
    if (!is11) return 0;
    if (rest.starts_with(kNextLine)) return kNextLine.size();
    return rest.starts_with(kLineSeparator) ? kLineSeparator.size() : 0;
}

// Returns the offset of the next line end other than a newline, from `offset` on; the size of
// `text` if there is none.
std::size_t nextLineEnd(std::string_view text, std::size_t offset, XmlVersion version) {
    if (version == XmlVersion::V1_0) return std::min(text.find('\r', offset), text.size());
    while (offset < text.size() && lineEndSize(text, offset, version) == 0) ++offset;
    return offset;
}

}  // namespace

Result<XmlDeclaration, XmlRefusal> xmlDeclaration(std::string_view text) {
    const std::size_t start = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    const auto rest = text.substr(start);
    const auto afterTarget = rest.substr(std::min<std::size_t>(5, rest.size()));
    // "<?xml-stylesheet" is a processing instruction.
    const bool isDeclared =
        rest.starts_with("<?xml") && !afterTarget.empty() &&
        (isXmlSpace(static_cast<unsigned char>(afterTarget[0])) || afterTarget[0] == '?');
    if (!isDeclared) return XmlDeclaration{XmlVersion::V1_0, start};
    return DeclarationReader(text, start).read();
}

bool hasOtherLineEnds(std::string_view text, XmlVersion version) {
    return nextLineEnd(text, 0, version) < text.size();
}

std::string withPlainLineEnds(std::string_view text, XmlVersion version) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t offset = 0; offset < text.size();) {
        const std::size_t lineEnd = nextLineEnd(text, offset, version);
        plain.append(text, offset, lineEnd - offset);
        if (lineEnd == text.size()) break;
        plain += '\n';
        offset = lineEnd + lineEndSize(text, lineEnd, version);
    }
    return plain;
}

std::size_t offsetBeforePlainLineEnds(std::string_view text, XmlVersion version,
                                      std::size_t offset) {
    std::size_t removed = 0;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t lineEnd = nextLineEnd(text, from, version);
        if (lineEnd == text.size() || lineEnd - removed >= offset) break;
        const std::size_t size = lineEndSize(text, lineEnd, version);
        removed += size - 1;
        from = lineEnd + size;
    }
    return offset + removed;
}

}  // namespace halvane
