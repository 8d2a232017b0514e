// Replaces malloc, realloc and free. In a program that links replaced_heap.cpp, hooks take the
// calls of the objects that are linked into it.
//
// The linker binds these calls to the functions of replaced_heap.cpp (--wrap), so the library does
// not know of them. What the C library allocates for itself, as in strdup, does not reach a hook.
#ifndef TESTS_SUPPORT_REPLACED_HEAP_H
#define TESTS_SUPPORT_REPLACED_HEAP_H

#include <cstddef>

namespace halvane::testing {

// What takes the calls; null leaves them to the system. A compiler may turn realloc of a null
// pointer into malloc.
struct HeapHooks {
    void* (*allocate)(std::size_t size) = nullptr;
    void* (*reallocate)(void* memory, std::size_t size) = nullptr;
    void (*release)(void* memory) = nullptr;  // not called for null
};

// Hooks whose `reallocate` also takes the calls of malloc, with a null pointer.
template <void* (*reallocate)(void* memory, std::size_t size)>
constexpr HeapHooks heapOf(void (*release)(void* memory) = nullptr) {
    return {[](std::size_t size) { return reallocate(nullptr, size); }, reallocate, release};
}

// While one lives, the calls of its thread go to the hooks. Calls that a hook makes itself go to
// the system. At most one may live in a thread at a time.
class ScopedHeap {
  public:
    explicit ScopedHeap(const HeapHooks& hooks);
    ~ScopedHeap();
    ScopedHeap(const ScopedHeap&) = delete;
    ScopedHeap& operator=(const ScopedHeap&) = delete;
};

}  // namespace halvane::testing

#endif
