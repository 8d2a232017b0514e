// Memory that ends. For programs that link replaced_new.cpp.
#ifndef TESTS_SUPPORT_SCARCE_MEMORY_H
#define TESTS_SUPPORT_SCARCE_MEMORY_H

#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <new>

#include "tests/support/replaced_new.h"

namespace halvane::testing {

enum class Shortage {
    Lasting,  // every further allocation fails
    Once,     // one allocation fails, and the later ones do not
};

// As long as it lives, this thread's operator new succeeds `left` times, and fails then. One at a
// time.
class ScarceMemory {
  public:
    static constexpr std::size_t kPlenty = std::numeric_limits<std::size_t>::max();

    explicit ScarceMemory(std::size_t left = kPlenty, Shortage shortage = Shortage::Lasting) {
        state() = {left, shortage};
        memoryHooks().mayAllocate = [](std::size_t) { return state().mayAllocate(); };
    }
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;
    ~ScarceMemory() { memoryHooks().mayAllocate = nullptr; }

    // Whether an allocation has failed.
    bool hasEnded() const { return state().hasEnded; }
    // The number of allocations, the failed ones among them.
    std::size_t allocations() const { return state().allocations; }

  private:
    struct State {
        std::size_t left = 0;
        Shortage shortage = Shortage::Lasting;
        bool hasEnded = false;
        std::size_t allocations = 0;

        bool mayAllocate() {
            ++allocations;
            if (hasEnded && shortage == Shortage::Once) return true;
            if (left == 0) hasEnded = true;
            return left > 0 && left-- > 0;
        }
    };
    static State& state() {
        thread_local State current;
        return current;
    }
};

// Runs `attempt()` with memory for no allocation, for one, and so on, until one attempt has
// had enough; `check(hasEnded)` follows each, with memory again. Returns the number of attempts.
template <typename Attempt, typename Check>
std::size_t withEverLessScarceMemory(Attempt attempt, Check check,
                                     Shortage shortage = Shortage::Lasting) {
    for (std::size_t left = 0;; ++left) {
        bool hasEnded = false;
        {
            const ScarceMemory memory(left, shortage);
            attempt();
            hasEnded = memory.hasEnded();
        }
        SCOPED_TRACE(::testing::Message() << left << " allocations");
        check(hasEnded);
        if (!hasEnded) return left + 1;
    }
}

// The same with one allocation failing at a time.
template <typename Attempt, typename Check>
void failEachAllocation(Attempt attempt, Check check) {
    withEverLessScarceMemory(
        attempt, [&check](bool) { check(); }, Shortage::Once);
}

// As withEverLessScarceMemory(), for an action that std::bad_alloc may leave: runs it until it ends
// well, and calls `afterFailure()` each time that it did not. Returns how often that was.
template <typename Action, typename AfterFailure>
std::size_t withEachAllocationFailing(Action action, AfterFailure afterFailure) {
    for (std::size_t left = 0;; ++left) {
        try {
            const ScarceMemory memory(left);
            action();
            return left;
        } catch (const std::bad_alloc&) {
        }
        afterFailure();
    }
}

}  // namespace halvane::testing

#endif
