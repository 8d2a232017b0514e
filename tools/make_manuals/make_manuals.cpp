// Writes the sources of the manual pages and the scripts that complete command lines: what the
// option tables tell, and the prose of docs/man/.
//
//     make_manuals PROSE FOLDER
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "halvane/utils/cli.h"

#include "tools/halvane/commands/tool_outline.h"
#include "tools/halvane/completion/completion_script.h"
#include "tools/halvane/completion/program_outline.h"
#include "tools/halvaned-sim/control.h"
#include "tools/halvaned-sim/options.h"
#include "tools/halvaned/options.h"
#include "tools/make_manuals/manual_page.h"

namespace halvane::tool {
namespace {

namespace fs = std::filesystem;

// The sections of each page by the name of its file, "halvane-decode.1".
using Pages = std::map<std::string, ManualSections>;

std::span<const CLIOption> rowsOf(const CLIOption* table) {
    const CLIOption* end = table;
    while (end->type != kCLIEnd) ++end;
    return {table, end};
}

ProgramOutline daemonOutline() {
    return outlineOf("halvaned", "host Wi-Fi networks", rowsOf(hosting::daemonOptions()));
}

ProgramOutline simOutline() {
    return outlineOf("halvaned-sim", "simulate the Wi-Fi daemon", rowsOf(sim::simOptions()));
}

Pages generatedPages() {
    Pages pages;
    const ProgramOutline tool = toolOutline();
    pages["halvane.1"] = sectionsOf(tool, tool.program);
    for (const OutlinedCommand& command : tool.commands) {
        pages["halvane-" + command.name + ".1"] = sectionsOf(tool, command);
    }
    const ProgramOutline daemon = daemonOutline();
    pages["halvaned.8"] = sectionsOf(daemon, daemon.program);
    const ProgramOutline simulation = simOutline();
    pages["halvaned-sim.1"] = sectionsOf(simulation, simulation.program);
    pages["halvaned-sim.1"].push_back({"CONTROL LINES", literalText(sim::controlHelp())});
    return pages;
}

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) throw std::runtime_error(path.string() + " cannot be written");
}

std::map<std::string, ManualSections> proseOf(const fs::path& folder) {
    std::map<std::string, ManualSections> prose;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() != ".scd") continue;
        prose[entry.path().stem().string()] = sectionsIn(contentsOf(entry.path()));
    }
    return prose;
}

void writePages(const fs::path& folder, const fs::path& proseFolder) {
    Pages pages = generatedPages();
    const auto prose = proseOf(proseFolder);
    for (const auto& [name, sections] : prose) pages.try_emplace(name);
    for (const auto& [file, sections] : pages) {
        const auto dot = file.rfind('.');
        const auto own = prose.find(file);
        write(folder / (file + ".scd"),
              manualPage(file.substr(0, dot), file.substr(dot + 1), sections,
                         own != prose.end() ? own->second : ManualSections()));
    }
}

void writeCompletions(const fs::path& folder, const ProgramOutline& outline) {
    const std::string& name = outline.program.name;
    write(folder / "bash" / name, bashCompletion(outline));
    write(folder / "zsh" / ('_' + name), zshCompletion(outline));
    write(folder / "fish" / (name + ".fish"), fishCompletion(outline));
}

int run(const fs::path& prose, const fs::path& folder) {
    writePages(folder / "pages", prose);
    for (const ProgramOutline& outline : {toolOutline(), daemonOutline(), simOutline()}) {
        writeCompletions(folder / "completions", outline);
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace halvane::tool

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: make_manuals PROSE FOLDER\n", stderr);
        return 2;
    }
    try {
        return halvane::tool::run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_manuals: %s\n", error.what());
    }
    return EXIT_FAILURE;
}
