/* A command line by a table: example_options [-v] list [--format=NAME] FILE... */
#include "halvane/utils/cli.h"
#include "halvane/utils/printf.h"

static int verbose;
static const char* format = "text";

static void list(void) {
    if (verbose) FPrintF(stdout, "%d files\n", gArgC - gArgI);
    while (gArgI < gArgC) FPrintF(stdout, "%s as %s\n", gArgV[gArgI++], format);
}

static CLIOption listOptions[] = {
    {.type = kCLIString,
     .longName = "format",
     .valuePtr = &format,
     .argName = "name",
     .shortHelp = "text or json."},
    {.type = kCLIArgument, .longName = "file", .shortHelp = "What to list."},
    {.type = kCLIEnd},
};

static CLIOption options[] = {
    {.type = kCLIBoolean,
     .shortName = 'v',
     .longName = "verbose",
     .valuePtr = &verbose,
     .flags = kCLINoValue,
     .shortHelp = "Say more."},
    {.type = kCLICommand,
     .longName = "list",
     .handler = list,
     .subOptions = listOptions,
     .shortHelp = "List files."},
    {.type = kCLICommand,
     .longName = "help",
     .handler = _CLIHelpCommand,
     .shortHelp = "Print help."},
    {.type = kCLIEnd},
};

int main(int argc, char** argv) {
    CLIInit(argc, argv);
    const int32_t status = CLIParse(options, 0);
    CLIFree();
    return status != 0 ? status : gExitCode;
}
