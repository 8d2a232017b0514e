// The writers that every conversion uses.
#include <algorithm>
#include <array>
#include <cstdarg>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

constexpr std::size_t kPadPiece = 4096;

constexpr auto kSpaces = [] {
    std::array<char, kPadPiece> spaces{};
    spaces.fill(' ');
    return spaces;
}();

// Returns the length of the sequence that `lead` starts; 1 if it starts none.
constexpr std::size_t sequenceLength(char lead) {
    const auto byte = static_cast<unsigned char>(lead);
    if (byte >= 0xF0) return 4;
    if (byte >= 0xE0) return 3;
    return byte >= 0xC0 ? 2 : 1;
}

std::uint64_t paddingOf(const PrintFFormat& format, std::uint64_t length) {
    const std::uint64_t quoted = length + (format.quote != 0 ? 2 : 0);
    return format.fieldWidth > quoted ? format.fieldWidth - quoted : 0;
}

}  // namespace

std::int32_t Output::result() const {
    if (status_ < 0) return status_;
    return static_cast<std::int32_t>(std::min<std::uint64_t>(count_, INT32_MAX));
}

void Output::pass(std::string_view piece) {
    if (!isOpen()) return;
    count_ += piece.size();
    const auto accepted = context_->callback(piece.data(), piece.size(), context_);
    if (accepted < 0) abort(accepted);
}

void Output::pad(std::uint64_t spaces) {
    if (spaces > kPadPiece && isOpen() && context_->callback == storeInHeapString) {
        if (const auto status = reserveInHeapString(spaces, context_); status < 0) abort(status);
    }
    while (spaces > 0 && isOpen()) {
        const auto piece = std::min<std::uint64_t>(spaces, kPadPiece);
        write({kSpaces.data(), static_cast<std::size_t>(piece)});
        spaces -= piece;
    }
}

void Output::print(const char* format, ...) {
    va_list list;
    va_start(list, format);
    ArgumentsCopy arguments(list);
    va_end(list);
    expand(*this, format, arguments);
}

void Scratch::append(std::string_view text) {
    const std::size_t room = kScratchText - size_;
    if (text.size() > room) text = text.substr(0, completeLength(text.substr(0, room)));
    std::memcpy(text_ + size_, text.data(), text.size());
    size_ += text.size();
}

void Scratch::print(const char* format, ...) {
    const std::size_t room = kScratchSize - size_;
    va_list arguments;
    va_start(arguments, format);
    const int length = VSNPrintF(text_ + size_, room, format, arguments);
    va_end(arguments);
    if (length < 0) return;
    size_ += static_cast<std::size_t>(length) < room ? static_cast<std::size_t>(length)
                                                     : std::strlen(text_ + size_);
}

void PieceBuilder::putHex(std::uint8_t byte) {
    put(kLowerHexDigits[byte >> 4]);
    put(kLowerHexDigits[byte & 0x0F]);
}

std::size_t completeLength(std::string_view text) {
    constexpr std::size_t kLongestSequence = 4;
    const std::size_t reach = std::min(text.size(), kLongestSequence);
    for (std::size_t back = 1; back <= reach; ++back) {
        const char byte = text[text.size() - back];
        if (isContinuation(byte)) continue;
        return sequenceLength(byte) > back ? text.size() - back : text.size();
    }
    return text.size();
}

std::string_view cutToPrecision(const PrintFFormat& format, std::string_view text) {
    if (!hasPrecision(format) || text.size() <= format.precision) return text;
    const auto cut = text.substr(0, format.precision);
    return cut.substr(0, completeLength(cut));
}

void applyQuotes(PrintFFormat& format) {
    if (format.group == 0) return;
    if (hasPrecision(format)) {
        if (format.precision < 2) {
            format.precision = 0;
            return;
        }
        format.precision -= 2;
    }
    format.quote = format.group == 1 ? '\'' : '"';
}

void openField(Output& output, const PrintFFormat& format, std::uint64_t length) {
    if (!hasFlag(format, kPrintFFlagLeftJustify)) output.pad(paddingOf(format, length));
    if (format.quote != 0) output.write({&format.quote, 1});
}

void closeField(Output& output, const PrintFFormat& format, std::uint64_t length) {
    if (format.quote != 0) output.write({&format.quote, 1});
    if (hasFlag(format, kPrintFFlagLeftJustify)) output.pad(paddingOf(format, length));
}

void writeMessage(Output& output, const PrintFFormat& format, const char* message, ...) {
    char text[kScratchSize];
    va_list arguments;
    va_start(arguments, message);
    VSNPrintF(text, sizeof(text), message, arguments);
    va_end(arguments);
    PrintFWriteText(output, format, text);
}

void PrintFWriteMultiLineText(Output& output, std::uint64_t indent, std::string_view text) {
    while (!text.empty() && output.isOpen()) {
        const auto newline = text.find('\n');
        const auto line = text.substr(0, newline == text.npos ? newline : newline + 1);
        if (line.front() != '\n') output.pad(indent);
        output.write(line);
        text.remove_prefix(line.size());
    }
}

}  // namespace halvane::printing
