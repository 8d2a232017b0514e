// A command line as the tool reads it: through the option parser, within the test's process.
#ifndef TESTS_SUPPORT_TOOL_COMMAND_LINE_H
#define TESTS_SUPPORT_TOOL_COMMAND_LINE_H

#include <cstdio>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tests/support/captured_stream.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"

namespace halvane::testing {

// The command line while it is parsed, and after.
class ToolCommandLine {
  public:
    explicit ToolCommandLine(std::vector<std::string> words) : words_(std::move(words)) {
        words_.insert(words_.begin(), "halvane");
        for (std::string& word : words_) arguments_.push_back(word.data());
        CLIInit(static_cast<int>(arguments_.size()), arguments_.data());
    }
    ToolCommandLine(const ToolCommandLine&) = delete;
    ToolCommandLine& operator=(const ToolCommandLine&) = delete;
    ~ToolCommandLine() { CLIFree(); }

    bool parse(CLIOption* options) { return CLIParse(options, kCLIReorder) == 0; }

  private:
    std::vector<std::string> words_;
    std::vector<char*> arguments_;
};

// What a command prints on its standard output for `words`.
inline std::string outputOf(CLIOption* table, int (*command)(), std::vector<std::string> words) {
    ToolCommandLine line(std::move(words));
    const CapturedStream output(stdout);
    EXPECT_TRUE(line.parse(table));
    EXPECT_EQ(command(), tool::kExitDone);
    return output.text();
}

// The result of `words`: the options that `take` returns, or an error. Errors include the parser's
// own messages.
template <typename Options>
class ToolOptions {
  public:
    using Taken = Result<Options, tool::UsageError>;

    ToolOptions(CLIOption* table, Taken (*take)(), std::vector<std::string> words) {
        ToolCommandLine line(std::move(words));
        const CapturedStream errors(stderr);
        const bool isParsed = line.parse(table);
        taken_ = take();
        if (!isParsed) taken_ = Unexpected(tool::UsageError{errors.text()});
    }

    // The options; an error fails the test.
    Options options() const {
        if (taken_) return *taken_;
        ADD_FAILURE() << taken_.error().message;
        return Options();
    }

    // The error's message; empty if there is no error.
    std::string error() const { return taken_ ? "" : taken_.error().message; }

    // The lines below it.
    std::string hint() const { return taken_ ? "" : taken_.error().hint; }

  private:
    Taken taken_ = Options();
};

}  // namespace halvane::testing

#endif
