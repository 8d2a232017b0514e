// What readers of hostile input need of the heap, as one table.
#ifndef BENCH_MEMORY_TABLE_H
#define BENCH_MEMORY_TABLE_H

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "bench/heap_peak.h"

namespace bench {

// The aim: bytes of memory for each byte of input, beside the input itself.
inline constexpr double kMostBytesPerByte = 16;

class MemoryTable {
  public:
    explicit MemoryTable(std::string_view filter) : filter_(filter) {
        std::puts(
            "| input | its bytes | most memory | bytes a byte | |\n| --- | --- | --- | --- | --- "
            "|");
    }

    // `size` is that of the input, which exists already. `read()` returns what it keeps of it,
    // which counts, as everything does that it makes on the way.
    template <typename Read>
    void measure(std::string_view row, std::size_t size, Read read) {
        const HeapPeak peak;
        [[maybe_unused]] const auto kept = read();
        print(row, size, peak.bytes());
    }

    // Whether a row is asked for; making its input takes time.
    bool has(std::string_view row) const { return row.find(filter_) != row.npos; }

    void finish() const {
        std::printf("\n%zu rows, %zu of them above %.0f bytes a byte\n", rows_, high_,
                    kMostBytesPerByte);
    }

  private:
    void print(std::string_view row, std::size_t size, std::size_t peak) {
        const double share = static_cast<double>(peak) / static_cast<double>(size);
        const bool isHigh = share > kMostBytesPerByte;
        ++rows_;
        high_ += isHigh ? 1 : 0;
        std::printf("| %.*s | %zu | %zu | %.1f | %s |\n", static_cast<int>(row.size()), row.data(),
                    size, peak, share, isHigh ? "**above**" : "");
        std::fflush(stdout);
    }

    const std::string_view filter_;
    std::size_t rows_ = 0;
    std::size_t high_ = 0;
};

// The rows, by what is read.
void measurePropertyLists(MemoryTable& table);
void measureReplies(MemoryTable& table);
void measureCaptures(MemoryTable& table);
void measureElements(MemoryTable& table);

}  // namespace bench

#endif
