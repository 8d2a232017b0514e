// Turns arguments into options: the long form, the short form and -NUM.
#include <cstring>
#include <string_view>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/status.h"
#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"
#include "halvane/utils/cli/reordered_internal.h"

namespace halvane::cli {

namespace {

constexpr std::string_view kNegation = "no-";

// Searches the level's table, then the outer ones.
template <typename Test>
CLIOption* findOption(const Level& level, Test passes) {
    for (const Level* table = &level; table != nullptr; table = table->above) {
        CLIOption* const option = find(table->table, [&](const CLIOption& candidate) {
            return isOption(candidate) && passes(candidate);
        });
        if (option != nullptr) return option;
    }
    return nullptr;
}

CLIOption* findLong(const Level& level, std::string_view name) {
    return findOption(level, [name](const CLIOption& option) {
        return hasLongName(option) && option.longName == name;
    });
}

CLIOption* findShort(const Level& level, unsigned char name) {
    return findOption(level, [name](const CLIOption& option) { return option.shortName == name; });
}

CLIOption* findNumber(const Level& level) {
    return findOption(level, [](const CLIOption& option) { return option.type == kCLINumber; });
}

// `text` is after the "--"; `name` is the part of it that names no option.
std::int32_t refuseLong(const Level& level, const char* text, std::string_view name,
                        bool isNegated) {
    Message message;
    message.add("error: unknown option '%s'.\n", text);
    suggestOption(message, level, name, isNegated ? "--no-" : "--");
    return kCLIUsageError;
}

// `text` is after the "--".
std::int32_t parseLong(const Level& level, const char* text) {
    const char* const equals = std::strchr(text, '=');
    std::string_view name(
        text, equals != nullptr ? static_cast<std::size_t>(equals - text) : std::strlen(text));
    const bool isNegated = name.starts_with(kNegation);
    if (isNegated) name.remove_prefix(kNegation.size());
    CLIOption* const option = findLong(level, name);
    if (option == nullptr) return refuseLong(level, text, name, isNegated);
    gState.attached = equals != nullptr ? equals + 1 : nullptr;
    return _CLIGetValue(option, isNegated ? kNegated : 0);
}

// `text` points to the first digit, and after the call behind the last one.
std::int32_t parseNumber(CLIOption& option, const char*& text) {
    const char* end = text;
    int error = 0;
    const std::int64_t number = StringToInteger64(text, 0, UINT32_MAX, 10, &end, &error);
    if (error != 0) {
        say("error: -NUM option out-of-range: '%s'.\n", text);
        return kCLIUsageError;
    }
    if (option.valuePtr != nullptr) {
        *static_cast<std::uint32_t*>(option.valuePtr) = static_cast<std::uint32_t>(number);
    }
    option.flags |= kCLISeen;
    text = end;
    return kStatusOK;
}

// No option has the character at `text` as its name.
std::int32_t parseNameless(const Level& level, const char*& text) {
    CLIOption* const number = isDigit(*text) ? findNumber(level) : nullptr;
    if (number != nullptr) return parseNumber(*number, text);
    say("error: unknown option '%c'.\n", static_cast<unsigned char>(*text));
    return kCLIUsageError;
}

// `text` is after the "-", at the first of the options.
std::int32_t parseShort(const Level& level, const char* text) {
    std::int32_t status = kStatusOK;
    while (status == kStatusOK && text != nullptr && *text != '\0') {
        CLIOption* const option = findShort(level, static_cast<unsigned char>(*text));
        if (option == nullptr) {
            status = parseNameless(level, text);
            continue;
        }
        ++text;
        gState.attached = *text != '\0' ? text : nullptr;
        status = _CLIGetValue(option, kShortForm);
        text = gState.attached;  // null if the option used it as its value
    }
    return status;
}

constexpr bool isOperand(const char* argument) {
    return argument[0] != '-' || argument[1] == '\0';
}

std::int32_t parseOne(const Level& level, const char* argument) {
    gState.attached = nullptr;
    const bool isLong = argument[1] == '-';
    const std::int32_t status =
        isLong ? parseLong(level, argument + 2) : parseShort(level, argument + 1);
    gState.attached = nullptr;
    return status;
}

// `reordered` is null if the first operand ends the options.
std::int32_t parseArguments(Level& level, Reordered* reordered) {
    for (; char* const argument = argumentAt(gArgI); ++gArgI) {
        if (isOperand(argument)) {
            if (reordered == nullptr) break;
            if (!reordered->setAside(argument)) return kCLINoMemory;
            continue;
        }
        if (std::strcmp(argument, "--") == 0) {
            ++gArgI;
            level.isEnded = true;
            break;
        }
        const std::int32_t status = parseOne(level, argument);
        // The option that ended parsing does not count as unused.
        if (status == kStatusDone) ++gArgI;
        if (status != kStatusOK) return status;
    }
    return kStatusOK;
}

// Makes a level the innermost one, in which callbacks look up options.
class Within {
  public:
    explicit Within(const Level& level) : outer_(gState.level) { gState.level = &level; }
    Within(const Within&) = delete;
    Within& operator=(const Within&) = delete;
    ~Within() { gState.level = outer_; }

  private:
    const Level* outer_;
};

// A parser call from a callback or handler restores this state: the rest of the group of short
// options, the running option, and the vectors that the callback may restore. After a new command
// line nothing is restored.
class Nested {
  public:
    explicit Nested(std::uint32_t flags)
        : flags_(gState.flags),
          attached_(gState.attached),
          current_(gCLICurrentOption),
          outerVector_(gState.outerVector),
          innerVector_(gState.innerVector),
          depth_(++gState.depth) {
        gState.flags = flags;
        gState.outerVector = depth_ > 1 ? innerVector_ : nullptr;
        gState.innerVector = gState.newestVector;
    }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;
    ~Nested() {
        if (gState.depth != depth_) return;
        --gState.depth;
        gState.flags = flags_;
        if (gState.depth == 0) return;
        gState.outerVector = outerVector_;
        gState.innerVector = innerVector_;
        gState.attached = attached_;
        gCLICurrentOption = current_;
    }

  private:
    const std::uint32_t flags_;
    const char* const attached_;
    CLIOption* const current_;
    char** const outerVector_;
    char** const innerVector_;
    const int depth_;
};

void warnOfUnused() {
    for (; const char* const argument = argumentAt(gArgI); ++gArgI) {
        say("warning: unused argument '%s'.\n", argument);
    }
}

}  // namespace

std::int32_t parseOptions(Level& level, std::uint32_t flags) {
    const Within within(level);
    if ((flags & kCLIReorder) == 0) return parseArguments(level, nullptr);
    Reordered reordered;
    const std::int32_t status = parseArguments(level, &reordered);
    const bool isParsed = status == kStatusOK || status == kStatusDone;
    return isParsed && !reordered.install() ? kCLINoMemory : status;
}

std::int32_t parseLevel(Level& level, std::uint32_t flags) {
    const std::int32_t status = parseOptions(level, flags);
    if (status != kStatusOK || (flags & kCLIOptionsOnly) != 0) return status;
    return runCommand(level, flags);
}

}  // namespace halvane::cli

extern "C" std::int32_t CLIParse(CLIOption* table, std::uint32_t flags) {
    using namespace halvane::cli;
    const Nested nested(flags);
    if (gState.root == nullptr && table != nullptr) {
        gState.root = table;
        forgetSeen(table);
    }
    Level level{table};
    const std::int32_t status = parseLevel(level, flags);
    if (status != kStatusOK && status != kStatusDone) return status;
    // A program without commands reads its arguments later, unless everything is done.
    const bool isOver = status == kStatusDone || hasCommands(table);
    if (status == kStatusDone && (flags & kCLIFullHelp) != 0) {
        gArgI = gArgC;
        return kStatusOK;
    }
    if (isOver && (flags & kCLIOptionsOnly) == 0) warnOfUnused();
    return kStatusOK;
}
