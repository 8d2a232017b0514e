#include "bench/allocation_count.h"

#include <cstdlib>
#include <new>

namespace {

// Not atomic, because counting must cost almost nothing in a program that allocates much.
thread_local std::uint64_t allocations = 0;

}  // namespace

std::uint64_t bench::allocationCount() {
    return allocations;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
