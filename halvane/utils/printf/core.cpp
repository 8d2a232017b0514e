// The core loop: literal runs, what follows '%', and the choice of the conversion.
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cxxabi.h>
#include <limits>
#include <string.h>
#include <string_view>

#include "halvane/base/status.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

const PrintFFormat kPrintFFormatDefault = {};

namespace halvane::printing {

namespace {

constexpr std::int32_t kMalformedModifier = -1;

constexpr std::array<Converter, 128> converters() {
    std::array<Converter, 128> table{};
    table['@'] = convertValue;
    table['C'] = convertCharacterCode;
    table['H'] = convertHex;
    table['N'] = convertNow;
    table['S'] = convertUTF16;
    table['U'] = convertUUID;
    table['V'] = convertNested;
    table['X'] = convertUnsigned;
    table['a'] = convertAddress;
    table['b'] = convertUnsigned;
    table['c'] = convertCharacter;
    table['d'] = convertSigned;
    table['f'] = convertReal;
    table['i'] = convertSigned;
    table['m'] = convertErrorCode;
    table['n'] = convertStoreCount;
    table['o'] = convertUnsigned;
    table['p'] = convertPointer;
    table['s'] = convertText;
    table['u'] = convertUnsigned;
    table['v'] = convertVersion;
    table['x'] = convertUnsigned;
    return table;
}

constexpr auto kConverters = converters();

void increment(std::uint8_t& count) {
    if (count < std::numeric_limits<std::uint8_t>::max()) ++count;
}

// Reads one specification after its '%'.
class SpecificationParser {
  public:
    SpecificationParser(const char* text, Arguments& arguments)
        : text_(text), arguments_(arguments) {}

    // Fills `format` up to the conversion character. Returns false for a malformed size modifier.
    bool parse(PrintFFormat& format) {
        parseFlags(format);
        parseWidth(format);
        parsePrecision(format);
        if (hasFlag(format, kPrintFFlagLeftJustify)) clear(format, kPrintFFlagZeroFill);
        return parseModifiers(format);
    }

    // Points to the conversion character after parse().
    const char* position() const { return text_; }

  private:
    static void set(PrintFFormat& format, int flag) {
        format.flags = static_cast<std::uint8_t>(format.flags | flag);
    }
    static void clear(PrintFFormat& format, int flag) {
        format.flags = static_cast<std::uint8_t>(format.flags & ~flag);
    }

    void parseFlags(PrintFFormat& format) {
        for (;; ++text_) {
            switch (*text_) {
                case '-':
                    set(format, kPrintFFlagLeftJustify);
                    break;
                case '+':
                    set(format, kPrintFFlagForceSign);
                    break;
                case '0':
                    set(format, kPrintFFlagZeroFill);
                    break;
                case ' ':
                    format.sign = ' ';
                    break;
                case '#':
                    increment(format.altForm);
                    break;
                case '\'':
                    increment(format.group);
                    break;
                default:
                    return;
            }
        }
    }

    void parseWidth(PrintFFormat& format) {
        if (*text_ != '*') {
            format.fieldWidth = parseNumber();
            return;
        }
        ++text_;
        const int width = va_arg(arguments_.list, int);
        format.fieldWidth = static_cast<std::uint32_t>(width);
        if (width < 0) {
            set(format, kPrintFFlagLeftJustify);
            format.fieldWidth = 0 - format.fieldWidth;
        }
    }

    // A negative precision from an argument counts as none, as in C.
    void parsePrecision(PrintFFormat& format) {
        if (*text_ != '.') return;
        ++text_;
        if (*text_ != '*') {
            set(format, kPrintFFlagPrecision);
            format.precision = parseNumber();
            return;
        }
        ++text_;
        const int precision = va_arg(arguments_.list, int);
        if (precision < 0) return;
        set(format, kPrintFFlagPrecision);
        format.precision = static_cast<std::uint32_t>(precision);
    }

    // Reads decimal digits, saturated.
    std::uint32_t parseNumber() {
        std::uint64_t number = 0;
        for (; *text_ >= '0' && *text_ <= '9'; ++text_) {
            number = number * 10 + static_cast<std::uint64_t>(*text_ - '0');
            if (number > UINT32_MAX) number = UINT32_MAX;
        }
        return static_cast<std::uint32_t>(number);
    }

    bool parseModifiers(PrintFFormat& format) {
        for (;; ++text_) {
            switch (*text_) {
                case 'h':
                    if (format.lCount > 0 || ++format.hCount > 2) return false;
                    break;
                case 'l':
                    if (format.hCount > 0 || ++format.lCount > 2) return false;
                    break;
                case 'j':
                case 'z':
                case 't':
                    if (format.hCount > 0 || format.lCount > 0) return false;
                    format.lCount = 1;
                    break;
                default:
                    return true;
            }
        }
    }

    const char* text_;
    Arguments& arguments_;
};

// `text` is after "%{". Returns the text after the extension, or the end of the format if no '}'
// closes it; it is then not an extension at all.
const char* expandExtension(Output& output, const PrintFFormat& format, const char* text,
                            Arguments& arguments) {
    const char* const end = strchrnul(text, '}');
    const std::string_view name(text, static_cast<std::size_t>(end - text));
    if (*end == '\0') {
        writeUnknownExtension(output, format, name);
        return end;
    }
    convertExtension(output, format, name, arguments);
    return end + 1;
}

void expandUnknown(Output& output, const Conversion& conversion) {
    writeMessage(output, conversion.format, "<<UNKNOWN FORMAT CONVERSION CODE %%%c>>",
                 conversion.code);
}

// Expands "%d", "%u" or "%s", which most specifications are. Returns false for any other code.
bool expandBare(Output& output, char code, Arguments& arguments) {
    switch (code) {
        case 'd': {
            const auto value = va_arg(arguments.list, std::int32_t);
            const auto magnitude = static_cast<std::uint32_t>(value);
            writeDecimal(output, value < 0 ? 0 - magnitude : magnitude, value < 0);
            return true;
        }
        case 'u':
            writeDecimal(output, va_arg(arguments.list, std::uint32_t), false);
            return true;
        case 's': {
            const auto* const text = va_arg(arguments.list, const char*);
            output.write(text != nullptr ? std::string_view(text) : kNullText);
            return true;
        }
        default:
            return false;
    }
}

// Expands one specification after its '%', and returns the text after it.
const char* expandSpecification(Output& output, const char* text, Arguments& arguments) {
    Conversion conversion{};
    SpecificationParser parser(text, arguments);
    if (!parser.parse(conversion.format)) {
        output.abort(kMalformedModifier);
        return "";
    }
    text = parser.position();
    const auto code = static_cast<unsigned char>(*text);
    conversion.code = *text;
    if (code < kConverters.size() && kConverters[code] != nullptr) {
        kConverters[code](output, conversion, arguments);
    } else if (code == '%') {
        PrintFWriteText(output, conversion.format, "%");
    } else if (code == '{') {
        return expandExtension(output, conversion.format, text + 1, arguments);
    } else if (code == '\0') {
        writeMessage(output, conversion.format, "<<UNKNOWN FORMAT CONVERSION CODE %%>>");
        return text;
    } else {
        expandUnknown(output, conversion);
    }
    return text + 1;
}

}  // namespace

void expand(Output& output, const char* format, Arguments& arguments) {
    while (*format != '\0' && output.isOpen()) {
        const char* const percent = strchrnul(format, '%');
        output.write({format, static_cast<std::size_t>(percent - format)});
        if (*percent == '\0') return;
        format = expandBare(output, percent[1], arguments)
                     ? percent + 2
                     : expandSpecification(output, percent + 1, arguments);
    }
}

// The caller's list is not changed: whether a called function advances it depends on the platform.
void convertNested(Output& output, Conversion& conversion, Arguments& arguments) {
    const auto* format = va_arg(arguments.list, const char*);
    auto* list = va_arg(arguments.list, va_list*);
    if (format == nullptr || list == nullptr) {
        return PrintFWriteText(output, conversion.format, kNullText);
    }
    ArgumentsCopy nested(*list);
    expand(output, format, nested);
}

}  // namespace halvane::printing

using halvane::printing::ArgumentsCopy;
using halvane::printing::Output;

extern "C" int PrintFCore(PrintFContext* context, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int result = PrintFCoreVAList(context, format, arguments);
    va_end(arguments);
    return result;
}

namespace {

// Every front end passes here, so exceptions end only here: those of an allocation for a value's
// text, and those of a C++ callback. The cancelling of a thread is not an exception. It has no
// object for the handler's reference, which the sanitizer takes for an error.
__attribute__((no_sanitize("undefined"))) void expandOrAbort(Output& output, const char* format,
                                                             ArgumentsCopy& arguments) {
    try {
        halvane::printing::expand(output, format, arguments);
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (...) {
        output.abort(kStatusNoMemory);
    }
}

}  // namespace

extern "C" int PrintFCoreVAList(PrintFContext* context, const char* format, va_list arguments) {
    ArgumentsCopy copy(arguments);
    Output output(context);
    expandOrAbort(output, format, copy);
    return output.result();
}
