#include <string>
#include <string_view>
#include <utility>

#include "tools/halvane/completion/completion_script.h"
#include "tools/halvane/completion/program_outline.h"
#include "tools/halvane/completion/script_text.h"
#include "tools/halvane/completion/value_words.h"

namespace halvane::tool {

namespace {

constexpr std::string_view kKinds[] = {"any", "words", "list", "files", "interfaces", "commands"};

// The function that knows the tables. @PROGRAM@ is the program's name, @NAME@ that of its
// functions.
constexpr std::string_view kTableHead = R"(# Completes the command lines of @PROGRAM@ in bash.

# Sets `kind` and `words` for what "COMMAND --option" or "COMMAND #2", its second argument, takes. An
# option without a value has no row. The kind of a value that may be left out ends in '='.
@NAME@_values() {
    kind='' words=''
    case $1 in
)";

constexpr std::string_view kRest = R"(    esac
}

# Adds what the kind offers for `cur` to COMPREPLY, each with `before` in front.
@NAME@_offer() {
    local known='' before=$1 typed='' name quoted
    case $kind in
    files*)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -P "$before" -- "$cur")
        return ;;
    commands*)
        if [[ $place -eq 1 ]]; then
            mapfile -t COMPREPLY < <(compgen -c -- "$cur")
        elif declare -F _command_offset >/dev/null; then
            _command_offset "$first"
        else
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$cur")
        fi
        return ;;
    interfaces*)
        # compgen expands its words, and a name may hold $(...): one that needs quotes is left out.
        while IFS= read -r name; do
            printf -v quoted %q "${name##*/}"
            [[ $name != */"$quoted" ]] || known+=" $quoted"
        done < <(compgen -f /sys/class/net/) ;;
    list*)
        [[ $cur == *,* ]] && typed=${cur%,*},
        compopt -o nospace 2>/dev/null
        known=$words ;;
    *)  known=$words ;;
    esac
    local IFS=$' \t\n'
    mapfile -t COMPREPLY < <(compgen -P "$before$typed" -W "$known" -- "${cur#"$typed"}")
    [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *= ]] || compopt -o nospace 2>/dev/null
}

@NAME@() {
    local cur=${COMP_WORDS[COMP_CWORD]} last=${COMP_WORDS[COMP_CWORD-1]}
    local command='' option='' kind words word isEnd='' i
    local place=1 first=0  # of the arguments: the one that is typed, and where they begin
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; ++i)); do
        word=${COMP_WORDS[i]}
        if [[ $word == -- && -z $isEnd ]]; then
            isEnd=yes
        elif [[ $word == = ]]; then
            ((++i))
        elif [[ $word == -?* && -z $isEnd ]]; then
            # Its value may be the next word.
            @NAME@_values "$command $word"
            [[ -z $kind || $kind == *= || ${COMP_WORDS[i+1]} == = ]] || ((++i))
        TAKE_WORD
    done
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
        @NAME@_values "$command #$place"
        @NAME@_offer ''
    fi
}
complete -F @NAME@ @PROGRAM@
)";

// What becomes of a word that is no option: the first one is the command.
constexpr std::string_view kTakeWord = R"(        elif [[ -z $command ]]; then
            command=$word
        else
            ((++place))
        fi
)";
// Without commands, the first one ends the options: the others belong to what it names.
constexpr std::string_view kTakeFirst = R"(        else
            [[ $place -gt 1 ]] || first=$i
            isEnd=yes
            ((++place))
        fi
)";

std::string rowEnd(std::string_view kind, const std::string& words) {
    std::string text = ") kind=" + std::string(kind);
    if (!words.empty()) text += " words='" + words + '\'';
    return text + " ;;\n";
}

void addRow(std::string& script, const std::string& place, std::string_view kind,
            const std::string& words) {
    script += "    '" + place + '\'' + rowEnd(kind, words);
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

// One row for each place, and one for all the places of an argument that may be repeated.
void addArguments(std::string& script, const std::string& start, const OutlinedCommand& command) {
    int place = 0;
    for (const OutlinedArgument& argument : command.arguments) {
        ++place;
        if (argument.words.kind == ValueWords::Kind::Any) continue;
        script += "    '" + start + '#';
        script += argument.isRepeatable() ? "'*" : std::to_string(place) + '\'';
        script += rowEnd(kindOf(argument.words), spaced(argument.words.words));
    }
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
    if (hasCommands) addRow(script, " #1", "words", commandNames(outline));
    addArguments(script, " ", outline.program);
    for (const OutlinedCommand& command : outline.commands) addCommand(script, command);
    script += kRest;
    script = replacedText(std::move(script), "        TAKE_WORD\n",
                          hasCommands ? kTakeWord : kTakeFirst);
    const std::string& name = outline.program.name;
    script = replacedText(std::move(script), "@PROGRAM@", name);
    return replacedText(std::move(script), "@NAME@", '_' + functionName(name));
}

}  // namespace halvane::tool
