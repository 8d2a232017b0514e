#include "tools/halvane/passphrase_input.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <poll.h>
#include <string.h>
#include <string_view>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace halvane::tool {

namespace {

constexpr std::size_t kMinSize = 8;
constexpr std::size_t kMaxSize = 63;
constexpr std::size_t kKeySize = 32;

// 63 characters have at most 189 octets.
constexpr std::size_t kCapacity = 256;

constexpr std::string_view kPrompt = "Passphrase: ";
constexpr char kTooLong[] = "the passphrase is longer than 63 characters";

std::string systemError(const char* what) {
    return std::string(what) + ": " + std::strerror(errno);
}

// A line in the making, in the memory that it stays in.
class Line {
  public:
    enum class State { Open, Complete, Failed };

    // Waits for one more octet.
    State read(int file) {
        const ssize_t count = ::read(file, &memory_[size_], 1);
        if (count < 0) return errno == EINTR ? State::Open : State::Failed;
        const bool isNewline = count > 0 && memory_[size_] == '\n';
        if (isNewline && size_ > 0 && memory_[size_ - 1] == '\r') --size_;
        if (isNewline || count == 0) return State::Complete;
        isTooLong_ |= size_ == kCapacity - 1;  // then the next one takes its place
        if (!isTooLong_) ++size_;
        return State::Open;
    }

    std::variant<ByteBuffer, std::string> take() {
        if (isTooLong_) return kTooLong;
        if (size_ == 0) return "no passphrase";
        return ByteBuffer::sharing(std::move(memory_), size_);
    }

  private:
    static void wipe(std::uint8_t* memory) {
        ::explicit_bzero(memory, kCapacity);
        delete[] memory;
    }

    std::shared_ptr<std::uint8_t[]> memory_{new std::uint8_t[kCapacity](), wipe};
    std::size_t size_ = 0;
    bool isTooLong_ = false;
};

// The signals that end or stop a program from its terminal, or end it in any case, kept back to be
// read from a file.
class SignalWatch {
  public:
    SignalWatch() {
        ::sigemptyset(&watched_);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP}) {
            ::sigaddset(&watched_, signal);
        }
        ::sigprocmask(SIG_BLOCK, &watched_, &before_);
        file_ = ::signalfd(-1, &watched_, SFD_CLOEXEC);
    }
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;
    ~SignalWatch() {
        if (file_ >= 0) ::close(file_);
        ::sigprocmask(SIG_SETMASK, &before_, nullptr);
    }

    int file() const { return file_; }

    // REQUIRES: the file is readable.
    int take() const {
        signalfd_siginfo signal{};
        if (::read(file_, &signal, sizeof(signal)) != sizeof(signal)) return 0;
        return static_cast<int>(signal.ssi_signo);
    }

  private:
    sigset_t watched_{};
    sigset_t before_{};
    int file_ = -1;
};

// The terminal, showing nothing of what is typed but the end of the line. What was typed before, or
// is left behind the line, is thrown away.
class SilentTerminal {
  public:
    explicit SilentTerminal(int file) : file_(file) {
        isSilent_ = ::tcgetattr(file_, &before_) == 0;
        termios silent = before_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        silent.c_lflag |= ECHONL;
        isSilent_ = isSilent_ && ::tcsetattr(file_, TCSAFLUSH, &silent) == 0;
    }
    SilentTerminal(const SilentTerminal&) = delete;
    SilentTerminal& operator=(const SilentTerminal&) = delete;
    ~SilentTerminal() {
        if (isSilent_) ::tcsetattr(file_, TCSAFLUSH, &before_);
    }

    explicit operator bool() const { return isSilent_; }

  private:
    int file_;
    termios before_{};
    bool isSilent_ = false;
};

class File {
  public:
    explicit File(int number) : number_(number) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() {
        if (number_ >= 0) ::close(number_);
    }

    int number() const { return number_; }

  private:
    int number_;
};

struct Answer {
    Line::State state = Line::State::Failed;
    int signal = 0;  // that came before the line was complete
};

Answer readLine(Line& line, int terminal, const SignalWatch& signals) {
    pollfd files[] = {{terminal, POLLIN, 0}, {signals.file(), POLLIN, 0}};
    for (;;) {
        if (::poll(files, std::size(files), -1) < 0) {
            if (errno == EINTR) continue;
            return {};
        }
        if (files[1].revents != 0) return {Line::State::Open, signals.take()};
        const Line::State state = line.read(terminal);
        if (state != Line::State::Open) return {state};
    }
}

// Once the terminal is as it was, the signal does what it would have done.
Answer askOnce(Line& line, int terminal) {
    const SignalWatch signals;
    const SilentTerminal silent(terminal);
    if (signals.file() < 0 || !silent) return {};
    if (::write(terminal, kPrompt.data(), kPrompt.size()) < 0) return {};
    return readLine(line, terminal, signals);
}

// Asks again where the program goes on after a signal.
std::variant<ByteBuffer, std::string> askOnTerminal() {
    const File terminal(::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (terminal.number() < 0) return systemError("/dev/tty");
    for (;;) {
        Line line;
        const Answer answer = askOnce(line, terminal.number());
        if (answer.state == Line::State::Complete) return line.take();
        if (answer.state == Line::State::Failed) return systemError("/dev/tty");
        ::raise(answer.signal);
    }
}

bool isPrintable(std::uint8_t octet) {
    return octet >= 0x20 && octet <= 0x7E;
}

}  // namespace

std::variant<ByteBuffer, std::string> readPassphrase() {
    if (::isatty(STDIN_FILENO) != 0) return askOnTerminal();
    Line line;
    Line::State state = Line::State::Open;
    while (state == Line::State::Open) state = line.read(STDIN_FILENO);
    if (state == Line::State::Failed) return systemError("standard input");
    return line.take();
}

std::string passphraseProblem(const ByteBuffer& passphrase) {
    const std::size_t size = passphrase.size();
    if (size < kMinSize) return "the passphrase is shorter than 8 characters";
    if (size > kMaxSize) return kTooLong;
    if (!std::ranges::all_of(passphrase.bytes(), isPrintable)) {
        return "the passphrase holds a character that is not printable ASCII";
    }
    if (size == kKeySize) return "no key is made of a passphrase of exactly 32 characters";
    return "no memory for the key";
}

}  // namespace halvane::tool
