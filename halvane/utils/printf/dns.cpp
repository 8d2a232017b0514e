// DNS names in wire form (RFC 1035 clause 3.1) and TXT records (clause 3.3.14).
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "halvane/base/byte_cursor.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

constexpr std::size_t kLabelLimit = 64;

// A "waMA" record packs comma-separated items into its only string.
constexpr std::string_view kPackedRecordStart = "waMA=";

std::string_view textOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// The text of a name. Notes about a malformed name have separate room, so they are never cut.
class NameText {
  public:
    bool fits(std::size_t size) const { return size_ + size <= kScratchText; }
    bool empty() const { return size_ == 0; }
    std::string_view text() const { return {text_.data(), size_}; }

    void append(std::string_view part) {
        size_ += part.copy(text_.data() + size_, text_.size() - size_);
    }
    void appendInvalidLength(unsigned length) {
        Scratch note;
        note.print("<<INVALID DNS LABEL LENGTH %u>>", length);
        append(note.text());
    }

  private:
    static constexpr std::size_t kNoteRoom = 64;
    std::array<char, kScratchText + kNoteRoom> text_;
    std::size_t size_ = 0;
};

void readName(ByteCursor cursor, NameText& name) {
    while (const auto length = cursor.u8()) {
        if (*length == 0) break;
        if (*length >= kLabelLimit) return name.appendInvalidLength(*length);
        if (!name.fits(*length + std::size_t{1})) return name.append("<<DNS NAME TOO LONG>>");
        const auto label = cursor.take(*length);
        name.append(textOf(label ? *label : cursor.rest()));
        if (label) name.append(".");
    }
    if (name.empty()) name.append(".");
}

// Prints the items of a packed record. `value` is the string after the start.
class PackedRecordPrinter {
  public:
    PackedRecordPrinter(Output& output, int indent) : output_(output), indent_(indent) {}

    void print(std::span<const std::uint8_t> value) {
        ByteCursor cursor(value);
        ByteCursor itemStart = cursor;
        while (const auto byte = cursor.u8()) {
            if (*byte == ',') {
                printItem();
                itemStart = cursor;
            } else if (*byte != '\\') {
                add(*byte);
            } else if (const auto escaped = cursor.u8()) {
                add(*escaped);
            } else {
                const auto item = itemStart.rest();
                return output_.print("%*s### bad TXT escape: %.*s\n", indent_, "",
                                     static_cast<int>(item.size()), item.data());
            }
        }
        printItem();
    }

  private:
    void add(std::uint8_t byte) { item_[size_++] = static_cast<char>(byte); }
    void printItem() {
        output_.print("%*s%.*s\n", indent_, "", static_cast<int>(size_), item_.data());
        size_ = 0;
    }

    Output& output_;
    int indent_;
    std::array<char, 256> item_;  // a string of a record has at most 255 bytes
    std::size_t size_ = 0;
};

// Returns whether there is such a record, whatever its length byte is.
bool isPackedRecord(ByteCursor cursor) {
    cursor.skip(1);
    const auto start = cursor.take(kPackedRecordStart.size());
    return start && textOf(*start) == kPackedRecordStart;
}

void printPackedRecord(Output& output, int indent, ByteCursor cursor) {
    const std::size_t length = cursor.u8().value_or(0);
    if (length != cursor.remaining()) {
        return output.print("%*s### bad TXT record length byte (%zu, %zu expected)\n", indent, "",
                            length, cursor.remaining());
    }
    cursor.skip(kPackedRecordStart.size());
    PackedRecordPrinter(output, indent).print(cursor.rest());
}

void printStrings(Output& output, int indent, ByteCursor cursor) {
    while (const auto length = cursor.u8()) {
        const auto string = cursor.take(*length);
        if (!string) {
            return output.print("%*s### TXT record length byte too big (%zu, %zu max)\n", indent,
                                "", std::size_t{*length}, cursor.remaining());
        }
        output.print("%*s%.*s\n", indent, "", static_cast<int>(string->size()), string->data());
    }
}

}  // namespace

// A text of n bytes comes from the first n + 1 bytes of the name. A precision of n therefore reads
// no more than those.
void writeDNSName(Output& output, const PrintFFormat& format, const char* name) {
    std::size_t limit = kScratchSize;
    if (hasPrecision(format)) {
        if (format.precision == 0) return PrintFWriteText(output, format, "");
        limit = std::min(limit, std::size_t{format.precision} + 1);
    }
    NameText text;
    readName(ByteCursor({reinterpret_cast<const std::uint8_t*>(name), limit}), text);
    PrintFWriteText(output, format, cutToPrecision(format, text.text()));
}

void convertTXTRecord(Output& output, const PrintFFormat& format, Arguments& arguments) {
    const auto* data = va_arg(arguments.list, const std::uint8_t*);
    const auto size = va_arg(arguments.list, std::size_t);
    if (data == nullptr && size > 0) return PrintFWriteText(output, format, kNullText);
    const ByteCursor record(std::span(data, size));
    const int indent = static_cast<int>(std::min<std::uint64_t>(indentOf(format), INT32_MAX));
    if (record.peek().value_or(0) == 0) {
        output.write("\n");
    } else if (isPackedRecord(record)) {
        printPackedRecord(output, indent, record);
    } else {
        printStrings(output, indent, record);
    }
}

}  // namespace halvane::printing
