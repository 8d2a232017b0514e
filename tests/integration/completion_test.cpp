// The completions of command lines, in the shells that use them.
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_program.h"

using halvane::testing::contentsOf;
using halvane::testing::expectMessage;
using halvane::testing::runProgram;
using halvane::testing::runTool;
using halvane::testing::TemporaryFolder;
using halvane::testing::TerminalProgram;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

using Words = std::vector<std::string>;

Words linesOf(const std::string& text) {
    Words lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// Where the program is; empty if it is not installed.
std::string pathOf(const std::string& program) {
    for (const char* const folder : {"/bin/", "/usr/bin/", "/usr/local/bin/"}) {
        if (std::filesystem::exists(folder + program)) return folder + program;
    }
    return {};
}

#define HALVANE_SKIP_WITHOUT(program) \
    if (pathOf(program).empty()) GTEST_SKIP() << program << " is not installed"

#define HALVANE_SKIP_WITHOUT_COMPLETIONS() \
    if (!std::filesystem::exists(HALVANE_COMPLETIONS)) GTEST_SKIP() << "none are made here"

// The interfaces of this machine.
Words interfaces() {
    Words names;
    for (const auto& entry : std::filesystem::directory_iterator("/sys/class/net")) {
        names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

// The script of a shell, in a file.
class Script {
  public:
    explicit Script(const std::string& shell) {
        std::ofstream(path()) << runTool({"completion", shell}).output;
    }
    // That of a daemon, as it is installed.
    Script(const std::string& shell, const std::string& daemon) : program_(daemon) {
        const std::string name = shell == "zsh"    ? "_" + daemon
                                 : shell == "fish" ? daemon + ".fish"
                                                   : daemon;
        const auto installed = std::filesystem::path(HALVANE_COMPLETIONS) / shell / name;
        std::ofstream(path()) << contentsOf(installed);
    }
    const std::string& program() const { return program_; }
    std::string path() const { return (folder_.path() / "script").string(); }
    std::string folder() const { return folder_.path().string(); }
    void add(const std::string& file) const { std::ofstream(folder_.path() / file) << ""; }
    // Interfaces of these names are there, instead of this machine's.
    void addInterfaces(const Words& names) const {
        const std::filesystem::path folder = folder_.path() / "interfaces";
        std::filesystem::create_directory(folder);
        for (const std::string& name : names) std::ofstream(folder / name) << "";
        const std::string kernels = "/sys/class/net";
        std::string text = contentsOf(path());
        for (std::size_t at = 0; (at = text.find(kernels, at)) != std::string::npos;) {
            text.replace(at, kernels.size(), folder.string());
        }
        std::ofstream(path()) << text;
    }

  private:
    TemporaryFolder folder_;
    std::string program_ = "halvane";
};

// --- The tables ---

// The commands, and the long options of each command, as the help lists them.
Words commands() {
    Words names;
    bool isIn = false;
    for (const std::string& line : linesOf(runTool({"help"}).output)) {
        if (line == "Commands:") isIn = true;
        if (isIn && line.starts_with("    "))
            names.push_back(line.substr(4, line.find(' ', 4) - 4));
    }
    return names;
}

Words optionsOf(const std::string& command) {
    Words options;
    bool isIn = false;
    for (const std::string& line : linesOf(runTool({"help", command}).output)) {
        if (!line.empty() && line[0] != ' ') isIn = line == "OPTIONS";
        if (!isIn || !line.starts_with("    -")) continue;
        const std::size_t start = line.find("--");
        if (start > 8) continue;
        options.push_back(line.substr(start, line.find_first_of(" [,", start) - start));
    }
    return options;
}

TEST(Completion, RefusesOtherShells) {
    expectMessage(runTool({"completion"}), 2,
                  "halvane: completion: takes one shell: bash, zsh or fish\n");
    expectMessage(runTool({"completion", "fsh"}), 2,
                  "halvane: completion: 'fsh' is not bash, zsh or fish\n"
                  "  did you mean fish?\n");
}

// --- bash ---

// What bash offers for the last word, after it has run `start`. The words are those that bash makes
// of the line.
Words offeredByBash(const Script& script, const Words& words, const std::string& start = ":") {
    std::string function = '_' + script.program();
    std::ranges::replace(function, '-', '_');
    std::string line =
        "cd " + script.folder() + "; source ./script; COMP_WORDS=(" + script.program();
    for (const std::string& word : words) line += " '" + word + '\'';
    line += "); COMP_CWORD=" + std::to_string(words.size()) + "; " + start + "; " + function +
            "; [[ ${#COMPREPLY[@]} -eq 0 ]] || printf '%s\\n' \"${COMPREPLY[@]}\"";
    const auto result = runProgram({pathOf("bash"), "--norc", "--noprofile", "-c", line});
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    return linesOf(result.output);
}

TEST(BashCompletion, OffersEveryCommandAndOption) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    const Words all = offeredByBash(script, {""});
    EXPECT_EQ(all, commands());
    for (const std::string& command : all) {
        const Words offered = offeredByBash(script, {command, "--"});
        for (const std::string& option : optionsOf(command)) {
            const bool isOffered = std::ranges::count(offered, option) > 0 ||
                                   std::ranges::count(offered, option + '=') > 0;
            EXPECT_TRUE(isOffered) << command << ' ' << option;
        }
    }
}

TEST(BashCompletion, OffersWords) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    EXPECT_THAT(offeredByBash(script, {"decode", "--format", "=", "js"}),
                ElementsAre("json", "jsonl"));
    EXPECT_THAT(offeredByBash(script, {"decode", "--format=js"}),
                ElementsAre("--format=json", "--format=jsonl"));
    EXPECT_THAT(offeredByBash(script, {"decode", "--format", "js"}), ElementsAre("json", "jsonl"));
    EXPECT_THAT(offeredByBash(script, {"decode", "--findings", "=", ""}),
                ElementsAre("note", "warning", "error"));
    EXPECT_THAT(offeredByBash(script, {"decode", "--hex", "--per"}), ElementsAre("--per-frame"));
    EXPECT_THAT(offeredByBash(script, {"decode", "--columns", "=", "ssid,ban"}),
                ElementsAre("ssid,band"));
    EXPECT_THAT(offeredByBash(script, {"config", "--security", "=", "Open,WE"}),
                ElementsAre("Open,WEP"));
    EXPECT_THAT(offeredByBash(script, {"countries", "--sku", "=", "E"}), ElementsAre("ETSI"));
    EXPECT_THAT(offeredByBash(script, {"completion", ""}), ElementsAre("bash", "zsh", "fish"));
    EXPECT_THAT(offeredByBash(script, {"schema", "dec"}), ElementsAre("decode"));
    EXPECT_THAT(offeredByBash(script, {"nothing", "--"}), IsEmpty());
}

TEST(BashCompletion, OffersInterfacesAndFiles) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    script.add("walk one.pcap");
    for (const char* const command : {"scan", "watch", "add", "start", "channel-list"}) {
        Words offered = offeredByBash(script, {command, ""});
        std::ranges::sort(offered);
        EXPECT_EQ(offered, interfaces()) << command;
    }
    EXPECT_THAT(offeredByBash(script, {"decode", "wa"}), ElementsAre("walk one.pcap"));
    EXPECT_THAT(offeredByBash(script, {"report", "-o", "wa"}), ElementsAre("walk one.pcap"));
    EXPECT_THAT(offeredByBash(script, {"decode", "--", "wa"}), ElementsAre("walk one.pcap"));
}

// The kernel takes every name that has no blank, no slash and no colon.
const Words kOddInterfaces = {"wlan0", "wl$(id>ran)", "wl`id>ran`", "wl;id", "wl'x",
                              "wl\"x", "wl\\x",       "wl*",        "-wl"};

TEST(BashCompletion, RunsNothingThatAnInterfaceIsNamed) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    script.addInterfaces(kOddInterfaces);
    EXPECT_THAT(offeredByBash(script, {"scan", "w"}), ElementsAre("wlan0"));
    EXPECT_FALSE(std::filesystem::exists(script.folder() + "/ran"));
}

TEST(BashCompletion, MindsNoSettingOfTheShell) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    script.addInterfaces({"wlan0", "wlan1"});
    script.add("walk one.pcap");
    for (const std::string start :
         {"set -u", "compopt() { :; }; set -e", "set -f", "set -o posix", "unset IFS", "IFS=a",
          "shopt -s nullglob failglob", "cd() { builtin cd \"$@\" && echo wlan-of-cd; }"}) {
        SCOPED_TRACE(start);
        EXPECT_THAT(offeredByBash(script, {"scan", "w"}, start), ElementsAre("wlan0", "wlan1"));
        EXPECT_THAT(offeredByBash(script, {"scan", "none"}, start), IsEmpty());
        EXPECT_THAT(offeredByBash(script, {"decode", "wa"}, start), ElementsAre("walk one.pcap"));
        EXPECT_THAT(offeredByBash(script, {"decode", "--col"}, start),
                    ElementsAre("--columns=", "--color="));
        EXPECT_THAT(offeredByBash(script, {"decode", "--findings", "=", "wa"}, start),
                    ElementsAre("warning"));
    }
}

TEST(BashCompletion, KnowsThePlaceOfAnArgument) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    Words offered = offeredByBash(script, {"role", ""});
    std::ranges::sort(offered);
    EXPECT_EQ(offered, interfaces());
    EXPECT_THAT(offeredByBash(script, {"role", "wlan0", ""}), ElementsAre("AP"));
    EXPECT_THAT(offeredByBash(script, {"role", "wlan0", "AP", ""}), IsEmpty());
    EXPECT_THAT(offeredByBash(script, {"start", "wlan0", ""}), IsEmpty());
    // Values of options have no place.
    for (const Words& words : {Words{"channel-list", "--format", "json", "l"},
                               Words{"channel-list", "--format=json", "l"},
                               Words{"channel-list", "--format", "=", "json", "l"}}) {
        EXPECT_THAT(offeredByBash(script, words), Contains("lo"));
    }
    EXPECT_THAT(offeredByBash(script, {"channel-list", "--format", "=", "json", "wlan0", ""}),
                IsEmpty());
    EXPECT_THAT(offeredByBash(script, {"watch", "wlan0", "l"}), Contains("lo"));
    // A value that may be left out is never the next word.
    EXPECT_THAT(offeredByBash(script, {"scan", "--findings", "l"}), Contains("lo"));
}

TEST(BashCompletion, KnowsTheDaemons) {
    HALVANE_SKIP_WITHOUT("bash");
    HALVANE_SKIP_WITHOUT_COMPLETIONS();
    const Script daemon("bash", "halvaned");
    daemon.add("trial.conf");
    EXPECT_THAT(offeredByBash(daemon, {"--"}),
                ElementsAre("--help", "--version", "--config=", "--foreground", "--verbose"));
    EXPECT_THAT(offeredByBash(daemon, {"--config", "tr"}), ElementsAre("trial.conf"));
    EXPECT_THAT(offeredByBash(daemon, {"--foreground", "tr"}), IsEmpty());

    const Script simulation("bash", "halvaned-sim");
    simulation.add("world.plist");
    EXPECT_THAT(offeredByBash(simulation, {"--pri"}), ElementsAre("--private", "--print-state"));
    EXPECT_THAT(offeredByBash(simulation, {"--state", "=", "wo"}), ElementsAre("world.plist"));
    EXPECT_THAT(offeredByBash(simulation, {"--private", "--", "prin"}), Contains("printf"));
    EXPECT_THAT(offeredByBash(simulation, {"--control", "start wlan0", "prin"}),
                Contains("printf"));
    EXPECT_THAT(offeredByBash(simulation, {"--", "cat", "wo"}), ElementsAre("world.plist"));
}

// --- Keys typed in a terminal ---

std::string typedIn(const Words& shell, const std::string& start, const std::string& keys,
                    const std::string& end) {
    TerminalProgram terminal(shell);
    terminal.type(start + "; echo rea''dy\n");
    terminal.waitFor("ready");
    terminal.type(keys);
    return terminal.waitFor(end);
}

TEST(BashCompletion, CompletesWhatIsTyped) {
    HALVANE_SKIP_WITHOUT("bash");
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const Script script("bash");
    const std::string source = "source " + script.path();
    const Words shell = {pathOf("bash"), "--norc", "--noprofile", "-i"};
    EXPECT_THAT(typedIn(shell, source, "halvane decode --per\t", "--per-frame "),
                Not(HasSubstr("missing")));
    EXPECT_THAT(typedIn(shell, source, "halvane decode --color=al\t", "--color=always "),
                Not(HasSubstr("missing")));
    // The package bash-completion changes how lines are completed.
    const std::string package = "/usr/share/bash-completion/bash_completion";
    if (!std::filesystem::exists(package)) return;
    EXPECT_THAT(typedIn(shell, "source " + package + "; " + source, "halvane decode --color=al\t",
                        "--color=always "),
                Not(HasSubstr("missing")));
}

Words zsh() {
    return {pathOf("env"), "TERM=dumb", pathOf("zsh"), "-f", "-i"};
}

std::string zshStart(const Script& script) {
    return "unsetopt zle_bracketed_paste prompt_sp; PS1='> '; cd " + script.folder() +
           "; autoload -Uz compinit; compinit -u -D; source " + script.path();
}

TEST(ZshCompletion, CompletesWhatIsTyped) {
    HALVANE_SKIP_WITHOUT("zsh");
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const Script script("zsh");
    script.add("walk.pcap");
    struct Case {
        const char* keys;
        const char* end;  // the rest that appears
    };
    for (const Case& row : {Case{"halvane decod\t", "decode "},
                            {"halvane decode --hex --per-f\t", "--per-frame "},
                            {"halvane decode --color=al\t", "=always "},
                            {"halvane decode --columns=ssid,bss\t", "ssid,bssid"},
                            {"halvane config --security=Open,WE\t", "Open,WEP"},
                            {"halvane scan l\t", "scan lo "},
                            {"halvane role wlan0 A\t", "wlan0 AP "},
                            {"halvane schema deco\t", "schema decode "},
                            {"halvane decode wal\t", "walk.pcap "},
                            {"halvane report -o wal\t", "walk.pcap "}}) {
        EXPECT_THAT(typedIn(zsh(), zshStart(script), row.keys, row.end), Not(HasSubstr("missing")))
            << row.keys;
    }
}

TEST(ZshCompletion, QuotesTheNamesOfInterfaces) {
    HALVANE_SKIP_WITHOUT("zsh");
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const Script script("zsh");
    script.addInterfaces({"a$(id>ran)"});
    EXPECT_THAT(typedIn(zsh(), zshStart(script), "halvane scan a\t", "a\\$\\(id\\>ran\\) "),
                Not(HasSubstr("missing")));
    EXPECT_FALSE(std::filesystem::exists(script.folder() + "/ran"));
}

TEST(ZshCompletion, KnowsTheDaemons) {
    HALVANE_SKIP_WITHOUT("zsh");
    HALVANE_SKIP_WITHOUT_TERMINALS();
    HALVANE_SKIP_WITHOUT_COMPLETIONS();
    struct Case {
        const char* program;
        const char* keys;
        const char* end;
    };
    for (const Case& row :
         {Case{"halvaned", "halvaned --fore\t", "--foreground "},
          {"halvaned", "halvaned --config=tri\t", "trial.conf "},
          {"halvaned-sim", "halvaned-sim --priv\t", "--private "},
          {"halvaned-sim", "halvaned-sim --private -- rmdi\t", "rmdir "},
          {"halvaned-sim", "halvaned-sim --private -- cat tri\t", "trial.conf "}}) {
        const Script script("zsh", row.program);
        script.add("trial.conf");
        EXPECT_THAT(typedIn(zsh(), zshStart(script), row.keys, row.end), Not(HasSubstr("missing")))
            << row.keys;
    }
}

TEST(ZshCompletion, NamesEveryCommandAndOption) {
    const std::string script = runTool({"completion", "zsh"}).output;
    for (const std::string& command : commands()) {
        const std::size_t start = script.find("\n    " + command + ")\n");
        ASSERT_NE(start, std::string::npos) << command;
        const std::string own = script.substr(start, script.find(";;\n", start) - start);
        EXPECT_THAT(script, HasSubstr("\n        '" + command + ':'));
        for (const std::string& option : optionsOf(command)) {
            EXPECT_THAT(own, ::testing::AnyOf(HasSubstr(option + '['), HasSubstr(option + '=')))
                << command;
        }
    }
}

// --- fish ---

// The words that fish offers for the line, without what it says of them.
Words offeredByFish(const Script& script, const std::string& line) {
    const auto result =
        runProgram({pathOf("env"), "HOME=" + script.folder(), pathOf("fish"), "--no-config", "-c",
                    "cd " + script.folder() + "; source ./script; complete -C '" + line + '\''});
    EXPECT_EQ(result.status, 0) << result.errors;
    Words words;
    for (const std::string& row : linesOf(result.output))
        words.push_back(row.substr(0, row.find('\t')));
    return words;
}

TEST(FishCompletion, OffersEveryCommandAndOption) {
    HALVANE_SKIP_WITHOUT("fish");
    const Script script("fish");
    Words all = offeredByFish(script, "halvane ");
    Words known = commands();
    std::ranges::sort(all);
    std::ranges::sort(known);
    EXPECT_EQ(all, known);
    for (const std::string& command : known) {
        const Words offered = offeredByFish(script, "halvane " + command + " --");
        for (const std::string& option : optionsOf(command)) {
            const bool isOffered = std::ranges::count(offered, option) > 0 ||
                                   std::ranges::count(offered, option + '=') > 0;
            EXPECT_TRUE(isOffered) << command << ' ' << option;
        }
    }
}

TEST(FishCompletion, OffersWordsInterfacesAndFiles) {
    HALVANE_SKIP_WITHOUT("fish");
    const Script script("fish");
    script.add("walk.pcap");
    EXPECT_THAT(offeredByFish(script, "halvane decode --format=js"),
                ElementsAre("--format=json", "--format=jsonl"));
    EXPECT_THAT(offeredByFish(script, "halvane decode --findings=w"),
                ElementsAre("--findings=warning"));
    EXPECT_THAT(offeredByFish(script, "halvane decode --columns=ssid,ban"),
                ElementsAre("--columns=ssid,band"));
    EXPECT_THAT(offeredByFish(script, "halvane decode --hex --per"), ElementsAre("--per-frame"));
    EXPECT_THAT(offeredByFish(script, "halvane schema dec"), ElementsAre("decode"));
    EXPECT_THAT(offeredByFish(script, "halvane decode wal"), ElementsAre("walk.pcap"));
    EXPECT_THAT(offeredByFish(script, "halvane devices wal"), IsEmpty());
    Words offered = offeredByFish(script, "halvane start ");
    std::ranges::sort(offered);
    EXPECT_EQ(offered, interfaces());
}

TEST(FishCompletion, RunsNothingThatAnInterfaceIsNamed) {
    HALVANE_SKIP_WITHOUT("fish");
    const Script script("fish");
    script.addInterfaces(kOddInterfaces);
    // fish quotes what it inserts.
    EXPECT_THAT(offeredByFish(script, "halvane scan "),
                ::testing::UnorderedElementsAreArray(kOddInterfaces));
    EXPECT_FALSE(std::filesystem::exists(script.folder() + "/ran"));
}

TEST(FishCompletion, KnowsThePlaceOfAnArgument) {
    HALVANE_SKIP_WITHOUT("fish");
    const Script script("fish");
    Words offered = offeredByFish(script, "halvane role ");
    std::ranges::sort(offered);
    EXPECT_EQ(offered, interfaces());
    EXPECT_THAT(offeredByFish(script, "halvane role wlan0 "), ElementsAre("AP"));
    EXPECT_THAT(offeredByFish(script, "halvane role wlan0 AP "), IsEmpty());
    EXPECT_THAT(offeredByFish(script, "halvane channel-list --format json l"), Contains("lo"));
    EXPECT_THAT(offeredByFish(script, "halvane channel-list --format=json l"), Contains("lo"));
    EXPECT_THAT(offeredByFish(script, "halvane channel-list wlan0 l"), IsEmpty());
    EXPECT_THAT(offeredByFish(script, "halvane watch wlan0 l"), Contains("lo"));
}

TEST(FishCompletion, KnowsTheDaemons) {
    HALVANE_SKIP_WITHOUT("fish");
    HALVANE_SKIP_WITHOUT_COMPLETIONS();
    const Script daemon("fish", "halvaned");
    daemon.add("trial.conf");
    EXPECT_THAT(offeredByFish(daemon, "halvaned --fore"), ElementsAre("--foreground"));
    EXPECT_THAT(offeredByFish(daemon, "halvaned --config tri"), ElementsAre("trial.conf"));
    EXPECT_THAT(offeredByFish(daemon, "halvaned tri"), IsEmpty());

    const Script simulation("fish", "halvaned-sim");
    simulation.add("trial.conf");
    EXPECT_THAT(offeredByFish(simulation, "halvaned-sim --priv"), ElementsAre("--private"));
    EXPECT_THAT(offeredByFish(simulation, "halvaned-sim --private -- rmdi"), Contains("rmdir"));
    EXPECT_THAT(offeredByFish(simulation, "halvaned-sim --control \"start wlan0\" cat tri"),
                ElementsAre("trial.conf"));
    EXPECT_THAT(offeredByFish(simulation, "halvaned-sim cat --priv"), Not(Contains("--private")));
}

// Every word that is offered for a format is one that the command takes.
TEST(Completion, OffersFormatsThatCommandsTake) {
    HALVANE_SKIP_WITHOUT("bash");
    const Script script("bash");
    for (const std::string command : {"channels", "skus", "countries", "config"}) {
        const Words formats = offeredByBash(script, {command, "--format", "=", ""});
        EXPECT_THAT(formats, Contains("json"));
        for (const std::string& format : formats) {
            EXPECT_EQ(runTool({command, "--format=" + format}).status, 0) << command << format;
        }
    }
}

// --- Manuals ---

TEST(Manuals, NameEveryCommandAndOption) {
    const std::filesystem::path pages = HALVANE_MANUAL_PAGES;
    if (!std::filesystem::exists(pages)) GTEST_SKIP() << "no manuals are made here";
    const std::string tool = contentsOf(pages / "halvane.1.scd");
    for (const std::string& command : commands()) {
        EXPECT_THAT(tool, HasSubstr("*halvane-" + command + "*(1)"));
        const std::string page = contentsOf(pages / ("halvane-" + command + ".1.scd"));
        for (const char* const title : {"# NAME\n", "# SYNOPSIS\n", "# SEE ALSO\n"}) {
            EXPECT_THAT(page, HasSubstr(title)) << command;
        }
        for (const std::string& option : optionsOf(command)) {
            EXPECT_THAT(page, HasSubstr('*' + option + '*')) << command;
        }
    }
}

// What a page of docs/man/ shows behind `marker`: the lines that run the tool.
Words examplesBehind(const std::string& page, const std::string& marker) {
    const std::size_t start = page.find(marker);
    if (start == std::string::npos) return {};
    Words examples;
    for (const std::string& line : linesOf(page.substr(start))) {
        if (line.starts_with("halvane ") || line.starts_with("echo ")) examples.push_back(line);
    }
    return examples;
}

constexpr const char* kTool = "halvane() { " HALVANE_TOOL " \"$@\"; }; cd " HALVANE_SAMPLES " && ";

// The examples of the commands that need no radio and no daemon.
TEST(Manuals, HaveExamplesThatWork) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(HALVANE_MANUAL_PROSE)) {
        for (const std::string& line : examplesBehind(contentsOf(entry.path()), "_samples_")) {
            const auto result = runProgram({"/bin/sh", "-c", kTool + line});
            EXPECT_EQ(result.status, 0) << line << '\n' << result.errors;
            ++count;
        }
    }
    EXPECT_GT(count, 20u);
}

TEST(Manuals, HaveExamplesThatWorkWithTheSimulation) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(HALVANE_MANUAL_PROSE)) {
        std::string script = kTool;
        script += "set -e";
        const Words examples = examplesBehind(contentsOf(entry.path()), "*halvaned-sim --private");
        for (const std::string& line : examples) script += "\n" + line;
        if (examples.empty()) continue;
        const auto result = runProgram({HALVANE_SIM, "--private", "--", "/bin/sh", "-c", script});
        EXPECT_EQ(result.status, 0) << entry.path() << '\n' << result.output << result.errors;
        count += examples.size();
    }
    EXPECT_GT(count, 20u);
}

TEST(Manuals, ListWordsOnce) {
    const std::filesystem::path pages = HALVANE_MANUAL_PAGES;
    if (!std::filesystem::exists(pages)) GTEST_SKIP() << "no manuals are made here";
    const std::string decode = contentsOf(pages / "halvane-decode.1.scd");
    EXPECT_THAT(decode, HasSubstr("Words: mark, ssid, signal,"));
    EXPECT_THAT(decode, Not(HasSubstr("\\-ssid")));
    EXPECT_THAT(decode, Not(HasSubstr(" -ssid")));
    EXPECT_THAT(decode, Not(HasSubstr("Words: auto")));
    EXPECT_THAT(contentsOf(pages / "halvane-completion.1.scd"), Not(HasSubstr("Words: bash")));
}

}  // namespace
