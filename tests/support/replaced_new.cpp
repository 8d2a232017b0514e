#include "tests/support/replaced_new.h"

#include <cstdlib>
#include <new>

namespace {

thread_local halvane::testing::MemoryHooks hooks;

void* allocate(std::size_t size) noexcept {
    if (hooks.mayAllocate != nullptr && !hooks.mayAllocate(size)) return nullptr;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr && hooks.isAllocated != nullptr) hooks.isAllocated(memory);
    return memory;
}

void* allocateOrThrow(std::size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}

void release(void* memory) noexcept {
    if (memory != nullptr && hooks.isReleased != nullptr) hooks.isReleased(memory);
    std::free(memory);
}

}  // namespace

halvane::testing::MemoryHooks& halvane::testing::memoryHooks() {
    return hooks;
}

// All forms are replaced, because those of a sanitizer do not call each other.
void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
