// Front ends that write into the caller's memory.
#include <algorithm>
#include <cstdarg>
#include <cstring>
#include <string_view>

#include "halvane/base/status.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace {

using halvane::printing::storeInFixedBuffer;

using halvane::printing::FixedBufferContext;

FixedBufferContext contextOf(void* buffer, size_t capacity) {
    FixedBufferContext context = {};
    context.output.callback = storeInFixedBuffer;
    context.output.buffer = static_cast<char*>(buffer);
    context.output.capacity = capacity;
    context.capacity = capacity;
    return context;
}

}  // namespace

namespace halvane::printing {

namespace {

// Stores the characters of a piece that fit whole. A character whose first bytes came in earlier
// pieces is removed again.
void storeStart(std::string_view piece, std::size_t room, PrintFContext& output) {
    while (room > 0 && isContinuation(piece[room])) --room;
    if (room > 0) std::memcpy(output.buffer + output.used, piece.data(), room);
    output.used += room;
    if (room == 0 && isContinuation(piece.front())) {
        output.used = completeLength({output.buffer, output.used});
    }
}

void store(std::string_view piece, FixedBufferContext& context) {
    PrintFContext& output = context.output;
    const std::size_t room = context.capacity - output.used;
    context.isCut = piece.size() > room;
    if (context.isCut) {
        storeStart(piece, room, output);
    } else {
        std::memcpy(output.buffer + output.used, piece.data(), piece.size());
        output.used += piece.size();
    }
    output.capacity = context.isCut ? output.used : context.capacity;
}

}  // namespace

// A piece that does not fit is cut, and a later one that fits is stored.
std::int32_t storeInFixedBuffer(const char* text, std::size_t length, PrintFContext* context) {
    auto& fixed = *reinterpret_cast<FixedBufferContext*>(context);
    std::string_view piece(text, length);
    if (fixed.isCut) {
        const auto next = std::ranges::find_if_not(piece, isContinuation);
        piece.remove_prefix(static_cast<std::size_t>(next - piece.begin()));
    }
    if (!piece.empty()) store(piece, fixed);
    return static_cast<std::int32_t>(std::min<std::size_t>(length, INT32_MAX));
}

}  // namespace halvane::printing

extern "C" int SNPrintF(char* buffer, size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VSNPrintF(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int VSNPrintF(char* buffer, size_t size, const char* format, va_list arguments) {
    FixedBufferContext context = contextOf(buffer, size > 0 ? size - 1 : 0);
    const int length = PrintFCoreVAList(&context.output, format, arguments);
    if (size > 0) buffer[context.output.used] = '\0';
    return length;
}

extern "C" int SNPrintF_Add(char** cursor, char* end, const char* format, ...) {
    if (*cursor >= end) return kStatusNoRoom;
    const auto room = static_cast<size_t>(end - *cursor);
    va_list arguments;
    va_start(arguments, format);
    const int length = VSNPrintF(*cursor, room, format, arguments);
    va_end(arguments);
    if (length < 0) return length;
    if (static_cast<size_t>(length) >= room) {
        *cursor = end;
        return kStatusTruncated;
    }
    *cursor += length;
    return kStatusOK;
}

extern "C" int MemPrintF(void* buffer, size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VMemPrintF(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int VMemPrintF(void* buffer, size_t size, const char* format, va_list arguments) {
    FixedBufferContext context = contextOf(buffer, size);
    return PrintFCoreVAList(&context.output, format, arguments);
}
