// A program that runs on its own terminal, with the test at the keyboard.
#ifndef TESTS_SUPPORT_TERMINAL_PROGRAM_H
#define TESTS_SUPPORT_TERMINAL_PROGRAM_H

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>
#include <vector>

#include "tests/support/spawn_program.h"

namespace halvane::testing {

// Skips the test if the system has no terminals, for example if /dev/pts is not mounted.
#define HALVANE_SKIP_WITHOUT_TERMINALS()                                     \
    if (const int missing = halvane::testing::terminalError(); missing != 0) \
    GTEST_SKIP() << "no terminal can be opened here (openpty): "             \
                 << std::generic_category().message(missing)

// The error number of an attempt to open a terminal; 0 if it succeeds.
inline int terminalError() {
    int keyboard = -1, terminal = -1;
    if (::openpty(&keyboard, &terminal, nullptr, nullptr, nullptr) != 0) return errno;
    ::close(keyboard);
    ::close(terminal);
    return 0;
}

class TerminalProgram {
  public:
    // words[0] is the program's path. All three of its streams are the terminal.
    explicit TerminalProgram(std::vector<std::string> words) {
        const std::vector<char*> arguments = argumentsOf(words);
        if (::openpty(&keyboard_, &terminal_, nullptr, nullptr, nullptr) != 0) {
            throw std::system_error(errno, std::generic_category(), "openpty");
        }
        process_ = ::fork();
        if (process_ != 0) return;
        ::close(keyboard_);
        if (::login_tty(terminal_) == 0) ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    TerminalProgram(const TerminalProgram&) = delete;
    TerminalProgram& operator=(const TerminalProgram&) = delete;
    ~TerminalProgram() {
        if (process_ > 0) ::kill(process_, SIGKILL);
        wait();
        ::close(keyboard_);
        ::close(terminal_);
    }

    // Waits until `text` is on the screen. Then clears the screen, and returns what was on it
    // before `text`. Gives up after half a minute without new output.
    std::string waitFor(std::string_view text) {
        std::size_t found = 0;
        while ((found = screen_.find(text)) == std::string::npos) {
            if (!readScreen(30'000)) return "missing: " + std::string(text) + " in " + screen_;
        }
        const std::string before = screen_.substr(0, found);
        screen_.erase(0, found + text.size());
        return before;
    }

    void type(std::string_view text) {
        while (!text.empty()) {
            const ssize_t count = ::write(keyboard_, text.data(), text.size());
            if (count < 0) throw std::system_error(errno, std::generic_category(), "typing");
            text.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    // Gives the terminal another size, which the program is told by SIGWINCH.
    void resize(unsigned short lines, unsigned short columns) {
        const winsize size = {.ws_row = lines, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
        ::ioctl(keyboard_, TIOCSWINSZ, &size);
    }

    pid_t process() const { return process_; }

    // Waits for the program's end, and returns the status of waitpid().
    int wait() {
        if (process_ > 0) ::waitpid(process_, &status_, 0);
        process_ = 0;
        return status_;
    }

    // What is on the screen after the program's end.
    std::string screen() {
        while (readScreen(0)) continue;
        return screen_;
    }

    // Whether the terminal shows what is typed.
    bool shows() const {
        termios settings{};
        ::tcgetattr(terminal_, &settings);
        return (settings.c_lflag & ECHO) != 0;
    }

    // Makes the terminal show what is typed, line by line, as shells leave it.
    void showTyped() const {
        termios settings{};
        ::tcgetattr(terminal_, &settings);
        settings.c_lflag |= ECHO | ICANON;
        ::tcsetattr(terminal_, TCSANOW, &settings);
    }

  private:
    bool readScreen(int milliseconds) {
        pollfd file = {keyboard_, POLLIN, 0};
        char part[1024];
        if (::poll(&file, 1, milliseconds) != 1) return false;
        const ssize_t count = ::read(keyboard_, part, sizeof(part));
        if (count > 0) screen_.append(part, static_cast<std::size_t>(count));
        return count > 0;
    }

    int keyboard_ = -1;
    int terminal_ = -1;  // held open, so that the test can read its settings afterwards
    pid_t process_ = 0;
    int status_ = -1;
    std::string screen_;
};

}  // namespace halvane::testing

#endif
