#include "tools/halvane/options/single_option.h"

#include <bit>
#include <cstdint>
#include <string>

#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

// The rows of a table, without its end.
std::span<CLIOption> rowsOf(CLIOption* table) {
    if (table == nullptr) return {};
    CLIOption* end = table;
    while (end->type != kCLIEnd) ++end;
    return {table, end};
}

// The commands whose options are refused. Each option belongs to one command alone.
std::span<CLIOption> gCommands;

// "logging set", for an option of that command; empty if it is of none.
std::string ownerOf(const CLIOption& option, std::span<CLIOption> commands) {
    for (const CLIOption& command : commands) {
        if (command.type != kCLICommand) continue;
        const std::span<CLIOption> rows = rowsOf(command.subOptions);
        std::string name = command.longName;
        if (&option >= rows.data() && &option < rows.data() + rows.size()) return name;
        const std::string inner = ownerOf(option, rows);
        if (!inner.empty()) return name.append(" ").append(inner);
    }
    return {};
}

std::int32_t refuseSecond(const CLIOption& option) {
    const std::string owner = ownerOf(option, gCommands);
    const std::string start = owner.empty() ? "" : owner + ": ";
    complain(start + "--" + option.longName + " is given twice");
    return kCLIUsageError;
}

// What the parser does for a kCLIString, once. The text of the option that came first is still at
// its place; --no-option has taken it away.
std::int32_t takeText(CLIOption* option, const char* value, int negated) {
    const char*& place = *static_cast<const char**>(option->valuePtr);
    if (negated != 0) {
        place = nullptr;
        return 0;
    }
    if (place != nullptr) return refuseSecond(*option);
    place = value != nullptr ? value : std::bit_cast<const char*>(option->defaultValue);
    return 0;
}

// The same for a kCLIBoolean.
std::int32_t takeFlag(CLIOption* option, const char*, int negated) {
    auto& place = *static_cast<std::int32_t*>(option->valuePtr);
    if (negated == 0 && place != 0) return refuseSecond(*option);
    place = negated == 0 ? 1 : 0;
    return 0;
}

void makeSingle(CLIOption& option) {
    const bool isText = option.type == kCLIString;
    if (!isText && option.type != kCLIBoolean) return;
    if (option.valuePtr == nullptr || (option.flags & kRepeatable) != 0) return;
    if (!isText) option.flags |= kCLINoValue;
    option.callback = isText ? takeText : takeFlag;
    option.type = kCLICallback;
}

void makeAllSingle(std::span<CLIOption> rows) {
    for (CLIOption& row : rows) {
        makeSingle(row);
        if (row.type == kCLICommand) makeAllSingle(rowsOf(row.subOptions));
    }
}

}  // namespace

void refuseRepeatedOptions(std::span<CLIOption> commands) {
    gCommands = commands;
    makeAllSingle(commands);
}

}  // namespace halvane::tool
