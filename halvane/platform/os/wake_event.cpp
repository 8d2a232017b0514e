#include <fcntl.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

namespace {

// One of the standard streams' numbers, where a stream is closed, would be taken for the stream,
// and lost to whoever opens it anew.
FileDescriptor aboveStandardStreams(FileDescriptor file) {
    if (!file || file.number() > STDERR_FILENO) return file;
    return FileDescriptor(::fcntl(file.number(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

}  // namespace

WakeEvent::WakeEvent()
    : file_(aboveStandardStreams(FileDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)))) {}

// Fails where the count is at its end, far off, and the descriptor readable anyway.
void WakeEvent::signal() {
    if (file_) ::eventfd_write(file_.number(), 1);
}

void WakeEvent::clear() {
    eventfd_t count = 0;
    if (file_) ::eventfd_read(file_.number(), &count);
}

}  // namespace halvane
