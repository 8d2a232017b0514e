#include "tools/halvaned-sim/program.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "tools/halvaned-sim/bus_error.h"

extern char** environ;

namespace halvane::sim {

namespace {

constexpr std::uint64_t kPatience = 3'000'000;  // microseconds
constexpr int kSignalStatus = 128;

// 0 or an errno.
int spawn(std::vector<std::string>& words, const sigset_t& mask, pid_t& process) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    sigset_t defaults;
    ::sigemptyset(&defaults);
    ::sigaddset(&defaults, SIGPIPE);
    posix_spawnattr_t attributes;
    ::posix_spawnattr_init(&attributes);
    ::posix_spawnattr_setsigmask(&attributes, &mask);
    ::posix_spawnattr_setsigdefault(&attributes, &defaults);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    const int error =
        ::posix_spawnp(&process, arguments[0], nullptr, &attributes, arguments.data(), environ);
    ::posix_spawnattr_destroy(&attributes);
    return error;
}

}  // namespace

Program::Program(sd_event* event, EndHandler onEnd) : event_(event), onEnd_(std::move(onEnd)) {}

Result<std::unique_ptr<Program>, Program::Refusal> Program::start(sd_event* event,
                                                                  std::vector<std::string> words,
                                                                  const sigset_t& mask,
                                                                  EndHandler onEnd) {
    std::unique_ptr<Program> program(new Program(event, std::move(onEnd)));
    if (const int error = spawn(words, mask, program->process_)) {
        return Unexpected(
            Refusal{words[0] + ": " + std::strerror(error), error == ENOENT ? 127 : 126});
    }
    program->watch();
    return program;
}

void Program::watch() {
    sd_event_source* source = nullptr;
    check(::sd_event_add_child(event_, &source, process_, WEXITED, ended, this),
          "watching a child");
    child_.reset(source);
}

Program::~Program() {
    if (process_ < 0) return;
    child_.reset();
    ::kill(process_, SIGKILL);
    while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void Program::terminate() {
    if (process_ < 0 || patience_) return;
    ::kill(process_, SIGTERM);
    const auto lost = [](sd_event_source*, std::uint64_t, void* program) {
        ::kill(static_cast<Program*>(program)->process_, SIGKILL);
        return 0;
    };
    sd_event_source* source = nullptr;
    check(::sd_event_add_time_relative(event_, &source, CLOCK_MONOTONIC, kPatience, 0, lost, this),
          "waiting for a child");
    patience_.reset(source);
}

// The loop waits for the process after this returns.
int Program::ended(sd_event_source*, const siginfo_t* info, void* userData) {
    return guarded([=] {
        auto& program = *static_cast<Program*>(userData);
        program.process_ = -1;
        program.patience_.reset();
        const bool hasExited = info->si_code == CLD_EXITED;
        program.onEnd_(hasExited ? info->si_status : kSignalStatus + info->si_status);
        return 0;
    });
}

}  // namespace halvane::sim
