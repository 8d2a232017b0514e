// A descriptor that one thread polls, and that other threads can hide from it without waking it.
//
// The thread polls descriptor(), which is readable while the watched descriptor has something to
// tell and is not hidden.
//
// Threads: any thread may make any call.
#ifndef HALVANE_PLATFORM_OS_DESCRIPTOR_MASK_INTERNAL_H
#define HALVANE_PLATFORM_OS_DESCRIPTOR_MASK_INTERNAL_H

#include "halvane/platform/os/file_internal.h"

namespace halvane {

class DescriptorMask {
  public:
    DescriptorMask();

    // Whether the system had a descriptor for the mask. If not, nothing can be watched.
    explicit operator bool() const { return static_cast<bool>(set_); }

    int descriptor() const { return set_.number(); }

    // Begins to watch `watched` for `events`, as poll() has them. Returns false if the system has
    // no room for that.
    // REQUIRES: nothing is watched.
    bool watch(int watched, short events);

    // Hides the watched descriptor. Its end may still be told, but only once.
    void hide();

    // Shows it again, from now on for `events`.
    void show(short events);

    // Watches nothing any more.
    // REQUIRES: the descriptor is still open.
    void forget();

  private:
    const FileDescriptor set_;
    int watched_ = -1;
};

}  // namespace halvane

#endif
