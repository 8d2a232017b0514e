// The parser's state and the parts that its sources share.
#ifndef HALVANE_UTILS_CLI_PARSER_INTERNAL_H
#define HALVANE_UTILS_CLI_PARSER_INTERNAL_H

#include <cstdint>
#include <cstdlib>

#include "halvane/utils/cli.h"

namespace halvane::cli {

// The table being parsed, and those above it, innermost first. Options are looked up along this
// chain and not along CLIOption.parent, which cannot tell the table that a command stands in.
struct Level {
    CLIOption* table = nullptr;    // null for a command without options
    CLIOption* command = nullptr;  // that owns the table; null at the top
    const Level* above = nullptr;
    bool isEnded = false;  // by "--"
};

class Message;

struct State {
    CLIOption* root = nullptr;       // the first table since CLIInit() or CLIFree()
    const Level* level = nullptr;    // innermost; null outside of CLIParse()
    const char* attached = nullptr;  // what is unread of the current argument
    int depth = 0;                   // of CLIParse() inside of CLIParse()
    // Vectors of the parser's own that gArgV was set to, or null: the newest of all, of those that
    // the CLIParse() around this one may still use, and of those that this one may.
    char** newestVector = nullptr;
    char** outerVector = nullptr;
    char** innerVector = nullptr;
    void* (*reallocate)(void* old, std::size_t size) = std::realloc;  // tests let it fail
};
extern State gState;

// Frees the vectors of the parser's own that are newer than `last`; all of them for null.
void freeVectors(const char* const* last = nullptr);

// Where help's texts start, below their titles.
inline constexpr int kIndent = 4;

// Bits of the mode of _CLIGetValue().
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

// A command without a name cannot be called, and an option without one has its short form only.
constexpr bool hasLongName(const CLIOption& option) {
    return option.longName != nullptr && *option.longName != '\0';
}

// The argument of that index; null where there is none.
inline char* argumentAt(int index) {
    return gArgV != nullptr && index < gArgC ? gArgV[index] : nullptr;
}

// The records of a table, without its end; none of a null table.
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

// The first record of the table that passes the test; null where none does.
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

// The command of that very name; null where there is none.
CLIOption* findCommand(CLIOption* table, const char* name);

// Parses options from gArgI on, until the first operand unless they are reordered.
std::int32_t parseOptions(Level& level, std::uint32_t flags);

// Runs the command that the next argument names, if the table has commands.
std::int32_t runCommand(Level& level, std::uint32_t flags);

// The whole of one level: its options, then its command.
std::int32_t parseLevel(Level& level, std::uint32_t flags);

// The name of an option or argument as help shows it. Returns its length.
int printName(Message& message, const CLIOption& option);
int lengthOfName(const CLIOption& option);

// What is printed of the records of a list: which, how much of each, and under which title.
struct OptionList {
    const char* title;  // or null
    bool isLong;        // with longHelp
    bool isWithoutLocal;
};
// False where there was nothing to list.
bool printOptions(Message& message, CLIOption* table, const OptionList& list);

// How one calls the level's command, one line; one for each of its commands where it cannot run
// itself.
void printUsage(Message& message, const Level& level);

// "remote add" for a command of a command.
void printCommandPath(Message& message, const Level& level);

// Each line of the text, those that are not empty behind that many blanks.
void printIndented(Message& message, const char* text, int indent);

void printSummary();

// The page of the level's command.
void printCommandHelp(const Level& level);

// An absent text is an empty one.
inline const char* textOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

}  // namespace halvane::cli

// Takes an option's value: the attached text, the next argument or the default, whatever its type
// and the mode say. 0, kCLIUsageError after a message, kCLIUnknownType, kCLINoMemory, or what the
// callback answered.
extern "C" std::int32_t _CLIGetValue(CLIOption* option, std::uint32_t mode);

#endif
