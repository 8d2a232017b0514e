// Help and version, held as files.
#include <cstdint>
#include <filesystem>
#include <utility>

#include "tests/support/golden_file.h"
#include "tests/support/spawn_program.h"
#include "tests/utils/cli/test_support.h"

using namespace halvane::testing;

namespace {

const std::filesystem::path kGolden = HALVANE_UTILS_GOLDEN;

bool gHasRun;
void note() {
    gHasRun = true;
}

// Every kind of record, with every way to show a value.
CLIOption gScan[] = {
    {.type = kCLIBoolean,
     .shortName = 'p',
     .longName = "passive",
     .flags = kCLINoValue,
     .shortHelp = "Listen only.",
     .longHelp = "Sends no probe request.\n\nSlower by far.\n"},
    {.type = kCLINumber, .flags = kCLINoValue, .shortHelp = "Stop after NUM networks."},
    {.type = kCLIGroup, .shortHelp = "Which networks"},
    {.type = kCLIString,
     .shortName = 's',
     .longName = "ssid",
     .argName = "text",
     .flags = kCLIRequired,
     .shortHelp = "Of that name."},
    {.type = kCLIStringArray,
     .longName = "bssid",
     .argName = "address",
     .flags = kCLIBareName,
     .shortHelp = "Of that address."},
    {.type = kCLIInteger, .shortName = 'c', .shortHelp = "On that channel."},
    {.type = kCLIGroup},
    {.type = kCLIString,
     .longName = "format",
     .argName = "name",
     .flags = kCLIOptionalValue,
     .shortHelp = "How to print."},
    {.type = kCLIInteger,
     .shortName = 'w',
     .argName = "width",
     .flags = kCLIOptionalValue,
     .shortHelp = "In MHz."},
    {.type = kCLIString,
     .longName = "color",
     .argName = "when",
     .flags = kCLIOptionalValue | kCLIBareName,
     .shortHelp = "Colours."},
    {.type = kCLICallback, .shortName = 'o', .flags = kCLIOptionalValue, .shortHelp = "Whatever."},
    {.type = kCLIArgument, .longName = "interface", .shortHelp = "Where to look."},
    {.type = kCLIArgument,
     .longName = "file",
     .flags = kCLIOptionalValue,
     .shortHelp = "Where to write."},
    {.type = kCLISection, .shortHelp = "EXAMPLES", .longHelp = "tool scan wlan0\n\ntool scan -5"},
    {.type = kCLISection, .shortHelp = "SEE ALSO", .longHelp = "tool help join"},
    {.type = kCLIEnd},
};
CLIOption gAdd[] = {
    {.type = kCLIArgument, .longName = "name", .shortHelp = "What it is called."},
    {.type = kCLIEnd},
};
CLIOption gNetwork[] = {
    {.type = kCLICommand,
     .longName = "add",
     .handler = note,
     .subOptions = gAdd,
     .shortHelp = "Add a network."},
    {.type = kCLICommand, .longName = "clear", .handler = note, .shortHelp = "Forget them all."},
    {.type = kCLIEnd},
};
CLIOption gRoot[] = {
    {.type = kCLIBoolean,
     .shortName = 'v',
     .longName = "verbose",
     .flags = kCLINoValue,
     .shortHelp = "Say more.",
     .longHelp = "Twice: more still."},
    {.type = kCLICallback,
     .shortName = 'h',
     .longName = "help",
     .argName = "command",
     .flags = kCLIOptionalValue | kCLINoNegation,
     .callback = _CLIHelpOption,
     .shortHelp = "Print help."},
    {.type = kCLICallback,
     .shortName = 'V',
     .longName = "version",
     .valuePtr = CLI_TEXT("1.2.3"),
     .countPtr = CLI_TEXT("build 7"),
     .flags = kCLINoValue | kCLINoNegation | kCLILocal,
     .callback = _CLIVersionOption,
     .shortHelp = "Print the version."},
    {.type = kCLICommand,
     .longName = "scan",
     .handler = note,
     .subOptions = gScan,
     .shortHelp = "Find networks.",
     .longHelp = "Looks for networks around.\n\n    Needs a radio."},
    {.type = kCLICommand,
     .longName = "network",
     .subOptions = gNetwork,
     .shortHelp = "Networks known."},
    {.type = kCLICommand,
     .longName = "help",
     .handler = _CLIHelpCommand,
     .shortHelp = "Print help."},
    {.type = kCLICommand,
     .longName = "version",
     .valuePtr = CLI_TEXT("4.5.6"),
     .countPtr = CLI_TEXT("build 8"),
     .handler = _CLIVersionCommand,
     .shortHelp = "Print the version."},
    {.type = kCLIEnd},
};

class CLIHelpTest : public ::testing::Test {
  protected:
    CLIHelpTest() { gHasRun = false; }

    // The output for the arguments. Parsing succeeds, and runs no command.
    static std::string help(Words words) {
        const CommandLine line(std::move(words), gRoot);
        EXPECT_EQ(line.status, 0);
        EXPECT_EQ(line.output, "");
        EXPECT_FALSE(gHasRun);
        return line.errors;
    }
};

TEST_F(CLIHelpTest, SummarisesTheProgram) {
    const std::string summary = help({"--help"});
    expectGolden(summary, kGolden / "cli_summary.txt");
    EXPECT_EQ(help({"help"}), summary);
    EXPECT_EQ(help({"-h"}), summary);
    EXPECT_EQ(help({"-v", "-vh"}), summary);
    EXPECT_EQ(CommandLine({}, gRoot).errors, summary);
}

TEST_F(CLIHelpTest, ExplainsACommand) {
    const std::string page = help({"help", "scan"});
    expectGolden(page, kGolden / "cli_command.txt");
    EXPECT_EQ(help({"--help=scan"}), page);
    EXPECT_EQ(help({"-hscan"}), page);
    EXPECT_EQ(help({"scan", "--help"}), page);
    EXPECT_EQ(help({"scan", "-p", "-h"}), page);
    EXPECT_EQ(help({"scan", "wlan0", "-h"}).substr(0, page.size()), page);
}

TEST_F(CLIHelpTest, ListsTheCommandsOfACommand) {
    const std::string page = help({"help", "network"});
    expectGolden(page, kGolden / "cli_command_of_commands.txt");
    EXPECT_EQ(help({"network", "--help"}), page);
    const std::string add = help({"help", "network", "add"});
    expectGolden(add, kGolden / "cli_nested_command.txt");
    EXPECT_EQ(help({"network", "add", "--help"}), add);
}

TEST_F(CLIHelpTest, ExplainsACommandWithoutOptions) {
    const std::string page = help({"version", "--help"});
    expectGolden(page, kGolden / "cli_plain_command.txt");
    EXPECT_EQ(help({"help", "version"}), page);
}

TEST_F(CLIHelpTest, WarnsOfWhatFollows) {
    const std::string page = help({"help", "scan"});
    EXPECT_EQ(help({"help", "scan", "more"}), page + "warning: unused argument 'more'.\n");
    EXPECT_EQ(help({"--help=scan", "more"}), page + "warning: unused argument 'more'.\n");
}

TEST_F(CLIHelpTest, KnowsNoOtherCommand) {
    const CommandLine command({"help", "bogus"}, gRoot);
    EXPECT_EQ(command.status, 0);
    EXPECT_EQ(command.errors, "error: unknown command 'bogus'.\n");
    EXPECT_EQ(gExitCode, kCLIUsageError);
    const CommandLine option({"--help=bogus"}, gRoot);
    EXPECT_EQ(option.status, kCLIUsageError);
    EXPECT_EQ(option.errors, "error: unknown command 'bogus'.\n");
}

TEST_F(CLIHelpTest, IsOutputWhereThatIsWanted) {
    for (const Words& words : {Words{"help"}, {"--help"}, {"help", "scan"}, {"scan", "--help"}}) {
        const CommandLine line(words, gRoot, kCLIFullHelp);
        EXPECT_EQ(line.status, 0);
        EXPECT_EQ(line.output, help(words));
        EXPECT_EQ(line.errors, "");
    }
    const CommandLine missing(Words{}, gRoot, kCLIFullHelp);
    EXPECT_EQ(missing.status, kCLIUsageError);
    EXPECT_EQ(missing.output, "");
    EXPECT_NE(missing.errors, "");
}

TEST_F(CLIHelpTest, WarnsOfNothingBesideItWhereItIsOutput) {
    const CommandLine line({"scan", "a", "--help", "b"}, gRoot, kCLIFullHelp);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.errors, "");
    EXPECT_FALSE(gHasRun);
}

TEST_F(CLIHelpTest, ListsTheCommandsOfACommandWithTheirSummariesWhereItIsOutput) {
    const CommandLine line({"network", "--help"}, gRoot, kCLIFullHelp);
    EXPECT_EQ(line.output, help({"network", "--help"}) +
                               "COMMANDS\n"
                               "    add      Add a network.\n"
                               "    clear    Forget them all.\n"
                               "\n");
}

TEST_F(CLIHelpTest, SuggestsANearCommandWhereThatIsWanted) {
    EXPECT_EQ(CommandLine({"help", "scna"}, gRoot, kCLISuggest).errors,
              "error: unknown command 'scna'.\nDid you mean 'scan'?\n");
    EXPECT_EQ(CommandLine({"--help=scna"}, gRoot, kCLISuggest).errors,
              "error: unknown command 'scna'.\nDid you mean 'scan'?\n");
}

TEST_F(CLIHelpTest, SummarisesAProgramWithoutCommands) {
    CLIOption options[] = {gRoot[0], gRoot[1], {.type = kCLIEnd}};
    const CommandLine line({"--help"}, options);
    EXPECT_EQ(line.errors,
              "\nUsage: tool [global options]\n"
              "    -v, --verbose             Say more.\n"
              "    -h, --help[=<command>]    Print help.\n"
              "\n");
}

TEST_F(CLIHelpTest, SummarisesAProgramWithoutOptions) {
    CLIOption commands[] = {gRoot[5], {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"help"}, commands).errors,
              "\nUsage: tool <command> [options] [args]\n"
              "\nCommands:\n\n"
              "    help    Print help.\n"
              "\nSee 'tool help <command>' for more information about a specific command.\n\n");
}

TEST_F(CLIHelpTest, LeavesOutGlobalOptionsThatAreLocal) {
    CLIOption table[] = {gRoot[2], gRoot[5], {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"help", "help"}, table).errors,
              "\nNAME\n    tool help -- Print help.\n\nSYNOPSIS\n    tool help\n\n");
}

TEST_F(CLIHelpTest, LivesWithoutTexts) {
    CLIOption empty[] = {
        {.type = kCLIBoolean}, {.type = kCLIArgument}, {.type = kCLISection}, {.type = kCLIEnd}};
    CLIOption table[] = {gRoot[5],
                         {.type = kCLICommand, .subOptions = empty},
                         {.type = kCLICommand, .longName = "empty", .subOptions = empty},
                         {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"help", "empty"}, table).errors,
              "\nNAME\n    tool empty -- \n\nSYNOPSIS\n    tool empty [options] <>\n\n"
              "OPTIONS\n          \n    <>    \n\n\n\n");
    EXPECT_EQ(CommandLine({"help"}, table).status, 0);
}

TEST_F(CLIHelpTest, TakesEmptyTextsForNone) {
    CLIOption empty[] = {
        {.type = kCLIBoolean, .shortName = 'e', .longName = "", .longHelp = ""},
        {.type = kCLIString,
         .shortName = 'o',
         .longName = "",
         .argName = "x",
         .flags = kCLIOptionalValue},
        {.type = kCLIEnd},
    };
    CLIOption table[] = {
        gRoot[5],
        {.type = kCLICommand, .longName = "empty", .subOptions = empty, .longHelp = ""},
        {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"help", "empty"}, table).errors,
              "\nNAME\n    tool empty -- \n\nSYNOPSIS\n    tool empty [options]\n\n"
              "OPTIONS\n    -e         \n    -o[<x>]    \n\n");
}

TEST_F(CLIHelpTest, ShowsTheUsageOfACommandOfCommandsThatRunsItself) {
    CLIOption own[] = {gNetwork[0], gNetwork[1], {.type = kCLIEnd}};
    CLIOption table[] = {
        gRoot[5],
        {.type = kCLICommand, .longName = "network", .handler = note, .subOptions = own},
        {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"help", "network"}, table).errors,
              "\nNAME\n    tool network -- \n\nSYNOPSIS\n    tool network\n\n");
}

TEST_F(CLIHelpTest, ShowsAHeadingThatIsTheFirstRecord) {
    CLIOption options[] = {{.type = kCLIGroup, .shortHelp = "How"},
                           {.type = kCLIBoolean, .shortName = 'v', .shortHelp = "Say more."},
                           {.type = kCLIEnd}};
    CLIOption table[] = {options[0], options[1], gRoot[5], {.type = kCLIEnd}};
    table[2].subOptions = options;
    EXPECT_EQ(CommandLine({"help"}, table).errors,
              "\nUsage: tool [global options] <command> [options] [args]\n"
              "\n    How\n    -v    Say more.\n"
              "\nCommands:\n\n    help    Print help.\n"
              "\nSee 'tool help <command>' for more information about a specific command.\n\n");
    EXPECT_EQ(CommandLine({"help", "help"}, table).errors,
              "\nNAME\n    tool help -- Print help.\n"
              "\nSYNOPSIS\n    tool [global options] help [options]\n"
              "\nGLOBAL OPTIONS\n\n    How\n    -v    Say more.\n"
              "\nOPTIONS\n\n    How\n    -v    Say more.\n\n");
}

TEST_F(CLIHelpTest, IsOfTheFirstTableParsed) {
    CLIOption other[] = {{.type = kCLICommand, .longName = "other"}, gRoot[5], {.type = kCLIEnd}};
    const std::string page = help({"help", "scan"});
    CommandLine line({"-v", "help", "scan"});
    line.parse(gRoot, kCLIOptionsOnly);
    line.parse(other);
    EXPECT_EQ(line.errors, page);
    CommandLine summary({"-v", "help"});
    summary.parse(gRoot, kCLIOptionsOnly);
    summary.parse(other);
    EXPECT_EQ(summary.errors, help({"help"}));
}

TEST_F(CLIHelpTest, IsNotPrintedWhereItIsNegated) {
    CLIOption table[] = {gRoot[0], gRoot[1], gRoot[2], {.type = kCLIEnd}};
    for (CLIOption& option : table) option.flags &= ~std::uint32_t{kCLINoNegation};
    for (const char* word : {"--no-help", "--no-version"}) {
        const CommandLine line({word, "-v", "x"}, table);
        EXPECT_EQ(line.status, 0);
        EXPECT_EQ(line.errors + line.output, "");
        EXPECT_EQ(argumentsLeft(), Words{"x"}) << "parsing goes on";
    }
}

TEST_F(CLIHelpTest, PrintsTheVersionOnStandardOutput) {
    const CommandLine option({"--version", "-v"}, gRoot);
    EXPECT_EQ(option.status, 0);
    EXPECT_EQ(option.output, "tool version 1.2.3 (build 7)\n");
    EXPECT_EQ(option.errors, "warning: unused argument '-v'.\n");
    const CommandLine command({"version"}, gRoot);
    EXPECT_EQ(command.output, "tool version 4.5.6 (build 8)\n");
    EXPECT_EQ(command.errors, "");
}

TEST_F(CLIHelpTest, PrefersTheProgramsLongName) {
    gProgramLongName = "The Tool";
    const CommandLine line({"-V"}, gRoot);
    gProgramLongName = nullptr;
    EXPECT_EQ(line.output, "The Tool version 1.2.3 (build 7)\n");
}

}  // namespace
