// Characters, strings, and values that are written like strings.
#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

enum TextForm : std::uint8_t { kPlain, kPascal, kDNSName, kFunctionSignature };

// A null pointer is an empty text if the precision is 0, since nothing is read then.
bool writesNull(const void* text, const PrintFFormat& format) {
    return text == nullptr && !(hasPrecision(format) && format.precision == 0);
}

// Nothing after the precision is read, so a text that ends there needs no terminator.
std::string_view plainText(const PrintFFormat& format, const char* text) {
    if (!hasPrecision(format)) return text;
    if (format.precision == 0) return "";
    const std::size_t length = strnlen(text, format.precision);
    const std::string_view part(text, length);
    return length < format.precision ? part : part.substr(0, completeLength(part));
}

std::string_view pascalText(const char* text) {
    return {text + 1, static_cast<unsigned char>(*text)};
}

// Reads the code units of a UTF-16 string whose byte order is known at run time.
class UTF16Reader {
  public:
    // Reads at most `limit` code units, not counting a byte-order mark; nothing if `limit` is 0.
    UTF16Reader(const unsigned char* text, bool bigEndian, std::size_t limit)
        : text_(text), bigEndian_(bigEndian), left_(limit) {
        if (left_ > 0) takeByteOrderMark();
    }

    // Returns the next code unit; 0 at the end.
    std::uint16_t next() {
        if (left_ == 0) return 0;
        const std::uint16_t unit = peek();
        text_ += 2;
        --left_;
        return unit;
    }

  private:
    static constexpr std::uint16_t kMark = 0xFEFF;
    static constexpr std::uint16_t kSwappedMark = 0xFFFE;

    std::uint16_t peek() const {
        const unsigned high = text_[bigEndian_ ? 0 : 1];
        const unsigned low = text_[bigEndian_ ? 1 : 0];
        return static_cast<std::uint16_t>(high << 8 | low);
    }

    void takeByteOrderMark() {
        const std::uint16_t first = peek();
        if (first != kMark && first != kSwappedMark) return;
        if (first == kSwappedMark) bigEndian_ = !bigEndian_;
        text_ += 2;
    }

    const unsigned char* text_;
    bool bigEndian_;
    std::size_t left_;
};

UTF16Reader readerOf(const PrintFFormat& format, const unsigned char* text) {
    const bool bigEndian =
        format.altForm == 0 ? std::endian::native == std::endian::big : format.altForm == 1;
    return {text, bigEndian,
            hasPrecision(format) ? format.precision : std::numeric_limits<std::size_t>::max()};
}

}  // namespace

// "+..." is returned whole. "-[C m:]" loses the text up to its first space and from its ']' on. Any
// other text is a declaration: its name begins after the last space before the first "::" (or
// before the first '(' if there is no "::") and ends at the next '(' or space.
std::string_view functionName(std::string_view signature) {
    if (signature.starts_with('+')) return signature;
    if (signature.starts_with('-')) {
        signature.remove_prefix(signature.find(' ') + 1);
        return signature.substr(0, signature.find(']'));
    }
    auto qualifier = signature.find("::");
    if (qualifier == signature.npos) qualifier = signature.find('(');
    signature.remove_prefix(signature.substr(0, qualifier).rfind(' ') + 1);
    signature.remove_prefix(std::min(signature.find_first_not_of('*'), signature.size()));
    return signature.substr(0, signature.find_first_of("( "));
}

void convertText(Output& output, Conversion& conversion, Arguments& arguments) {
    PrintFFormat& format = conversion.format;
    const auto* text = va_arg(arguments.list, const char*);
    if (format.altForm > kFunctionSignature) {
        return writeMessage(output, format, "<< ERROR: %%s with too many #'s (%d) >>",
                            format.altForm);
    }
    if (writesNull(text, format)) return PrintFWriteText(output, format, kNullText);
    applyQuotes(format);
    if (text == nullptr) return PrintFWriteText(output, format, "");
    switch (format.altForm) {
        case kPlain:
            return PrintFWriteText(output, format, plainText(format, text));
        case kPascal:
            return PrintFWriteText(output, format, cutToPrecision(format, pascalText(text)));
        case kDNSName:
            return writeDNSName(output, format, text);
        default:
            return PrintFWriteText(output, format, cutToPrecision(format, functionName(text)));
    }
}

// Each code unit is one byte of output, so a first pass gives the width.
void convertUTF16(Output& output, Conversion& conversion, Arguments& arguments) {
    constexpr int kMostAltForms = 2;
    PrintFFormat& format = conversion.format;
    const auto* text = va_arg(arguments.list, const unsigned char*);
    if (format.altForm > kMostAltForms) {
        return writeMessage(output, format, "<< ERROR: %%S with too many #'s (%d) >>",
                            format.altForm);
    }
    if (writesNull(text, format)) return PrintFWriteText(output, format, kNullText);
    applyQuotes(format);

    std::uint64_t length = 0;
    for (UTF16Reader reader = readerOf(format, text); reader.next() != 0;) ++length;
    openField(output, format, length);
    PieceBuilder pieces(output);
    UTF16Reader reader = readerOf(format, text);
    while (const auto unit = reader.next()) pieces.put(printableOrCaret(unit));
    pieces.flush();
    closeField(output, format, length);
}

void convertCharacter(Output& output, Conversion& conversion, Arguments& arguments) {
    const auto code = static_cast<unsigned char>(va_arg(arguments.list, int));
    char character = static_cast<char>(code);
    if (conversion.format.group > 0) {
        conversion.format.quote = '\'';
        character = printableOrCaret(code);
    }
    PrintFWriteText(output, conversion.format, {&character, 1});
}

void convertCharacterCode(Output& output, Conversion& conversion, Arguments& arguments) {
    const auto code = va_arg(arguments.list, std::uint32_t);
    char text[4];
    for (int i = 0; i < 4; ++i) text[i] = printableOrCaret(code >> (24 - 8 * i) & 0xFF);
    if (conversion.format.group > 0) conversion.format.quote = '\'';
    PrintFWriteText(output, conversion.format, {text, sizeof(text)});
}

}  // namespace halvane::printing
