// Simulates a lack of memory. For programs that link replaced_new.cpp.
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

// While it lives, this thread's operator new succeeds `left` times and then fails. One may live at
// a time.
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
    // The number of allocations, including failed ones.
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

// Runs `attempt()` with memory for no allocation, for one, and so on, until one attempt has enough.
// After each attempt it calls `check(hasEnded)`, with memory again. Returns the number of attempts.
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

// The same, but only one allocation fails in each attempt.
template <typename Attempt, typename Check>
void failEachAllocation(Attempt attempt, Check check) {
    withEverLessScarceMemory(
        attempt, [&check](bool) { check(); }, Shortage::Once);
}

// Like withEverLessScarceMemory(), for an action that may throw std::bad_alloc. Runs it until it
// succeeds, and calls `afterFailure()` after each failure. Returns the number of failures.
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
