/* The option parser as a C program uses it: static tables, in the order of the fields and not. */
#include <string.h>

#include "halvane/utils/cli.h"

#include "tests/support/check_line.h"

int firstFailingLineOfCLIFromC(void);

static int gVerbose;
static uint32_t gCount;
static const char* gName;
static char** gTags;
static size_t gTagCount;
static int gCopied;
static int gCalls;

static int32_t call(CLIOption* option, const char* value, int negated) {
    if (option == gCLICurrentOption && value == NULL && negated) ++gCalls;
    return 0;
}

static void copy(void) {
    gCopied = gArgC - gArgI;
    gArgI = gArgC;
}

static CLIOption gCopyOptions[] = {
    {.type = kCLINumber, .valuePtr = &gCount, .shortHelp = "Copies."},
    {.type = kCLIString,
     .shortName = 'n',
     .longName = "name",
     .valuePtr = &gName,
     .defaultValue = CLI_DEFAULT_TEXT("none"),
     .flags = kCLIOptionalValue},
    {.longName = "tag",
     .type = kCLIStringArray,
     .valuePtr = &gTags,
     .countPtr = &gTagCount,
     .flags = kCLIRequired},
    {.type = kCLICallback, .longName = "call", .callback = call},
    {.type = kCLIEnd},
};

static CLIOption gOptions[] = {
    {.type = kCLIBoolean,
     .shortName = 'v',
     .longName = "verbose",
     .valuePtr = &gVerbose,
     .flags = kCLINoValue},
    {.type = kCLICallback,
     .longName = "version",
     .valuePtr = CLI_TEXT("1.0"),
     .countPtr = CLI_TEXT("test"),
     .flags = kCLINoValue,
     .callback = _CLIVersionOption},
    {.type = kCLICommand, .longName = "copy", .handler = copy, .subOptions = gCopyOptions},
    {.type = kCLICommand, .longName = "help", .handler = _CLIHelpCommand},
    {.type = kCLIEnd},
};

int firstFailingLineOfCLIFromC(void) {
    char words[][16] = {"dir/program", "-v", "copy", "-3", "a", "--tag=x", "-n", "--no-call", "b"};
    char* arguments[10] = {NULL};
    for (int i = 0; i < 9; ++i) arguments[i] = words[i];
    CHECK(strcmp(CLIInit(9, arguments), "program") == 0);
    CHECK(CLIParse(gOptions, 0) == 0);
    CHECK(gVerbose == 1 && gCount == 3 && gCopied == 2 && gCalls == 1);
    CHECK(strcmp(gName, "none") == 0);
    CHECK(gTagCount == 1 && strcmp(gTags[0], "x") == 0);
    CHECK(gCLICurrentOption == &gOptions[2]);
    CHECK((gCopyOptions[2].flags & kCLISeen) != 0);
    CHECK(gCopyOptions[0].parent == &gOptions[2]);
    StringArray_Free(gTags, gTagCount);
    CLIFree();
    CHECK(gArgC == 0);
    return 0;
}
