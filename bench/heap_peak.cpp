#include "bench/heap_peak.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <malloc.h>

// glibc's own functions, under names that nobody replaces.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

std::atomic<std::size_t> inUse = 0;
std::atomic<std::size_t> most = 0;

void* taken(void* memory) {
    if (memory == nullptr) return nullptr;
    const std::size_t size = ::malloc_usable_size(memory);
    const std::size_t now = inUse.fetch_add(size, std::memory_order_relaxed) + size;
    std::size_t known = most.load(std::memory_order_relaxed);
    while (now > known && !most.compare_exchange_weak(known, now, std::memory_order_relaxed)) {
    }
    return memory;
}

void givenBack(std::size_t size) {
    inUse.fetch_sub(size, std::memory_order_relaxed);
}

}  // namespace

bench::HeapPeak::HeapPeak() : before_(inUse) {
    most = before_;
}

std::size_t bench::HeapPeak::bytes() const {
    return most - before_;
}

extern "C" {

void* malloc(std::size_t size) {
    return taken(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
    return taken(__libc_calloc(count, size));
}

// The old and the new block may coexist while bytes are copied, so both count.
void* realloc(void* memory, std::size_t size) {
    const std::size_t before = memory != nullptr ? ::malloc_usable_size(memory) : 0;
    void* const result = __libc_realloc(memory, size);
    if (result == nullptr && size > 0) return nullptr;
    if (result == memory) givenBack(before);
    taken(result);
    if (result != memory) givenBack(before);
    return result;
}

void* memalign(std::size_t alignment, std::size_t size) {
    return taken(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return taken(__libc_memalign(alignment, size));
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    void* const result = taken(__libc_memalign(alignment, size));
    if (result == nullptr) return ENOMEM;
    *memory = result;
    return 0;
}

void free(void* memory) {
    if (memory != nullptr) givenBack(::malloc_usable_size(memory));
    __libc_free(memory);
}

}  // extern "C"
