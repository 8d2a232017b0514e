// An object that a process shares: made on first request, never destroyed.
#ifndef HALVANE_BASE_SHARED_INSTANCE_INTERNAL_H
#define HALVANE_BASE_SHARED_INSTANCE_INTERNAL_H

#include <atomic>
#include <mutex>

namespace halvane {

// What the slot holds, made first where it is empty. One lock for each class, so that threads that
// come at once make one instance only.
template <typename Class>
const Class& sharedInstance(std::atomic<const Class*>& slot) {
    static std::mutex creation;
    if (const auto* shared = slot.load(std::memory_order_acquire)) return *shared;
    const std::lock_guard lock(creation);
    if (slot.load(std::memory_order_relaxed) == nullptr) {
        slot.store(new Class, std::memory_order_release);
    }
    return *slot.load(std::memory_order_relaxed);
}

}  // namespace halvane

#endif
