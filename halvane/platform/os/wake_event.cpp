#include <sys/eventfd.h>

#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

WakeEvent::WakeEvent()
    : file_(aboveStandardStreams(FileDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)))) {}

// The write fails only if the count is at its maximum; the descriptor is readable then anyway.
void WakeEvent::signal() {
    if (file_) ::eventfd_write(file_.number(), 1);
}

void WakeEvent::clear() {
    eventfd_t count = 0;
    if (file_) ::eventfd_read(file_.number(), &count);
}

}  // namespace halvane
