// Counts what a benchmark allocates, by replacing the global allocation functions. Include it in
// one file of a program.
#ifndef BENCH_ALLOCATION_COUNT_H
#define BENCH_ALLOCATION_COUNT_H

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace bench {

inline std::atomic<std::uint64_t> allocations = 0;

}  // namespace bench

void* operator new(std::size_t size) {
    bench::allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

#endif
