#include "halvane/platform/plist/xml_property_list.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nettle/base64.h>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kBytesPerDataLine = 57;  // 76 digits (RFC 2045 clause 6.8)

// Examines a whole value before a line is written: whether XML can carry it, why not, and about how
// long the document will be. The depth limit also bounds the recursion here and in the writer.
class Survey {
  public:
    bool accepts(const PropertyListValue& value, int level) {
        countElement(level);
        if (level > kXmlPropertyListMaxDepth) return refuse("a value that is nested too deep");
        return std::visit([this, level](const auto& held) { return carries(held, level); },
                          value.variant());
    }
    const XmlPropertyListRefusal& refusal() const { return refusal_; }
    std::size_t size() const { return size_; }

  private:
    void countElement(int level) {
        constexpr std::size_t kUsualSize = 24;  // two short tags with a number between them
        size_ += static_cast<std::size_t>(level) + kUsualSize;
    }

    bool refuse(std::string_view reason, std::optional<char32_t> character = std::nullopt) {
        refusal_ = {reason, character};
        return false;
    }

    bool carries(std::monostate, int) { return refuse("a null value"); }
    bool carries(const PropertyListValue::Object&, int) {
        return refuse("a value of no property-list kind");
    }
    bool carries(bool, int) { return true; }
    bool carries(const Number&, int) { return true; }
    bool carries(const ByteBuffer& buffer, int level) {
        const std::size_t lines = buffer.size() / kBytesPerDataLine + 1;
        size_ += buffer.size() / 3 * 4 + lines * (static_cast<std::size_t>(level) + 1);
        return true;
    }
    bool carries(const Date&, int) { return true; }
    bool carries(const std::string& text, int) {
        size_ += text.size();
        const auto refused = refusedXmlText(text);
        if (!refused) return true;
        if (!refused->character) return refuse("text that is not UTF-8");
        return refuse("a character that XML 1.0 does not have", refused->character);
    }
    bool carries(const PropertyListArray& array, int level) {
        return std::ranges::all_of(
            array, [this, level](const auto& value) { return accepts(value, level + 1); });
    }
    bool carries(const PropertyListDictionary& dictionary, int level) {
        return std::ranges::all_of(dictionary, [this, level](const auto& entry) {
            countElement(level);
            return carries(entry.first, level) && accepts(entry.second, level + 1);
        });
    }

    XmlPropertyListRefusal refusal_;
    std::size_t size_ = 0;
};

void appendBase64(std::string& out, std::span<const std::uint8_t> bytes) {
    const std::size_t before = out.size();
    out.resize(before + BASE64_ENCODE_RAW_LENGTH(bytes.size()));
    ::base64_encode_raw(out.data() + before, bytes.size(), bytes.data());
}

std::string realText(const Number& number) {
    const double value = number.real();
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
    return number.description();
}

std::string dateText(const Date& date) {
    const Date::Fields fields = date.fields();
    std::array<char, 80> text;  // room for six integers of any value
    const int length =
        std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02u:%02u:%02uZ", fields.year,
                      fields.month, fields.day, fields.hour, fields.minute, fields.second);
    return {text.data(), static_cast<std::size_t>(length)};
}

// The tags of an element, and the line end.
struct Tags {
    std::string_view start, end;
};
constexpr Tags kKey = {"<key>", "</key>\n"};
constexpr Tags kString = {"<string>", "</string>\n"};
constexpr Tags kInteger = {"<integer>", "</integer>\n"};
constexpr Tags kReal = {"<real>", "</real>\n"};
constexpr Tags kDate = {"<date>", "</date>\n"};

// Writes a value that a Survey has accepted.
class Writer {
  public:
    explicit Writer(const Survey& survey) { text_.reserve(kEnvelopeSize + survey.size()); }

    std::string document(const PropertyListValue& root) {
        text_ += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n";
        write(root);
        text_ += "</plist>\n";
        return std::move(text_);
    }

  private:
    static constexpr std::size_t kEnvelopeSize = 80;  // the text that document() puts around the
                                                      // value

    void write(const PropertyListValue& value) {
        std::visit([this](const auto& held) { writeHeld(held); }, value.variant());
    }

    void writeHeld(std::monostate) {}
    void writeHeld(const PropertyListValue::Object&) {}
    void writeHeld(bool value) { value ? line("<true/>\n") : line("<false/>\n"); }
    void writeHeld(const Number& number) {
        if (number.isReal()) {
            element(kReal, realText(number));
        } else {
            element(kInteger, number.description());
        }
    }
    void writeHeld(const std::string& text) { textElement(kString, text); }
    void writeHeld(const Date& date) { element(kDate, dateText(date)); }

    void writeHeld(const ByteBuffer& buffer) {
        line("<data>\n");
        for (auto rest = buffer.bytes(); !rest.empty();) {
            const auto part = rest.first(std::min(kBytesPerDataLine, rest.size()));
            indent();
            appendBase64(text_, part);
            text_ += '\n';
            rest = rest.subspan(part.size());
        }
        line("</data>\n");
    }

    void writeHeld(const PropertyListArray& array) {
        if (array.empty()) return line("<array/>\n");
        line("<array>\n");
        ++depth_;
        for (const auto& value : array) write(value);
        --depth_;
        line("</array>\n");
    }

    void writeHeld(const PropertyListDictionary& dictionary) {
        if (dictionary.empty()) return line("<dict/>\n");
        line("<dict>\n");
        ++depth_;
        for (const auto& [key, value] : dictionary) {
            textElement(kKey, key);
            write(value);
        }
        --depth_;
        line("</dict>\n");
    }

    void indent() { text_.append(depth_, '\t'); }

    void line(std::string_view tagAndLineEnd) {
        indent();
        text_ += tagAndLineEnd;
    }

    // Writes content that needs no escaping, such as digits.
    void element(const Tags& tags, std::string_view content) {
        indent();
        text_.append(tags.start).append(content).append(tags.end);
    }

    void textElement(const Tags& tags, std::string_view content) {
        indent();
        text_ += tags.start;
        appendXmlText(text_, content);
        text_ += tags.end;
    }

    std::size_t depth_ = 0;
    std::string text_;
};

}  // namespace

Result<std::string, XmlPropertyListRefusal> xmlPropertyList(const PropertyListValue& value) {
    Survey survey;
    if (!survey.accepts(value, 1)) return Unexpected(survey.refusal());
    return Writer(survey).document(value);
}

}  // namespace halvane
