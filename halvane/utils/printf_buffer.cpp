// Front ends that write into memory of the caller's.
#include <algorithm>

#include "halvane/base/status.h"
#include "halvane/utils/printf_internal.h"

namespace {

using halvane::printing::storeInFixedBuffer;

PrintFContext contextOf(void* buffer, size_t capacity) {
    PrintFContext context = {};
    context.callback = storeInFixedBuffer;
    context.buffer = static_cast<char*>(buffer);
    context.capacity = capacity;
    return context;
}

}  // namespace

namespace halvane::printing {

// After a piece that did not fit the buffer is closed, so that what it holds stays a prefix of the
// output. A character whose bytes came in several pieces is taken back whole.
std::int32_t storeInFixedBuffer(const char* text, std::size_t length, PrintFContext* context) {
    std::size_t stored = length;
    const std::size_t room = context->capacity - context->used;
    const bool isCut = length > room;
    if (isCut) {
        stored = room;
        while (stored > 0 && isContinuation(text[stored])) --stored;
    }
    if (stored > 0) std::memcpy(context->buffer + context->used, text, stored);
    context->used += stored;
    if (isCut) {
        if (stored == 0 && isContinuation(*text)) {
            context->used = completeLength({context->buffer, context->used});
        }
        context->capacity = context->used;
    }
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
    PrintFContext context = contextOf(buffer, size > 0 ? size - 1 : 0);
    const int length = PrintFCoreVAList(&context, format, arguments);
    if (size > 0) buffer[context.used] = '\0';
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
    PrintFContext context = contextOf(buffer, size);
    return PrintFCoreVAList(&context, format, arguments);
}
