// Runs a program to its end and keeps what it printed.
#ifndef TESTS_SUPPORT_RUN_PROGRAM_H
#define TESTS_SUPPORT_RUN_PROGRAM_H

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

#include "tests/support/temporary_folder.h"

extern char** environ;

namespace halvane::testing {

struct ProgramResult {
    int status = -1;      // exit status; -1 when a signal ended it, or it could not start
    long peakMemory = 0;  // KiB resident
    std::string output;
    std::string errors;
};

inline std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// words[0] is the program's path. `input` is its standard input.
inline ProgramResult runProgram(std::vector<std::string> words, std::string_view input = {}) {
    const TemporaryFolder folder;
    const auto in = folder.path() / "in", out = folder.path() / "out", err = folder.path() / "err";
    std::ofstream(in, std::ios::binary) << input;

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr int kWrite = O_WRONLY | O_CREAT;
    posix_spawn_file_actions_addopen(&actions, 0, in.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, out.c_str(), kWrite, 0600);
    posix_spawn_file_actions_addopen(&actions, 2, err.c_str(), kWrite, 0600);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);

    ProgramResult result;
    pid_t child = 0;
    int status = 0;
    rusage usage{};
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
        ::wait4(child, &status, 0, &usage) == child && WIFEXITED(status)) {
        result.status = WEXITSTATUS(status);
        result.peakMemory = usage.ru_maxrss;
    }
    posix_spawn_file_actions_destroy(&actions);
    result.output = contentsOf(out);
    result.errors = contentsOf(err);
    return result;
}

}  // namespace halvane::testing

#endif
