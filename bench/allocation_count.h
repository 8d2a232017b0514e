// Counts what a benchmark allocates. A program that links allocation_count.cpp has its global
// allocation functions replaced.
#ifndef BENCH_ALLOCATION_COUNT_H
#define BENCH_ALLOCATION_COUNT_H

#include <cstdint>

namespace bench {

// Allocations by operator new since the program started, by the calling thread.
std::uint64_t allocationCount();

}  // namespace bench

#endif
