// Counts the allocations of a benchmark. Linking allocation_count.cpp replaces the program's global
// allocation functions.
#ifndef BENCH_ALLOCATION_COUNT_H
#define BENCH_ALLOCATION_COUNT_H

#include <cstdint>

namespace bench {

// The number of allocations by operator new in the calling thread since the program started.
std::uint64_t allocationCount();

}  // namespace bench

#endif
