#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "halvane/platform/os/console_device_internal.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/write_signal_internal.h"

namespace halvane {

bool writeToConsoleDevice(std::string_view text, const char* device) {
    // O_NOCTTY: the console must not become the controlling terminal of a daemon or its children.
    const FileDescriptor console =
        aboveStandardStreams(FileDescriptor(::open(device, O_WRONLY | O_NOCTTY | O_CLOEXEC)));
    if (!console) return false;
    WriteSignalBlock block;
    if (::write(console.number(), text.data(), text.size()) < 0) block.takeBackSignal(errno);
    return true;
}

}  // namespace halvane
