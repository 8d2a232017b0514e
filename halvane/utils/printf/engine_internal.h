// The common parts of the formatting engine: the output of one call, the arguments, and the writers
// that every conversion uses.
//
// Errors are sticky: after a negative callback result an Output drops all further text, so a
// conversion need not check each write. A long loop checks isOpen().
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

namespace halvane::printing {

// The size of the buffer in which a conversion builds its text. The last byte is for a terminator.
inline constexpr std::size_t kScratchSize = 300;
inline constexpr std::size_t kScratchText = kScratchSize - 1;

// Spaces per level of indent.
inline constexpr std::uint64_t kIndentStep = 4;

inline constexpr std::string_view kNullText = "<<NULL>>";

// The context of the fixed-buffer front ends. The callback below receives its first member. While a
// character is cut, output.capacity equals the used size, so that every piece reaches the callback.
struct FixedBufferContext {
    PrintFContext output;
    std::size_t capacity;
    bool isCut;  // the last piece did not fit: continuation bytes are parts of the cut character
};

// The output callbacks of the fixed-buffer front ends and of log messages.
std::int32_t storeInFixedBuffer(const char* text, std::size_t length, PrintFContext* context);
std::int32_t __LogPrintFCallBack(const char* text, std::size_t length, PrintFContext* context);

// The context of the heap front ends. The callback below receives its first member.
struct HeapContext {
    PrintFContext output;
    // A text before the output that is counted but not stored, with its length. It is null if there
    // is none, and once it has arrived.
    const char* prefix = nullptr;
    std::size_t prefixLength = 0;
};

// The output callback of the heap front ends, and its growth. Output::pad announces long padding,
// so that the string grows once or fails at once.
std::int32_t storeInHeapString(const char* text, std::size_t length, PrintFContext* context);
std::int32_t reserveInHeapString(std::uint64_t length, PrintFContext* context);

// A va_list that can be passed by reference on every platform.
struct Arguments {
    va_list list;
};

// A copy of a list that ends on every exit, also by an exception: any callback or description may
// throw. GCC and Clang allow va_end in another function than va_copy on all platforms.
class ArgumentsCopy : public Arguments {
  public:
    explicit ArgumentsCopy(va_list original) { va_copy(list, original); }
    ~ArgumentsCopy() { va_end(list); }
    ArgumentsCopy(const ArgumentsCopy&) = delete;
    ArgumentsCopy& operator=(const ArgumentsCopy&) = delete;
};

// The output of one call.
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
    void abort(std::int32_t status) {
        status_ = status;
        storesIfRoom_ = false;
    }

    // Returns the negative status, or the count, saturated.
    std::int32_t result() const;

    // Passes one piece to the callback, unless it is empty.
    void write(std::string_view piece) {
        if (piece.empty()) return;
        char* const place = room(piece.size());
        if (place == nullptr) return pass(piece);
        std::memcpy(place, piece.data(), piece.size());
        take(piece.size());
    }

    // Returns where a piece of this size may be built in place, before take(); null if it must be
    // built elsewhere and written.
    char* room(std::size_t size) const {
        const bool isThere = storesIfRoom_ && size <= context_->capacity - context_->used;
        return isThere ? context_->buffer + context_->used : nullptr;
    }
    // Takes the piece that was built in the room for it.
    void take(std::size_t size) {
        context_->used += size;
        count_ += size;
    }

    // Writes spaces, in pieces of bounded size.
    void pad(std::uint64_t spaces);

    // Expands a format in place.
    void print(const char* format, ...);

  private:
    // Calls the callback.
    void pass(std::string_view piece);

    PrintFContext* context_;
    // Whether a piece that fits is stored without calling the callback; false after a failure.
    bool storesIfRoom_;
    std::uint64_t count_ = 0;
    std::int32_t status_ = 0;
};

// Expands `format` into `output`: the core loop.
void expand(Output& output, const char* format, Arguments& arguments);

// A short text that is built separately and cut like any fixed buffer.
class Scratch {
  public:
    std::string_view text() const { return {text_, size_}; }
    void append(std::string_view text);
    void print(const char* format, ...);

  private:
    char text_[kScratchSize];
    std::size_t size_ = 0;
};

// Collects single characters into pieces, so that fewer callbacks are made.
// REQUIRES: flush() before destruction; a destructor must not call the callback.
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
// Returns the precision; 0 if none was given.
inline std::uint32_t precisionOf(const PrintFFormat& format) {
    return hasPrecision(format) ? format.precision : 0;
}
// Returns the indent of multi-line output that a width specifies.
inline std::uint64_t indentOf(const PrintFFormat& format) {
    return format.fieldWidth * kIndentStep;
}

// Return an integer argument of the size that the modifiers specify.
std::uint64_t unsignedArgument(const PrintFFormat& format, Arguments& arguments);
std::int64_t signedArgument(const PrintFFormat& format, Arguments& arguments);

// Turns ' into the quote character and reserves room for it within the precision.
void applyQuotes(PrintFFormat& format);

// --- Text ---

inline char printableOrCaret(std::uint32_t code) {
    return isPrintable(code) ? static_cast<char>(code) : '^';
}

// Returns the length of `text` without an incomplete UTF-8 sequence at its end.
std::size_t completeLength(std::string_view text);

// Returns `text`, cut to the precision at a character boundary.
std::string_view cutToPrecision(const PrintFFormat& format, std::string_view text);

// --- Writers ---

// Write the parts of a field before and after a text of `length` bytes.
void openField(Output& output, const PrintFFormat& format, std::uint64_t length);
void closeField(Output& output, const PrintFFormat& format, std::uint64_t length);

// Writes `text`, quoted and padded to the width of the field.
inline void PrintFWriteText(Output& output, const PrintFFormat& format, std::string_view text) {
    if (format.fieldWidth <= text.size() && format.quote == 0) return output.write(text);
    openField(output, format, text.size());
    output.write(text);
    closeField(output, format, text.size());
}

// PrintFWriteText for a formatted text.
void writeMessage(Output& output, const PrintFFormat& format, const char* message, ...);

// Writes each line of `text` after `indent` spaces; a blank line gets none.
void PrintFWriteMultiLineText(Output& output, std::uint64_t indent, std::string_view text);

// Dumps min(size, max) bytes, 16 per line, each line after `indent` spaces.
void PrintFWriteHex(Output& output, std::uint64_t indent, const std::uint8_t* data,
                    std::size_t size, std::size_t max);

// Dumps short data on the rest of the line, longer data on separate lines below.
void writeHexBlock(Output& output, std::uint64_t indent, const std::uint8_t* data, std::size_t size,
                   std::size_t max);

// --- Property-list values ---

enum ValueFlags : unsigned {
    kValueFlagDataOnOwnLines = 1 << 0,  // data in a dictionary goes below its key
};

struct ValueForm {
    unsigned flags = 0;  // kValueFlag...
    int depth = 1;       // the depth of the value inside the printed one, which itself has depth 1

    ValueForm within() const { return {flags, depth + 1}; }
    bool isTooDeep() const { return depth > kPropertyListMaxDepth; }
};

// Prints an array, a dictionary or data at an indent level. A container ends without a newline.
// Other kinds print as their text.
// REQUIRES: !form.isTooDeep()
void PrintFWriteCFObjectLevel(Output& output, const PropertyListValue& value, std::uint64_t level,
                              ValueForm form);

// Prints one entry of a dictionary whose entries are at `level`. `form` is that of the value.
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
