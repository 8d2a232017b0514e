// A progress bar for long files, on a terminal only.
#ifndef TOOLS_HALVANE_OUTPUT_PROGRESS_BAR_H
#define TOOLS_HALVANE_OUTPUT_PROGRESS_BAR_H

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace halvane::tool {

// "[=====>    ]  54%": exactly `width` columns. Empty where they are too few for a bar, or where
// `total` is 0. More than `total` counts as all of it.
std::string progressBarText(std::uint64_t done, std::uint64_t total, std::size_t width);

// Whether a file deserves a bar: it is larger than 4 MiB (an absent size is not), the output is a
// terminal, and NO_COLOR (https://no-color.org; null where it is not set) is unset or empty.
bool wantsProgressBar(std::optional<std::uint64_t> fileSize, bool isTerminal, const char* noColor);

// Draws on `stream` for as long as it lives, and wipes the line when it goes. For one thread.
class ProgressBar {
  public:
    // Draws nothing where wantsProgressBar says no, of this stream and this environment.
    // REQUIRES: `stream` outlives the bar.
    ProgressBar(std::FILE* stream, std::optional<std::uint64_t> fileSize);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    // Whether there is a bar at all, so that nobody counts bytes for nothing.
    bool isShown() const { return total_ > 0; }

    // Cheap where the text does not change.
    void update(std::uint64_t done);

    // Wipes the line until the next update that changes it; call it before other output.
    void clear();

  private:
    std::FILE* stream_;
    std::uint64_t total_ = 0;  // bytes; 0: no bar
    std::size_t width_ = 0;    // columns
    std::string shown_;
};

}  // namespace halvane::tool

#endif
