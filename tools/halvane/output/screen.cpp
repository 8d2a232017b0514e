#include "tools/halvane/output/screen.h"

#include <cerrno>
#include <cstddef>
#include <poll.h>
#include <string_view>
#include <unistd.h>

namespace halvane::tool {

namespace {

// The alternate screen, no cursor, lines that end at the edge, and a wheel that sends arrow keys.
// What the wheel did before is kept by the terminal: no program can know it.
constexpr std::string_view kEnter =
    "\x1B[?1049h\x1B[?25l\x1B[?7l\x1B[?1007s\x1B[?1007h\x1B[H\x1B[2J";
constexpr std::string_view kLeave = "\x1B[?1007r\x1B[?7h\x1B[?25h\x1B[?1049l";
constexpr std::string_view kBegin = "\x1B[?2026h";
constexpr std::string_view kEnd = "\x1B[?2026l";
constexpr std::string_view kClear = "\x1B[H\x1B[2J";
constexpr std::string_view kEraseRest = "\x1B[K";

// Returns, after a failed write, whether another may succeed. Waits for room if another user of the
// terminal made it non-blocking.
bool mayGoOn(int output) noexcept {
    if (errno == EINTR) return true;
    if (errno != EAGAIN) return false;
    pollfd writable = {output, POLLOUT, 0};
    ::poll(&writable, 1, -1);
    return true;
}

// A terminal that is gone takes nothing; the program ends by other signs of that.
void writeAll(int output, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t count = ::write(output, text.data(), text.size());
        if (count < 0 && mayGoOn(output)) continue;
        if (count <= 0) return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

}  // namespace

std::string redrawn(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    const bool isWhole = before.size() != after.size();
    std::string text;
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (!isWhole && before[i] == after[i]) continue;
        text += "\x1B[" + std::to_string(i + 1) + ";1H" + after[i];
        text += kEraseRest;
    }
    if (text.empty()) return text;
    std::string frame(kBegin);
    if (isWhole) frame += kClear;
    return frame.append(text).append(kEnd);
}

Screen::Screen(int output, int keyboard) : output_(output), keyboard_(keyboard) {
    enter();
}

void Screen::enter() {
    if (isEntered_) return;
    isEntered_ = true;
    termios settings{};
    before_.reset();
    if (keyboard_ >= 0 && ::tcgetattr(keyboard_, &settings) == 0) before_ = settings;
    take();
}

void Screen::renew() {
    if (isEntered_) take();
}

void Screen::take() {
    shown_.clear();
    if (before_) {
        termios settings = *before_;
        settings.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        settings.c_cc[VMIN] = 1;
        settings.c_cc[VTIME] = 0;
        ::tcsetattr(keyboard_, TCSADRAIN, &settings);
    }
    writeAll(output_, kEnter);
}

void Screen::leave() noexcept {
    if (!isEntered_) return;
    isEntered_ = false;
    writeAll(output_, kLeave);
    if (before_) ::tcsetattr(keyboard_, TCSADRAIN, &*before_);
}

void Screen::show(const std::vector<std::string>& lines) {
    writeAll(output_, redrawn(shown_, lines));
    shown_ = lines;
}

}  // namespace halvane::tool
