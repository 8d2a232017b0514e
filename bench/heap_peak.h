// How much of the heap a piece of work needs. A program that links heap_peak.cpp has its malloc,
// and what builds on it, replaced, in every library that it loads.
#ifndef BENCH_HEAP_PEAK_H
#define BENCH_HEAP_PEAK_H

#include <cstddef>

namespace bench {

// Watches the heap from its making on; one at a time.
class HeapPeak {
  public:
    HeapPeak();
    HeapPeak(const HeapPeak&) = delete;
    HeapPeak& operator=(const HeapPeak&) = delete;

    // The most bytes that were in use at once, beyond those that were at the start; what the
    // allocator rounds up to counts, its own records do not.
    std::size_t bytes() const;

  private:
    const std::size_t before_;
};

}  // namespace bench

#endif
