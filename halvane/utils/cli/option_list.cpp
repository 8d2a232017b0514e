// Lists of options in help: names and descriptions.
#include <algorithm>

#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

namespace halvane::cli {

namespace {

constexpr int kTextIndent = 8;

// The format of a value, by three properties: it is optional, it follows a long name, its name has
// no brackets.
constexpr const char* kValueFormats[2][2][2] = {
    {{" <%s>", " %s"}, {" <%s>", " %s"}},
    {{"[<%s>]", "[%s]"}, {"[=<%s>]", "[=%s]"}},
};

int printValue(Message& message, const CLIOption& option) {
    const bool isOptional = hasFlag(option, kCLIOptionalValue);
    const bool isBehindLong = hasLongName(option);
    const bool isBare = hasFlag(option, kCLIBareName) || option.argName == nullptr;
    return message.add(kValueFormats[isOptional][isBehindLong][isBare],
                       option.argName != nullptr ? option.argName : "...");
}

int printArgumentName(Message& message, const CLIOption& option) {
    const bool isOptional = hasFlag(option, kCLIOptionalValue);
    return message.add("%c%s%c", isOptional ? '[' : '<', textOrEmpty(option.longName),
                       isOptional ? ']' : '>');
}

bool isEntry(const CLIOption& option, const OptionList& list) {
    if (list.isWithoutLocal && hasFlag(option, kCLILocal)) return false;
    return isOption(option) || option.type == kCLIArgument;
}

bool isHeading(const CLIOption& option, const OptionList& list) {
    return option.type == kCLIGroup && !(list.isWithoutLocal && hasFlag(option, kCLILocal));
}

void printHeading(Message& message, const CLIOption& option) {
    const char* const text = textOrEmpty(option.shortHelp);
    message.add("\n");
    if (*text != '\0') message.add("%*s%s\n", kIndent, "", text);
}

void printEntry(Message& message, const CLIOption& option, int width, bool isLong) {
    message.add("%*s", kIndent, "");
    const int length = printName(message, option);
    message.add("%*s    %s\n", width - length, "", textOrEmpty(option.shortHelp));
    if (isLong) printIndented(message, option.longHelp, kTextIndent);
}

}  // namespace

int printName(Message& message, const CLIOption& option) {
    if (option.type == kCLIArgument) return printArgumentName(message, option);
    int length = 0;
    if (option.shortName != 0) {
        length += message.add("-%c", static_cast<int>(option.shortName));
        if (hasLongName(option)) length += message.add(", ");
    }
    if (hasLongName(option)) length += message.add("--%s", option.longName);
    if (option.type == kCLINumber) length += message.add("-NUM");
    return takesNoValue(option) ? length : length + printValue(message, option);
}

int lengthOfName(const CLIOption& option) {
    Message discarded(nullptr);
    return printName(discarded, option);
}

bool printOptions(Message& message, CLIOption* table, const OptionList& list) {
    int width = -1;
    for (const CLIOption& option : Table(table)) {
        if (isEntry(option, list)) width = std::max(width, lengthOfName(option));
    }
    if (width < 0) return false;
    if (list.title != nullptr) message.add("%s\n", list.title);
    for (const CLIOption& option : Table(table)) {
        if (isHeading(option, list)) printHeading(message, option);
        if (isEntry(option, list)) printEntry(message, option, width, list.isLong);
    }
    if (list.title != nullptr) message.add("\n");
    return true;
}

}  // namespace halvane::cli
