#include "tools/halvane/input/passphrase_input.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <memory>
#include <poll.h>
#include <string_view>
#include <sys/signalfd.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/model/bss_limits.h"
#include "halvane/platform/os/file_internal.h"
#include "halvane/platform/os/secret_internal.h"

namespace halvane::tool {

namespace {

// 63 characters have at most 189 octets.
constexpr std::size_t kCapacity = 256;

constexpr char kTerminal[] = "/dev/tty";
constexpr std::string_view kPrompt = "Passphrase: ";
constexpr char kTooLong[] = "the passphrase is longer than 63 characters";
constexpr char kNotPrintable[] = "the passphrase holds a character that is not printable ASCII";

// The octets of a passphrase, or the reason why there are none.
using Passphrase = Result<ByteBuffer, std::string>;

Passphrase systemError(const char* what) {
    return Unexpected(std::string(what) + ": " + std::strerror(errno));
}

// A line while it is read. It stays in this memory.
class Line {
  public:
    enum class State { Open, Complete, Failed };

    // Waits for another octet.
    State read(int file) {
        const ssize_t count = ::read(file, memory_.get() + size_, 1);
        if (count < 0) return mayGoOn(file) ? State::Open : State::Failed;
        const bool isNewline = count > 0 && memory_.get()[size_] == '\n';
        if (isNewline && size_ > 0 && memory_.get()[size_ - 1] == '\r') --size_;
        if (isNewline || count == 0) return State::Complete;
        isTooLong_ |= size_ == kCapacity - 1;  // then the next one replaces it
        if (!isTooLong_) ++size_;
        return State::Open;
    }

    // Whether the line is longer than any passphrase, however it continues.
    bool isTooLong() const { return isTooLong_; }

    Passphrase take() {
        if (isTooLong_) return Unexpected(kTooLong);
        if (size_ == 0) return Unexpected("no passphrase");
        if (std::memchr(memory_.get(), '\0', size_) != nullptr) return Unexpected(kNotPrintable);
        return ByteBuffer::sharing(std::move(memory_), size_);
    }

  private:
    // Returns, after a failed read, whether another may succeed. Waits for input if the file is
    // non-blocking and empty.
    static bool mayGoOn(int file) {
        if (errno == EINTR) return true;
        if (errno != EAGAIN) return false;
        pollfd readable = {file, POLLIN, 0};
        return ::poll(&readable, 1, -1) >= 0 || errno == EINTR;
    }

    std::shared_ptr<std::uint8_t[]> memory_ = secretMemory(kCapacity);
    std::size_t size_ = 0;
    bool isTooLong_ = false;
};

// Blocks signals, so that the program can read them from a file. These are the signals that end or
// stop a program from its terminal, those that end it anyway, and SIGCONT, which follows a stop
// that a program cannot see. A signal that was blocked at the start stays out: it would have no
// effect.
class SignalWatch {
  public:
    SignalWatch() {
        ::sigprocmask(SIG_BLOCK, nullptr, &before_);
        ::sigemptyset(&watched_);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP, SIGCONT}) {
            if (::sigismember(&before_, signal) == 0) ::sigaddset(&watched_, signal);
        }
        ::sigprocmask(SIG_BLOCK, &watched_, nullptr);
        file_ = FileDescriptor(::signalfd(-1, &watched_, SFD_CLOEXEC));
    }
    SignalWatch(const SignalWatch&) = delete;
    SignalWatch& operator=(const SignalWatch&) = delete;
    ~SignalWatch() { ::sigprocmask(SIG_SETMASK, &before_, nullptr); }

    int file() const { return file_.number(); }

    // REQUIRES: the file is readable.
    int take() const {
        signalfd_siginfo signal{};
        if (::read(file_.number(), &signal, sizeof(signal)) != sizeof(signal)) return 0;
        return static_cast<int>(signal.ssi_signo);
    }

  private:
    sigset_t watched_{};
    sigset_t before_{};
    FileDescriptor file_;
};

// The terminal, without echo except for the end of the line. It discards input that was typed
// before the question, or after the line.
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

// The typed line, or the signal that arrived before the line was complete.
using Answer = Result<Passphrase, int>;

Answer readLine(int terminal, const SignalWatch& signals) {
    Line line;
    pollfd files[] = {{terminal, POLLIN, 0}, {signals.file(), POLLIN, 0}};
    for (;;) {
        if (::poll(files, std::size(files), -1) < 0) {
            if (errno == EINTR) continue;
            return systemError(kTerminal);
        }
        if (files[1].revents != 0) return Unexpected(signals.take());
        const Line::State state = line.read(terminal);
        if (state == Line::State::Complete) return line.take();
        if (state == Line::State::Failed) return systemError(kTerminal);
    }
}

// Before the program handles a signal, it wipes the typed line and restores the terminal.
Answer askOnce(int terminal) {
    const SignalWatch signals;
    const SilentTerminal silent(terminal);
    if (signals.file() < 0 || !silent) return systemError(kTerminal);
    if (::write(terminal, kPrompt.data(), kPrompt.size()) < 0) return systemError(kTerminal);
    return readLine(terminal, signals);
}

// A signal has its normal effect. If the program continues after it, it asks again: another program
// may have used the terminal, and has its echo restored.
Passphrase askOnTerminal() {
    const FileDescriptor terminal(::open(kTerminal, O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!terminal) return systemError(kTerminal);
    for (;;) {
        const Answer answer = askOnce(terminal.number());
        if (answer) return *answer;
        ::raise(answer.error());
    }
}

}  // namespace

Result<ByteBuffer, std::string> readPassphrase() {
    if (::isatty(STDIN_FILENO) != 0) return askOnTerminal();
    Line line;
    Line::State state = Line::State::Open;
    while (state == Line::State::Open && !line.isTooLong()) state = line.read(STDIN_FILENO);
    if (state == Line::State::Failed) return systemError("standard input");
    return line.take();
}

std::string passphraseProblem(const ByteBuffer& passphrase, const std::optional<Error>& error) {
    const std::size_t size = passphrase.size();
    if (!error) return "no key is made of a passphrase of exactly 32 octets";
    if (error->code == kStatusNoMemory) return "no memory for the key";
    if (size < kBSSMinPassphraseSize) return "the passphrase is shorter than 8 characters";
    return size > kBSSMaxPassphraseSize ? kTooLong : kNotPrintable;
}

}  // namespace halvane::tool
