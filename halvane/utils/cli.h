/* Command lines: "program [global options] <command> [options] [args]", read by static tables.
 * docs/cli.md shows a whole program. Usable from C11 and C++20; the conventions of the C layer
 * stand in halvane/utils/printf.h, but that this parser prints: messages and help to standard
 * error, the version to standard output.
 *
 *     static CLIOption options[] = {
 *         {.type = kCLIBoolean, .shortName = 'v', .longName = "verbose", .valuePtr = &verbose,
 *          .flags = kCLINoValue, .shortHelp = "Say more."},
 *         {.type = kCLICommand, .longName = "list", .handler = list, .shortHelp = "List all."},
 *         {.type = kCLIEnd},
 *     };
 *
 * Designators stand in the order of the fields. Tables are not constant: the parser writes
 * `parent` and kCLISeen. A table stays in place while it is used, holds no table that holds it,
 * and ends with kCLIEnd.
 *
 * Values are stored as pointers into the arguments, but for string arrays, whose copies the
 * program frees with StringArray_Free(). The arguments handed to CLIInit() stay the caller's.
 *
 * Threads: the parser's state is the process's; one thread uses all of it. */
#ifndef HALVANE_UTILS_CLI_H
#define HALVANE_UTILS_CLI_H

#include <stddef.h>
#include <stdint.h>

#include "halvane/base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* CLIOption.type */
enum {
    kCLIEnd = 0,         /* the end of the table */
    kCLISection = 1,     /* a part of a command's help: title in shortHelp, text in longHelp */
    kCLIGroup = 2,       /* a heading in the list of options, in shortHelp; may be empty */
    kCLICommand = 3,     /* longName is what the user types */
    kCLIArgument = 4,    /* a positional argument, for help only */
    kCLINumber = 6,      /* -NUM, decimal: valuePtr is a uint32_t*. It has no name of its own. */
    kCLIBoolean = 7,     /* valuePtr is an int32_t* or uint32_t*: each adds 1, --no-name sets 0 */
    kCLIString = 8,      /* valuePtr is a const char**; --no-name sets it to null */
    kCLIStringArray = 9, /* valuePtr is a char***, countPtr a size_t*: each appends a copy,
                            --no-name frees them all. With kCLIOptionalValue it needs a
                            defaultValue: a null one is kCLINoMemory. */
    kCLIInteger = 10,    /* valuePtr is an int32_t* or uint32_t*: -2147483648 to 4294967295, "0x..."
                            hexadecimal, "0..." octal, white space or a '+' before it allowed;
                            --no-name sets 0 */
    kCLICallback = 11
};

/* CLIOption.flags */
enum {
    kCLINoValue = 1 << 0,       /* takes no value; kCLINumber and kCLIBoolean never take one */
    kCLIOptionalValue = 1 << 1, /* defaultValue is used where no value is attached; for a
                                   kCLIArgument: may be left out */
    kCLINoNegation = 1 << 2,    /* --no-name is refused */
    kCLIBareName = 1 << 3,      /* help shows argName without angle brackets */
    kCLIRequired = 1 << 4,      /* of a command's own options: CLIParse() fails where it is missing.
                                   For a command of commands, it is missing once the inner
                                   command's options are read too, and before any of them runs. */
    kCLISeen = 1 << 5,          /* set by the parser when a value was taken */
    kCLILocal = 1 << 6          /* a global option that commands' help does not list */
};

/* Flags of CLIParse() */
enum {
    kCLIReorder = 1 << 0,    /* operands may stand before options */
    kCLIOptionsOnly = 1 << 1 /* no command is looked for */
};

/* Results of CLIParse() beside 0 and what a callback answered */
enum {
    kCLIUnknownType = 128, /* an option whose type takes no value by name */
    kCLIUsageError = 129,  /* a message was printed */
    kCLINoMemory = 130
};

typedef struct CLIOption CLIOption;

/* Takes the value of a kCLICallback option: null where it has none, and then `negated` is 1 for
 * --no-name. Another status than 0 ends parsing; kStatusDone says that nothing is left to do.
 * Meanwhile gArgI is the index of the argument that the option or its value is in. */
typedef int32_t (*CLICallback)(CLIOption* option, const char* value, int negated);

/* Runs a command. Its arguments are gArgV[gArgI] to gArgV[gArgC - 1], and it moves gArgI past
 * those that it used. */
typedef void (*CLIHandler)(void);

/* A field that an initialiser leaves out is 0; said here so that C++ compilers know it too. */
#ifdef __cplusplus
#define HALVANE_CLI_ZERO = {}
#else
#define HALVANE_CLI_ZERO
#endif

struct CLIOption {
    uint32_t type HALVANE_CLI_ZERO;
    uint32_t shortName HALVANE_CLI_ZERO;     /* the ASCII character of -c; 0 for none */
    const char* longName HALVANE_CLI_ZERO;   /* of --name, a command or an argument; none where it
                                                is null or empty */
    void* valuePtr HALVANE_CLI_ZERO;         /* where the value goes, or null: it is dropped; the
                                                version's text for _CLIVersion... */
    void* countPtr HALVANE_CLI_ZERO;         /* of a string array; the build's text likewise */
    uintptr_t defaultValue HALVANE_CLI_ZERO; /* a number, or a pointer to text */
    const char* argName HALVANE_CLI_ZERO;    /* the value's name in help; null: "..." */
    uint32_t flags HALVANE_CLI_ZERO;
    CLICallback callback HALVANE_CLI_ZERO;
    CLIHandler handler HALVANE_CLI_ZERO;    /* or null */
    CLIOption* subOptions HALVANE_CLI_ZERO; /* a command's own options and commands, or null */
    CLIOption* parent HALVANE_CLI_ZERO;     /* in the first record of subOptions: the command that
                                               owns them; written by the parser */
    const char* shortHelp HALVANE_CLI_ZERO; /* one line */
    const char* longHelp HALVANE_CLI_ZERO;  /* may have several; or null or empty */
};
#undef HALVANE_CLI_ZERO

/* A text as valuePtr and countPtr of a version option, and as defaultValue. */
#define CLI_TEXT(text) ((void*)(text))
#define CLI_DEFAULT_TEXT(text) ((uintptr_t)(text))

/* The arguments: those not used yet are from gArgI on. CLIParse() may put a vector of its own in
 * place of the caller's; it lives until the next CLIParse(), CLIInit() or CLIFree(). A callback or
 * handler that calls CLIParse() may put gArgV, gArgC and gArgI back as it found them. */
HALVANE_EXPORT extern int gArgI;
HALVANE_EXPORT extern int gArgC;
HALVANE_EXPORT extern char** gArgV;

/* For handlers, which answer nothing: what the program should exit with. CLIInit() sets it to 0.
 * Parsing does not read it, and writes it only where _CLIHelpCommand does not know a command
 * (kCLIUsageError). */
HALVANE_EXPORT extern int gExitCode;

HALVANE_EXPORT extern const char* gProgramName;     /* behind the last '/' of gProgramPath */
HALVANE_EXPORT extern const char* gProgramPath;     /* argv[0]; "?" where there is none */
HALVANE_EXPORT extern const char* gProgramLongName; /* for the version, or null; the program's */

/* The command, or the callback option, that runs or ran last. A command without a handler counts
 * as one that runs; where one ran inside of another, that is the outer one from then on. Null
 * before the first, and after CLIFree(). */
HALVANE_EXPORT extern CLIOption* gCLICurrentOption;

/* Starts a command line and answers gProgramName. The arguments end before the first null one. A
 * process may do so again: the next table that is parsed is the root table, as though it were the
 * first ever, and tables forget what they have seen when parsing enters them. */
HALVANE_EXPORT const char* CLIInit(int argc, char** argv);

/* Parses from gArgI on. The first table since CLIInit() or CLIFree() is the root table, whose
 * options are the global ones; it stays that one where another is parsed. Options are looked up in
 * the tables above only from a command's table that this very call came to: a handler or callback
 * that calls CLIParse() starts a chain of its own.
 *
 * 0: a command ran, or there was none in the table; what it left of the arguments was warned about
 * in the former case, and stays in gArgV from gArgI on in the latter. Also after help or version,
 * with gCLICurrentOption being what printed it. */
HALVANE_EXPORT int32_t CLIParse(CLIOption* table, uint32_t flags);

/* Ends the use of the arguments: there are none left. */
HALVANE_EXPORT void CLIFree(void);

/* Prints to standard error and exits. */
HALVANE_EXPORT void ErrQuit(int status, const char* format, ...) __attribute__((noreturn));

/* *array is a heap array of *count heap strings; it is not read where the count is 0. Appending
 * puts a new array in place of the old one, and costs the same however long the array is, on
 * average. kStatusNoMemory, also for a null text, changes nothing. */
HALVANE_EXPORT int32_t StringArray_Append(char*** array, size_t* count, const char* text);

/* Frees the strings and the array; nothing where the count is 0. */
HALVANE_EXPORT void StringArray_Free(char** array, size_t count);

/* A number with limits, read as strtoi() of halvane/utils/text/integer.h reads one, the same on
 * every system: no "0b" is a prefix. *error is 0, ERANGE for a value outside [min, max], or EINVAL
 * for another base than 0 and 2 to 36; *end is where the number ends, `text` where there is none.
 * Both are always set; either pointer may be null. `errno` is left alone. The value is returned
 * whatever the error, a number beyond 64 bits as the nearer limit of int64_t; 0 for a null text,
 * which is EINVAL. */
HALVANE_EXPORT int64_t StringToInteger64(const char* text, int64_t min, int64_t max, int base,
                                         const char** end, int* error);

/* For tables. The option prints the help of the command that it stands in, or of the one that is
 * its value; the command that of the command named by the arguments. At the top, or without a
 * name, that is the summary. --no-help prints nothing. */
HALVANE_EXPORT int32_t _CLIHelpOption(CLIOption* option, const char* value, int negated);
HALVANE_EXPORT void _CLIHelpCommand(void);

/* For tables: print the texts at valuePtr and countPtr of the option, or of the command; nothing
 * for --no-version. */
HALVANE_EXPORT int32_t _CLIVersionOption(CLIOption* option, const char* value, int negated);
HALVANE_EXPORT void _CLIVersionCommand(void);

#ifdef __cplusplus
}
#endif

#endif
