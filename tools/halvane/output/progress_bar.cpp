#include "tools/halvane/output/progress_bar.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kErase = "\r\x1B[K";
constexpr std::string_view kGap = "  ";
constexpr std::size_t kSmallestBar = 8;  // cells between the brackets
constexpr std::size_t kWidestBar = 31;
constexpr std::size_t kLeastOfName = 4;
constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// --- The line's end by a signal ---

// The descriptor of the line that is on the terminal; -1 if there is none. Signal handlers read it.
std::atomic<int> gDrawnOn = -1;
static_assert(std::atomic<int>::is_always_lock_free);

ProgressBar* gCurrent = nullptr;

void writeAll(int descriptor, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

// The signal ends the program as it would have done without the line.
void eraseAndEnd(int signal) {
    const int descriptor = gDrawnOn.exchange(-1);
    if (descriptor >= 0) writeAll(descriptor, kErase);
    std::signal(signal, SIG_DFL);
    ::raise(signal);
}

void setHandlers(void (*from)(int), void (*to)(int)) {
    for (const int signal : kEndingSignals) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if ((action.sa_flags & SA_SIGINFO) != 0 || action.sa_handler != from) continue;
        action.sa_handler = to;
        action.sa_flags = 0;
        sigemptyset(&action.sa_mask);
        ::sigaction(signal, &action, nullptr);
    }
}

// --- The text ---

// Leaves the last column free: writing there wraps the line on some terminals.
std::size_t usableColumns(int descriptor) {
    winsize size{};
    if (::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) size.ws_col = 80;
    return size.ws_col - 1u;
}

double partDone(std::uint64_t done, std::uint64_t total) {
    return static_cast<double>(std::min(done, total)) / static_cast<double>(total);
}

std::string percentText(double part) {
    const std::string number = std::to_string(std::min(99, static_cast<int>(part * 100)));
    return std::string(2 - number.size(), ' ') + number + "%";
}

std::string barText(double part, std::size_t cells) {
    const auto filled = static_cast<std::size_t>(part * static_cast<double>(cells));
    return "[" + std::string(filled, '#') + std::string(cells - filled, '.') + "]";
}

std::string cutName(const std::string& name, std::size_t cells) {
    const TextRules rules{.isASCII = true};
    return cutInMiddle(ownText(name, rules), cells, ownText("~", rules)).octets();
}

std::size_t cellsOfName(const std::string& name) {
    return ownText(name, TextRules()).cells();
}

// What stands right of the name, the bar left out.
struct Facts {
    std::string before;   // "3 of 8  "
    std::string percent;  // "  53%", or empty
    std::string bytes;    // "  541 MB of 1.02 GB"
    std::string time;     // "  4 s"
};

Facts factsOf(const ProgressOf& what, std::uint64_t done, std::chrono::seconds taken) {
    Facts facts;
    if (what.count > 1) {
        facts.before = std::to_string(what.number) + " of " + std::to_string(what.count) + "  ";
    }
    facts.bytes = "  " + byteText(done);
    if (what.total && *what.total > 0) {
        facts.percent = "  " + percentText(partDone(done, *what.total));
        facts.bytes += " of " + byteText(std::max(done, *what.total));
    }
    facts.time = "  " + std::to_string(taken.count()) + " s";
    return facts;
}

}  // namespace

std::string byteText(std::uint64_t bytes) {
    constexpr std::array<const char*, 6> kUnits = {"kB", "MB", "GB", "TB", "PB", "EB"};
    if (bytes < 1000) return std::to_string(bytes) + " B";
    auto value = static_cast<double>(bytes) / 1000;
    std::size_t unit = 0;
    for (; value >= 999.5 && unit + 1 < kUnits.size(); ++unit) value /= 1000;
    const int decimals = value < 9.995 ? 2 : value < 99.95 ? 1 : 0;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.*f %s", decimals, value, kUnits[unit]);
    return text.data();
}

std::string progressText(const ProgressOf& what, std::uint64_t done, std::chrono::seconds taken,
                         std::size_t width) {
    const Facts facts = factsOf(what, done, taken);
    const std::size_t name = cellsOfName(what.name);
    const std::size_t bare = facts.before.size() + facts.percent.size() + facts.time.size();
    if (bare + kLeastOfName > width) {
        const std::string least = facts.percent.empty() ? facts.time : facts.percent;
        return least.size() - kGap.size() > width ? "" : least.substr(kGap.size());
    }
    if (name + bare > width) {
        return facts.before + cutName(what.name, width - bare) + facts.percent + facts.time;
    }
    constexpr std::size_t kAround = 4;  // the gap and the brackets
    const std::size_t least = facts.percent.empty() ? 0 : kAround + kSmallestBar;
    const bool hasBytes = name + bare + facts.bytes.size() + least <= width;
    const std::string end = facts.percent + (hasBytes ? facts.bytes : "") + facts.time;
    const std::size_t used = facts.before.size() + name + end.size();
    if (least == 0 || used + least > width) return facts.before + what.name + end;
    const std::size_t cells = std::min(width - used - kAround, kWidestBar);
    const std::string bar = barText(partDone(done, *what.total), cells);
    return facts.before + what.name + std::string(kGap) + bar + end;
}

ProgressBar::ProgressBar(int descriptor, ResultsAre results)
    : ProgressBar(descriptor, results, [] { return std::chrono::steady_clock::now(); }) {}

ProgressBar::ProgressBar(int descriptor, ResultsAre results, Clock clock)
    : clock_(std::move(clock)) {
    const char* const term = std::getenv("TERM");
    const bool canErase = term != nullptr && *term != '\0' && std::string_view(term) != "dumb";
    const bool isShared = results == ResultsAre::Streamed && ::isatty(STDOUT_FILENO) == 1;
    if (!canErase || isShared || ::isatty(descriptor) != 1) return;
    descriptor_ = descriptor;
    start_ = clock_();
    next_ = start_ + kPatience;
    gCurrent = this;
    setHandlers(SIG_DFL, eraseAndEnd);
}

ProgressBar::~ProgressBar() {
    if (descriptor_ < 0) return;
    clear();
    setHandlers(eraseAndEnd, SIG_DFL);
    gCurrent = nullptr;
}

void ProgressBar::update(const ProgressOf& what, std::uint64_t done) {
    if (descriptor_ < 0) return;
    const auto now = clock_();
    if (now < next_) return;
    next_ = now + kPause;
    const auto taken = std::chrono::floor<std::chrono::seconds>(now - start_);
    draw(progressText(what, done, taken, usableColumns(descriptor_)));
}

// The line counts as drawn before it is: a signal in between erases an empty line.
void ProgressBar::draw(const std::string& text) {
    gDrawnOn = descriptor_;
    writeAll(descriptor_, std::string(kErase) + text);
}

void ProgressBar::clear() noexcept {
    const int descriptor = gDrawnOn.exchange(-1);
    if (descriptor >= 0) writeAll(descriptor, kErase);
}

void ProgressBar::clearCurrent() noexcept {
    if (gCurrent != nullptr) gCurrent->clear();
}

}  // namespace halvane::tool
