// Prints how much heap readers of hostile input need, as one table.
#ifndef BENCH_MEMORY_TABLE_H
#define BENCH_MEMORY_TABLE_H

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "bench/heap_peak.h"

namespace bench {

// The aim: bytes of memory for each byte of input, beside the input itself.
inline constexpr double kMostBytesPerByte = 16;

// An input and its size in bytes.
template <typename Value>
struct Sized {
    Value value;
    std::size_t size;
};
template <typename Value>
Sized(Value, std::size_t) -> Sized<Value>;  // clang 14 does not deduce those of aggregates

class MemoryTable {
  public:
    explicit MemoryTable(std::string_view filter) : filter_(filter) {
        std::puts(
            "| input | its bytes | most memory | bytes a byte | |\n"
            "| --- | --- | --- | --- | --- |");
    }

    // `make(size)` returns an input of about that size, which does not count. `read(value)` returns
    // what it keeps of the input. The row counts this, and everything that `read` allocates
    // meanwhile.
    //
    // At some sizes a growing list is twice as large as necessary, so the row shows the worst of
    // kSizes sizes from `most` / 2 up to `most`.
    template <typename Make, typename Read>
    void measure(const std::string& row, std::size_t most, Make make, Read read) {
        if (row.find(filter_) == row.npos) return;
        Worst worst;
        for (std::size_t i = 1; i <= kSizes; ++i) {
            const auto input = make(most / 2 + most / 2 * i / kSizes);
            const HeapPeak peak;
            [[maybe_unused]] const auto kept = read(input.value);
            worst.add(input.size, peak.bytes());
        }
        print(row, worst);
    }

    void finish() const {
        std::printf("\n%zu rows, %zu of them above %.0f bytes a byte\n", rows_, high_,
                    kMostBytesPerByte);
    }

  private:
    static constexpr std::size_t kSizes = 8;

    struct Worst {
        std::size_t size = 1;
        std::size_t peak = 0;

        double share() const { return static_cast<double>(peak) / static_cast<double>(size); }
        void add(std::size_t newSize, std::size_t newPeak) {
            const Worst other = {newSize, newPeak};
            if (other.share() > share()) *this = other;
        }
    };

    void print(const std::string& row, const Worst& worst) {
        const bool isHigh = worst.share() > kMostBytesPerByte;
        ++rows_;
        high_ += isHigh ? 1 : 0;
        std::printf("| %s | %zu | %zu | %.1f | %s |\n", row.c_str(), worst.size, worst.peak,
                    worst.share(), isHigh ? "**above**" : "");
        std::fflush(stdout);
    }

    const std::string_view filter_;
    std::size_t rows_ = 0;
    std::size_t high_ = 0;
};

// The rows, by kind of input.
void measurePropertyLists(MemoryTable& table);
void measureReplies(MemoryTable& table);
void measureCaptures(MemoryTable& table);
void measureElements(MemoryTable& table);

}  // namespace bench

#endif
