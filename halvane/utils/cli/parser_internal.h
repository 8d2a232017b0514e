// The parser's state and the parts that its sources share.
#ifndef HALVANE_UTILS_CLI_PARSER_INTERNAL_H
#define HALVANE_UTILS_CLI_PARSER_INTERNAL_H

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "halvane/utils/cli.h"

namespace halvane::cli {

// The table being parsed, and its outer tables, innermost first. Options are looked up along this
// chain. CLIOption.parent cannot serve for that, since it does not tell which table a command
// belongs to.
struct Level {
    CLIOption* table = nullptr;    // null for a command without options
    CLIOption* command = nullptr;  // the command that owns the table; null at the top
    const Level* above = nullptr;
    bool isEnded = false;  // by "--"
};

class Message;

struct State {
    CLIOption* root = nullptr;       // the first table since CLIInit() or CLIFree()
    const Level* level = nullptr;    // innermost; null outside of CLIParse()
    const char* attached = nullptr;  // the unread part of the current argument
    int depth = 0;                   // the depth of nested CLIParse() calls
    std::uint32_t flags = 0;         // of the innermost CLIParse() call
    // Vectors of the parser to which gArgV was set, or null: the newest of all, the newest that the
    // outer CLIParse() may still use, and the newest that this one may use.
    char** newestVector = nullptr;
    char** outerVector = nullptr;
    char** innerVector = nullptr;
};
extern State gState;

// Frees the parser's vectors that are newer than `last`; all of them if it is null.
void freeVectors(const char* const* last = nullptr);

// The indent of texts below their titles in help.
inline constexpr int kIndent = 4;

// Mode bits of _CLIGetValue().
inline constexpr std::uint32_t kShortForm = 1 << 0;
inline constexpr std::uint32_t kNegated = 1 << 1;

constexpr bool isOption(const CLIOption& option) {
    return option.type >= kCLINumber && option.type <= kCLICallback;
}

constexpr bool hasFlag(const CLIOption& option, std::uint32_t flag) {
    return (option.flags & flag) != 0;
}

constexpr bool takesNoValue(const CLIOption& option) {
    return hasFlag(option, kCLINoValue) || option.type == kCLINumber || option.type == kCLIBoolean;
}

// A command without a name cannot be called. An option without one has only a short form.
constexpr bool hasLongName(const CLIOption& option) {
    return option.longName != nullptr && *option.longName != '\0';
}

// Returns the argument at that index; null if there is none.
inline char* argumentAt(int index) {
    return gArgV != nullptr && index < gArgC ? gArgV[index] : nullptr;
}

// The records of a table, without its end. A null table has no records.
class Table {
  public:
    explicit Table(CLIOption* first) : first_(first), end_(first) {
        while (end_ != nullptr && end_->type != kCLIEnd) ++end_;
    }
    CLIOption* begin() const { return first_; }
    CLIOption* end() const { return end_; }

  private:
    CLIOption* first_;
    CLIOption* end_;
};

// Returns the first record of the table that passes the test; null if none does.
template <typename Test>
CLIOption* find(CLIOption* table, Test passes) {
    for (CLIOption& option : Table(table)) {
        if (passes(option)) return &option;
    }
    return nullptr;
}

inline bool hasCommands(CLIOption* table) {
    return find(table, [](const CLIOption& o) { return o.type == kCLICommand; }) != nullptr;
}
inline bool hasOptions(CLIOption* table) {
    return find(table, isOption) != nullptr;
}

inline void forgetSeen(CLIOption* table) {
    for (CLIOption& option : Table(table)) option.flags &= ~std::uint32_t{kCLISeen};
}

// Returns the command of exactly that name; null if there is none.
CLIOption* findCommand(CLIOption* table, const char* name);

// Parses options from gArgI on, up to the first operand unless options are reordered.
std::int32_t parseOptions(Level& level, std::uint32_t flags);

// Runs the command that the next argument names, if the table has commands.
std::int32_t runCommand(Level& level, std::uint32_t flags);

// Parses one whole level: its options, then its command.
std::int32_t parseLevel(Level& level, std::uint32_t flags);

// Prints the name of an option or argument as help shows it. Returns its length.
int printName(Message& message, const CLIOption& option);
int lengthOfName(const CLIOption& option);

// Selects what to print of a list of records: which records, in how much detail, under which title.
struct OptionList {
    const char* title;  // or null
    bool isLong;        // with longHelp
    bool isWithoutLocal;
};
// Returns false if there is nothing to list.
bool printOptions(Message& message, CLIOption* table, const OptionList& list);

// Prints how to call the level's command, in one line. If the command cannot run by itself, prints
// one line for each of its commands.
void printUsage(Message& message, const Level& level);

// Prints the names of nested commands: "remote add".
void printCommandPath(Message& message, const Level& level);

// Prints the lines of the text. Lines that are not empty are indented by that many blanks.
void printIndented(Message& message, const char* text, int indent);

void printSummary(std::FILE* stream);

// Prints the help page of the level's command.
void printCommandHelp(const Level& level);

// Append "Did you mean 'NAME'?" as a line of its own, if one command of the table, or one option of
// the level or of those around it, is named much like `typed`. Otherwise they append nothing.
// `before` stands between the quote and the option's name. Without kCLISuggest they do nothing.
void suggestCommand(Message& message, CLIOption* table, const char* typed);
void suggestOption(Message& message, const Level& level, std::string_view typed,
                   const char* before);

// Returns an empty text for a null one.
inline const char* textOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace halvane::cli

// Takes an option's value according to its type and the mode: the attached text, the next argument
// or the default. Returns 0, kCLIUsageError after a message, kCLIUnknownType, kCLINoMemory, or the
// result of the callback.
extern "C" std::int32_t _CLIGetValue(CLIOption* option, std::uint32_t mode);

#endif
