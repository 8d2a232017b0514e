// Front ends that write into a growing heap string.
#include <cstdlib>
#include <cstring>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/utils/printf_internal.h"

namespace {

constexpr std::size_t kFirstCapacity = 256;
constexpr std::size_t kCapacityStep = 1024;

constexpr std::size_t capacityFor(std::size_t needed) {
    if (needed < kFirstCapacity) return kFirstCapacity;
    return (needed + kCapacityStep - 1) & ~(kCapacityStep - 1);
}

using halvane::printing::HeapContext;

// Releases what was written where nobody takes it over: after a failure, or when the thread is
// cancelled.
class PartialText {
  public:
    explicit PartialText(HeapContext& heap) : heap_(heap) {}
    PartialText(const PartialText&) = delete;
    PartialText& operator=(const PartialText&) = delete;
    ~PartialText() {
        if (heap_.output.buffer != nullptr) heap_.memory.release(heap_.output.buffer);
    }

  private:
    HeapContext& heap_;
};

}  // namespace

namespace halvane::printing {

// A text longer than a count can tell is refused like one there is no memory for.
std::int32_t reserveInHeapString(std::uint64_t length, PrintFContext* context) {
    if (length > INT32_MAX - context->used) return kStatusNoMemory;
    const std::size_t needed = context->used + length;
    if (needed <= context->capacity) return kStatusOK;
    const std::size_t capacity = capacityFor(needed);
    const auto reallocate = reinterpret_cast<HeapContext*>(context)->memory.reallocate;
    void* const grown = reallocate(context->buffer, capacity);
    if (grown == nullptr) return kStatusNoMemory;
    context->buffer = static_cast<char*>(grown);
    context->capacity = capacity;
    return kStatusOK;
}

std::int32_t storeInHeapString(const char* text, std::size_t length, PrintFContext* context) {
    if (const auto status = reserveInHeapString(length, context); status < 0) return status;
    std::memcpy(context->buffer + context->used, text, length);
    context->used += length;
    return static_cast<std::int32_t>(length);
}

std::int32_t printToHeapString(char** text, HeapMemory memory, const char* format,
                               va_list arguments) {
    HeapContext heap = {{}, memory};
    heap.output.callback = storeInHeapString;
    const PartialText partial(heap);
    std::int32_t result = PrintFCoreVAList(&heap.output, format, arguments);
    if (result >= 0) {
        const std::int32_t terminated = storeInHeapString("", 1, &heap.output);
        if (terminated < 0) result = terminated;
    }
    if (result >= 0) *text = std::exchange(heap.output.buffer, nullptr);
    return result;
}

}  // namespace halvane::printing

extern "C" int ASPrintF(char** text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VASPrintF(text, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int VASPrintF(char** text, const char* format, va_list arguments) {
    return halvane::printing::printToHeapString(text, {std::realloc, std::free}, format, arguments);
}

extern "C" int AppendPrintF(char** text, const char* format, ...) {
    char* whole = nullptr;
    va_list arguments;
    va_start(arguments, format);
    const int length = ASPrintF(&whole, "%s%V", *text != nullptr ? *text : "", format, &arguments);
    va_end(arguments);
    if (length < 0) return length;
    std::free(*text);
    *text = whole;
    return length;
}
