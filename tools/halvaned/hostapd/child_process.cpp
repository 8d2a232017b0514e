#include "tools/halvaned/hostapd/child_process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <sys/epoll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace halvane::hosting {

namespace {

constexpr int kFailureStream = STDERR_FILENO + 1;

// Both ends close at an exec.
struct Pipe {
    FileDescriptor out;
    FileDescriptor in;
};

// Returns whether there is one.
bool open(Pipe& pipe) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return false;
    pipe.out = aboveStandardStreams(FileDescriptor(ends[0]));
    pipe.in = aboveStandardStreams(FileDescriptor(ends[1]));
    return pipe.out && pipe.in;
}

// --- In the child, where only functions that are safe in a signal handler may be called ---

[[noreturn]] void failTo(int stream) {
    const int error = errno;
    [[maybe_unused]] const auto written = ::write(stream, &error, sizeof(error));
    ::_exit(127);
}

// Writes the number of this process in decimal digits, and a newline.
void tellNumber(int file, int failure) {
    char text[24];
    char* begin = std::end(text);
    *--begin = '\n';
    pid_t number = ::getpid();
    do {
        *--begin = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number > 0);
    const ssize_t size = std::end(text) - begin;
    if (::write(file, begin, static_cast<std::size_t>(size)) != size) failTo(failure);
}

void resetSignals() {
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal) ::sigaction(signal, &usual, nullptr);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

// What the child gets of its parent. A number that is not told has no file (-1).
struct Inheritance {
    int output;
    int failure;
    int number;
    pid_t parent;
};

[[noreturn]] void become(char* const* words, const Inheritance& from) {
    char* const environment[] = {nullptr};
    const auto [output, failure, number, parent] = from;
    if (number >= 0) tellNumber(number, failure);
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    const bool isReady =
        nothing >= 0 && ::dup2(nothing, STDIN_FILENO) >= 0 && ::dup2(output, STDOUT_FILENO) >= 0 &&
        ::dup2(output, STDERR_FILENO) >= 0 &&
        (failure == kFailureStream || ::dup3(failure, kFailureStream, O_CLOEXEC) >= 0);
    if (!isReady) failTo(failure);
    ::close_range(kFailureStream + 1, ~0U, 0);
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != parent) ::_exit(127);  // it ended before that line
    resetSignals();
    ::execve(words[0], words, environment);
    failTo(kFailureStream);
}

// --- In the parent ---

// Returns 0 once the program runs, or an errno.
int failureIn(const FileDescriptor& stream) {
    int error = 0;
    ssize_t count = 0;
    do {
        count = ::read(stream.number(), &error, sizeof(error));
    } while (count < 0 && errno == EINTR);
    return count == sizeof(error) ? error : 0;
}

int spawn(std::vector<std::string>& words, const FileDescriptor& output,
          const FileDescriptor& number, pid_t& process) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    Pipe failure;
    if (!open(failure)) return errno;
    const pid_t parent = ::getpid();
    process = ::fork();
    if (process < 0) return errno;
    if (process == 0) {
        become(arguments.data(), {output.number(), failure.in.number(), number.number(), parent});
    }
    failure.in = FileDescriptor();
    const int error = failureIn(failure.out);
    if (error != 0) {
        while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    return error;
}

FileDescriptor newFile(const std::string& path) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC;
    return aboveStandardStreams(FileDescriptor(::open(path.c_str(), kFlags, S_IRUSR | S_IWUSR)));
}

std::string refusal(const std::string& program, int error) {
    return program + " cannot be run: " + std::strerror(error);
}

}  // namespace

std::string ChildEnd::text() const {
    return (wasKilled ? "by signal " : "with status ") + std::to_string(number);
}

ChildProcess::ChildProcess(sd_event* loop, Handlers handlers)
    : loop_(loop), handlers_(std::move(handlers)) {}

Result<std::unique_ptr<ChildProcess>, std::string> ChildProcess::start(
    sd_event* loop, std::vector<std::string> words, Handlers handlers,
    const std::string& numberFile) {
    std::unique_ptr<ChildProcess> child(new ChildProcess(loop, std::move(handlers)));
    Pipe output;
    if (!open(output)) return Unexpected(refusal(words[0], errno));
    FileDescriptor number;
    if (!numberFile.empty()) {
        number = newFile(numberFile);
        if (!number) return Unexpected(numberFile + " cannot be written: " + std::strerror(errno));
    }
    pid_t process = -1;
    if (const int error = spawn(words, output.in, number, process)) {
        return Unexpected(refusal(words[0], error));
    }
    child->process_ = process;
    if (!child->watch(std::move(output.out))) {
        return Unexpected(words[0] + " cannot be watched.");
    }
    return child;
}

bool ChildProcess::watch(FileDescriptor output) {
    output_ = std::move(output);
    ::fcntl(output_.number(), F_SETFL, O_NONBLOCK);
    sd_event_source* source = nullptr;
    if (::sd_event_add_io(loop_, &source, output_.number(), EPOLLIN, spoke, this) < 0) return false;
    speech_.reset(source);
    if (::sd_event_add_child(loop_, &source, process_, WEXITED, ended, this) < 0) return false;
    child_.reset(source);
    return true;
}

ChildProcess::~ChildProcess() {
    if (process_ < 0) return;
    child_.reset();
    ::kill(process_, SIGKILL);
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void ChildProcess::end(std::uint64_t grace) {
    if (process_ < 0 || isEnding_) return;
    isEnding_ = true;
    ::kill(process_, SIGTERM);  // the number stays the child's until it has been waited for
    patience_ = timerOf<&ChildProcess::kill>(loop_, grace, this);
    if (!patience_) kill();
}

void ChildProcess::kill() {
    if (process_ >= 0) ::kill(process_, SIGKILL);
}

int ChildProcess::spoke(sd_event_source*, int, std::uint32_t, void* process) {
    return guarded([process] { static_cast<ChildProcess*>(process)->readOutput(); });
}

// One read a turn of the loop, so that a program that never stops speaking leaves it to others.
void ChildProcess::readOutput() {
    std::array<char, 4096> octets;
    const ssize_t count = ::read(output_.number(), octets.data(), octets.size());
    if (count > 0) return take({octets.data(), static_cast<std::size_t>(count)});
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    speech_.reset();
}

void ChildProcess::take(std::string_view text) {
    for (const char c : text) {
        if (c == '\n') {
            finishLine();
        } else if (line_.size() < kLongestLine) {
            line_ += c;
        }
    }
}

void ChildProcess::finishLine() {
    const std::string line = std::exchange(line_, {});
    if (handlers_.line) handlers_.line(line);
}

// The loop waits for the process after this returns.
int ChildProcess::ended(sd_event_source*, const siginfo_t* info, void* process) {
    const ChildEnd end = {info->si_code != CLD_EXITED, info->si_status};
    return guarded([&] { static_cast<ChildProcess*>(process)->finish(end); });
}

// Reads what the program has left, which is no more than a pipe holds.
void ChildProcess::finish(const ChildEnd& end) {
    constexpr int kMostReads = 64;
    process_ = -1;
    patience_.reset();
    for (int i = 0; speech_ && i < kMostReads; ++i) readOutput();
    speech_.reset();
    if (!line_.empty()) finishLine();
    const auto ended = std::move(handlers_.ended);
    if (ended) ended(end);
}

}  // namespace halvane::hosting
