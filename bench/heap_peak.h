// Measures how much heap a piece of work needs. Linking heap_peak.cpp replaces malloc and
// everything built on it, in the program and in every library that it loads.
#ifndef BENCH_HEAP_PEAK_H
#define BENCH_HEAP_PEAK_H

#include <cstddef>

namespace bench {

// Watches the heap from its construction on. One may live at a time.
class HeapPeak {
  public:
    HeapPeak();
    HeapPeak(const HeapPeak&) = delete;
    HeapPeak& operator=(const HeapPeak&) = delete;

    // The most bytes in use at one time, without those in use at the start. It includes the
    // allocator's rounding, but not the allocator's own records.
    std::size_t bytes() const;

  private:
    const std::size_t before_;
};

}  // namespace bench

#endif
