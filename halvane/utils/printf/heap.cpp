// Front ends that write into a growing heap string.
#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/utils/printf/engine_internal.h"

namespace {

constexpr std::size_t kFirstCapacity = 256;
constexpr std::size_t kCapacityStep = 1024;

constexpr std::size_t capacityFor(std::size_t needed) {
    if (needed < kFirstCapacity) return kFirstCapacity;
    return (needed + kCapacityStep - 1) & ~(kCapacityStep - 1);
}

// Returns a capacity that grows with the text, so that repeated appending rarely moves it. It
// exceeds the needed size by at most an eighth, and is at least capacityFor().
constexpr std::size_t appendedCapacityFor(std::size_t needed) {
    const std::size_t step = std::max(kCapacityStep, std::bit_floor(needed) / 8);
    return needed < kFirstCapacity ? kFirstCapacity : (needed + step - 1) & ~(step - 1);
}

using halvane::printing::HeapContext;

// Frees the text if nobody takes it over: after a failure, or if the thread is cancelled.
class PartialText {
  public:
    explicit PartialText(HeapContext& heap) : heap_(heap) {}
    PartialText(const PartialText&) = delete;
    PartialText& operator=(const PartialText&) = delete;
    ~PartialText() { std::free(heap_.output.buffer); }

  private:
    HeapContext& heap_;
};

}  // namespace

namespace halvane::printing {

// A text whose length a count cannot hold is refused as if memory had run out.
std::int32_t reserveInHeapString(std::uint64_t length, PrintFContext* context) {
    const auto& heap = *reinterpret_cast<HeapContext*>(context);
    if (length > INT32_MAX - heap.prefixLength - context->used) return kStatusNoMemory;
    const std::size_t needed = context->used + length;
    if (needed <= context->capacity) return kStatusOK;
    const std::size_t capacity = capacityFor(needed);
    void* const grown = std::realloc(context->buffer, capacity);
    if (grown == nullptr) return kStatusNoMemory;
    context->buffer = static_cast<char*>(grown);
    context->capacity = capacity;
    return kStatusOK;
}

std::int32_t storeInHeapString(const char* text, std::size_t length, PrintFContext* context) {
    auto& heap = *reinterpret_cast<HeapContext*>(context);
    if (heap.prefix == text) {
        heap.prefix = nullptr;
        if (length > INT32_MAX) return kStatusNoMemory;
        heap.prefixLength = length;
        return static_cast<std::int32_t>(length);
    }
    if (const auto status = reserveInHeapString(length, context); status < 0) return status;
    std::memcpy(context->buffer + context->used, text, length);
    context->used += length;
    return static_cast<std::int32_t>(length);
}

namespace {

// Returns the `result` of a call, after putting a terminator behind its text.
std::int32_t terminated(std::int32_t result, HeapContext& heap) {
    if (result < 0) return result;
    const std::int32_t status = storeInHeapString("", 1, &heap.output);
    return status < 0 ? status : result;
}

std::int32_t printToHeapString(char** text, const char* format, va_list arguments) {
    HeapContext heap = {};
    heap.output.callback = storeInHeapString;
    const PartialText partial(heap);
    const std::int32_t result = terminated(PrintFCoreVAList(&heap.output, format, arguments), heap);
    if (result >= 0) *text = std::exchange(heap.output.buffer, nullptr);
    return result;
}

// The new text is built separately, since the old one may be among the arguments. It is then put
// behind the old one, which is copied only if it must move.
std::int32_t appendToHeapString(char** text, const char* format, va_list* arguments) {
    const char* const old = *text != nullptr ? *text : "";
    HeapContext heap = {{}, *old != '\0' ? old : nullptr};
    heap.output.callback = storeInHeapString;
    const PartialText partial(heap);
    const std::int32_t result =
        terminated(PrintFCore(&heap.output, "%s%V", old, format, arguments), heap);
    if (result < 0) return result;
    const std::size_t needed = heap.prefixLength + heap.output.used;
    auto* const whole = static_cast<char*>(std::realloc(*text, appendedCapacityFor(needed)));
    if (whole == nullptr) return kStatusNoMemory;
    std::memcpy(whole + heap.prefixLength, heap.output.buffer, heap.output.used);
    *text = whole;
    return result;
}

}  // namespace

}  // namespace halvane::printing

extern "C" int ASPrintF(char** text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VASPrintF(text, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int VASPrintF(char** text, const char* format, va_list arguments) {
    return halvane::printing::printToHeapString(text, format, arguments);
}

extern "C" int AppendPrintF(char** text, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = halvane::printing::appendToHeapString(text, format, &arguments);
    va_end(arguments);
    return length;
}
