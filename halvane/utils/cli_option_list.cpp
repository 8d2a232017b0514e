// Lists of options in help: the name of each, and what it is for.
#include <algorithm>

#include "halvane/utils/cli_internal.h"
#include "halvane/utils/printf.h"

namespace halvane::cli {

namespace {

constexpr int kTextIndent = 8;

// How a value is shown: by whether it may be left out, whether it stands behind a long name, and
// whether its name stands without brackets.
constexpr const char* kValueFormats[2][2][2] = {
    {{" <%s>", " %s"}, {" <%s>", " %s"}},
    {{"[<%s>]", "[%s]"}, {"[=<%s>]", "[=%s]"}},
};

int printValue(std::FILE* stream, const CLIOption& option) {
    const bool isOptional = hasFlag(option, kCLIOptionalValue);
    const bool isBehindLong = hasLongName(option);
    const bool isBare = hasFlag(option, kCLIBareName) || option.argName == nullptr;
    return FPrintF(stream, kValueFormats[isOptional][isBehindLong][isBare],
                   option.argName != nullptr ? option.argName : "...");
}

int printArgumentName(std::FILE* stream, const CLIOption& option) {
    const bool isOptional = hasFlag(option, kCLIOptionalValue);
    return FPrintF(stream, "%c%s%c", isOptional ? '[' : '<', textOrEmpty(option.longName),
                   isOptional ? ']' : '>');
}

bool isEntry(const CLIOption& option, const OptionList& list) {
    if (list.isWithoutLocal && hasFlag(option, kCLILocal)) return false;
    return isOption(option) || option.type == kCLIArgument;
}

bool isHeading(const CLIOption& option, const OptionList& list) {
    return option.type == kCLIGroup && !(list.isWithoutLocal && hasFlag(option, kCLILocal));
}

void printHeading(const CLIOption& option) {
    const char* const text = textOrEmpty(option.shortHelp);
    FPrintF(stderr, "\n");
    if (*text != '\0') FPrintF(stderr, "%*s%s\n", kIndent, "", text);
}

void printEntry(const CLIOption& option, int width, bool isLong) {
    FPrintF(stderr, "%*s", kIndent, "");
    const int length = printName(stderr, option);
    FPrintF(stderr, "%*s    %s\n", width - length, "", textOrEmpty(option.shortHelp));
    if (isLong) printIndented(option.longHelp, kTextIndent);
}

}  // namespace

int printName(std::FILE* stream, const CLIOption& option) {
    if (option.type == kCLIArgument) return printArgumentName(stream, option);
    int length = 0;
    if (option.shortName != 0) {
        length += FPrintF(stream, "-%c", static_cast<int>(option.shortName));
        if (hasLongName(option)) length += FPrintF(stream, ", ");
    }
    if (hasLongName(option)) length += FPrintF(stream, "--%s", option.longName);
    if (option.type == kCLINumber) length += FPrintF(stream, "-NUM");
    return takesNoValue(option) ? length : length + printValue(stream, option);
}

bool printOptions(CLIOption* table, const OptionList& list) {
    int width = -1;
    for (const CLIOption& option : Table(table)) {
        if (isEntry(option, list)) width = std::max(width, printName(nullptr, option));
    }
    if (width < 0) return false;
    if (list.title != nullptr) FPrintF(stderr, "%s\n", list.title);
    for (const CLIOption& option : Table(table)) {
        if (isHeading(option, list)) printHeading(option);
        if (isEntry(option, list)) printEntry(option, width, list.isLong);
    }
    if (list.title != nullptr) FPrintF(stderr, "\n");
    return true;
}

}  // namespace halvane::cli
