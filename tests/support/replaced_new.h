// Replaces the global allocation functions. In a program that links replaced_new.cpp, hooks see
// every allocation by operator new.
#ifndef TESTS_SUPPORT_REPLACED_NEW_H
#define TESTS_SUPPORT_REPLACED_NEW_H

#include <cstddef>

namespace halvane::testing {

// The hooks of one thread; null means none.
struct MemoryHooks {
    bool (*mayAllocate)(std::size_t size) = nullptr;    // false: the allocation fails
    void (*isAllocated)(const void* memory) = nullptr;  // called with a new block
    void (*isReleased)(const void* memory) = nullptr;   // called before the block is freed
};

// The hooks of the calling thread.
MemoryHooks& memoryHooks();

}  // namespace halvane::testing

#endif
