#include "tools/halvane/options/single_option.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "halvane/utils/cli.h"

#include "tests/support/captured_stream.h"
#include "tests/support/tool_command_line.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::CapturedStream;
using halvane::testing::ToolCommandLine;

namespace {

// A program with a command of each kind of option.
class SingleOption : public ::testing::Test {
  protected:
    SingleOption() { refuseRepeatedOptions(commands_); }
    ~SingleOption() override { StringArray_Free(names_, nameCount_); }

    // The messages of a command line, whose status must be 0 exactly if there are none.
    std::string messagesOf(std::vector<std::string> words) {
        line_.reset();
        line_ = std::make_unique<ToolCommandLine>(std::move(words));
        const CapturedStream errors(stderr);
        const std::int32_t status = CLIParse(commands_.data(), 0);
        const std::string text = errors.text();
        EXPECT_EQ(status, text.empty() ? 0 : kCLIUsageError);
        return text;
    }

    static void run() {}

    std::unique_ptr<ToolCommandLine> line_;  // values point into the last one
    const char* format_ = nullptr;
    const char* findings_ = nullptr;
    const char* last_ = nullptr;
    std::int32_t isHex_ = 0;
    std::int32_t level_ = 0;
    char** names_ = nullptr;
    std::size_t nameCount_ = 0;
    CLIOption inner_[2] = {{.type = kCLIString, .longName = "format", .valuePtr = &last_},
                           {.type = kCLIEnd}};
    CLIOption innerCommands_[2] = {
        {.type = kCLICommand, .longName = "add", .handler = run, .subOptions = inner_},
        {.type = kCLIEnd}};
    CLIOption options_[6] = {
        {.type = kCLIString, .longName = "format", .valuePtr = &format_},
        {.type = kCLIString,
         .longName = "findings",
         .valuePtr = &findings_,
         .defaultValue = CLI_DEFAULT_TEXT("note"),
         .flags = kCLIOptionalValue},
        {.type = kCLIBoolean, .longName = "hex", .valuePtr = &isHex_},
        {.type = kCLIBoolean, .longName = "more", .valuePtr = &level_, .flags = kRepeatable},
        {.type = kCLIStringArray, .longName = "name", .valuePtr = &names_, .countPtr = &nameCount_},
        {.type = kCLIEnd}};
    std::array<CLIOption, 3> commands_ = {
        CLIOption{.type = kCLICommand, .longName = "show", .handler = run, .subOptions = options_},
        CLIOption{.type = kCLICommand, .longName = "net", .subOptions = innerCommands_},
        CLIOption{.type = kCLIEnd}};
};

TEST_F(SingleOption, IsRefusedTheSecondTime) {
    EXPECT_EQ(messagesOf({"show", "--format=json", "--format=text"}),
              "halvane: show: --format is given twice\n");
    EXPECT_STREQ(format_, "json");
    format_ = nullptr;
    EXPECT_EQ(messagesOf({"show", "--format", "json", "x", "--format", "json"}),
              "halvane: show: --format is given twice\n");
    EXPECT_EQ(messagesOf({"show", "--hex", "--hex"}), "halvane: show: --hex is given twice\n");
    EXPECT_EQ(messagesOf({"show", "--findings", "--findings=error"}),
              "halvane: show: --findings is given twice\n");
}

TEST_F(SingleOption, IsStoredTheFirstTime) {
    EXPECT_EQ(messagesOf({"show", "--format=json", "--findings", "--hex"}), "");
    EXPECT_STREQ(format_, "json");
    EXPECT_STREQ(findings_, "note");
    EXPECT_EQ(isHex_, 1);
    findings_ = nullptr;
    EXPECT_EQ(messagesOf({"show", "--findings=error"}), "");
    EXPECT_STREQ(findings_, "error");
}

TEST_F(SingleOption, CountsAnewAfterItWasTakenBack) {
    EXPECT_EQ(messagesOf({"show", "--format=json", "--no-format", "--format=text"}), "");
    EXPECT_STREQ(format_, "text");
    EXPECT_EQ(messagesOf({"show", "--hex", "--no-hex"}), "");
    EXPECT_EQ(isHex_, 0);
}

TEST_F(SingleOption, TakesNoValueWhereItHasNone) {
    EXPECT_EQ(messagesOf({"show", "--hex=1"}), "error: option 'hex' doesn't take a value.\n");
}

TEST_F(SingleOption, MayBeRepeatedIfItsRowSaysSo) {
    EXPECT_EQ(messagesOf({"show", "--more", "--more", "--name=a", "--name=b"}), "");
    EXPECT_EQ(level_, 2);
    EXPECT_EQ(nameCount_, 2u);
}

TEST_F(SingleOption, NamesTheCommandWithinACommand) {
    EXPECT_EQ(messagesOf({"net", "add", "--format=a", "--format=b"}),
              "halvane: net add: --format is given twice\n");
}

}  // namespace
