// One message: its rate limit, header and text, and the pieces that an output receives.
#include <algorithm>
#include <array>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <unistd.h>

#include "halvane/base/status.h"
#include "halvane/platform/os/console_device_internal.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/level_internal.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/log/stamp_internal.h"
#include "halvane/utils/log/state_internal.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/engine_internal.h"
#include "halvane/utils/scan/up_ticks.h"

namespace halvane::logging {

namespace {

constexpr std::size_t kBufferSize = 256;
constexpr std::uint64_t kConsolePauseMicroseconds = 200;  // keeps a serial line from overflowing

// Collects a message's pieces from the engine.
class LogPrintFContext : public PrintFContext {
  public:
    explicit LogPrintFContext(const LogMessage& message) : PrintFContext(), message_(message) {
        callback = printing::__LogPrintFCallBack;
        buffer = pieces_.data();
        capacity = pieces_.size();
    }

    void append(std::string_view piece) {
        if (piece.size() > capacity - used) {
            flush();
            if (piece.size() > capacity) return hand(piece);
        }
        std::memcpy(buffer + used, piece.data(), piece.size());
        used += piece.size();
    }

    void flush() {
        if (used > 0) hand({buffer, used});
        used = 0;
    }

  private:
    void hand(std::string_view text) {
        LogOutput* const output = message_.category->output;
        if (output == nullptr) return;
        output->writer(*output, message_, text);
        if ((message_.level & kLogFlagConsole) == 0) return;
        writeToConsoleDevice(text);
        SleepForUpTicks(MicrosecondsToUpTicks(kConsolePauseMicroseconds));
    }

    const LogMessage& message_;
    std::array<char, kBufferSize> pieces_;
};

// Counts the message, and returns whether the category's limit allows it.
bool passesRateLimit(LogCategory& category) {
    if (category.rateMax == 0) return true;
    const std::uint64_t now = UpTicks();
    if (category.rateIntervalEnd == 0) {
        category.rateIntervalEnd = now + std::min(category.ratePeriod, UINT64_MAX - now);
    }
    if (now >= category.rateIntervalEnd) {
        category.rateIntervalEnd = 0;
        category.rateCount = 0;
    }
    if (category.rateCount >= category.rateMax) return false;
    ++category.rateCount;
    return true;
}

constexpr std::uint32_t kInBracket = kLogHeaderPID | kLogHeaderProgram | kLogHeaderCategory |
                                     kLogHeaderLevel | kLogHeaderPrefix | kLogHeaderFunction;

// Writes the wanted parts of "[program:pid,category,function@level] ". The comma before the
// function is written even if nothing precedes it.
class HeaderWriter {
  public:
    HeaderWriter(LogPrintFContext& output, std::uint32_t flags) : output_(output), flags_(flags) {}

    // Returns the number of bytes.
    int write(const LogMessage& message) {
        if (has(kLogHeaderTime)) append(stampOfNow());
        if (!has(kInBracket)) return length_;
        append("[");
        bracketLength_ = length_;
        if (has(kLogHeaderProgram)) append(programName());
        if (has(kLogHeaderPID)) {
            separate(":");
            print("%llu", static_cast<unsigned long long>(::getpid()));
        }
        writeCategory(*message.category);
        if (has(kLogHeaderFunction)) print(",%###s", message.function);
        if (has(kLogHeaderLevel)) {
            LevelText text;
            separate("@");
            append(levelName(message.level, text));
        }
        append("] ");
        return length_;
    }

  private:
    bool has(std::uint32_t flag) const { return (flags_ & flag) != 0; }

    void writeCategory(const LogCategory& category) {
        if (!has(kLogHeaderCategory | kLogHeaderPrefix)) return;
        separate(",");
        append(has(kLogHeaderCategory) ? std::string_view(category.name)
                                       : std::string_view(category.prefix, category.prefixLength));
    }

    // Writes the separator if the bracket already has contents.
    void separate(std::string_view separator) {
        if (length_ > bracketLength_) append(separator);
    }

    void append(std::string_view text) {
        output_.append(text);
        length_ += static_cast<int>(text.size());
    }

    template <typename... Arguments>
    void print(const char* format, Arguments... arguments) {
        length_ += PrintFCore(&output_, format, arguments...);
    }

    LogPrintFContext& output_;
    std::uint32_t flags_;
    int length_ = 0;
    int bracketLength_ = 0;
};

std::uint32_t headerFlagsOf(const LogMessage& message) {
    const std::uint32_t flags = message.category->flags;
    return (message.level & kLogFlagFunction) != 0 ? flags | kLogHeaderFunction : flags;
}

int writeMessage(const LogMessage& message, const char* format, va_list arguments) {
    LogPrintFContext context(message);
    int headerLength = 0;
    if ((message.level & kLogFlagRaw) == 0) {
        headerLength = HeaderWriter(context, headerFlagsOf(message)).write(message);
    }
    const int bodyLength = PrintFCoreVAList(&context, format, arguments);
    context.flush();
    if (bodyLength < 0) return bodyLength;
    return headerLength + std::min(bodyLength, INT_MAX - headerLength);
}

}  // namespace

}  // namespace halvane::logging

namespace halvane::printing {

std::int32_t __LogPrintFCallBack(const char* text, std::size_t length, PrintFContext* context) {
    static_cast<logging::LogPrintFContext*>(context)->append({text, length});
    return static_cast<std::int32_t>(std::min<std::size_t>(length, INT_MAX));
}

}  // namespace halvane::printing

extern "C" int LogPrintF(LogCategory* category, const char* function, std::uint32_t level,
                         const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const int length = LogPrintFVAList(category, function, level, format, arguments);
    va_end(arguments);
    return length;
}

extern "C" int LogPrintFVAList(LogCategory* category, const char* function, std::uint32_t level,
                               const char* format, va_list arguments) try {
    using namespace halvane::logging;
    LogUtils_EnsureInitialized();
    if (__atomic_load_n(&category->level, __ATOMIC_RELAXED) == kLogLevelUninitialized) {
        __LogCategory_Initialize(category, level);
    }
    const LogLock lock;
    if (!lock) return 0;
    if ((level & kLogFlagRaw) == 0 && !passesRateLimit(*category)) return 0;
    return writeMessage({category, function, level}, format, arguments);
} catch (const std::bad_alloc&) {
    return kStatusNoMemory;
}
