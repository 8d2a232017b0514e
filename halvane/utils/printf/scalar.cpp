// Reals, error codes, versions, UUIDs, the time of day, and durations.
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

#include "halvane/platform/os/local_time_internal.h"
#include "halvane/platform/os/wall_clock_internal.h"
#include "halvane/utils/convert/uuid.h"
#include "halvane/utils/convert/version_number.h"
#include "halvane/utils/convert/version_number_internal.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"
#include "halvane/utils/printf/stamp_internal.h"

namespace halvane::printing {

namespace {

struct DurationUnit {
    std::uint64_t seconds;
    char letter;
};

constexpr std::array<DurationUnit, 3> kDurationUnits = {{{86400, 'd'}, {3600, 'h'}, {60, 'm'}}};

bool isPrintableCode(std::uint32_t code) {
    for (int shift = 0; shift < 32; shift += 8) {
        if (!isPrintable(code >> shift & 0xFF)) return false;
    }
    return true;
}

}  // namespace

// The system formatter pads only as far as the scratch buffer reaches. The field's writer adds the
// rest.
void convertReal(Output& output, Conversion& conversion, Arguments& arguments) {
    const PrintFFormat& format = conversion.format;
    const double value = va_arg(arguments.list, double);
    const auto clamped = [](std::uint32_t number) {
        return static_cast<int>(std::min<std::size_t>(number, kScratchText));
    };
    const bool isLeft = hasFlag(format, kPrintFFlagLeftJustify);
    const int width = isLeft ? -clamped(format.fieldWidth) : clamped(format.fieldWidth);
    const int precision = hasPrecision(format) ? clamped(format.precision) : -1;
    char text[kScratchSize];
    if (hasFlag(format, kPrintFFlagForceSign)) {
        std::snprintf(text, sizeof(text), "%+*.*f", width, precision, value);
    } else {
        std::snprintf(text, sizeof(text), "%*.*f", width, precision, value);
    }
    PrintFWriteText(output, format, text);
}

void convertErrorCode(Output& output, Conversion& conversion, Arguments& arguments) {
    const auto code = va_arg(arguments.list, std::int32_t);
    const auto wide = static_cast<long long>(code);
    Scratch text;
    text.print("%lld/0x%llX", wide, wide);
    if (conversion.format.altForm > 0 && isPrintableCode(static_cast<std::uint32_t>(code))) {
        text.print("/'%C'", static_cast<std::uint32_t>(code));
    }
    text.append(" ");
    PrintFWriteText(output, conversion.format, text.text());
}

void convertVersion(Output& output, Conversion& conversion, Arguments& arguments) {
    const auto version = va_arg(arguments.list, std::uint32_t);
    const unsigned stage = version >> 8 & 0xFF;
    char number[kNumVersionTextSize];
    Scratch text;
    text.append(NumVersionToCString(version, number));
    if (stageLetter(stage) == 0) {
        text.print("<< ERROR: invalid NumVersion stage: 0x%02X >>", stage);
    }
    PrintFWriteText(output, conversion.format, text.text());
}

// Without '#' the first three fields are stored least significant byte first.
void convertUUID(Output& output, Conversion& conversion, Arguments& arguments) {
    const auto* bytes = va_arg(arguments.list, const std::uint8_t*);
    if (bytes == nullptr) return PrintFWriteText(output, conversion.format, kNullText);
    char text[kUUIDTextSize];
    const bool isLittleEndian = conversion.format.altForm == 0;
    PrintFWriteText(output, conversion.format, UUIDtoCString(bytes, isLittleEndian, text));
}

void convertNow(Output& output, Conversion& conversion, Arguments&) {
    const WallTime now = wallTime();
    Stamp stamp;
    stamp.setSecond(localTime(now.seconds));
    stamp.setMicroseconds(now.microseconds);
    PrintFWriteText(output, conversion.format, stamp.text());
}

void convertDuration(Output& output, const PrintFFormat& format, Arguments& arguments) {
    const std::int64_t value = signedArgument(format, arguments);
    auto rest = static_cast<std::uint64_t>(value);
    Scratch text;
    if (value < 0) {
        rest = 0 - rest;
        text.append("-");
    }
    const char* separator = "";
    for (const auto& unit : kDurationUnits) {
        if (rest < unit.seconds) continue;
        text.print("%s%llu%c", separator, rest / unit.seconds, unit.letter);
        rest %= unit.seconds;
        separator = " ";
    }
    if (rest > 0 || *separator == '\0') text.print("%s%llus", separator, rest);
    PrintFWriteText(output, format, text.text());
}

}  // namespace halvane::printing
