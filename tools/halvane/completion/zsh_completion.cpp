#include <string>
#include <string_view>
#include <utility>

#include "tools/halvane/completion/completion_script.h"
#include "tools/halvane/completion/program_outline.h"
#include "tools/halvane/completion/script_text.h"
#include "tools/halvane/completion/value_words.h"

namespace halvane::tool {

namespace {

// A text within single quotes; `special` gets a backslash, for _arguments.
std::string quoted(std::string_view text, std::string_view special) {
    std::string all;
    for (const char letter : text) {
        if (letter == '\'') {
            all += "'\\''";
            continue;
        }
        if (special.find(letter) != special.npos) all += '\\';
        all += letter;
    }
    return all;
}

// What completes a value or an argument, as _arguments takes it.
std::string actionOf(const ValueWords& words) {
    using Kind = ValueWords::Kind;
    switch (words.kind) {
        case Kind::Any:
            return " ";
        case Kind::Words:
            return '(' + quoted(spaced(words.words), ":") + ')';
        case Kind::List:
            return "{@NAME@_list " + quoted(spaced(words.words), ":") + '}';
        case Kind::Files:
            return "_files";
        case Kind::Interfaces:
            return "{compadd - /sys/class/net/*(N:t)}";
        case Kind::Commands:
            return "_command_names -e";
    }
    return " ";
}

std::string valueOf(const OutlinedOption& option) {
    if (!option.takesValue()) return "";
    return (option.isAttached ? "::" : ":") + quoted(option.value, ":[]") + ':' +
           actionOf(option.words);
}

// "--name=[help]:VALUE:action"; a short name takes its value from the next word.
void addOption(std::string& script, const OutlinedOption& option, const char* indent) {
    const std::string help = '[' + quoted(option.help, "[]:\\") + ']' + valueOf(option) + "' \\\n";
    const std::string start = std::string(indent) + '\'' + (option.isRepeatable ? "*" : "");
    const char* const equals = !option.takesValue() ? "" : option.isAttached ? "=-" : "=";
    script += start + "--" + option.name + equals + help;
    if (option.shortName != 0) {
        script += start + '-' + option.shortName + (option.takesValue() ? "+" : "") + help;
    }
}

void addArguments(std::string& script, const OutlinedCommand& command, const char* indent) {
    for (const OutlinedArgument& argument : command.arguments) {
        if (argument.words.kind == ValueWords::Kind::Commands) {
            // The options end with the name of the program.
            script += std::string(indent) + "'(-)1:command:_command_names -e' \\\n" + indent +
                      "'*::argument:_normal' \\\n";
            continue;
        }
        const bool isMany = argument.isRepeatable() || argument.name.find(' ') != std::string::npos;
        script += std::string(indent) + '\'' +
                  (isMany                ? "*:"
                   : argument.isOptional ? "::"
                                         : ":") +
                  quoted(argument.name, ":[]") + ':' + actionOf(argument.words) + "' \\\n";
    }
}

void addCommand(std::string& script, const OutlinedCommand& command) {
    script += "    " + command.name + ")\n        _arguments -s -S \\\n";
    constexpr const char* kIndent = "            ";
    script += std::string(kIndent) + "'--help[print the help of the command]' \\\n";
    for (const OutlinedOption& option : command.options) addOption(script, option, kIndent);
    addArguments(script, command, kIndent);
    script += std::string(kIndent) + "&& return 0 ;;\n";
}

constexpr std::string_view kHead = R"(#compdef @PROGRAM@
# Completes the command lines of @PROGRAM@ in zsh.

# The words, behind those of a list that stand already.
@NAME@_list() {
    compset -P '*,'
    compadd -S '' - "$@"
}

)";

std::string simpleFunction(const ProgramOutline& outline) {
    std::string script = "@NAME@() {\n    _arguments -s -S \\\n";
    for (const OutlinedOption& option : outline.program.options) {
        addOption(script, option, "        ");
    }
    addArguments(script, outline.program, "        ");
    return script + "        && return 0\n}\n";
}

std::string commandFunction(const ProgramOutline& outline) {
    std::string script = "@NAME@_commands() {\n    local -a commands=(\n";
    for (const OutlinedCommand& command : outline.commands) {
        script += "        '" + command.name + ':' + quoted(command.help, "") + "'\n";
    }
    script += "    )\n    _describe -t commands command commands\n}\n\n";
    script += "@NAME@() {\n    local curcontext=$curcontext state line\n    _arguments -C \\\n";
    for (const OutlinedOption& option : outline.program.options) {
        addOption(script, option, "        ");
    }
    script +=
        "        '1:command:@NAME@_commands' \\\n        '*::argument:->arguments' && return 0\n"
        "    [[ $state == arguments ]] || return 1\n    case $words[1] in\n";
    for (const OutlinedCommand& command : outline.commands) addCommand(script, command);
    return script + "    esac\n    return 1\n}\n";
}

// Loaded by itself, the file is the function; sourced, it names it to the shell.
constexpr std::string_view kTail = R"(
if [[ $funcstack[1] == @NAME@ ]]; then
    @NAME@ "$@"
else
    compdef @NAME@ @PROGRAM@
fi
)";

}  // namespace

std::string zshCompletion(const ProgramOutline& outline) {
    std::string script(kHead);
    script += outline.commands.empty() ? simpleFunction(outline) : commandFunction(outline);
    script += kTail;
    const std::string& name = outline.program.name;
    script = replacedText(std::move(script), "@PROGRAM@", name);
    // The file of a function has the program's name.
    return replacedText(std::move(script), "@NAME@", '_' + name);
}

}  // namespace halvane::tool
