// Allocations of a thread that are counted, and of which one fails.
//
// A test program that uses this links tests/support/scarce_memory.cpp, whose operator new is the
// one of the whole program then.
#ifndef TESTS_SUPPORT_SCARCE_MEMORY_H
#define TESTS_SUPPORT_SCARCE_MEMORY_H

#include <cstddef>
#include <limits>

namespace halvane::testing {

// Counts the calling thread's allocations while it lives. One at a time.
class ScarceMemory {
  public:
    static constexpr std::size_t kPlenty = std::numeric_limits<std::size_t>::max();

    // After `allocations`, one fails; the next ones do not.
    explicit ScarceMemory(std::size_t allocations = kPlenty);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    bool hasFailed() const;
    std::size_t allocations() const;
};

// Calls run() with the first allocation failing, then with the second, and so on until none fails.
// `check` is called after each of these, with memory enough.
template <typename Run, typename Check>
void failEachAllocation(Run run, Check check) {
    bool hasFailed = true;
    for (std::size_t allocations = 0; hasFailed; ++allocations) {
        {
            const ScarceMemory memory(allocations);
            run();
            hasFailed = memory.hasFailed();
        }
        check();
    }
}

}  // namespace halvane::testing

#endif
