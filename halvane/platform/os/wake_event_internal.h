// Wakes a thread that polls descriptors.
//
// Threads: any thread may make any call.
#ifndef HALVANE_PLATFORM_OS_WAKE_EVENT_INTERNAL_H
#define HALVANE_PLATFORM_OS_WAKE_EVENT_INTERNAL_H

#include "halvane/platform/os/file_internal.h"

namespace halvane {

class WakeEvent {
  public:
    WakeEvent();

    // Whether the system had a descriptor for the event. If not, the other calls do nothing.
    explicit operator bool() const { return static_cast<bool>(file_); }

    // The descriptor to poll: readable from signal() to clear().
    int descriptor() const { return file_.number(); }

    void signal();
    void clear();

  private:
    FileDescriptor file_;
};

}  // namespace halvane

#endif
