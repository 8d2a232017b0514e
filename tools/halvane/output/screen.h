// The whole screen of a terminal, for a command that draws it anew while it runs.
//
// For one thread.
#ifndef TOOLS_HALVANE_OUTPUT_SCREEN_H
#define TOOLS_HALVANE_OUTPUT_SCREEN_H

#include <optional>
#include <string>
#include <termios.h>
#include <vector>

namespace halvane::tool {

// What makes the lines `before` on a screen to `after`: only those that differ are written, each
// with erasing to its end, and all of it shows at once where the terminal can (mode 2026). Empty if
// none differs. All lines are written where their number differs.
std::string redrawn(const std::vector<std::string>& before, const std::vector<std::string>& after);

// Holds the alternate screen, without its cursor and without echo, and gives the terminal back. The
// wheel sends arrow keys, where the terminal can (mode 1007).
class Screen {
  public:
    // REQUIRES: `output` is a terminal. `keyboard` is one too, or -1.
    Screen(int output, int keyboard);
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;
    ~Screen() { leave(); }

    void enter();
    void leave() noexcept;

    // Takes the screen and the keyboard once more, if it has them: another program may have changed
    // them while this one was stopped.
    void renew();

    // Draws the lines, with one write.
    void show(const std::vector<std::string>& lines);

    // The next show() draws everything.
    void forget() { shown_.clear(); }

  private:
    void take();

    int output_;
    int keyboard_;
    bool isEntered_ = false;
    std::optional<termios> before_{};  // settings of the keyboard
    std::vector<std::string> shown_{};
};

}  // namespace halvane::tool

#endif
