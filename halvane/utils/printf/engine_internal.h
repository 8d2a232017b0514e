// What the parts of the formatting engine share: the output of one call, the arguments, and the
// writers that every conversion ends in.
//
// Errors are sticky: after a negative callback result an Output drops whatever is written to it,
// so that a conversion need not look at each write. A long loop asks isOpen().
#ifndef HALVANE_UTILS_PRINTF_ENGINE_INTERNAL_H
#define HALVANE_UTILS_PRINTF_ENGINE_INTERNAL_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/property_list_value.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/text/heap_memory_internal.h"

namespace halvane::printing {

// A conversion that builds its text aside has this much room, the last byte for a terminator.
inline constexpr std::size_t kScratchSize = 300;
inline constexpr std::size_t kScratchText = kScratchSize - 1;

// Spaces a level of indent.
inline constexpr std::uint64_t kIndentStep = 4;

inline constexpr std::string_view kNullText = "<<NULL>>";

// The context of the fixed-buffer front ends, which the callback below is handed the first member
// of. While a character is cut, output.capacity is what is used, so that every piece goes to the
// callback.
struct FixedBufferContext {
    PrintFContext output;
    std::size_t capacity;
    bool isCut;  // the last piece did not fit whole: continuation bytes are parts of what was cut
};

// The output callback of the fixed-buffer front ends, and that of log messages.
std::int32_t storeInFixedBuffer(const char* text, std::size_t length, PrintFContext* context);
std::int32_t __LogPrintFCallBack(const char* text, std::size_t length, PrintFContext* context);

// The context of the heap front ends, which the callback below is handed the first member of.
struct HeapContext {
    PrintFContext output;
    HeapMemory memory;
    // A text that the output begins with and that is counted but not stored, null for none or once
    // it came; and its length then.
    const char* prefix = nullptr;
    std::size_t prefixLength = 0;
};

// The output callback of the heap front ends, and the growth under it: Output::pad announces a long
// padding, so that it grows the string once, or fails at once.
std::int32_t storeInHeapString(const char* text, std::size_t length, PrintFContext* context);
std::int32_t reserveInHeapString(std::uint64_t length, PrintFContext* context);

// VASPrintF, with memory from elsewhere.
std::int32_t printToHeapString(char** text, HeapMemory memory, const char* format,
                               va_list arguments);

// AppendPrintF, with memory from elsewhere.
std::int32_t appendToHeapString(char** text, HeapMemory memory, const char* format,
                                va_list* arguments);

// A va_list that can be handed down by reference on every platform.
struct Arguments {
    va_list list;
};

// A copy of a list, ended on every way out, that of an exception too: any callback or description
// may throw. va_end in another function than va_copy is what GCC and Clang allow on all platforms.
class ArgumentsCopy : public Arguments {
  public:
    explicit ArgumentsCopy(va_list original) { va_copy(list, original); }
    ~ArgumentsCopy() { va_end(list); }
    ArgumentsCopy(const ArgumentsCopy&) = delete;
    ArgumentsCopy& operator=(const ArgumentsCopy&) = delete;
};

// The running output of one call.
class Output {
  public:
    explicit Output(PrintFContext* context)
        : context_(context),
          storesIfRoom_(context->callback == storeInFixedBuffer ||
                        context->callback == storeInHeapString ||
                        context->callback == __LogPrintFCallBack) {}

    bool isOpen() const { return status_ >= 0; }
    std::uint64_t count() const { return count_; }

    // Ends the call with a negative status.
    void abort(std::int32_t status) { status_ = status; }

    // The negative status, or the count, saturated.
    std::int32_t result() const;

    // Hands one piece to the callback, unless it is empty.
    void write(std::string_view piece) {
        if (piece.empty() || !isOpen()) return;
        count_ += piece.size();
        if (storesIfRoom_ && piece.size() <= context_->capacity - context_->used) {
            std::memcpy(context_->buffer + context_->used, piece.data(), piece.size());
            context_->used += piece.size();
            return;
        }
        const auto accepted = context_->callback(piece.data(), piece.size(), context_);
        if (accepted < 0) status_ = accepted;
    }

    // Writes spaces, in pieces of bounded size.
    void pad(std::uint64_t spaces);

    // Expands a format in place.
    void print(const char* format, ...);

  private:
    PrintFContext* context_;
    // Whether the callback would only store a piece that there is room for: then it is spared.
    bool storesIfRoom_;
    std::uint64_t count_ = 0;
    std::int32_t status_ = 0;
};

// Expands `format` into `output`: the core loop.
void expand(Output& output, const char* format, Arguments& arguments);

// A short text built aside, cut like any fixed buffer.
class Scratch {
  public:
    std::string_view text() const { return {text_, size_}; }
    void append(std::string_view text);
    void print(const char* format, ...);

  private:
    char text_[kScratchSize];
    std::size_t size_ = 0;
};

// Collects single characters into pieces worth a callback.
// REQUIRES: flush() before it goes; a destructor must not call out.
class PieceBuilder {
  public:
    explicit PieceBuilder(Output& output) : output_(output) {}

    void put(char character) {
        if (size_ == sizeof(piece_)) flush();
        piece_[size_++] = character;
    }
    void putHex(std::uint8_t byte);
    void flush() {
        output_.write({piece_, size_});
        size_ = 0;
    }

  private:
    Output& output_;
    char piece_[256];
    std::size_t size_ = 0;
};

// --- Format fields ---

inline bool hasFlag(const PrintFFormat& format, int flag) {
    return (format.flags & flag) != 0;
}
inline bool hasPrecision(const PrintFFormat& format) {
    return hasFlag(format, kPrintFFlagPrecision);
}
// The precision, or 0 where none was given.
inline std::uint32_t precisionOf(const PrintFFormat& format) {
    return hasPrecision(format) ? format.precision : 0;
}
// The indent that a width asks for in multi-line output.
inline std::uint64_t indentOf(const PrintFFormat& format) {
    return format.fieldWidth * kIndentStep;
}

// An integer argument of the size that the modifiers name.
std::uint64_t unsignedArgument(const PrintFFormat& format, Arguments& arguments);
std::int64_t signedArgument(const PrintFFormat& format, Arguments& arguments);

// Turns ' into the quote character and makes room for it within the precision.
void applyQuotes(PrintFFormat& format);

// --- Text ---

inline char printableOrCaret(std::uint32_t code) {
    return isPrintable(code) ? static_cast<char>(code) : '^';
}

// The length of `text` without an incomplete UTF-8 sequence at its end.
std::size_t completeLength(std::string_view text);

// `text` cut to the precision, at a character boundary.
std::string_view cutToPrecision(const PrintFFormat& format, std::string_view text);

// --- Writers ---

// Writes what stands before a text of `length` bytes in its field, and what stands after it.
void openField(Output& output, const PrintFFormat& format, std::uint64_t length);
void closeField(Output& output, const PrintFFormat& format, std::uint64_t length);

// Writes `text`, quoted and padded to the field's width.
inline void PrintFWriteText(Output& output, const PrintFFormat& format, std::string_view text) {
    if (format.fieldWidth <= text.size() && format.quote == 0) return output.write(text);
    openField(output, format, text.size());
    output.write(text);
    closeField(output, format, text.size());
}

// PrintFWriteText of a formatted text.
void writeMessage(Output& output, const PrintFFormat& format, const char* message, ...);

// Writes each line of `text` after `indent` spaces; a blank line gets none.
void PrintFWriteMultiLineText(Output& output, std::uint64_t indent, std::string_view text);

// Dumps min(size, max) bytes, 16 a line, each line after `indent` spaces.
void PrintFWriteHex(Output& output, std::uint64_t indent, const std::uint8_t* data,
                    std::size_t size, std::size_t max);

// Dumps short data on the rest of the line, longer data on lines of its own below.
void writeHexBlock(Output& output, std::uint64_t indent, const std::uint8_t* data, std::size_t size,
                   std::size_t max);

// --- Property-list values ---

enum ValueFlags : unsigned {
    kValueFlagDataOnOwnLines = 1 << 0,  // data in a dictionary goes below its key
};

struct ValueForm {
    unsigned flags = 0;  // kValueFlag...
    int depth = 1;       // of the value in the one that is printed: 1 for that itself

    ValueForm within() const { return {flags, depth + 1}; }
    bool isTooDeep() const { return depth > kPropertyListMaxDepth; }
};

// Prints an array, a dictionary or data at an indent level, without a final newline for the
// containers. Other kinds print as their text. REQUIRES: !form.isTooDeep()
void PrintFWriteCFObjectLevel(Output& output, const PropertyListValue& value, std::uint64_t level,
                              ValueForm form);

// Prints one entry of a dictionary whose entries stand at `level`, with `form` that of the value.
void PrintFWriteCFObjectApplier(Output& output, std::string_view key,
                                const PropertyListValue& value, std::uint64_t level,
                                ValueForm form);

// --- Addresses ---

// Appends an IPv6 address, with its scope if `scope` is not 0 and its port if `port` is above 0.
// REQUIRES: 16 bytes
void PrintF_IPv6AddressToCString(Scratch& text, std::span<const std::uint8_t> address,
                                 std::uint32_t scope, int port);

}  // namespace halvane::printing

#endif
