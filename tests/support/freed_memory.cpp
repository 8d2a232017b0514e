#include "tests/support/freed_memory.h"

#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

namespace {

thread_local std::string_view watchedFor;
thread_local std::size_t found = 0;

void* allocate(std::size_t size) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
    if (void* memory = allocate(size)) return memory;
    throw std::bad_alloc();
}

// The block is looked at as long as it is the caller's.
void release(void* memory) noexcept {
    if (memory != nullptr && !watchedFor.empty() &&
        ::memmem(memory, ::malloc_usable_size(memory), watchedFor.data(), watchedFor.size()) !=
            nullptr) {
        ++found;
    }
    std::free(memory);
}

}  // namespace

halvane::testing::FreedMemoryWatch::FreedMemoryWatch(std::string_view secret) {
    found = 0;
    watchedFor = secret;
}
halvane::testing::FreedMemoryWatch::~FreedMemoryWatch() {
    watchedFor = {};
}

std::size_t halvane::testing::FreedMemoryWatch::finds() const {
    return found;
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
