// The command-line tool as its users run it.
#ifndef TESTS_SUPPORT_RUN_TOOL_H
#define TESTS_SUPPORT_RUN_TOOL_H

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/run_program.h"

namespace halvane::testing {

// The words of a command, with the tool's path before them.
inline std::vector<std::string> toolWords(std::vector<std::string> words) {
    words.insert(words.begin(), HALVANE_TOOL);
    return words;
}

inline ProgramResult runTool(std::vector<std::string> words, std::string_view input = {}) {
    return runProgram(toolWords(std::move(words)), input);
}

// Expects that status, no standard output, and the message on standard error.
inline void expectMessage(const ProgramResult& result, int status, const std::string& message) {
    EXPECT_EQ(result.status, status) << message;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, message);
}

}  // namespace halvane::testing

#endif
