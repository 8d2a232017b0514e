#include "tools/make_manuals/manual_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <unistd.h>

#include "tests/support/run_program.h"
#include "tools/halvane/completion/program_outline.h"

namespace halvane::tool {
namespace {

using halvane::testing::ProgramResult;
using halvane::testing::runProgram;
using ::testing::Contains;
using ::testing::Field;
using ::testing::HasSubstr;

struct Row {
    std::string_view text, written;
};

// How scdoc would read each of them without an escape stands behind it.
constexpr Row kTexts[] = {
    {"plain - text; so. on", "plain - text; so. on"},
    {"", ""},
    {"*b* _u_ a\\b `c` <d> ~e~", "\\*b\\* \\_u\\_ a\\\\b \\`c\\` \\<d\\> \\~e\\~"},
    {"```", "\\`\\`\\`"},                // literal lines
    {"# [x] | y", "\\# \\[x\\] \\| y"},  // a title; a table
    {"a +", "a \\+"},                    // a broken line
    {"- x", "\\- x"},                    // a list
    {"-x", "\\-x"},                      // an error
    {"a\n-x", "a\n\\-x"},                // an error
    {"; x", "\\; x"},                    // a comment
    {"a\n; x", "a\n\\; x"},              // a comment
    {". x", "**. x"},                    // a numbered list
    {".x", "**.x"},                      // "x"
    {"a\n.x\nb", "a\n**.x\nb"},          // "a x b"
    {" x", "x"},                         // an error
    {"a\n \t b\n", "a\nb\n"},            // an error
    {" - x", "\\- x"},                   // an error
    {"  ", ""},                          // an error
    {"'x", "'x"},                        // itself
    {"a\n\nb", "a\n\nb"},                // two paragraphs
};

TEST(ManualPage, EscapesWhatIsMarkup) {
    for (const Row& row : kTexts) EXPECT_EQ(plainText(row.text), row.written) << row.text;
}

TEST(ManualPage, KeepsLiteralLines) {
    EXPECT_EQ(literalText("a * b\n - c"), "```\na * b\n - c\n```\n");
    EXPECT_EQ(literalText("a\n"), "```\na\n```\n");
    EXPECT_EQ(literalText("\\n ```\n"), "```\n\\\\n \\`\\`\\`\n```\n");
}

TEST(ManualPage, KeepsEntriesTogether) {
    const OutlinedCommand program{
        .name = "p",
        .help = "h",
        .longHelp = "",
        .options =
            {{.name = "a",
              .value = "",
              .help = "- one\n. two",
              .longHelp = ".three",
              .heading = "",
              .words = {}},
             {.name = "b", .value = "", .help = "", .longHelp = "", .heading = "", .words = {}}},
        .arguments = {},
        .sections = {}};
    const ProgramOutline outline{program, {}};
    EXPECT_THAT(
        sectionsOf(outline, outline.program),
        Contains(Field(&ManualSection::text, "*--a*\n\t\\- one . two\n\n\t**.three\n\n*--b*\n\n")));
}

// The page as its readers see it, a line for each paragraph. Bold letters are struck twice there.
std::string shown(const std::string& page) {
    const ProgramResult roff = runProgram({"/usr/bin/scdoc"}, page);
    EXPECT_EQ(roff.status, 0) << roff.errors;
    const ProgramResult result =
        runProgram({"/usr/bin/mandoc", "-Tascii", "-Owidth=1000"}, roff.output);
    EXPECT_EQ(result.status, 0) << result.errors;
    return result.output;
}

TEST(ManualPage, ShowsTextsAsTheyAre) {
    if (::access("/usr/bin/scdoc", X_OK) != 0 || ::access("/usr/bin/mandoc", X_OK) != 0) {
        GTEST_SKIP() << "scdoc or mandoc is not installed";
    }
    ManualSections sections;
    for (const std::string_view text : {"- list", "-option", "; comment", ". number", ".suffix",
                                        "'quote", " blank", "``` block", "\\n", "+", "a\n.b c"}) {
        sections.push_back({"TITLE", plainText(text) + '\n'});
    }
    sections.push_back({"EXAMPLES", literalText("\\n ``` 'a'\n.b\n'c")});
    const std::string text = shown(manualPage("p", "1", sections, {}));
    for (const char* const line :
         {"     - list\n", "     -option\n", "     ; comment\n", "     . number\n",
          "     .suffix\n", "     'quote\n", "     blank\n", "     ``` block\n", "     \\n\n",
          "     +\n", "     a .b c\n", "     \\n ``` 'a'\n", "     .b\n", "     'c\n"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
}

}  // namespace
}  // namespace halvane::tool
