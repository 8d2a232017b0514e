// A progress bar for long files, on a terminal only.
#ifndef TOOLS_HALVANE_OUTPUT_PROGRESS_BAR_H
#define TOOLS_HALVANE_OUTPUT_PROGRESS_BAR_H

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace halvane::tool {

// "[=====>    ]  54%": exactly `width` columns. Empty if they are too few for a bar, or if `total`
// is 0. More than `total` counts as `total`.
std::string progressBarText(std::uint64_t done, std::uint64_t total, std::size_t width);

// Whether a file deserves a bar: it is larger than 4 MiB (an absent size is not), the output is a
// terminal, and NO_COLOR (https://no-color.org; null if it is not set) is unset or empty.
bool wantsProgressBar(std::optional<std::uint64_t> fileSize, bool isTerminal, const char* noColor);

// Draws on `stream` as long as it lives, and clears the line at the end. For one thread.
class ProgressBar {
  public:
    // Draws nothing if wantsProgressBar() returns false for this stream and environment.
    // REQUIRES: `stream` outlives the bar.
    ProgressBar(std::FILE* stream, std::optional<std::uint64_t> fileSize);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    // Whether there is a bar at all. If not, the caller need not count bytes.
    bool isShown() const { return total_ > 0; }

    // Cheap if the text does not change.
    void update(std::uint64_t done);

    // Clears the line until the next update that changes it. Call it before other output.
    void clear();

  private:
    std::FILE* stream_;
    std::uint64_t total_ = 0;  // bytes; 0: no bar
    std::size_t width_ = 0;    // columns
    std::string shown_;
};

}  // namespace halvane::tool

#endif
