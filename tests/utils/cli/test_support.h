// Runs the parser on command lines, and keeps the results.
#ifndef TESTS_UTILS_CLI_TEST_SUPPORT_H
#define TESTS_UTILS_CLI_TEST_SUPPORT_H

#include <cstdint>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"

#include "tests/support/captured_stream.h"

namespace halvane::testing {

using Words = std::vector<std::string>;

// The program "/usr/bin/tool" with these arguments. Values point into it.
class CommandLine {
  public:
    explicit CommandLine(Words words) : words_(std::move(words)) {
        words_.insert(words_.begin(), "/usr/bin/tool");
        for (std::string& word : words_) arguments_.push_back(word.data());
        CLIInit(static_cast<int>(arguments_.size()), arguments_.data());
    }
    CommandLine(Words words, CLIOption* table, std::uint32_t flags = 0)
        : CommandLine(std::move(words)) {
        parse(table, flags);
    }
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine() { CLIFree(); }

    void parse(CLIOption* table, std::uint32_t flags = 0) {
        const CapturedStream out(stdout);
        const CapturedStream err(stderr);
        status = CLIParse(table, flags);
        output = out.text();
        errors = err.text();
    }

    std::int32_t status = 0;
    std::string output;
    std::string errors;

  private:
    Words words_;
    std::vector<char*> arguments_;
};

// The arguments not used yet.
inline Words argumentsLeft() {
    return gArgC > gArgI ? Words(gArgV + gArgI, gArgV + gArgC) : Words();
}

}  // namespace halvane::testing

#endif
