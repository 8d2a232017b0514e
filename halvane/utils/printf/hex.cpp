// Hex dumps, inline and on separate lines.
#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <span>

#include "halvane/base/ascii_internal.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kBytesPerLine = 16;
constexpr std::size_t kBytesPerGroup = 4;

enum HexForm : std::uint32_t { kInline, kLines, kBlock, kDigitsOnly };

// The two columns of a dump line. Missing bytes are printed as spaces.
struct DumpLine {
    explicit DumpLine(Bytes bytes) {
        std::fill(std::begin(hex), std::end(hex) - 1, ' ');
        std::fill(std::begin(characters), std::end(characters) - 1, ' ');
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const std::size_t column = 2 * i + i / kBytesPerGroup;
            hex[column] = kLowerHexDigits[bytes[i] >> 4];
            hex[column + 1] = kLowerHexDigits[bytes[i] & 0x0F];
            characters[i] = printableOrCaret(bytes[i]);
        }
    }

    char hex[2 * kBytesPerLine + kBytesPerLine / kBytesPerGroup] = {};
    char characters[kBytesPerLine + 1] = {};
};

struct InlineColumns {
    bool hex;
    bool characters;
};

constexpr InlineColumns columnsOf(const PrintFFormat& format) {
    return {(format.altForm < 2), (format.altForm > 0)};
}

std::uint64_t inlineLength(const PrintFFormat& format, std::uint64_t size) {
    const auto columns = columnsOf(format);
    const std::uint64_t hex = columns.hex && size > 0 ? 3 * size - 1 : 0;
    const std::uint64_t characters = columns.characters ? size + 2 + (hex > 0 ? 1 : 0) : 0;
    return hex + characters;
}

void writeInline(Output& output, const PrintFFormat& format, Bytes bytes) {
    const auto length = inlineLength(format, bytes.size());
    const auto columns = columnsOf(format);
    openField(output, format, length);
    PieceBuilder pieces(output);
    if (columns.hex) {
        for (std::size_t i = 0; i < bytes.size() && output.isOpen(); ++i) {
            if (i > 0) pieces.put(' ');
            pieces.putHex(bytes[i]);
        }
        if (columns.characters && !bytes.empty()) pieces.put(' ');
    }
    if (columns.characters) {
        pieces.put('|');
        for (const auto byte : bytes) pieces.put(printableOrCaret(byte));
        pieces.put('|');
    }
    pieces.flush();
    closeField(output, format, length);
}

void writeDigitsOnly(Output& output, const PrintFFormat& format, Bytes bytes) {
    const std::uint64_t length = 2 * std::uint64_t{bytes.size()};
    openField(output, format, length);
    PieceBuilder pieces(output);
    for (const auto byte : bytes) pieces.putHex(byte);
    pieces.flush();
    closeField(output, format, length);
}

void writeManyLines(Output& output, std::uint64_t indent, Bytes bytes, std::size_t size) {
    for (std::size_t offset = 0; offset < bytes.size() && output.isOpen();
         offset += kBytesPerLine) {
        const auto left = bytes.subspan(offset);
        const DumpLine line(left.first(std::min(left.size(), kBytesPerLine)));
        output.pad(indent);
        output.print("+%04X: %s |%s|", static_cast<unsigned>(offset), line.hex, line.characters);
        if (offset == 0) output.print(" (%zu bytes)", size);
        output.write("\n");
    }
}

// -1 means the length of a text. Any other negative size or limit means 0.
std::size_t sizeArgument(const std::uint8_t* data, int size) {
    if (size == -1 && data != nullptr) return std::strlen(reinterpret_cast<const char*>(data));
    return static_cast<std::size_t>(std::max(size, 0));
}

}  // namespace

void PrintFWriteHex(Output& output, std::uint64_t indent, const std::uint8_t* data,
                    std::size_t size, std::size_t max) {
    const Bytes bytes(data, std::min(size, max));
    if (size <= kBytesPerLine) {
        const DumpLine line(bytes);
        output.pad(indent);
        output.print("%s |%s| (%zu bytes)\n", line.hex, line.characters, size);
    } else {
        writeManyLines(output, indent, bytes, size);
    }
    if (size > max) {
        output.pad(indent);
        output.print("... %zu more bytes ...\n", size - max);
    }
}

void writeHexBlock(Output& output, std::uint64_t indent, const std::uint8_t* data, std::size_t size,
                   std::size_t max) {
    if (size == 0) return output.write("(0 bytes)\n");
    if (size <= kBytesPerLine) return PrintFWriteHex(output, 0, data, size, max);
    output.write("\n");
    PrintFWriteHex(output, indent, data, size, max);
}

void convertHex(Output& output, Conversion& conversion, Arguments& arguments) {
    const PrintFFormat& format = conversion.format;
    const auto* data = va_arg(arguments.list, const std::uint8_t*);
    const int sizeGiven = va_arg(arguments.list, int);
    const int maxGiven = va_arg(arguments.list, int);
    const std::size_t size = sizeArgument(data, sizeGiven);
    const auto max = static_cast<std::size_t>(std::max(maxGiven, 0));
    if (data == nullptr && sizeGiven != 0) {
        return writeMessage(output, format, "<<NULL %zu/%zu>>", size, max);
    }
    const Bytes shown(data, std::min(size, max));
    switch (precisionOf(format)) {
        case kInline:
            return writeInline(output, format, shown);
        case kLines:
            return PrintFWriteHex(output, indentOf(format), data, size, max);
        case kBlock:
            return writeHexBlock(output, indentOf(format), data, size, max);
        case kDigitsOnly:
            return writeDigitsOnly(output, format, shown);
        default:
            return writeMessage(output, format, "<< BAD %%H PRECISION >>");
    }
}

}  // namespace halvane::printing
