// Front ends that pass the output on, to a callback or a stdio stream.
#include <algorithm>
#include <cstdio>

#include "halvane/base/status.h"
#include "halvane/utils/printf.h"

namespace {

int32_t passToCallback(const char* text, size_t length, PrintFContext* context) {
    return context->userCallback(text, length, context->userContext);
}

int32_t writeToStream(const char* text, size_t length, PrintFContext* context) {
    if (context->stream != nullptr && std::fwrite(text, 1, length, context->stream) != length) {
        return kStatusTruncated;
    }
    return static_cast<int32_t>(std::min<size_t>(length, INT32_MAX));
}

// Locks the stream, so that messages of other threads come before or after this one. A thread may
// print to a stream that it has locked itself.
class StreamLock {
  public:
    explicit StreamLock(FILE* stream) : stream_(stream) {
        if (stream_ != nullptr) ::flockfile(stream_);
    }
    StreamLock(const StreamLock&) = delete;
    StreamLock& operator=(const StreamLock&) = delete;
    ~StreamLock() {
        if (stream_ != nullptr) ::funlockfile(stream_);
    }

  private:
    FILE* stream_;
};

}  // namespace

extern "C" int CPrintF(PrintFUserCallback callback, void* userContext, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VCPrintF(callback, userContext, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int VCPrintF(PrintFUserCallback callback, void* userContext, const char* format,
                        va_list arguments) {
    PrintFContext context = {};
    context.callback = passToCallback;
    context.userCallback = callback;
    context.userContext = userContext;
    const int length = PrintFCoreVAList(&context, format, arguments);
    if (length < 0) return length;
    const int32_t ended = callback("", 0, userContext);
    return ended < 0 ? ended : length;
}

extern "C" int FPrintF(FILE* stream, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = VFPrintF(stream, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int VFPrintF(FILE* stream, const char* format, va_list arguments) {
    PrintFContext context = {};
    context.callback = writeToStream;
    context.stream = stream;
    const StreamLock lock(stream);
    return PrintFCoreVAList(&context, format, arguments);
}
