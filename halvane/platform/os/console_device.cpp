#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "halvane/platform/os/console_device_internal.h"
#include "halvane/platform/os/write_signal_internal.h"

namespace halvane {

namespace {

constexpr const char* kConsoleDevice = "/dev/console";

std::atomic<const char*> path = kConsoleDevice;

}  // namespace

bool writeToConsoleDevice(std::string_view text) {
    // Not to become the controlling terminal of a daemon, nor that of a program it starts.
    const int console =
        ::open(path.load(std::memory_order_relaxed), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    if (console < 0) return false;
    WriteSignalBlock block;
    if (::write(console, text.data(), text.size()) < 0) block.takeBackSignal(errno);
    ::close(console);
    return true;
}

void replaceConsoleDevice(const char* replacement) {
    path.store(replacement != nullptr ? replacement : kConsoleDevice, std::memory_order_relaxed);
}

}  // namespace halvane
