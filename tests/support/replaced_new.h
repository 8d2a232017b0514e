// The global allocation functions, replaced: what a program that links replaced_new.cpp allocates
// by operator new is shown to hooks.
#ifndef TESTS_SUPPORT_REPLACED_NEW_H
#define TESTS_SUPPORT_REPLACED_NEW_H

#include <cstddef>

namespace halvane::testing {

// Of one thread; null: no hook.
struct MemoryHooks {
    bool (*mayAllocate)(std::size_t size) = nullptr;    // false: the allocation fails
    void (*isAllocated)(const void* memory) = nullptr;  // asked for, and there
    void (*isReleased)(const void* memory) = nullptr;   // while it is still the caller's
};

// Those of the calling thread.
MemoryHooks& memoryHooks();

}  // namespace halvane::testing

#endif
