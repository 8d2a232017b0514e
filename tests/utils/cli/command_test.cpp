// Commands: look-up, nesting, required options, and their messages.
#include <array>
#include <cstddef>
#include <cstdint>

#include "tests/utils/cli/test_support.h"

using namespace halvane::testing;

namespace {

std::vector<std::string> gRuns;  // what ran, with the arguments it was left

void run(const char* name) {
    std::string text = name;
    for (const std::string& argument : argumentsLeft()) text += " " + argument;
    gRuns.push_back(text);
}
void useAll(const char* name) {
    run(name);
    gArgI = gArgC;
}

// tool [-v] list [-a] [--depth N] | remote (add [--url URL] [--key KEY] | remove) | bare | idle
class CLICommandTest : public ::testing::Test {
  protected:
    CLICommandTest() { gRuns.clear(); }

    std::int32_t verbose = 0, all = 0, depth = 0;
    const char* url = nullptr;
    const char* key = nullptr;
    CLIOption list[3] = {
        {.type = kCLIBoolean, .shortName = 'a', .longName = "all", .valuePtr = &all},
        {.type = kCLIInteger, .longName = "depth", .valuePtr = &depth},
        {.type = kCLIEnd},
    };
    CLIOption add[4] = {
        {.type = kCLIArgument, .longName = "place", .flags = kCLIRequired},
        {.type = kCLIString,
         .shortName = 'u',
         .longName = "url",
         .valuePtr = &url,
         .argName = "URL",
         .flags = kCLIRequired},
        {.type = kCLIString, .longName = "key", .valuePtr = &key, .flags = kCLIRequired},
        {.type = kCLIEnd},
    };
    CLIOption remote[3] = {
        {.type = kCLICommand,
         .longName = "add",
         .handler = [] { useAll("add"); },
         .subOptions = add},
        {.type = kCLICommand, .longName = "remove", .handler = [] { useAll("remove"); }},
        {.type = kCLIEnd},
    };
    CLIOption root[6] = {
        {.type = kCLICommand,
         .longName = "list",
         .handler = [] { useAll("list"); },
         .subOptions = list},
        {.type = kCLIBoolean,
         .shortName = 'v',
         .longName = "verbose",
         .valuePtr = &verbose,
         .flags = kCLINoValue},
        {.type = kCLICommand, .longName = "remote", .subOptions = remote},
        {.type = kCLICommand, .longName = "bare", .handler = [] { run("bare"); }},
        {.type = kCLICommand, .longName = "idle"},
        {.type = kCLIEnd},
    };
};

TEST_F(CLICommandTest, RunsWithItsArguments) {
    const CommandLine line({"-v", "list", "x", "y"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gRuns, Words{"list x y"});
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(gCLICurrentOption, &root[0]);
    EXPECT_EQ(line.errors, "");
}

TEST_F(CLICommandTest, TakesItsOwnAndGlobalOptionsAnywhereBehindIt) {
    const CommandLine line({"list", "-av", "x", "--depth=3", "-v", "y", "-"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gRuns, Words{"list x y -"});
    EXPECT_EQ(all, 1);
    EXPECT_EQ(verbose, 2);
    EXPECT_EQ(depth, 3);
}

TEST_F(CLICommandTest, TakesGlobalOptionsBehindACommandWithoutAny) {
    const CommandLine line({"bare", "-v"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.errors, "");
    EXPECT_EQ(gRuns, Words{"bare"});
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(CommandLine({"bare", "-a"}, root).errors, "error: unknown option 'a'.\n");
}

TEST_F(CLICommandTest, TakesNoOptionBehindTheEndOfThem) {
    const CommandLine line({"list", "-a", "--", "-v", "--", "--bogus"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gRuns, Words{"list -v -- --bogus"});
    EXPECT_EQ(verbose, 0);
    gRuns.clear();
    const CommandLine behindOperand({"list", "x", "--", "-v"}, root);
    EXPECT_EQ(gRuns, Words{"list x -v"});
    gRuns.clear();
    const CommandLine bare({"--", "bare", "-v"}, root);
    EXPECT_EQ(bare.errors, "");
    EXPECT_EQ(verbose, 1);
}

TEST_F(CLICommandTest, WarnsOfWhatItLeaves) {
    const CommandLine line({"bare", "x", "y"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gRuns, Words{"bare x y"});
    EXPECT_EQ(line.errors, "warning: unused argument 'x'.\nwarning: unused argument 'y'.\n");
}

TEST_F(CLICommandTest, NeedsNoHandler) {
    const CommandLine line({"idle"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gCLICurrentOption, &root[4]);
}

TEST_F(CLICommandTest, IsLookedUpByItsWholeName) {
    for (const char* name : {"lis", "lists", "List", "verbose", ""}) {
        const CommandLine line({name}, root);
        EXPECT_EQ(line.status, kCLIUsageError) << name;
        EXPECT_EQ(line.errors, "error: unknown command '" + std::string(name) +
                                   "'. See 'tool help' for a list of commands.\n");
    }
    EXPECT_EQ(gRuns, Words());
}

TEST_F(CLICommandTest, IsSuggestedForANearNameWhereThatIsWanted) {
    for (const char* name : {"lis", "lists", "List", "lsit"}) {
        const CommandLine line({name}, root, kCLISuggest);
        EXPECT_EQ(line.status, kCLIUsageError) << name;
        EXPECT_EQ(line.errors, "error: unknown command '" + std::string(name) +
                                   "'. See 'tool help' for a list of commands.\n"
                                   "Did you mean 'list'?\n");
    }
    for (const char* name : {"verbose", "xyz", ""}) {
        EXPECT_EQ(CommandLine({name}, root, kCLISuggest).errors, CommandLine({name}, root).errors);
    }
    EXPECT_EQ(CommandLine({"remote", "remov"}, root, kCLISuggest).errors,
              CommandLine({"remote", "remov"}, root).errors + "Did you mean 'remove'?\n");
    EXPECT_EQ(gRuns, Words());
}

TEST_F(CLICommandTest, RunsInsideOfACommand) {
    const CommandLine line({"remote", "-v", "remove", "x"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gRuns, Words{"remove x"});
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(remote[0].parent, &root[2]);
    EXPECT_EQ(root[2].parent, root);
}

TEST_F(CLICommandTest, IsMissedInsideOfACommand) {
    const CommandLine unknown({"remote", "rename"}, root);
    EXPECT_EQ(unknown.status, kCLIUsageError);
    EXPECT_EQ(unknown.errors,
              "error: unknown remote command 'rename'. See 'tool help remote' for a list of "
              "commands.\n");
    const CommandLine missing({"remote", "-v"}, root);
    EXPECT_EQ(missing.status, kCLIUsageError);
    EXPECT_EQ(missing.errors,
              "error: no remote command specified. See 'tool help remote' for more "
              "information.\n");
}

// The help that a message names is there.
TEST_F(CLICommandTest, IsMissedDeepInsideWithTheWholePath) {
    CLIOption branch[] = {{.type = kCLICommand, .longName = "track"}, {.type = kCLIEnd}};
    CLIOption outer[] = {
        {.type = kCLICommand, .longName = "branch", .subOptions = branch, .shortHelp = "Branches."},
        {.type = kCLIEnd}};
    CLIOption table[] = {{.type = kCLICommand, .longName = "remote", .subOptions = outer},
                         {.type = kCLICommand, .longName = "help", .handler = _CLIHelpCommand},
                         {.type = kCLIEnd}};
    const CommandLine unknown({"remote", "branch", "x"}, table);
    EXPECT_EQ(unknown.status, kCLIUsageError);
    EXPECT_EQ(unknown.errors,
              "error: unknown branch command 'x'. See 'tool help remote branch' for a list of "
              "commands.\n");
    const CommandLine missing({"remote", "branch"}, table);
    EXPECT_EQ(missing.status, kCLIUsageError);
    EXPECT_EQ(missing.errors,
              "error: no branch command specified. See 'tool help remote branch' for more "
              "information.\n");
    EXPECT_EQ(CommandLine({"help", "remote", "branch"}, table).errors.substr(0, 45),
              "\nNAME\n    tool remote branch -- Branches.\n\nSY");
}

TEST_F(CLICommandTest, IsMissedAtTheTopWithTheSummary) {
    for (const Words& words : {Words{}, Words{"-v"}, Words{"--"}}) {
        const CommandLine line(words, root);
        EXPECT_EQ(line.status, kCLIUsageError);
        EXPECT_EQ(line.output, "");
        EXPECT_EQ(line.errors.substr(0, 69),
                  "\nUsage: tool [global options] <command> [options] [args]\n    -v, --ve");
    }
}

TEST_F(CLICommandTest, IsNotLookedForWithOptionsOnly) {
    const CommandLine line({"-v", "list"}, root, kCLIOptionsOnly);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.errors, "");
    EXPECT_EQ(gRuns, Words());
    EXPECT_EQ(argumentsLeft(), Words{"list"});
}

TEST_F(CLICommandTest, RequiresItsOptions) {
    const CommandLine both({"remote", "add", "x"}, root);
    EXPECT_EQ(both.status, kCLIUsageError);
    EXPECT_EQ(both.errors,
              "error: -u, --url <URL> not specified\n"
              "error: --key ...       not specified\n");
    const CommandLine one({"remote", "add", "x", "--url=y"}, root);
    EXPECT_EQ(one.errors, "error: --key ... not specified\n");
    EXPECT_EQ(gRuns, Words());
    const CommandLine none({"remote", "add", "-uy", "x", "--key=z"}, root);
    EXPECT_EQ(none.errors, "");
    EXPECT_EQ(gRuns, Words{"add x"});
}

TEST_F(CLICommandTest, RequiresTheOptionsOfACommandOfCommands) {
    const char* site = nullptr;
    CLIOption own[] = {
        remote[0],
        remote[1],
        {.type = kCLIString, .longName = "site", .valuePtr = &site, .flags = kCLIRequired},
        {.type = kCLIEnd}};
    root[2].subOptions = own;
    const CommandLine missing({"remote", "remove", "x"}, root);
    EXPECT_EQ(missing.status, kCLIUsageError);
    EXPECT_EQ(missing.errors, "error: --site ... not specified\n");
    EXPECT_EQ(CommandLine({"remote", "add"}, root).errors,
              "error: --site ...      not specified\n"
              "error: -u, --url <URL> not specified\n"
              "error: --key ...       not specified\n");
    EXPECT_EQ(gRuns, Words()) << "no command runs before all is there";
    for (const Words& words : {Words{"remote", "--site=s", "remove", "x"},
                               {"remote", "remove", "--site=s", "x"},
                               {"remote", "remove", "x", "--site", "s"}}) {
        site = nullptr;
        gRuns.clear();
        const CommandLine line(words, root);
        EXPECT_EQ(line.status, 0) << line.errors;
        EXPECT_STREQ(site, "s");
        EXPECT_EQ(gRuns, Words{"remove x"});
    }
    EXPECT_EQ(CommandLine({"remote", "remove", "x"}, root).status, kCLIUsageError) << "anew";
}

TEST_F(CLICommandTest, RequiresNoGlobalOption) {
    root[1].flags |= kCLIRequired;
    EXPECT_EQ(CommandLine({"bare"}, root).status, 0);
    EXPECT_EQ(CommandLine({"remote", "remove"}, root).status, 0);
}

TEST_F(CLICommandTest, RequiresThemAnewEachTime) {
    EXPECT_EQ(CommandLine({"remote", "add", "-uy", "--key=z"}, root).status, 0);
    EXPECT_EQ(CommandLine({"remote", "add"}, root).status, kCLIUsageError);
}

TEST_F(CLICommandTest, PrintsOneMessageForARefusedOption) {
    EXPECT_EQ(CommandLine({"list", "--bogus"}, root).errors, "error: unknown option 'bogus'.\n");
    EXPECT_EQ(CommandLine({"list", "x", "--bogus"}, root).errors,
              "error: unknown option 'bogus'.\n");
    EXPECT_EQ(CommandLine({"remote", "add", "--url"}, root).errors,
              "error: option 'url' requires a value.\n");
    EXPECT_EQ(gRuns, Words());
}

TEST_F(CLICommandTest, OwnOptionsHideThoseOfTheTablesAbove) {
    std::int32_t own = 0;
    CLIOption sub[] = {{.type = kCLIBoolean, .shortName = 'v', .valuePtr = &own},
                       {.type = kCLIEnd}};
    CLIOption table[] = {{.type = kCLIBoolean, .shortName = 'v', .valuePtr = &verbose},
                         {.type = kCLICommand,
                          .longName = "sub",
                          .handler = [] { useAll("sub"); },
                          .subOptions = sub},
                         {.type = kCLIEnd}};
    const CommandLine line({"-v", "sub", "-v", "x", "-v"}, table);
    EXPECT_EQ(own, 2);
    EXPECT_EQ(verbose, 1);
}

TEST_F(CLICommandTest, FindsOptionsOfEveryTableAbove) {
    std::int32_t middle = 0;
    CLIOption inner[] = {{.type = kCLIString, .longName = "key", .valuePtr = &key},
                         {.type = kCLIEnd}};
    CLIOption outer[] = {{.type = kCLICommand, .longName = "first"},
                         {.type = kCLIBoolean, .shortName = 'm', .valuePtr = &middle},
                         {.type = kCLICommand,
                          .longName = "inner",
                          .handler = [] { useAll("inner"); },
                          .subOptions = inner},
                         {.type = kCLIEnd}};
    CLIOption table[] = {{.type = kCLICommand, .longName = "outer", .subOptions = outer},
                         {.type = kCLIBoolean, .shortName = 'v', .valuePtr = &verbose},
                         {.type = kCLIEnd}};
    const CommandLine line({"outer", "inner", "-mv", "x", "--key=k", "-mv"}, table);
    EXPECT_EQ(line.status, 0) << line.errors;
    EXPECT_EQ(middle, 2);
    EXPECT_EQ(verbose, 2);
    EXPECT_STREQ(key, "k");
    EXPECT_EQ(gRuns, Words{"inner x"});
}

TEST_F(CLICommandTest, FindsTheNumberOptionOfATableAbove) {
    std::uint32_t number = 0;
    CLIOption table[] = {root[0],
                         {.type = kCLINumber, .valuePtr = &number, .flags = kCLINoValue},
                         {.type = kCLIEnd}};
    const CommandLine line({"list", "-a12", "x"}, table);
    EXPECT_EQ(line.status, 0) << line.errors;
    EXPECT_EQ(all, 1);
    EXPECT_EQ(number, 12u);
    EXPECT_EQ(CommandLine({"list", "x", "-7"}, table).status, 0);
    EXPECT_EQ(number, 7u);
}

TEST_F(CLICommandTest, IsAtTheTopInAnyTableThatIsParsed) {
    CLIOption other[] = {{.type = kCLICommand, .longName = "other"}, {.type = kCLIEnd}};
    CommandLine unknown({"-v", "rename"});
    unknown.parse(root, kCLIOptionsOnly);
    unknown.parse(other);
    EXPECT_EQ(unknown.status, kCLIUsageError);
    EXPECT_EQ(unknown.errors,
              "error: unknown command 'rename'. See 'tool help' for a list of commands.\n");
    CommandLine missing({"-v"});
    missing.parse(root, kCLIOptionsOnly);
    missing.parse(other);
    EXPECT_EQ(missing.status, kCLIUsageError);
    EXPECT_EQ(missing.errors, CommandLine({}, root).errors) << "the summary is of the first table";
}

TEST_F(CLICommandTest, StartsAChainOfTablesOfItsOwnWhereAHandlerParses) {
    static CLIOption inner[] = {{.type = kCLIBoolean, .shortName = 'i'}, {.type = kCLIEnd}};
    static std::int32_t statuses[2];
    root[3].handler = [] {
        statuses[0] = CLIParse(inner, 0);
        ++gArgI;
        statuses[1] = CLIParse(inner, 0);
        gArgI = gArgC;
    };
    const CommandLine line({"bare", "--", "-i", "x", "-v"}, root);
    EXPECT_EQ(statuses[0], 0);
    EXPECT_EQ(statuses[1], kCLIUsageError);
    EXPECT_EQ(line.errors, "error: unknown option 'v'.\n");
    EXPECT_EQ(verbose, 0);
}

TEST_F(CLICommandTest, RunsTheOwnersHandlerAfterIt) {
    remote[1].handler = [] { run("remove"); };
    root[2].handler = [] { useAll("remote"); };
    const CommandLine line({"remote", "remove", "x"}, root);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(gRuns, (Words{"remove x", "remote x"}));
    EXPECT_EQ(gCLICurrentOption, &root[2]);
}

TEST_F(CLICommandTest, NestsDeeply) {
    constexpr std::size_t kDepth = 500;
    std::vector<std::array<CLIOption, 2>> tables(kDepth);
    for (std::size_t i = 0; i < kDepth; ++i) {
        tables[i][0] = {.type = kCLICommand,
                        .longName = "down",
                        .subOptions = i + 1 < kDepth ? tables[i + 1].data() : nullptr};
    }
    tables.back()[0].handler = [] { useAll("down"); };
    Words words(kDepth, "down");
    words.push_back("x");
    EXPECT_EQ(CommandLine(words, tables[0].data()).status, 0);
    EXPECT_EQ(gRuns, Words{"down x"});
    words[kDepth - 1] = "up";
    std::string path;
    for (std::size_t i = 1; i < kDepth; ++i) path += " down";
    EXPECT_EQ(
        CommandLine(words, tables[0].data()).errors,
        "error: unknown down command 'up'. See 'tool help" + path + "' for a list of commands.\n");
}

TEST_F(CLICommandTest, MayStandBeforeGlobalOptionsThatReorder) {
    const CommandLine line({"list", "x", "-v", "--", "-a", "y"}, root, kCLIReorder);
    EXPECT_EQ(line.status, 0) << line.errors;
    EXPECT_EQ(verbose, 1);
    EXPECT_EQ(all, 1) << "the command's own options come after the global ones";
    EXPECT_EQ(gRuns, Words{"list x y"});
    EXPECT_EQ(CommandLine({"list", "-a"}, root, kCLIReorder).errors,
              "error: unknown option 'a'.\n");
}

}  // namespace

extern "C" int firstFailingLineOfCLIFromC();

namespace {

TEST(CLIFromC, TakesStaticTables) {
    EXPECT_EQ(firstFailingLineOfCLIFromC(), 0);
}

}  // namespace
