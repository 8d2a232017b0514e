// Runs a program to its end and keeps what it printed.
#ifndef TESTS_SUPPORT_RUN_PROGRAM_H
#define TESTS_SUPPORT_RUN_PROGRAM_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <utility>
#include <vector>

#include "tests/support/spawn_program.h"
#include "tests/support/temporary_folder.h"

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

    ProgramResult result;
    try {
        const pid_t child = spawnProgram(std::move(words), {in, out, err});
        int status = 0;
        rusage usage{};
        if (::wait4(child, &status, 0, &usage) == child && WIFEXITED(status)) {
            result.status = WEXITSTATUS(status);
            result.peakMemory = usage.ru_maxrss;
        }
    } catch (const std::runtime_error&) {
        // The program did not start, so its status stays -1.
    }
    result.output = contentsOf(out);
    result.errors = contentsOf(err);
    return result;
}

}  // namespace halvane::testing

#endif
