/* Parses command lines of the form "program [global options] <command> [options] [args]" by static
 * tables. docs/cli.md shows a whole program. Usable from C11 and C++20. The conventions of the C
 * layer are in halvane/utils/printf.h. Unlike other parts, this parser prints: messages and help to
 * standard error, the version to standard output.
 *
 *     static CLIOption options[] = {
 *         {.type = kCLIBoolean, .shortName = 'v', .longName = "verbose", .valuePtr = &verbose,
 *          .flags = kCLINoValue, .shortHelp = "Say more."},
 *         {.type = kCLICommand, .longName = "list", .handler = list, .shortHelp = "List all."},
 *         {.type = kCLIEnd},
 *     };
 *
 * Write designators in the order of the fields. Tables are not constant: the parser writes
 * `parent` and kCLISeen. A table must stay in place while it is used, must not contain a table
 * that contains it, and ends with kCLIEnd.
 *
 * Values are stored as pointers into the arguments, which stay the caller's. Only string arrays
 * hold copies, which the program frees with StringArray_Free().
 *
 * Threads: one thread makes all calls, since the process has only one parser state. */
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
    kCLISection = 1,     /* a section of a command's help: title in shortHelp, text in longHelp */
    kCLIGroup = 2,       /* a heading in the list of options, in shortHelp; may be empty */
    kCLICommand = 3,     /* longName is what the user types */
    kCLIArgument = 4,    /* a positional argument, for help only */
    kCLINumber = 6,      /* -NUM, decimal: valuePtr is a uint32_t*. It has no name of its own. */
    kCLIBoolean = 7,     /* valuePtr is an int32_t* or uint32_t*: each adds 1, --no-name sets 0 */
    kCLIString = 8,      /* valuePtr is a const char**; --no-name sets it to null */
    kCLIStringArray = 9, /* valuePtr is a char***, countPtr a size_t*: each use appends a copy,
                            --no-name frees all copies. With kCLIOptionalValue a null
                            defaultValue fails with kCLINoMemory. */
    kCLIInteger = 10,    /* valuePtr is an int32_t* or uint32_t*: -2147483648 to 4294967295;
                            "0x..." is hexadecimal, "0..." octal; white space or a '+' may come
                            first; --no-name sets 0 */
    kCLICallback = 11
};

/* CLIOption.flags */
enum {
    kCLINoValue = 1 << 0,       /* takes no value; kCLINumber and kCLIBoolean never take one */
    kCLIOptionalValue = 1 << 1, /* defaultValue is used if no value is attached; a kCLIArgument
                                   may be omitted */
    kCLINoNegation = 1 << 2,    /* --no-name is refused */
    kCLIBareName = 1 << 3,      /* help shows argName without angle brackets */
    kCLIRequired = 1 << 4,      /* for a command's own options: CLIParse() fails if it is
                                   missing. With inner commands this check comes after the
                                   inner command's options and before any command runs. */
    kCLISeen = 1 << 5,          /* set by the parser when a value was taken */
    kCLILocal = 1 << 6          /* a global option that commands' help does not list */
};

/* Flags of CLIParse() */
enum {
    kCLIReorder = 1 << 0,     /* operands may come before options */
    kCLIOptionsOnly = 1 << 1, /* CLIParse() does not look for a command */
    kCLISuggest = 1 << 2,     /* the message about an unknown command or long option is followed by
                                 a line "Did you mean 'NAME'?", if one known name is near */
    kCLIFullHelp = 1 << 3     /* help that the user asks for goes to standard output, and the help
                                 of a command lists its commands with their summaries; arguments
                                 beside the request for help are no reason for a warning */
};

/* Results of CLIParse() besides 0 and the result of a callback */
enum {
    kCLIUnknownType = 128, /* the option's type takes no value by name */
    kCLIUsageError = 129,  /* a message was printed */
    kCLINoMemory = 130
};

/* A row of a table of options, described below. */
typedef struct CLIOption CLIOption;

/* Receives the value of a kCLICallback option. `value` is null if there is none; `negated` is
 * then 1 for --no-name. A status other than 0 ends parsing; kStatusDone means that nothing is
 * left to do. During the call gArgI is the index of the argument that holds the option or its
 * value. */
typedef int32_t (*CLICallback)(CLIOption* option, const char* value, int negated);

/* Runs a command. Its arguments are gArgV[gArgI] to gArgV[gArgC - 1]. It advances gArgI past the
 * arguments that it used. */
typedef void (*CLIHandler)(void);

/* Fields that an initialiser omits are 0. The macro tells C++ compilers so. */
#ifdef __cplusplus
#define HALVANE_CLI_ZERO = {}
#else
#define HALVANE_CLI_ZERO
#endif

/* A row of a table: an option, a command or an argument. Most tables are made of macros
 * (cli/options.h). */
struct CLIOption {
    uint32_t type HALVANE_CLI_ZERO;          /* a kCLI... type */
    uint32_t shortName HALVANE_CLI_ZERO;     /* the ASCII character of -c; 0 for none */
    const char* longName HALVANE_CLI_ZERO;   /* the name of an option (--name), a command or an
                                                argument; none if null or empty */
    void* valuePtr HALVANE_CLI_ZERO;         /* where the value is stored; null drops it. For
                                                _CLIVersion... the version's text. */
    void* countPtr HALVANE_CLI_ZERO;         /* of a string array; for _CLIVersion... the build's
                                                text */
    uintptr_t defaultValue HALVANE_CLI_ZERO; /* a number, or a pointer to text */
    const char* argName HALVANE_CLI_ZERO;    /* the value's name in help; null: "..." */
    uint32_t flags HALVANE_CLI_ZERO;
    CLICallback callback HALVANE_CLI_ZERO;
    CLIHandler handler HALVANE_CLI_ZERO;    /* or null */
    CLIOption* subOptions HALVANE_CLI_ZERO; /* a command's own options and commands, or null */
    CLIOption* parent HALVANE_CLI_ZERO;     /* the command that owns the table; written by the
                                               parser into the first record of subOptions */
    const char* shortHelp HALVANE_CLI_ZERO; /* one line */
    const char* longHelp HALVANE_CLI_ZERO;  /* one or more lines; may be null or empty */
};
#undef HALVANE_CLI_ZERO

/* Converts a text for valuePtr or countPtr of a version option, and for defaultValue. */
#define CLI_TEXT(text) ((void*)(text))
#define CLI_DEFAULT_TEXT(text) ((uintptr_t)(text))

/* The arguments. Those from gArgI on are unused. CLIParse() may replace the caller's vector by
 * one of its own, which lives until the next CLIParse(), CLIInit() or CLIFree(). A callback or
 * handler that calls CLIParse() may restore gArgV, gArgC and gArgI to their former values. */
HALVANE_EXPORT extern int gArgI;
HALVANE_EXPORT extern int gArgC;
HALVANE_EXPORT extern char** gArgV;

/* The exit status that the program should use. Handlers set it, since they return nothing.
 * CLIInit() sets it to 0. Parsing never reads it, and writes it only if _CLIHelpCommand does not
 * know a command (kCLIUsageError). */
HALVANE_EXPORT extern int gExitCode;

HALVANE_EXPORT extern const char* gProgramName;     /* after the last '/' of gProgramPath */
HALVANE_EXPORT extern const char* gProgramPath;     /* argv[0]; "?" if there is none */
HALVANE_EXPORT extern const char* gProgramLongName; /* for the version; the program may set it */

/* The command or callback option that is running or ran last. A command without a handler counts
 * as running. After an inner command has run, this is the outer command. Null before the first
 * one and after CLIFree(). */
HALVANE_EXPORT extern CLIOption* gCLICurrentOption;

/* Starts a command line and returns gProgramName. The arguments end before the first null one. A
 * process may call this repeatedly: the next parsed table becomes the root table, as in the
 * first call, and each table forgets what it has seen when parsing enters it. */
HALVANE_EXPORT const char* CLIInit(int argc, char** argv);

/* Parses from gArgI on. The first table since CLIInit() or CLIFree() is the root table, whose
 * options are the global ones, even while another table is parsed. Options of outer tables are
 * looked up only from tables of commands that this call reached: a handler or callback that
 * calls CLIParse() starts a new chain.
 *
 * Returns 0 if a command ran, after a warning about any arguments that it left. Returns 0 if the
 * table has no commands; the unused arguments are then in gArgV from gArgI on. Returns 0 after
 * help or version; gCLICurrentOption is then the option or command that printed it. */
HALVANE_EXPORT int32_t CLIParse(CLIOption* table, uint32_t flags);

/* Ends the use of the arguments; none are left. */
HALVANE_EXPORT void CLIFree(void);

/* Prints a message to standard error and exits. */
HALVANE_EXPORT void ErrQuit(int status, const char* format, ...) __attribute__((noreturn));

/* Appends a copy of `text` to *array, a heap array of *count heap strings. *array is not read if
 * *count is 0. The array is replaced by a new one. The cost is constant on average, whatever the
 * length. kStatusNoMemory: out of memory or `text` is null; nothing has changed. */
HALVANE_EXPORT int32_t StringArray_Append(char*** array, size_t* count, const char* text);

/* Frees the strings and the array. Does nothing if the count is 0. */
HALVANE_EXPORT void StringArray_Free(char** array, size_t count);

/* Reads a number with limits as strtoi() of halvane/utils/text/integer.h does, identically on
 * every system: "0b" is not a prefix. *error becomes 0, ERANGE for a value outside [min, max],
 * or EINVAL for a base other than 0 and 2 to 36. *end becomes the end of the number, or `text`
 * if there is none. Both are always set; either pointer may be null. `errno` does not change.
 * The value is returned whatever the error is. A number beyond 64 bits becomes the nearer limit
 * of int64_t. A null text gives 0 and EINVAL. */
HALVANE_EXPORT int64_t StringToInteger64(const char* text, int64_t min, int64_t max, int base,
                                         const char** end, int* error);

/* For tables. The option prints the help of the command that it belongs to, or of the command
 * that its value names. The command prints the help of the command that its arguments name. At
 * the top level, or without a name, both print the summary. --no-help prints nothing. */
HALVANE_EXPORT int32_t _CLIHelpOption(CLIOption* option, const char* value, int negated);
HALVANE_EXPORT void _CLIHelpCommand(void);

/* For tables. Print the texts at valuePtr and countPtr of the option or command. --no-version
 * prints nothing. */
HALVANE_EXPORT int32_t _CLIVersionOption(CLIOption* option, const char* value, int negated);
HALVANE_EXPORT void _CLIVersionCommand(void);

#ifdef __cplusplus
}
#endif

#endif
