// One line that shows how far the work has come, on the terminal of standard error.
//
// The line appears once the work has taken a while, changes a few times a second, and fits the
// terminal, whose width it asks for each time. It goes before anything else is written, and at the
// end, whatever that end is: the destructor, or SIGINT, SIGTERM, SIGHUP and SIGQUIT.
//
// For one thread.
#ifndef TOOLS_HALVANE_OUTPUT_PROGRESS_BAR_H
#define TOOLS_HALVANE_OUTPUT_PROGRESS_BAR_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace halvane::tool {

// What is worked on.
struct ProgressOf {
    std::string name = {};                    // of a file; safe to show
    std::optional<std::uint64_t> total = {};  // bytes; absent for a pipe
    std::size_t number = 1;                   // of so many files
    std::size_t count = 1;
};

// "walk.pcapng  [########........]  53%  541 MB of 1.02 GB  4 s" in at most `width` columns. What
// finds no room is left out: first the bytes, then the bar, and then the name is cut. Without a
// total: "walk.pcapng  541 MB  4 s". It never shows 100 %, since the work is not done yet. Several
// files are counted: "3 of 8  ...".
std::string progressText(const ProgressOf& what, std::uint64_t done, std::chrono::seconds taken,
                         std::size_t width);

// "541 MB", "1.02 GB": three digits or the whole number of bytes.
std::string byteText(std::uint64_t bytes);

// What the tool does with its output while it works.
enum class ResultsAre {
    Kept,     // until the end
    Streamed  // as they come
};

class ProgressBar {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    static constexpr std::chrono::milliseconds kPatience{300};
    static constexpr std::chrono::milliseconds kPause{100};

    // Draws on a descriptor. It draws nothing if that is not a terminal, if TERM is empty or
    // "dumb", or if results are streamed to a terminal, where they would share its line. NO_COLOR
    // changes nothing.
    // REQUIRES: at most one bar at a time.
    explicit ProgressBar(int descriptor, ResultsAre results = ResultsAre::Kept);
    ProgressBar(int descriptor, ResultsAre results, Clock clock);
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar();

    // Whether there is a bar at all. If not, the caller need not count bytes.
    bool isShown() const { return descriptor_ >= 0; }

    // Shows the bytes done of a file, if it is time to.
    void update(const ProgressOf& what, std::uint64_t done);

    // Takes the line away until the next update. complain() calls it for the bar that there is.
    void clear() noexcept;
    static void clearCurrent() noexcept;

  private:
    void draw(const std::string& text);

    int descriptor_ = -1;  // -1: no bar
    Clock clock_;
    std::chrono::steady_clock::time_point start_;
    std::chrono::steady_clock::time_point next_;
};

}  // namespace halvane::tool

#endif
