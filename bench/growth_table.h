// Prints the results of growth rows as one table.
#ifndef BENCH_GROWTH_TABLE_H
#define BENCH_GROWTH_TABLE_H

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// One line of Markdown per row: growth by Google Benchmark's fit, constant and error of that fit,
// time at the greatest size, and the ratio of that time to the time at the previous size.
class GrowthTable : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    // The number of rows that grow faster than n log n.
    std::size_t steepRows() const { return steepRows_; }

  private:
    // The sizes of one row.
    struct Row {
        double secondLast = 0;  // nanoseconds
        double last = 0;
        std::int64_t size = 0;
    };

    void addSize(const Run& run);
    void printFit(const Run& run);
    void endRow(const Run& run);

    Row row_;
    std::size_t rows_ = 0;
    std::size_t steepRows_ = 0;
};

}  // namespace bench

#endif
