// How the parser turns arguments into options: forms, look-up, operands.
#include <cstdlib>

#include "tests/support/replaced_heap.h"
#include "tests/utils/cli/test_support.h"

using namespace halvane::testing;

namespace {

// A table of plain options and what they store.
class CLIParseTest : public ::testing::Test {
  protected:
    std::int32_t verbose = 0;
    std::int32_t quiet = 0;
    std::uint32_t number = 77;
    const char* name = "unset";
    const char* color = "unset";
    CLIOption table[6] = {
        {.type = kCLIBoolean,
         .shortName = 'v',
         .longName = "verbose",
         .valuePtr = &verbose,
         .flags = kCLINoValue | kCLINoNegation},
        {.type = kCLIBoolean,
         .shortName = 'q',
         .longName = "quiet",
         .valuePtr = &quiet,
         .flags = kCLINoValue},
        {.type = kCLINumber, .valuePtr = &number, .flags = kCLINoValue},
        {.type = kCLIString, .shortName = 'n', .longName = "name", .valuePtr = &name},
        {.type = kCLIString,
         .shortName = 'c',
         .longName = "color",
         .valuePtr = &color,
         .defaultValue = CLI_DEFAULT_TEXT("auto"),
         .flags = kCLIOptionalValue},
        {.type = kCLIEnd},
    };
};

TEST_F(CLIParseTest, SetsTheArgumentsAndTheProgramsNames) {
    const CommandLine line({"a"});
    EXPECT_EQ(gArgC, 2);
    EXPECT_EQ(gArgI, 1);
    EXPECT_STREQ(gArgV[1], "a");
    EXPECT_STREQ(gProgramPath, "/usr/bin/tool");
    EXPECT_STREQ(gProgramName, "tool");
}

TEST_F(CLIParseTest, StartsWithTheExitCodeOfSuccess) {
    gExitCode = 7;
    const CommandLine line({"a"});
    EXPECT_EQ(gExitCode, 0);
}

TEST_F(CLIParseTest, TakesAPathWithoutASlashAsTheName) {
    char path[] = "tool";
    char* arguments[] = {path, nullptr};
    EXPECT_STREQ(CLIInit(1, arguments), "tool");
    EXPECT_EQ(gArgC, 1);
    CLIFree();
}

TEST_F(CLIParseTest, LivesWithoutAnyArgument) {
    char* none[] = {nullptr};
    for (char** arguments : {static_cast<char**>(nullptr), none}) {
        EXPECT_STREQ(CLIInit(0, arguments), "?");
        EXPECT_STREQ(gProgramPath, "?");
        EXPECT_EQ(gArgC, 0);
        EXPECT_EQ(gArgI, 0);
        EXPECT_EQ(CLIParse(table, 0), 0);
        EXPECT_EQ(CLIParse(table, kCLIReorder), 0);
        EXPECT_EQ(gArgC, 0);
    }
    EXPECT_STREQ(CLIInit(3, nullptr), "?");
    EXPECT_EQ(gArgC, 0);
    EXPECT_STREQ(CLIInit(-1, none), "?");
    EXPECT_EQ(gArgC, 0);
    CLIFree();
}

TEST_F(CLIParseTest, EndsTheArgumentsBeforeANullOne) {
    char verboseWord[] = "-v";
    char* arguments[] = {nullptr, verboseWord, nullptr, verboseWord};
    EXPECT_STREQ(CLIInit(4, arguments), "?");
    EXPECT_EQ(gArgC, 2);
    EXPECT_EQ(CLIParse(table, 0), 0);
    EXPECT_EQ(verbose, 1);
    CLIFree();
}

TEST_F(CLIParseTest, LivesWithoutATable) {
    EXPECT_EQ(CommandLine({}, nullptr).status, 0);
    const CommandLine line({"-v"}, nullptr);
    EXPECT_EQ(line.status, kCLIUsageError);
    EXPECT_EQ(line.errors, "error: unknown option 'v'.\n");
}

TEST_F(CLIParseTest, FreeingLeavesNoArguments) {
    {
        const CommandLine line({"a", "-v", "b"}, table, kCLIReorder);
        EXPECT_EQ(gArgC, 2);
    }
    EXPECT_EQ(gArgC, 0);
    EXPECT_EQ(gArgV, nullptr);
    CLIFree();
}

TEST_F(CLIParseTest, CountsEveryShortOptionOfAGroup) {
    const CommandLine line({"-vvv", "-qv"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(verbose, 4);
    EXPECT_EQ(quiet, 1);
    EXPECT_EQ(line.errors, "");
}

TEST_F(CLIParseTest, TakesTheRestOfAGroupAsTheValue) {
    EXPECT_STREQ((CommandLine({"-vnfoo"}, table), name), "foo");
    const CommandLine line({"-vn", "-foo", "-c", "-cnever"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_STREQ(name, "-foo");
    EXPECT_STREQ(color, "never");
}

TEST_F(CLIParseTest, TakesTheLongFormWithAndWithoutEquals) {
    const CommandLine line({"--name=a=b", "--color", "--verbose"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_STREQ(name, "a=b");
    EXPECT_STREQ(color, "auto");
    EXPECT_EQ(verbose, 1);
    const CommandLine empty({"--name="}, table);
    EXPECT_STREQ(name, "");
    const CommandLine next({"--name", "--verbose"}, table);
    EXPECT_STREQ(name, "--verbose");
}

TEST_F(CLIParseTest, NegatesTheLongForm) {
    quiet = 5;
    const CommandLine line({"--no-quiet", "--no-name"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(quiet, 0);
    EXPECT_EQ(name, nullptr);
}

TEST_F(CLIParseTest, StoresANumberOption) {
    struct Row {
        const char* argument;
        std::uint32_t number;
        std::int32_t verbose;
    };
    for (const Row& row : {Row{"-5", 5, 0},
                           {"-0", 0, 0},
                           {"-4294967295", 4294967295, 0},
                           {"-010", 10, 0},
                           {"-v12v", 12, 2},
                           {"-1v2", 2, 1}}) {
        verbose = 0;
        const CommandLine line({row.argument}, table);
        EXPECT_EQ(line.status, 0) << row.argument;
        EXPECT_EQ(number, row.number) << row.argument;
        EXPECT_EQ(verbose, row.verbose) << row.argument;
        EXPECT_EQ(table[2].flags & kCLISeen, kCLISeen + 0u);
    }
}

TEST_F(CLIParseTest, SuggestsANearOptionWhereThatIsWanted) {
    struct Row {
        const char* word;
        const char* suggested;
    };
    for (const Row& row : {Row{"--verbos", "--verbose"},
                           {"--Verbose", "--verbose"},
                           {"--vrebose", "--verbose"},
                           {"---verbose", "--verbose"},
                           {"--verbos=1", "--verbose"},
                           {"--no-verbos", "--no-verbose"}}) {
        const CommandLine line({row.word}, table, kCLISuggest);
        EXPECT_EQ(line.status, kCLIUsageError) << row.word;
        EXPECT_EQ(line.errors, CommandLine({row.word}, table).errors + "Did you mean '" +
                                   row.suggested + "'?\n");
    }
    for (const char* word : {"--bogus", "--no-", "--=x", "-x", "-v-"}) {
        EXPECT_EQ(CommandLine({word}, table, kCLISuggest).errors,
                  CommandLine({word}, table).errors);
    }
}

// Each error is one line, and only the arguments before it are stored.
TEST_F(CLIParseTest, RefusesWithOneMessage) {
    struct Row {
        Words words;
        const char* errors;
    };
    const Row rows[] = {
        {{"--bogus"}, "error: unknown option 'bogus'.\n"},
        {{"--bogus=1"}, "error: unknown option 'bogus=1'.\n"},
        {{"--no-bogus"}, "error: unknown option 'no-bogus'.\n"},
        {{"--no-"}, "error: unknown option 'no-'.\n"},
        {{"--no"}, "error: unknown option 'no'.\n"},
        {{"--=x"}, "error: unknown option '=x'.\n"},
        {{"--verbos"}, "error: unknown option 'verbos'.\n"},
        {{"--Verbose"}, "error: unknown option 'Verbose'.\n"},
        {{"---verbose"}, "error: unknown option '-verbose'.\n"},
        {{"-x"}, "error: unknown option 'x'.\n"},
        {{"-v-"}, "error: unknown option '-'.\n"},
        {{"-vx", "-y"}, "error: unknown option 'x'.\n"},
        {{"-99999999999"}, "error: -NUM option out-of-range: '99999999999'.\n"},
        {{"-99999999999b"}, "error: -NUM option out-of-range: '99999999999b'.\n"},
        {{"-4294967296"}, "error: -NUM option out-of-range: '4294967296'.\n"},
        {{"-99999999999999999999999999"},
         "error: -NUM option out-of-range: '99999999999999999999999999'.\n"},
        {{"--no-verbose"}, "error: option 'verbose' can't be negated.\n"},
        {{"--no-verbose=1"}, "error: option 'verbose' can't be negated.\n"},
        {{"--no-quiet=1"}, "error: option 'no-quiet' doesn't take a value.\n"},
        {{"--no-name=x"}, "error: option 'no-name' doesn't take a value.\n"},
        {{"--quiet=1"}, "error: option 'quiet' doesn't take a value.\n"},
        {{"--quiet="}, "error: option 'quiet' doesn't take a value.\n"},
        {{"--name"}, "error: option 'name' requires a value.\n"},
        {{"-n"}, "error: option 'n' requires a value.\n"},
        {{"-vn"}, "error: option 'n' requires a value.\n"},
    };
    for (const Row& row : rows) {
        for (const std::uint32_t flags : {0u, kCLIReorder + 0u, kCLIOptionsOnly + 0u}) {
            const CommandLine line(row.words, table, flags);
            EXPECT_EQ(line.status, kCLIUsageError) << row.words[0];
            EXPECT_EQ(line.errors, row.errors);
            EXPECT_EQ(line.output, "");
        }
    }
    EXPECT_STREQ(name, "unset");
    EXPECT_EQ(quiet, 0);
    EXPECT_EQ(number, 77u);
}

TEST_F(CLIParseTest, RefusesADigitWhereNoOptionIsANumber) {
    CLIOption plain[] = {{.type = kCLIBoolean, .shortName = 'v'}, {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"-5"}, plain).errors, "error: unknown option '5'.\n");
}

TEST_F(CLIParseTest, TakesAnEmptyNameForNone) {
    CLIOption empty[] = {{.type = kCLIString, .longName = "", .valuePtr = &name},
                         {.type = kCLICommand, .longName = ""},
                         {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"--=x"}, empty).errors, "error: unknown option '=x'.\n");
    EXPECT_EQ(CommandLine({"--no-"}, empty).errors, "error: unknown option 'no-'.\n");
    EXPECT_STREQ(name, "unset");
    EXPECT_EQ(CommandLine({""}, empty).errors,
              "error: unknown command ''. See 'tool help' for a list of commands.\n");
}

TEST_F(CLIParseTest, LetsAShortNameBeADigit) {
    CLIOption digits[] = {{.type = kCLIBoolean, .shortName = '4', .valuePtr = &quiet},
                          {.type = kCLINumber, .valuePtr = &number},
                          {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"-452"}, digits).status, 0);
    EXPECT_EQ(quiet, 1);
    EXPECT_EQ(number, 52u);
}

TEST_F(CLIParseTest, StopsAtTheFirstOperand) {
    for (const char* operand : {"a", "-", ""}) {
        verbose = 0;
        const CommandLine line({"-v", operand, "-v"}, table);
        EXPECT_EQ(line.status, 0);
        EXPECT_EQ(line.errors, "") << "the arguments are the program's to read";
        EXPECT_EQ(verbose, 1);
        EXPECT_EQ(argumentsLeft(), (Words{operand, "-v"}));
    }
}

TEST_F(CLIParseTest, PassesTheEndOfOptions) {
    const CommandLine line({"-v", "--", "-v", "--"}, table);
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(argumentsLeft(), (Words{"-v", "--"}));
}

TEST_F(CLIParseTest, ReordersOperands) {
    const CommandLine line({"a", "-v", "b"}, table, kCLIReorder);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(gArgI, 0);
    EXPECT_EQ(gArgC, 2);
    EXPECT_EQ(argumentsLeft(), (Words{"a", "b"}));
    EXPECT_EQ(gArgV[2], nullptr);
}

TEST_F(CLIParseTest, ReordersUpToTheEndOfOptions) {
    const CommandLine line({"a", "-n", "x", "-", "", "--", "-v", "b"}, table, kCLIReorder);
    EXPECT_STREQ(name, "x");
    EXPECT_EQ(verbose, 0);
    EXPECT_EQ(argumentsLeft(), (Words{"a", "-", "", "-v", "b"}));
}

TEST_F(CLIParseTest, ReordersWhatIsReorderedAlready) {
    CommandLine line({"a", "--", "-v", "b"}, table, kCLIReorder);
    line.parse(table, kCLIReorder);
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(argumentsLeft(), (Words{"a", "b"}));
}

TEST_F(CLIParseTest, KeepsTheArgumentsWhereReorderingFails) {
    const CommandLine line({"a", "--bogus", "b"}, table, kCLIReorder);
    EXPECT_EQ(line.status, kCLIUsageError);
    EXPECT_EQ(gArgC, 4);
    EXPECT_STREQ(gArgV[1], "a");
}

TEST_F(CLIParseTest, ReordersAnyNumberOfOperands) {
    Words words;
    for (int i = 0; i < 10000; ++i) words.insert(words.end(), {"operand", "-v"});
    const CommandLine line(words, table, kCLIReorder);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(verbose, 10000);
    EXPECT_EQ(argumentsLeft(), Words(10000, "operand"));
}

TEST_F(CLIParseTest, KeepsTheArgumentsWhereMemoryRunsOut) {
    static int granted;
    const Words words(20, "operand");
    // The vector grows to 8, 24 and 56 entries.
    for (int grants = 0; grants < 2; ++grants) {
        CommandLine line(words);
        granted = grants;
        {
            const ScopedHeap heap({.reallocate = [](void* old, std::size_t size) {
                return granted-- > 0 ? std::realloc(old, size) : nullptr;
            }});
            line.parse(table, kCLIReorder);
        }
        EXPECT_EQ(line.status, kCLINoMemory);
        EXPECT_EQ(line.errors, "");
        EXPECT_EQ(gArgC, 21);
        EXPECT_STREQ(gArgV[0], "/usr/bin/tool");
    }
}

TEST_F(CLIParseTest, KnowsNoOptionOfTheTypesThatAreNone) {
    CLIOption others[] = {{.type = kCLICommand, .shortName = 'c', .longName = "command"},
                          {.type = kCLIArgument, .shortName = 'a', .longName = "argument"},
                          {.type = kCLIGroup, .shortName = 'g', .longName = "group"},
                          {.type = 5, .shortName = 'f', .longName = "five"},
                          {.type = 12, .shortName = 't', .longName = "twelve"},
                          {.type = kCLIEnd}};
    for (const char* word : {"--command", "--argument", "--group", "--five", "--twelve", "-c", "-a",
                             "-g", "-f", "-t"}) {
        const CommandLine line({word}, others);
        EXPECT_EQ(line.status, kCLIUsageError) << word;
        EXPECT_EQ(line.errors.substr(0, 22), "error: unknown option ") << word;
    }
}

TEST_F(CLIParseTest, ReportsATypeThatTakesNoValueByName) {
    CLIOption numbers[] = {{.type = kCLINumber, .shortName = 'n', .longName = "number"},
                           {.type = kCLIEnd}};
    for (const char* word : {"--number", "-n"}) {
        const CommandLine line({word}, numbers);
        EXPECT_EQ(line.status, kCLIUnknownType);
        EXPECT_EQ(line.errors, "BUG: unknown option type 6\n");
    }
}

TEST_F(CLIParseTest, ForgetsWhatWasSeenWithTheCommandLine) {
    {
        CommandLine line({"-v", "a", "-q"}, table);
        EXPECT_NE(table[0].flags & kCLISeen, 0u);
        ++gArgI;
        line.parse(table);
        EXPECT_NE(table[0].flags & kCLISeen, 0u);
        EXPECT_NE(table[1].flags & kCLISeen, 0u);
    }
    const CommandLine line({}, table);
    EXPECT_EQ(table[0].flags & kCLISeen, 0u);
}

}  // namespace
