// Integers in any radix, lists of set bits, and the count of bytes so far.
#include <algorithm>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/decimal_internal.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

constexpr std::size_t kGroupSize = 3;
constexpr unsigned kMostBits = 64;
constexpr std::size_t kMostDecimal = 11;  // "-2147483648"

// The text of a number, built from its right end.
class NumberText {
  public:
    NumberText() = default;
    NumberText(const NumberText&) = delete;
    NumberText& operator=(const NumberText&) = delete;

    std::size_t size() const { return static_cast<std::size_t>(area_ + kScratchSize - start_); }
    std::string_view text() const { return {start_, size()}; }

    void put(char character) { *--start_ = character; }
    void put(std::string_view text) {
        start_ -= text.size();
        std::copy(text.begin(), text.end(), start_);
    }

    void putDecimal(std::uint64_t value) {
        while (value >= 10) {
            const auto pair = 2 * (value % 100);
            value /= 100;
            put(kDecimalPairs[pair + 1]);
            put(kDecimalPairs[pair]);
        }
        if (value > 0) put(static_cast<char>('0' + value));
    }

    void putBinary(std::uint64_t value, unsigned bitsPerDigit, const char* digits) {
        for (; value > 0; value >>= bitsPerDigit) put(digits[value & ((1u << bitsPerDigit) - 1)]);
    }

    void fillWithZeros(std::size_t size) {
        while (this->size() < size) put('0');
    }

  private:
    char area_[kScratchSize];
    char* start_ = area_ + kScratchSize;
};

void putDigits(NumberText& number, char code, std::uint64_t value) {
    switch (code) {
        case 'x':
            return number.putBinary(value, 4, kLowerHexDigits);
        case 'X':
        case 'p':
            return number.putBinary(value, 4, kUpperHexDigits);
        case 'o':
            return number.putBinary(value, 3, kUpperHexDigits);
        case 'b':
            return number.putBinary(value, 1, kUpperHexDigits);
        default:
            return number.putDecimal(value);
    }
}

// Returns the prefix that '#' puts before the digits, also before a zero.
std::string_view prefixOf(const Conversion& conversion) {
    if (conversion.code == 'p') return "0x";
    if (conversion.format.altForm == 0) return "";
    switch (conversion.code) {
        case 'x':
            return "0x";
        case 'X':
            return "0X";
        case 'b':
            return "0b";
        case 'o':
            return "0";
        default:
            return "";
    }
}

std::size_t leastDigits(const PrintFFormat& format, std::size_t prefixSize) {
    if (hasPrecision(format)) return format.precision;
    if (!hasFlag(format, kPrintFFlagZeroFill)) return 1;
    return format.fieldWidth > prefixSize ? format.fieldWidth - prefixSize : 1;
}

// Puts a comma between groups of three `digits`. Digits beyond `room` are lost at the left, where
// there can be only zeros.
void putGrouped(NumberText& number, std::string_view digits, std::size_t room) {
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const bool startsGroup = i > 0 && i % kGroupSize == 0;
        if (number.size() + (startsGroup ? 2 : 1) > room) return;
        if (startsGroup) number.put(',');
        number.put(digits[digits.size() - 1 - i]);
    }
}

// The whole text has at most kScratchText characters: the prefix replaces leading zeros.
void writeInteger(Output& output, const Conversion& conversion, std::uint64_t value, char sign) {
    const PrintFFormat& format = conversion.format;
    const auto prefix = prefixOf(conversion);
    const std::size_t prefixSize = prefix.size() + (sign != 0 ? 1 : 0);
    const std::size_t room = kScratchText - prefixSize;
    const auto finish = [&](NumberText& number) {
        number.put(prefix);
        if (sign != 0) number.put(sign);
        PrintFWriteText(output, format, number.text());
    };

    NumberText number;
    putDigits(number, conversion.code, value);
    number.fillWithZeros(std::min(leastDigits(format, prefixSize), room));
    if (format.group == 0) return finish(number);
    NumberText grouped;
    putGrouped(grouped, number.text(), room);
    finish(grouped);
}

// Returns the number of characters.
std::size_t putDecimal(char* text, std::uint32_t magnitude, bool isNegative) {
    const std::size_t size = decimalSize(magnitude) + (isNegative ? 1 : 0);
    if (isNegative) *text = '-';
    putDecimalBefore(text + size, magnitude);
    return size;
}

unsigned bitCount(const PrintFFormat& format) {
    if (hasPrecision(format)) return std::max(format.precision, 1u);
    if (format.hCount == 2) return 8;
    if (format.hCount == 1) return 16;
    return format.lCount > 0 ? 64 : 32;
}

// With two '#', bit 0 is the least significant one, and the highest number comes first. With more,
// bit 0 is the most significant bit of the field, as in figures of IEEE 802.11 and RFCs, and the
// lowest number comes first. Both lists start at the most significant bit.
void writeBitList(Output& output, const PrintFFormat& format, std::uint64_t value) {
    const unsigned count = bitCount(format);
    if (count > kMostBits) {
        return writeMessage(output, format, "ERROR: << precision must be 0-%d >>",
                            static_cast<int>(kMostBits));
    }
    Scratch text;
    for (unsigned bit = count; bit-- > 0;) {
        if ((value >> bit & 1) == 0) continue;
        const std::size_t number = format.altForm > 2 ? count - 1 - bit : bit;
        if (!text.text().empty()) text.append(" ");
        if (number >= 10) text.append({&kDecimalPairs[2 * number], 1});
        text.append({&kDecimalPairs[2 * number + 1], 1});
    }
    PrintFWriteText(output, format, text.text());
}

}  // namespace

std::uint64_t unsignedArgument(const PrintFFormat& format, Arguments& arguments) {
    if (format.lCount > 0) return va_arg(arguments.list, std::uint64_t);
    const auto value = va_arg(arguments.list, std::uint32_t);
    if (format.hCount == 2) return static_cast<std::uint8_t>(value);
    return format.hCount == 1 ? static_cast<std::uint16_t>(value) : value;
}

std::int64_t signedArgument(const PrintFFormat& format, Arguments& arguments) {
    if (format.lCount > 0) return va_arg(arguments.list, std::int64_t);
    const auto value = va_arg(arguments.list, std::int32_t);
    if (format.hCount == 2) return static_cast<std::int8_t>(value);
    return format.hCount == 1 ? static_cast<std::int16_t>(value) : value;
}

void convertSigned(Output& output, Conversion& conversion, Arguments& arguments) {
    const std::int64_t value = signedArgument(conversion.format, arguments);
    const auto magnitude = static_cast<std::uint64_t>(value);
    if (value < 0) return writeInteger(output, conversion, 0 - magnitude, '-');
    const bool forced = hasFlag(conversion.format, kPrintFFlagForceSign);
    writeInteger(output, conversion, magnitude, forced ? '+' : conversion.format.sign);
}

void convertUnsigned(Output& output, Conversion& conversion, Arguments& arguments) {
    const std::uint64_t value = unsignedArgument(conversion.format, arguments);
    if (conversion.code == 'b' && conversion.format.altForm >= 2) {
        return writeBitList(output, conversion.format, value);
    }
    writeInteger(output, conversion, value, 0);
}

void writeDecimal(Output& output, std::uint32_t magnitude, bool isNegative) {
    if (char* const place = output.room(kMostDecimal)) {
        return output.take(putDecimal(place, magnitude, isNegative));
    }
    char text[kMostDecimal];
    output.write({text, putDecimal(text, magnitude, isNegative)});
}

void convertPointer(Output& output, Conversion& conversion, Arguments& arguments) {
    constexpr std::uint32_t kPointerDigits = 16;
    const auto value = reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, const void*));
    conversion.format.flags |= kPrintFFlagPrecision;
    conversion.format.precision = kPointerDigits;
    writeInteger(output, conversion, value, 0);
}

void convertStoreCount(Output& output, Conversion& conversion, Arguments& arguments) {
    void* const target = va_arg(arguments.list, void*);
    if (target == nullptr) return;
    const auto store = [&]<typename Integer>(Integer value) {
        *static_cast<Integer*>(target) = value;
    };
    const std::uint64_t count = output.count();
    if (conversion.format.hCount == 2) return store(static_cast<std::int8_t>(count));
    if (conversion.format.hCount == 1) return store(static_cast<std::int16_t>(count));
    if (conversion.format.lCount > 0) return store(static_cast<std::int64_t>(count));
    store(static_cast<std::int32_t>(count));
}

}  // namespace halvane::printing
