#include <string>
#include <string_view>
#include <utility>

#include "tools/halvane/completion/completion_script.h"
#include "tools/halvane/completion/program_outline.h"
#include "tools/halvane/completion/script_text.h"
#include "tools/halvane/completion/value_words.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kKinds[] = {"any", "words", "list", "files", "interfaces"};

// The function that knows the tables. @PROGRAM@ is the program's name, @NAME@ that of its
// functions.
constexpr std::string_view kTableHead = R"(# Completes the command lines of @PROGRAM@ in bash.

# Sets `kind` and `words` for what "COMMAND --option" or the arguments of "COMMAND " take. An option
# without a value has no row. The kind of a value that may be left out ends in '='.
@NAME@_values() {
    kind='' words=''
    case $1 in
)";

constexpr std::string_view kRest = R"(    esac
}

# Adds what the kind offers for `cur` to COMPREPLY, each with `before` in front.
@NAME@_offer() {
    local known before=$1 typed=''
    case $kind in
    files*)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -P "$before" -- "$cur")
        return ;;
    interfaces*)
        known=$(cd /sys/class/net 2>/dev/null && printf '%s\n' *) ;;
    list*)
        [[ $cur == *,* ]] && typed=${cur%,*},
        compopt -o nospace 2>/dev/null
        known=$words ;;
    *)  known=$words ;;
    esac
    local IFS=$' \t\n'
    mapfile -t COMPREPLY < <(compgen -P "$before$typed" -W "$known" -- "${cur#"$typed"}")
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
}

@NAME@() {
    local cur=${COMP_WORDS[COMP_CWORD]} last=${COMP_WORDS[COMP_CWORD-1]}
    local command='' option='' kind words word isEnd='' i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        [[ $word == -- ]] && isEnd=yes
        [[ -z $command && $word != -* ]] && command=$word
    done
    HAS_NO_COMMANDS
    # bash makes words of its own of the '=' and of what is behind it.
    if [[ $cur == = && $last == --* ]]; then
        option=$last cur=
    elif [[ $last == = && COMP_CWORD -gt 2 ]]; then
        option=${COMP_WORDS[COMP_CWORD-2]}
    elif [[ $last == -?* && -z $isEnd ]]; then
        @NAME@_values "$command $last"
        if [[ -n $kind && $kind != *= ]]; then
            @NAME@_offer ''
            return
        fi
    fi
    if [[ $option == --* && -z $isEnd ]]; then
        @NAME@_values "$command $option"
        @NAME@_offer ''
    elif [[ $cur == --*=* && -z $isEnd ]]; then
        option=${cur%%=*} cur=${cur#*=}
        @NAME@_values "$command $option"
        @NAME@_offer "$option="
    elif [[ $cur == -* && -z $isEnd ]]; then
        @NAME@_values "$command -"
        @NAME@_offer ''
    else
        @NAME@_values "$command "
        @NAME@_offer ''
    fi
}
complete -F @NAME@ @PROGRAM@
)";

void addRow(std::string& script, const std::string& place, std::string_view kind,
            const std::string& words) {
    script += "    '" + place + "') kind=" + std::string(kind);
    if (!words.empty()) script += " words='" + words + '\'';
    script += " ;;\n";
}

std::string kindOf(const ValueWords& words) {
    return std::string(kKinds[static_cast<int>(words.kind)]);
}

std::string optionNames(const OutlinedCommand& command, bool isProgram) {
    std::string names = isProgram ? "" : "--help";
    for (const OutlinedOption& option : command.options) {
        names += names.empty() ? "--" : " --";
        names += option.name;
        if (option.takesValue() && !option.isAttached) names += '=';
    }
    return names;
}

void addOption(std::string& script, const std::string& start, const OutlinedOption& option) {
    if (!option.takesValue()) return;
    const std::string kind = kindOf(option.words) + (option.isAttached ? "=" : "");
    const std::string words = spaced(option.words.words);
    addRow(script, start + "--" + option.name, kind, words);
    if (option.shortName != 0) addRow(script, start + '-' + option.shortName, kind, words);
}

// All arguments of a command share their words, because the place of an argument is not known.
void addArguments(std::string& script, const std::string& start, const OutlinedCommand& command) {
    std::string kind = "any";
    std::string words;
    for (const OutlinedArgument& argument : command.arguments) {
        if (argument.words.kind == ValueWords::Kind::Any) continue;
        if (kind == "any") kind = kindOf(argument.words);
        words += (words.empty() ? "" : " ") + spaced(argument.words.words);
    }
    addRow(script, start, kind, words);
}

void addCommand(std::string& script, const OutlinedCommand& command) {
    const std::string start = command.name + ' ';
    addRow(script, start + '-', "words", optionNames(command, false));
    for (const OutlinedOption& option : command.options) addOption(script, start, option);
    addArguments(script, start, command);
}

std::string commandNames(const ProgramOutline& outline) {
    std::string names;
    for (const OutlinedCommand& command : outline.commands) {
        names += (names.empty() ? "" : " ") + command.name;
    }
    return names;
}

}  // namespace

std::string bashCompletion(const ProgramOutline& outline) {
    const bool hasCommands = !outline.commands.empty();
    std::string script(kTableHead);
    addRow(script, " -", "words", optionNames(outline.program, true));
    for (const OutlinedOption& option : outline.program.options) addOption(script, " ", option);
    if (hasCommands) addRow(script, " ", "words", commandNames(outline));
    for (const OutlinedCommand& command : outline.commands) addCommand(script, command);
    script += kRest;
    script = replacedText(std::move(script), "    HAS_NO_COMMANDS\n",
                          hasCommands ? "" : "    command=''\n");
    const std::string& name = outline.program.name;
    script = replacedText(std::move(script), "@PROGRAM@", name);
    return replacedText(std::move(script), "@NAME@", '_' + functionName(name));
}

}  // namespace halvane::tool
