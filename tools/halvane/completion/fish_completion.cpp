#include <string>
#include <string_view>
#include <utility>

#include "tools/halvane/completion/completion_script.h"
#include "tools/halvane/completion/program_outline.h"
#include "tools/halvane/completion/script_text.h"
#include "tools/halvane/completion/value_words.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kFunctions = R"(# Completes the command lines of @PROGRAM@ in fish.

# Whether the command is the one that is named, or there is none yet.
function @NAME@_is
    for word in (commandline -opc)[2..]
        string match -q -- '-*' $word; and continue
        test "$argv[1]" = $word
        return
    end
    test -z "$argv[1]"
end

# Whether the argument of that place is typed: `at COMMAND PLACE OPTION...`, where `+` stands behind
# the place of one that may be repeated. The options take the next word as their value.
function @NAME@_at
    @NAME@_is $argv[1]; or test -z "$argv[1]"; or return
    set -l place 0
    test -z "$argv[1]"; and set place 1
    set -l words (commandline -opc)[2..]
    while set -q words[1]
        if contains -- $words[1] $argv[3..]
            set -e words[1]
        else if not string match -q -- '-?*' $words[1]
            set place (math $place + 1)
        end
        set -e words[1]
    end
    test $place = $argv[2]; or string match -q -- '*+' $argv[2]
end

# The same, and it is no option's value.
function @NAME@_takes
    @NAME@_at $argv; and not string match -q -- '--*=*' (commandline -ct)
end

# The words, behind those of a list that stand already.
function @NAME@_list
    set -l typed (commandline -ct | string replace -r '^--[^=]*=' '')
    set -l before (string match -r '^.*,' -- $typed)
    for word in $argv
        echo -- $before$word
    end
end

function @NAME@_interfaces
    for folder in /sys/class/net/*
        string replace /sys/class/net/ '' $folder
    end
end

complete -c @PROGRAM@ -f
)";

std::string quoted(std::string_view text) {
    std::string all = "'";
    for (const char letter : text) {
        if (letter == '\'' || letter == '\\') all += '\\';
        all += letter;
    }
    return all + '\'';
}

std::string wordsFor(const ValueWords& words, const std::string& valuedOptions = "") {
    using Kind = ValueWords::Kind;
    switch (words.kind) {
        case Kind::Any:
            return "";
        case Kind::Words:
            return " -a " + quoted(spaced(words.words));
        case Kind::List:
            return " -a " + quoted("(@NAME@_list " + spaced(words.words) + ')');
        case Kind::Files:
            return " -F";
        case Kind::Interfaces:
            return " -a '(@NAME@_interfaces)'";
        case Kind::Commands:
            return " -a '(__fish_complete_subcommand" + valuedOptions + ")'";
    }
    return "";
}

std::string start(const std::string& condition) {
    return "complete -c @PROGRAM@" + condition;
}

void addOption(std::string& script, const std::string& condition, const OutlinedOption& option) {
    script += start(condition);
    if (option.shortName != 0) script += std::string(" -s ") + option.shortName;
    script += " -l " + option.name;
    if (option.takesValue() && !option.isAttached) script += " -r";
    script += wordsFor(option.words) + " -d " + quoted(option.help) + '\n';
}

// The options whose value is the next word.
std::string valuedNames(const OutlinedCommand& command) {
    std::string names;
    for (const OutlinedOption& option : command.options) {
        if (!option.takesValue() || option.isAttached) continue;
        names += " --" + option.name;
        if (option.shortName != 0) names += std::string(" -") + option.shortName;
    }
    return names;
}

// `name` is "" in quotes for a program without commands.
void addArguments(std::string& script, const std::string& name, const OutlinedCommand& command) {
    const std::string valued = valuedNames(command);
    int place = 0;
    for (const OutlinedArgument& argument : command.arguments) {
        ++place;
        const std::string words = wordsFor(argument.words, valued);
        if (words.empty()) continue;
        std::string condition = " -n '@NAME@_takes ";
        condition.append(name).append(1, ' ').append(std::to_string(place));
        condition.append(argument.isRepeatable() ? "+" : valued).append(1, '\'');
        script += start(condition);
        script.append(words).append(1, '\n');
    }
}

void addCommand(std::string& script, const OutlinedCommand& command) {
    const std::string condition = " -n '@NAME@_is " + command.name + '\'';
    script += start(" -n '@NAME@_is \"\"'") + " -a " + command.name + " -d " +
              quoted(command.help) + '\n';
    script += start(condition) + " -l help -d 'print the help of the command'\n";
    for (const OutlinedOption& option : command.options) addOption(script, condition, option);
    addArguments(script, command.name, command);
}

}  // namespace

std::string fishCompletion(const ProgramOutline& outline) {
    std::string script(kFunctions);
    // Behind the first argument of a program without commands, options belong to what it names.
    const std::string condition =
        !outline.commands.empty() ? " -n '@NAME@_is \"\"'"
        : outline.program.arguments.empty()
            ? ""
            : " -n '@NAME@_at \"\" 1" + valuedNames(outline.program) + '\'';
    for (const OutlinedOption& option : outline.program.options) {
        addOption(script, condition, option);
    }
    addArguments(script, "\"\"", outline.program);
    for (const OutlinedCommand& command : outline.commands) addCommand(script, command);
    const std::string& name = outline.program.name;
    script = replacedText(std::move(script), "@PROGRAM@", name);
    return replacedText(std::move(script), "@NAME@", "__" + functionName(name));
}

}  // namespace halvane::tool
