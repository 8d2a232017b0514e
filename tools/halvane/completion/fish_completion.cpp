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

# Whether the command is that one, and a word of its own is typed instead of an option's value.
function @NAME@_takes
    @NAME@_is $argv; and not string match -q -- '--*=*' (commandline -ct)
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

std::string wordsFor(const ValueWords& words) {
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

void addCommand(std::string& script, const OutlinedCommand& command) {
    const std::string condition = " -n '@NAME@_is " + command.name + '\'';
    script += start(" -n '@NAME@_is \"\"'") + " -a " + command.name + " -d " +
              quoted(command.help) + '\n';
    script += start(condition) + " -l help -d 'print the help of the command'\n";
    for (const OutlinedOption& option : command.options) addOption(script, condition, option);
    for (const OutlinedArgument& argument : command.arguments) {
        const std::string words = wordsFor(argument.words);
        if (words.empty()) continue;
        script += start(" -n '@NAME@_takes " + command.name + '\'') + words + '\n';
    }
}

}  // namespace

std::string fishCompletion(const ProgramOutline& outline) {
    std::string script(kFunctions);
    const std::string condition = outline.commands.empty() ? "" : " -n '@NAME@_is \"\"'";
    for (const OutlinedOption& option : outline.program.options) {
        addOption(script, condition, option);
    }
    for (const OutlinedCommand& command : outline.commands) addCommand(script, command);
    const std::string& name = outline.program.name;
    script = replacedText(std::move(script), "@PROGRAM@", name);
    return replacedText(std::move(script), "@NAME@", "__" + functionName(name));
}

}  // namespace halvane::tool
