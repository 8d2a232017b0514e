// The machine's console.
//
// Threads: the function may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_CONSOLE_DEVICE_INTERNAL_H
#define HALVANE_PLATFORM_OS_CONSOLE_DEVICE_INTERNAL_H

#include <string_view>

namespace halvane {

inline constexpr const char* kConsoleDevice = "/dev/console";

// Opens the device, writes and closes it. Returns false if the device cannot be opened. Text that
// the device does not accept is lost.
bool writeToConsoleDevice(std::string_view text, const char* device = kConsoleDevice);

}  // namespace halvane

#endif
