// The conversions of the formatting engine. Each takes its own arguments.
#ifndef HALVANE_UTILS_PRINTF_CONVERSIONS_INTERNAL_H
#define HALVANE_UTILS_PRINTF_CONVERSIONS_INTERNAL_H

#include <cstdint>
#include <string_view>

#include "halvane/utils/printf.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

struct Conversion {
    PrintFFormat format;
    char code;  // the conversion character
};

using Converter = void (*)(Output& output, Conversion& conversion, Arguments& arguments);

void convertAddress(Output&, Conversion&, Arguments&);        // a
void convertCharacter(Output&, Conversion&, Arguments&);      // c
void convertCharacterCode(Output&, Conversion&, Arguments&);  // C
void convertErrorCode(Output&, Conversion&, Arguments&);      // m
void convertHex(Output&, Conversion&, Arguments&);            // H
void convertNested(Output&, Conversion&, Arguments&);         // V
void convertNow(Output&, Conversion&, Arguments&);            // N
void convertPointer(Output&, Conversion&, Arguments&);        // p
void convertReal(Output&, Conversion&, Arguments&);           // f
void convertSigned(Output&, Conversion&, Arguments&);         // d i
void convertStoreCount(Output&, Conversion&, Arguments&);     // n
void convertText(Output&, Conversion&, Arguments&);           // s
void convertUnsigned(Output&, Conversion&, Arguments&);       // u o x X b
void convertUTF16(Output&, Conversion&, Arguments&);          // S
void convertUUID(Output&, Conversion&, Arguments&);           // U
void convertValue(Output&, Conversion&, Arguments&);          // @
void convertVersion(Output&, Conversion&, Arguments&);        // v

// %{name}
void convertExtension(Output& output, const PrintFFormat& format, std::string_view name,
                      Arguments& arguments);
void writeUnknownExtension(Output& output, const PrintFFormat& format, std::string_view name);
void convertDuration(Output&, const PrintFFormat&, Arguments&);
void convertElements(Output&, const PrintFFormat&, Arguments&);
void convertIPCMessage(Output&, const PrintFFormat&, Arguments&);
void convertMultiLineText(Output&, const PrintFFormat&, Arguments&);
void convertTXTRecord(Output&, const PrintFFormat&, Arguments&);

// "%d" and "%u" without anything between.
void writeDecimal(Output& output, std::uint32_t magnitude, bool isNegative);

// Parts of %s.
void writeDNSName(Output& output, const PrintFFormat& format, const char* name);
std::string_view functionName(std::string_view signature);

}  // namespace halvane::printing

#endif
