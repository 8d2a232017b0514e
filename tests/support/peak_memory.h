// The peak of memory in use. For programs that link replaced_new.cpp.
#ifndef TESTS_SUPPORT_PEAK_MEMORY_H
#define TESTS_SUPPORT_PEAK_MEMORY_H

#include <algorithm>
#include <cstddef>
#include <malloc.h>

#include "tests/support/replaced_new.h"

namespace halvane::testing {

// Counts this thread's operator new from the object's construction on. Earlier memory does not
// count. One may live at a time.
class PeakMemory {
  public:
    PeakMemory() {
        state() = {};
        memoryHooks().isAllocated = [](const void* memory) {
            auto& [used, most] = state();
            used += sizeOf(memory);
            most = std::max(most, used);
        };
        memoryHooks().isReleased = [](const void* memory) { state().used -= sizeOf(memory); };
    }
    PeakMemory(const PeakMemory&) = delete;
    PeakMemory& operator=(const PeakMemory&) = delete;
    ~PeakMemory() {
        memoryHooks().isAllocated = nullptr;
        memoryHooks().isReleased = nullptr;
    }

    std::size_t bytes() const { return static_cast<std::size_t>(state().most); }

  private:
    struct State {
        std::ptrdiff_t used = 0;
        std::ptrdiff_t most = 0;
    };
    static State& state() {
        thread_local State current;
        return current;
    }
    static std::ptrdiff_t sizeOf(const void* memory) {
        return static_cast<std::ptrdiff_t>(::malloc_usable_size(const_cast<void*>(memory)));
    }
};

}  // namespace halvane::testing

#endif
