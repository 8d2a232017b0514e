// What each type of option stores.
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/utils/cli/test_support.h"

using namespace halvane::testing;

namespace {

std::int32_t parse(Words words, CLIOption option, std::string* errors = nullptr) {
    CLIOption table[] = {option, {.type = kCLIEnd}};
    const CommandLine line(std::move(words), table);
    if (errors != nullptr) *errors = line.errors;
    return line.status;
}

TEST(CLIInteger, ReadsAnyBase) {
    struct Row {
        const char* argument;
        std::int32_t value;
    };
    for (const Row& row : {Row{"--level=42", 42},
                           {"--level=0x2A", 42},
                           {"--level=0X2a", 42},
                           {"--level=052", 42},
                           {"--level=-1", -1},
                           {"--level=+7", 7},
                           {"--level=-2147483648", INT32_MIN},
                           {"--level=2147483647", INT32_MAX},
                           {"--level=0xFFFFFFFF", -1},
                           {"--no-level", 0},
                           {"-l9", 9}}) {
        std::int32_t value = 1234;
        EXPECT_EQ(
            parse({row.argument},
                  {.type = kCLIInteger, .shortName = 'l', .longName = "level", .valuePtr = &value}),
            0)
            << row.argument;
        EXPECT_EQ(value, row.value) << row.argument;
    }
}

TEST(CLIInteger, RefusesWhatIsNoNumberAndStoresNothing) {
    for (const char* value : {"", "x", "1x", "0x", "08", "1 ", "--", "4294967296", "-2147483649",
                              "99999999999999999999", "1.5", "1e3"}) {
        std::uint32_t stored = 1234;
        std::string errors;
        const CLIOption option = {
            .type = kCLIInteger, .shortName = 'l', .longName = "level", .valuePtr = &stored};
        EXPECT_EQ(parse({"--level", value}, option, &errors), kCLIUsageError) << value;
        EXPECT_EQ(errors, "error: option 'level' expects a numerical value.\n");
        EXPECT_EQ(parse({"-l", value}, option, &errors), kCLIUsageError) << value;
        EXPECT_EQ(errors, "error: option 'l' expects a numerical value.\n");
        EXPECT_EQ(stored, 1234u) << value;
    }
}

TEST(CLIInteger, TakesTheDefaultWhereNoneIsAttached) {
    std::int32_t value = 0;
    const CLIOption option = {.type = kCLIInteger,
                              .longName = "level",
                              .valuePtr = &value,
                              .defaultValue = 3,
                              .flags = kCLIOptionalValue};
    EXPECT_EQ(parse({"--level", "8"}, option), 0);
    EXPECT_EQ(value, 3);
    EXPECT_EQ(parse({"--level=8"}, option), 0);
    EXPECT_EQ(value, 8);
}

TEST(CLIBoolean, CountsAndStartsOver) {
    std::int32_t value = 40;
    const CLIOption option = {
        .type = kCLIBoolean, .shortName = 'b', .longName = "bool", .valuePtr = &value};
    EXPECT_EQ(parse({"-bb", "--bool"}, option), 0);
    EXPECT_EQ(value, 43);
    EXPECT_EQ(parse({"--no-bool"}, option), 0);
    EXPECT_EQ(value, 0);
}

TEST(CLIBoolean, TakesNoValueWhateverItsFlags) {
    std::int32_t value = 0;
    std::string errors;
    EXPECT_EQ(parse({"--bool=no"}, {.type = kCLIBoolean, .longName = "bool", .valuePtr = &value},
                    &errors),
              kCLIUsageError);
    EXPECT_EQ(errors, "error: option 'bool' doesn't take a value.\n");
    EXPECT_EQ(value, 0);
}

TEST(CLIBoolean, WrapsAroundWhereItIsFull) {
    std::uint32_t value = UINT32_MAX;
    EXPECT_EQ(parse({"-b"}, {.type = kCLIBoolean, .shortName = 'b', .valuePtr = &value}), 0);
    EXPECT_EQ(value, 0u);
}

TEST(CLIValue, IsDroppedWithoutAPlaceForIt) {
    for (const std::uint32_t type :
         {kCLINumber, kCLIBoolean, kCLIString, kCLIStringArray, kCLIInteger, kCLICallback}) {
        const CLIOption option = {.type = type, .shortName = 'o', .longName = "option"};
        const auto status = parse({type == kCLIBoolean ? "-o" : "-o1"}, option);
        EXPECT_EQ(status, type == kCLINumber ? kCLIUnknownType + 0 : 0) << type;
    }
    EXPECT_EQ(parse({"-12"}, {.type = kCLINumber}), 0);
    EXPECT_EQ(parse({"--no-option"}, {.type = kCLIStringArray, .longName = "option"}), 0);
}

TEST(CLIStringArray, AppendsCopies) {
    char** values = nullptr;
    std::size_t count = 0;
    const CLIOption option = {.type = kCLIStringArray,
                              .shortName = 'a',
                              .longName = "add",
                              .valuePtr = &values,
                              .countPtr = &count};
    EXPECT_EQ(parse({"-aone", "--add", "two", "--add="}, option), 0);
    ASSERT_EQ(count, 3u);
    EXPECT_STREQ(values[0], "one");
    EXPECT_STREQ(values[1], "two");
    EXPECT_STREQ(values[2], "");
    EXPECT_EQ(parse({"--no-add", "--add=three"}, option), 0);
    ASSERT_EQ(count, 1u);
    EXPECT_STREQ(values[0], "three");
    EXPECT_EQ(parse({"--no-add", "--no-add"}, option), 0);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(values, nullptr);
}

TEST(CLIStringArray, AppendsTheDefaultWhereNoneIsAttached) {
    char** values = nullptr;
    std::size_t count = 0;
    const CLIOption option = {.type = kCLIStringArray,
                              .longName = "add",
                              .valuePtr = &values,
                              .countPtr = &count,
                              .defaultValue = CLI_DEFAULT_TEXT("usual"),
                              .flags = kCLIOptionalValue};
    EXPECT_EQ(parse({"--add", "--add=other"}, option), 0);
    ASSERT_EQ(count, 2u);
    EXPECT_STREQ(values[0], "usual");
    EXPECT_STREQ(values[1], "other");
    StringArray_Free(values, count);
}

TEST(CLIStringArray, CannotAppendWhatIsNotThere) {
    char** values = nullptr;
    std::size_t count = 0;
    const CLIOption option = {.type = kCLIStringArray,
                              .longName = "add",
                              .valuePtr = &values,
                              .countPtr = &count,
                              .flags = kCLIOptionalValue};
    EXPECT_EQ(parse({"--add"}, option), kCLINoMemory);
    EXPECT_EQ(count, 0u);
}

struct Call {
    int count = 0;
    std::string value;
    int negated = -1;
    std::int32_t answer = 0;
    int index = 0;
};
Call gCall;

std::int32_t recordCall(CLIOption* option, const char* value, int negated) {
    ++gCall.count;
    gCall.value = value != nullptr ? value : "(null)";
    gCall.negated = negated;
    gCall.index = gArgI;
    EXPECT_EQ(gCLICurrentOption, option);
    return gCall.answer;
}

TEST(CLICallback, GetsTheValueOrTheNegation) {
    struct Row {
        Words words;
        std::uint32_t flags;
        const char* value;
        int negated;
    };
    const Row rows[] = {
        {{"--call", "x"}, 0, "x", 0},
        {{"--call=x"}, 0, "x", 0},
        {{"-cx"}, 0, "x", 0},
        {{"--no-call"}, 0, "(null)", 1},
        {{"--call"}, kCLINoValue, "(null)", 0},
        {{"-c"}, kCLINoValue, "(null)", 0},
        {{"--call", "x"}, kCLIOptionalValue, "(null)", 0},
        {{"--call=x"}, kCLIOptionalValue, "x", 0},
        {{"-cx"}, kCLIOptionalValue, "x", 0},
    };
    for (const Row& row : rows) {
        gCall = Call();
        EXPECT_EQ(parse(row.words, {.type = kCLICallback,
                                    .shortName = 'c',
                                    .longName = "call",
                                    .flags = row.flags,
                                    .callback = recordCall}),
                  0);
        EXPECT_EQ(gCall.count, 1);
        EXPECT_EQ(gCall.value, row.value) << row.words[0];
        EXPECT_EQ(gCall.negated, row.negated) << row.words[0];
    }
}

TEST(CLICallback, EndsParsingWithItsStatus) {
    gCall = Call();
    gCall.answer = -6710;
    CLIOption table[] = {
        {.type = kCLICallback, .shortName = 'c', .flags = kCLINoValue, .callback = recordCall},
        {.type = kCLIEnd}};
    const CommandLine line({"-cc", "-c"}, table);
    EXPECT_EQ(line.status, -6710);
    EXPECT_EQ(line.errors, "");
    EXPECT_EQ(gCall.count, 1);
    EXPECT_EQ(table[0].flags & kCLISeen, 0u);
}

TEST(CLICallback, SaysThatAllIsDone) {
    gCall = Call();
    gCall.answer = kStatusDone;
    CLIOption table[] = {
        {.type = kCLICallback, .shortName = 'c', .flags = kCLINoValue, .callback = recordCall},
        {.type = kCLIEnd}};
    EXPECT_EQ(CommandLine({"-c"}, table).errors, "");
    const CommandLine line({"-c", "--bogus", "x"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.errors, "warning: unused argument '--bogus'.\nwarning: unused argument 'x'.\n");
    EXPECT_EQ(argumentsLeft(), Words());
    const CommandLine reordered({"a", "-c", "b"}, table, kCLIReorder);
    EXPECT_EQ(reordered.errors, "warning: unused argument 'a'.\nwarning: unused argument 'b'.\n");
    const CommandLine optionsOnly({"-c", "b"}, table, kCLIOptionsOnly);
    EXPECT_EQ(optionsOnly.errors, "");
    EXPECT_EQ(argumentsLeft(), Words{"b"});
}

TEST(CLICallback, MayParseItself) {
    static std::int32_t inner;
    static CLIOption innerTable[] = {{.type = kCLIBoolean, .shortName = 'i', .valuePtr = &inner},
                                     {.type = kCLIEnd}};
    const auto parseInside = [](CLIOption*, const char*, int) {
        ++gArgI;
        const auto status = CLIParse(innerTable, kCLIReorder);
        gArgI = -1;  // the next argument is the first of the new vector
        return status;
    };
    std::int32_t outer = 0;
    CLIOption table[] = {
        {.type = kCLICallback, .shortName = 'c', .flags = kCLINoValue, .callback = parseInside},
        {.type = kCLIBoolean, .shortName = 'o', .valuePtr = &outer},
        {.type = kCLIEnd}};
    const CommandLine line({"a", "-co", "b", "-i", "--", "-o"}, table, kCLIReorder);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(inner, 1);
    EXPECT_EQ(outer, 2) << "in the group behind c, and at the end";
    EXPECT_EQ(argumentsLeft(), (Words{"a", "b"}));
}

// A callback that parses another command line, and one within that.
struct Inner {
    static std::int32_t parse(CLIOption* option, const char*, int) {
        char program[] = "tool";
        char words[] = "-ni";
        char* arguments[] = {program, words, nullptr};
        return parseVector(option, arguments);
    }

    static std::int32_t parseVector(CLIOption* option, char** arguments) {
        const auto saved = std::tuple(gArgC, gArgI, gArgV);
        gArgC = 2;
        gArgI = 1;
        gArgV = arguments;
        const std::int32_t status = CLIParse(table, 0);
        std::tie(gArgC, gArgI, gArgV) = saved;
        EXPECT_EQ(gCLICurrentOption, option) << "runs again";
        return status;
    }

    static std::int32_t parseDeeper(CLIOption* option, const char*, int) {
        char program[] = "tool";
        char words[] = "-i";
        char* arguments[] = {program, words, nullptr};
        return parseVector(option, arguments);
    }

    inline static std::int32_t count = 0;
    inline static CLIOption table[] = {
        {.type = kCLIBoolean, .shortName = 'i', .valuePtr = &count},
        {.type = kCLICallback, .shortName = 'n', .flags = kCLINoValue, .callback = parseDeeper},
        {.type = kCLIEnd}};
};

// The outer parser has made a vector of its own. It must outlive the inner parsers.
TEST(CLICallback, MayPutTheArgumentsBackThatItFound) {
    std::int32_t verbose = 0;
    const auto reorder = [](CLIOption*, const char*, int) {
        char program[] = "tool";
        char operand[] = "operand";
        char option[] = "-i";
        char* arguments[] = {program, operand, option, nullptr};
        const auto saved = std::tuple(gArgC, gArgI, gArgV);
        const std::vector<char*> found(gArgV, gArgV + gArgC);
        for (int i = 0; i < 3; ++i) {
            std::tie(gArgC, gArgI, gArgV) = std::tuple(3, 1, arguments);
            EXPECT_EQ(CLIParse(Inner::table, kCLIReorder), 0);
            EXPECT_EQ(argumentsLeft(), Words{"operand"});
        }
        std::tie(gArgC, gArgI, gArgV) = saved;
        EXPECT_EQ(std::vector<char*>(gArgV, gArgV + gArgC), found);
        return std::int32_t{0};
    };
    CLIOption subOptions[] = {
        {.type = kCLICallback, .shortName = 'p', .flags = kCLINoValue, .callback = reorder},
        {.type = kCLIBoolean, .shortName = 'v', .valuePtr = &verbose},
        {.type = kCLIEnd}};
    CLIOption table[] = {{.type = kCLICommand,
                          .longName = "run",
                          .handler =
                              [] {
                                  EXPECT_EQ(argumentsLeft(), (Words{"a", "b"}));
                                  gArgI = gArgC;
                              },
                          .subOptions = subOptions},
                         {.type = kCLIEnd}};
    const CommandLine line({"run", "--", "a", "-pv", "b", "-pv"}, table, kCLIReorder);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.errors, "");
    EXPECT_EQ(verbose, 2);
}

TEST(CLICallback, LeavesTheRestOfItsGroupWhereItParses) {
    Inner::count = 0;
    std::int32_t verbose = 0;
    const char* name = nullptr;
    CLIOption table[] = {
        {.type = kCLICallback, .shortName = 'p', .flags = kCLINoValue, .callback = Inner::parse},
        {.type = kCLIBoolean, .shortName = 'v', .valuePtr = &verbose},
        {.type = kCLIString, .shortName = 'o', .valuePtr = &name},
        {.type = kCLIEnd}};
    const CommandLine line({"-pvpofile", "-p", "-v", "x"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(line.errors, "");
    EXPECT_EQ(verbose, 2);
    EXPECT_STREQ(name, "file");
    EXPECT_EQ(Inner::count, 6) << "three times, each with one inside of it";
    EXPECT_EQ(argumentsLeft(), Words{"x"});
}

TEST(CLICallback, EndsItsGroupWhereItEndsTheCommandLine) {
    std::int32_t verbose = 0;
    CLIOption table[] = {{.type = kCLICallback,
                          .shortName = 'p',
                          .flags = kCLINoValue,
                          .callback =
                              [](CLIOption* option, const char*, int) {
                                  const auto status = Inner::parse(option, nullptr, 0);
                                  CLIFree();
                                  return status;
                              }},
                         {.type = kCLIBoolean, .shortName = 'v', .valuePtr = &verbose},
                         {.type = kCLIEnd}};
    const CommandLine line({"-pv", "-v"}, table);
    EXPECT_EQ(line.status, 0);
    EXPECT_EQ(verbose, 0);
    EXPECT_EQ(CommandLine({"-vv"}, table).status, 0) << "the next one is not hurt";
    EXPECT_EQ(verbose, 2);
}

}  // namespace
