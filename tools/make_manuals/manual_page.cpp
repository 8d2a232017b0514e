#include "tools/make_manuals/manual_page.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/halvane/completion/script_text.h"
#include "tools/halvane/completion/value_words.h"

namespace halvane::tool {

namespace {

// What has a meaning for scdoc wherever it stands.
constexpr std::string_view kMarkup = "\\*_#[]|+<>`~";

// Text with a backslash before each of the letters.
std::string escaped(std::string_view text, std::string_view letters) {
    std::string all;
    for (const char letter : text) {
        if (letters.find(letter) != letters.npos) all += '\\';
        all += letter;
    }
    return all;
}

std::string bold(std::string_view text) {
    return '*' + escaped(text, kMarkup) + '*';
}

std::string underlined(std::string_view text) {
    return '_' + escaped(text, kMarkup) + '_';
}

// A line that shows itself. Blanks at its start do not show in filled text, and scdoc refuses them.
std::string plainLine(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    std::string text = escaped(line, kMarkup);
    // Lists and comments begin so.
    if (text.starts_with('-') || text.starts_with(';')) return '\\' + text;
    // So do numbered lists and, as scdoc does not hide an escaped dot, the commands of manuals. An
    // empty bold text before the dot hides it from both.
    if (text.starts_with('.')) return "**" + text;
    return text;
}

std::string_view takeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return line;
}

// --- Generated sections ---

std::string titleOf(const ProgramOutline& outline, const OutlinedCommand& command) {
    const bool isProgram = &command == &outline.program;
    return isProgram ? command.name : outline.program.name + '-' + command.name;
}

std::string synopsisOf(const ProgramOutline& outline, const OutlinedCommand& command) {
    std::string text = bold(outline.program.name);
    const bool isProgram = &command == &outline.program;
    if (!isProgram) text += ' ' + bold(command.name);
    if (!command.options.empty()) text += " \\[_options_\\]";
    if (isProgram && !outline.commands.empty()) text += " _command_ \\[_arguments_\\]";
    for (const OutlinedArgument& argument : command.arguments) {
        const std::string name = underlined(argument.name);
        text += ' ' + (argument.isOptional ? "\\[" + name + "\\]" : name);
    }
    return text + '\n';
}

// The words of a value, unless its name or its help lists them. A column with '-' before it is no
// other word.
std::string wordsText(const ValueWords& words, const std::string& name, const std::string& help) {
    std::vector<std::string> shown;
    for (const std::string& word : words.words) {
        if (word[0] != '-') shown.push_back(word);
    }
    if (shown.empty() || name.find(shown.back()) != name.npos ||
        help.find(shown.back()) != help.npos) {
        return {};
    }
    return "\n\tWords: " + plainText(replacedText(spaced(shown), " ", ", ")) + ".\n";
}

// A paragraph below the head of an entry; nothing without a text.
std::string indented(const std::string& text) {
    if (text.empty()) return {};
    return '\t' + plainText(replacedText(text, "\n", " ")) + '\n';
}

std::string entry(const std::string& head, const std::string& help,
                  const std::string& longHelp = {}, const ValueWords& words = {}) {
    std::string text = head + '\n' + indented(help);
    if (!longHelp.empty()) text += '\n' + indented(longHelp);
    return text + wordsText(words, head, help) + '\n';
}

std::string headOf(const OutlinedOption& option) {
    std::string head =
        option.shortName != 0 ? bold(std::string("-") + option.shortName) + ", " : "";
    head += bold("--" + option.name);
    if (!option.takesValue()) return head;
    const std::string value = underlined(option.value);
    return head + (option.isAttached ? "\\[=" + value + "\\]" : "=" + value);
}

std::string optionsOf(const OutlinedCommand& command) {
    std::string text;
    for (const OutlinedOption& option : command.options) {
        if (!option.heading.empty()) text += "## " + plainText(option.heading) + "\n\n";
        text += entry(headOf(option), option.help, option.longHelp, option.words);
    }
    return text;
}

std::string argumentsOf(const OutlinedCommand& command) {
    std::string text;
    for (const OutlinedArgument& argument : command.arguments) {
        text += entry(underlined(argument.name), argument.help, "", argument.words);
    }
    return text;
}

std::string commandsOf(const ProgramOutline& outline) {
    std::string text;
    for (const OutlinedCommand& command : outline.commands) {
        text += entry(bold(outline.program.name + '-' + command.name) + "(1)", command.help);
    }
    return text;
}

// "0 done; 1 failed" as a list of the statuses.
std::string statusesOf(const std::string& lines) {
    std::string text;
    std::string rest = replacedText(lines, "\n", " ");
    while (!rest.empty()) {
        std::size_t end = rest.find("; ");
        while (end != rest.npos && std::isdigit(static_cast<unsigned char>(rest[end + 2])) == 0) {
            end = rest.find("; ", end + 1);
        }
        const std::string status = rest.substr(0, end);
        rest = end == rest.npos ? "" : rest.substr(end + 2);
        const std::size_t blank = status.find(' ');
        text += entry(bold(status.substr(0, blank)), status.substr(blank + 1));
    }
    return text;
}

ManualSection sectionOf(const OutlinedSection& section) {
    if (section.title == "EXIT STATUS") return {section.title, statusesOf(section.text)};
    const bool isLiteral = section.title == "EXAMPLES" || section.title == "COMMANDS";
    if (isLiteral) return {section.title, literalText(section.text)};
    return {section.title, plainText(section.text) + '\n'};
}

// --- Whole pages ---

// Sections of other titles stand behind OPTIONS.
constexpr std::string_view kFirst[] = {"NAME",      "SYNOPSIS", "DESCRIPTION",
                                       "ARGUMENTS", "COMMANDS", "OPTIONS"};
constexpr std::string_view kLast[] = {"EXIT STATUS", "ENVIRONMENT", "FILES", "EXAMPLES",
                                      "SEE ALSO"};

int placeOf(const std::string& title) {
    const auto* const first = std::ranges::find(kFirst, title);
    if (first != std::end(kFirst)) return static_cast<int>(first - kFirst);
    const auto* const last = std::ranges::find(kLast, title);
    constexpr int kOthers = std::size(kFirst);
    return last == std::end(kLast) ? kOthers : kOthers + 1 + static_cast<int>(last - kLast);
}

void add(ManualSections& sections, const ManualSection& section) {
    const auto found = std::ranges::find(sections, section.title, &ManualSection::title);
    if (found == sections.end()) {
        sections.push_back(section);
        return;
    }
    if (section.title != "SEE ALSO") {
        found->text += '\n' + section.text;
        return;
    }
    while (found->text.ends_with('\n')) found->text.pop_back();
    found->text += ",\n" + section.text;
}

}  // namespace

std::string plainText(std::string_view text) {
    std::string all;
    while (true) {
        const std::size_t end = text.find('\n');
        all += plainLine(text.substr(0, end));
        if (end == text.npos) return all;
        all += '\n';
        text.remove_prefix(end + 1);
    }
}

std::string literalText(std::string_view lines) {
    return "```\n" + escaped(lines, "\\`") + (lines.ends_with('\n') ? "" : "\n") + "```\n";
}

ManualSections sectionsIn(std::string_view text) {
    ManualSections sections;
    while (!text.empty()) {
        const std::string_view line = takeLine(text);
        if (line.starts_with("# ")) {
            sections.push_back({std::string(line.substr(2)), ""});
        } else if (!sections.empty() && !(line.empty() && sections.back().text.empty())) {
            sections.back().text.append(line).append("\n");
        }
    }
    return sections;
}

ManualSections sectionsOf(const ProgramOutline& outline, const OutlinedCommand& command) {
    ManualSections sections = {
        {"NAME", titleOf(outline, command) + " - " + plainText(command.help) + '\n'},
        {"SYNOPSIS", synopsisOf(outline, command)},
        {"DESCRIPTION", plainText(command.longHelp) + '\n'},
        {"ARGUMENTS", argumentsOf(command)},
        {"OPTIONS", optionsOf(command)}};
    if (&command == &outline.program) sections.push_back({"COMMANDS", commandsOf(outline)});
    for (const OutlinedSection& section : command.sections) sections.push_back(sectionOf(section));
    if (&command != &outline.program) {
        sections.push_back({"SEE ALSO", bold(outline.program.name) + "(1), *halvane*(7)\n"});
    }
    std::erase_if(sections, [](const ManualSection& section) {
        return section.text.find_first_not_of('\n') == section.text.npos;
    });
    return sections;
}

std::string manualPage(std::string_view name, std::string_view section, ManualSections generated,
                       const ManualSections& prose) {
    for (const ManualSection& part : prose) add(generated, part);
    std::ranges::stable_sort(generated, {},
                             [](const ManualSection& part) { return placeOf(part.title); });
    std::string page = std::string(name) + '(' + std::string(section) + ") \"Halvane " +
                       HALVANE_VERSION "\" \"Halvane\"\n";
    for (const ManualSection& part : generated) {
        page += "\n# " + part.title + "\n\n" + part.text;
        while (page.ends_with("\n\n")) page.pop_back();
    }
    return page;
}

}  // namespace halvane::tool
