// An object that a process shares. It is created on first request and never destroyed.
#ifndef HALVANE_BASE_SHARED_INSTANCE_INTERNAL_H
#define HALVANE_BASE_SHARED_INSTANCE_INTERNAL_H

#include <atomic>
#include <mutex>

namespace halvane {

// Returns the instance in the slot, and creates it first if the slot is empty. Each class has one
// lock, so that concurrent callers create only one instance.
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
