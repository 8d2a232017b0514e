#include "tests/support/scarce_memory.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t count = 0;
thread_local std::size_t left = halvane::testing::ScarceMemory::kPlenty;
thread_local bool isOver = false;

void* allocate(std::size_t size) noexcept {
    ++count;
    if (left == 0 && !isOver) {
        isOver = true;
        return nullptr;
    }
    if (left > 0) --left;
    return std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}

}  // namespace

halvane::testing::ScarceMemory::ScarceMemory(std::size_t allocations) {
    count = 0;
    isOver = false;
    left = allocations;
}
halvane::testing::ScarceMemory::~ScarceMemory() {
    left = kPlenty;
}

bool halvane::testing::ScarceMemory::hasFailed() const {
    return isOver;
}

std::size_t halvane::testing::ScarceMemory::allocations() const {
    return count;
}

// All forms, for those that a sanitizer brings do not call each other.
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
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
