#include "tools/halvane/output/progress_bar.h"

#include <algorithm>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace halvane::tool {

namespace {

constexpr std::uint64_t kSmallestFile = std::uint64_t{4}
                                        << 20;  // bytes; a smaller one is done at once
constexpr std::size_t kDecoration = 7;          // "[", "] " and "100%"
constexpr std::size_t kSmallestBar = 4;
constexpr std::size_t kWidestBar = 80;

// Leaves the last column free: writing there wraps the line on some terminals.
std::size_t usableColumns(std::FILE* stream) {
    winsize size{};
    if (::ioctl(::fileno(stream), TIOCGWINSZ, &size) != 0 || size.ws_col == 0) size.ws_col = 80;
    return std::min<std::size_t>(size.ws_col - 1u, kWidestBar);
}

}  // namespace

std::string progressBarText(std::uint64_t done, std::uint64_t total, std::size_t width) {
    if (total == 0 || width < kDecoration + kSmallestBar) return {};
    const double part = static_cast<double>(std::min(done, total)) / static_cast<double>(total);
    const std::size_t cells = width - kDecoration;
    const auto filled = static_cast<std::size_t>(part * static_cast<double>(cells));

    std::string bar(filled, '=');
    if (filled < cells) bar += '>';
    bar.resize(cells, ' ');
    std::string percent = std::to_string(static_cast<int>(part * 100)) + "%";
    percent.insert(0, 4 - percent.size(), ' ');
    return "[" + bar + "] " + percent;
}

bool wantsProgressBar(std::optional<std::uint64_t> fileSize, bool isTerminal, const char* noColor) {
    const bool isColorUnwanted = noColor && *noColor != '\0';
    return isTerminal && !isColorUnwanted && fileSize && *fileSize > kSmallestFile;
}

ProgressBar::ProgressBar(std::FILE* stream, std::optional<std::uint64_t> fileSize)
    : stream_(stream) {
    const bool isTerminal = ::isatty(::fileno(stream)) == 1;
    if (!wantsProgressBar(fileSize, isTerminal, std::getenv("NO_COLOR"))) return;
    total_ = *fileSize;
    width_ = usableColumns(stream);
}

ProgressBar::~ProgressBar() {
    clear();
}

void ProgressBar::update(std::uint64_t done) {
    if (total_ == 0) return;
    std::string text = progressBarText(done, total_, width_);
    if (text == shown_) return;
    std::fprintf(stream_, "\r%s", text.c_str());
    std::fflush(stream_);
    shown_ = std::move(text);
}

void ProgressBar::clear() {
    if (shown_.empty()) return;
    std::fprintf(stream_, "\r%*s\r", static_cast<int>(shown_.size()), "");
    std::fflush(stream_);
    shown_.clear();
}

}  // namespace halvane::tool
