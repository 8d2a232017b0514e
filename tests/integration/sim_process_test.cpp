// The simulated daemon as its users start and stop it.
#include "tests/support/sim_process.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include "tests/support/bus_caller.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_program.h"
#include "tests/support/running_program.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_program.h"

using halvane::testing::BusCaller;
using halvane::testing::command;
using halvane::testing::PrivateBus;
using halvane::testing::ProgramResult;
using halvane::testing::RunningProgram;
using halvane::testing::runProgram;
using halvane::testing::ScopedEnvironment;
using halvane::testing::SimProcess;
using halvane::testing::TemporaryFolder;
using halvane::testing::TerminalProgram;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

using Words = std::vector<std::string>;

constexpr const char kName[] = "org.halvane.halvaned";
constexpr const char kNotice[] =
    "halvaned-sim: a simulation of the Wi-Fi daemon; no radio is touched\n";

ProgramResult sim(Words words) {
    words.insert(words.begin(), HALVANE_SIM);
    return runProgram(std::move(words));
}

// The programs that a test runs keep their temporary files in a folder of the test.
class SimProgram : public ::testing::Test {
  protected:
    const TemporaryFolder folder_;
    const ScopedEnvironment temporary_{"TMPDIR", folder_.path().string()};

    bool isFolderEmpty() const { return std::filesystem::is_empty(folder_.path()); }
};

// The longest folder name that leaves room for the name of a socket, which adds
// "/halvaned-sim-XXXXXX/bus".
constexpr std::size_t kLongestFolder = 99 - 24;

// The start of a bus's address if TMPDIR is `folder`.
std::string startOfAddress(const std::filesystem::path& folder) {
    const std::string name = folder.string();
    return name.size() <= kLongestFolder ? "unix:path=" + name + "/halvaned-sim-"
                                         : "unix:abstract=halvaned-sim-";
}

TEST_F(SimProgram, SaysThatItSimulatesAndWhere) {
    const SimProcess process;
    ASSERT_EQ(process.lines().size(), 3u);
    EXPECT_EQ(process.lines()[0],
              "# halvaned-sim: a simulation of the Wi-Fi daemon; no radio is touched\n");
    EXPECT_THAT(process.lines()[1],
                StartsWith("export DBUS_SYSTEM_BUS_ADDRESS=" + startOfAddress(folder_.path())));
    EXPECT_EQ(process.lines()[2], "ready\n");
    EXPECT_FALSE(isFolderEmpty());
    EXPECT_EQ(BusCaller(process.address()).request(command("enable", "wlan0")).status(), 0);
}

TEST_F(SimProgram, LeavesNothingBehindWhenItIsStopped) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGQUIT}) {
        SimProcess process;
        const pid_t bus = BusCaller(process.address()).processOf("org.freedesktop.DBus");
        EXPECT_EQ(::kill(bus, 0), 0);
        EXPECT_EQ(process.stop(signal), 0) << signal;
        EXPECT_TRUE(isFolderEmpty());
        EXPECT_NE(::kill(bus, 0), 0) << "the bus still runs";
    }
}

// Signals of the keyboard reach the command, which decides what to do.
TEST_F(SimProgram, LeavesTheKeyboardToItsCommand) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    for (const char* key : {"\x03", "\x1C"}) {
        TerminalProgram terminal({HALVANE_SIM, "--private", "--", "sh", "-c",
                                  "trap '' INT QUIT; echo started; read line; echo \"<$line>\"; "
                                  "exit 7"});
        terminal.waitFor("started");
        terminal.type(key);
        terminal.type("done\n");
        terminal.waitFor("<done>");
        EXPECT_EQ(WEXITSTATUS(terminal.wait()), 7);
        EXPECT_TRUE(isFolderEmpty());
    }
}

TEST_F(SimProgram, EndsWhereALineSaysSo) {
    SimProcess process;
    EXPECT_EQ(BusCaller(process.address()).control("quit"), "");
    EXPECT_EQ(process.wait(), 0);
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, TakesAnyFolderForTemporaryFiles) {
    const auto odd = folder_.path() / "a b;<&>'\"%20,=x";
    std::filesystem::create_directory(odd);
    const ScopedEnvironment temporary("TMPDIR", odd.string());
    const SimProcess process;
    EXPECT_EQ(BusCaller(process.address()).request(command("enable", "wlan0")).status(), 0);
}

TEST_F(SimProgram, IsReachedFromAnyFolderWhereTemporaryFilesAreInARelativeOne) {
    const auto result = runProgram(
        {"/bin/sh", "-c",
         "cd \"$1\" && TMPDIR=. exec \"$0\" --private -- sh -c 'cd / && \"$0\" --send show' \"$0\"",
         HALVANE_SIM, folder_.path().string()});
    EXPECT_EQ(result.errors, kNotice);
    EXPECT_THAT(result.output, StartsWith("wlan0: role AP, enabled, no BSS"));
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, NamesTheFolderThatHoldsNoTemporaryFiles) {
    const auto errorsIn = [](const std::string& folder) {
        const auto result =
            runProgram({"/usr/bin/env", "TMPDIR=" + folder, HALVANE_SIM, "--private"});
        EXPECT_EQ(result.status, 1);
        return result.errors;
    };
    const std::string missing = (folder_.path() / "missing").string();
    EXPECT_EQ(errorsIn(missing), "halvaned-sim: no folder can be made in " + missing +
                                     ": No such file or directory\n");
}

// A bus also starts in a folder whose name leaves no room for the name of a socket.
TEST_F(SimProgram, TakesFoldersOfAnyLength) {
    const std::string start = folder_.path().string() + '/';
    for (const std::size_t size : {kLongestFolder, kLongestFolder + 1, std::size_t{250}}) {
        if (size <= start.size() || size - start.size() > 255) continue;  // cannot be made here
        const std::string folder = start + std::string(size - start.size(), 'x');
        std::filesystem::create_directory(folder);
        const ScopedEnvironment temporary("TMPDIR", folder);
        const auto result =
            sim({"--private", "--", "sh", "-c",
                 "echo \"$DBUS_SYSTEM_BUS_ADDRESS\"; exec \"$0\" --send show", HALVANE_SIM});
        EXPECT_EQ(result.errors, kNotice);
        EXPECT_EQ(result.status, 0) << size;
        EXPECT_THAT(result.output, StartsWith(startOfAddress(folder)));
        EXPECT_THAT(result.output, HasSubstr("wlan0: role AP"));
        EXPECT_TRUE(std::filesystem::is_empty(folder));
        std::filesystem::remove(folder);
    }
}

TEST_F(SimProgram, RunsACommandOnItsBus) {
    const auto result = sim({"--private", "--", HALVANE_SIM, "--send", "show"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, kNotice);
    EXPECT_THAT(result.output, StartsWith("wlan0: role AP, enabled, no BSS"));
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, EndsAsItsCommandDoes) {
    EXPECT_EQ(sim({"--private", "--", "sh", "-c", "exit 7"}).status, 7);
    EXPECT_EQ(sim({"--private", "sh", "-c", "kill -KILL $$"}).status, 128 + SIGKILL);
    // Every user may look in these folders.
    const ScopedEnvironment path("PATH", "/usr/bin:/bin");
    const auto missing = sim({"--private", "--", "halvane-is-no-such-program"});
    EXPECT_EQ(missing.status, 127);
    EXPECT_EQ(missing.errors, std::string(kNotice) +
                                  "halvaned-sim: halvane-is-no-such-program: "
                                  "No such file or directory\n");
    EXPECT_EQ(sim({"--private", "--", folder_.path().string()}).status, 126);
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, LeavesTheCommandsSignalsAsTheyWere) {
    const auto result = sim({"--private", "--", "sh", "-c", "kill -TERM $$; exit 0"});
    EXPECT_EQ(result.status, 128 + SIGTERM);
}

TEST_F(SimProgram, EndsItsCommandWhenItIsStopped) {
    // The pipe stays open while the command or the simulation runs.
    SimProcess process({"--private", "--", "sh", "-c",
                        "echo $DBUS_SYSTEM_BUS_ADDRESS; echo ready; exec tail -f /dev/null"});
    ASSERT_EQ(process.lines().size(), 2u);
    EXPECT_EQ(process.stop(SIGTERM), 128 + SIGTERM);
    EXPECT_EQ(process.readLine(), "");
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, FollowsLinesBeforeItIsReady) {
    const SimProcess process({"--private", "--control", "start wlan0", "--control=status enable 5",
                              "--control", "show"});
    EXPECT_THAT(process.lines(),
                ElementsAre(StartsWith("wlan0: role AP, enabled, BSS up"), StartsWith("wlan1: "),
                            "subscribers:\n", "enable: status 5\n", StartsWith("# "),
                            StartsWith("export "), "ready\n"));
    EXPECT_EQ(BusCaller(process.address()).request(command("enable", "wlan0")).status(), 5);
    const auto refused = sim({"--private", "--control", "start wlan7"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "halvaned-sim: start wlan7: there is no such interface\n");
    EXPECT_EQ(sim({"--private", "--control", "quit"}).status, 0);
}

TEST_F(SimProgram, SendsLinesToARunningSimulation) {
    const SimProcess process;
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", process.address());
    const auto done = sim({"--send", "silent enable", "--send", "show"});
    EXPECT_EQ(done.status, 0);
    EXPECT_EQ(done.errors, "");
    EXPECT_THAT(done.output, HasSubstr("\nenable: silent\n"));
    const auto refused = sim({"--send=start wlan7", "--send=show"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.output, "");
    EXPECT_EQ(refused.errors, "halvaned-sim: start wlan7: there is no such interface\n");
}

TEST_F(SimProgram, JoinsTheSystemBus) {
    const PrivateBus bus;
    SimProcess process((Words()));
    EXPECT_EQ(process.lines().size(), 2u);
    EXPECT_EQ(BusCaller(bus.address()).request(command("enable", "wlan0")).status(), 0);
    EXPECT_EQ(process.stop(SIGTERM), 0);
    EXPECT_EQ(BusCaller(bus.address()).ownerOf(kName), "");
}

// The policy of the bus from docs/halvaned-sim.md.
constexpr const char kControlPolicy[] =
    "  <policy user=\"root\">\n"
    "    <allow own=\"org.halvane.halvaned.Simulation\"/>\n"
    "    <allow send_destination=\"org.halvane.halvaned.Simulation\"/>\n"
    "  </policy>\n";

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST_F(SimProgram, IsControlledOnASystemBusOnceThatAllowsIt) {
    if (::geteuid() != 0) GTEST_SKIP() << "there is no daemon but root's";
    const std::string shipped = HALVANE_DATA "/org.halvane.halvaned.conf";
    const Words script = {"--control", "silent enable", "--", HALVANE_SIM, "--send", "show"};
    {
        const PrivateBus bus({.policyFile = shipped, .isStrict = true});
        const auto refused = sim(script);
        EXPECT_EQ(refused.status, 1);
        EXPECT_THAT(refused.errors, HasSubstr("halvaned-sim: the bus lets nobody control the "
                                              "simulation\n"));
    }
    const std::string policy =
        folder_.write("policy.conf", bytesOf("<busconfig>\n  <include>" + shipped + "</include>\n" +
                                             kControlPolicy + "</busconfig>\n"));
    const PrivateBus bus({.policyFile = policy, .isStrict = true});
    const auto done = sim(script);
    EXPECT_EQ(done.status, 0);
    EXPECT_THAT(done.output, HasSubstr("\nenable: silent\n"));
}

TEST_F(SimProgram, IsTheOnlyDaemonOfABus) {
    const PrivateBus bus;
    const SimProcess process((Words()));
    const auto second = sim({});
    EXPECT_EQ(second.status, 1);
    EXPECT_EQ(second.output, "");
    EXPECT_EQ(second.errors,
              "halvaned-sim: org.halvane.halvaned is there already: another daemon runs\n");
}

TEST_F(SimProgram, FailsWhereThereIsNoBus) {
    // The path is not below the temporary folder, which may be too long for a socket's name.
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/proc/none");
    for (const Words& words : {Words{}, Words{"--send", "show"}}) {
        const auto result = sim(words);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.errors, "halvaned-sim: joining the bus: No such file or directory\n");
    }
    const ScopedEnvironment path("PATH", folder_.path().string());
    EXPECT_EQ(sim({"--private"}).errors,
              "halvaned-sim: dbus-daemon does not start: is it installed?\n");
}

// A connection that waits for the name gets it as soon as the daemon leaves.
TEST_F(SimProgram, SaysThatItCameBackWithoutItsName) {
    const PrivateBus bus;
    RunningProgram process({HALVANE_SIM, "--control", "gone clientList"});
    while (process.outputLine() != "ready\n") {
    }
    BusCaller caller(bus.address());
    ASSERT_EQ(::sd_bus_request_name(caller.bus(), kName, SD_BUS_NAME_QUEUE), 0);
    EXPECT_EQ(caller.request(command("clientList")).error, "org.freedesktop.DBus.Error.NoReply");
    EXPECT_EQ(caller.ownerOf(kName), caller.name());
    caller.control("quit");  // followed once the daemon has come back
    EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(process.errorLine(),
              "halvaned-sim: the daemon came back without its name: org.halvane.halvaned is there "
              "already: another daemon runs\n");
    EXPECT_EQ(process.errorLine(), "");
}

TEST_F(SimProgram, EndsWhenTheBusIsGone) {
    PrivateBus bus;
    SimProcess process((Words()));
    bus.kill();
    EXPECT_EQ(process.wait(), 1);
}

TEST_F(SimProgram, SimulatesWhatAFileSays) {
    const auto written = sim({"--print-state"});
    EXPECT_EQ(written.status, 0);
    std::string text = written.output;
    const auto place = text.find("<string>wlan1</string>");
    ASSERT_NE(place, text.npos);
    text.replace(place, 22, "<string>mine0</string>");
    for (auto at = text.find("<key>wlan1</key>"); at != text.npos;
         at = text.find("<key>wlan1</key>")) {
        text.replace(at, 16, "<key>mine0</key>");
    }
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    const std::string file = folder_.write("state.plist", bytes);
    EXPECT_EQ(sim({"--print-state", "--state", file}).output, text);
    const SimProcess process({"--private", "--state", file, "--control", "show"});
    EXPECT_THAT(process.lines()[1], StartsWith("mine0: role STA"));
}

TEST_F(SimProgram, SaysWhatIsWrongWithAFile) {
    const std::vector<std::uint8_t> bytes = {'<', 'x', '>'};
    const std::string bad = folder_.write("bad.plist", bytes);
    const auto refused = sim({"--private", "--state", bad});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors,
                StartsWith("halvaned-sim: " + bad + ": byte 3: is not a property list: "));
    EXPECT_EQ(sim({"--private", "--state", bad + "x"}).errors,
              "halvaned-sim: " + bad + "x: No such file or directory\n");
    EXPECT_EQ(sim({"--private", "--state", folder_.path().string()}).errors,
              "halvaned-sim: " + folder_.path().string() + ": Is a directory\n");
    EXPECT_EQ(sim({"--private", "--state", "/dev/zero"}).errors,
              "halvaned-sim: /dev/zero: is longer than 67108864 bytes\n");
    EXPECT_EQ(runProgram({HALVANE_SIM, "--private", "--state", "-"}, "<x>").errors,
              "halvaned-sim: standard input: byte 3: is not a property list: element without an "
              "end\n");
}

TEST_F(SimProgram, ReadsAFileFromPipesAndStandardInput) {
    const std::string text = sim({"--print-state"}).output;
    const std::string file = folder_.write("state", bytesOf(text));
    const auto outputOf = [&](const char* script) {
        return runProgram({"/bin/sh", "-c", script, HALVANE_SIM, file}).output;
    };
    EXPECT_TRUE(outputOf(R"("$0" --print-state --state - <"$1")") == text);
    EXPECT_TRUE(outputOf(R"(cat "$1" | "$0" --print-state --state -)") == text);
    EXPECT_TRUE(outputOf(R"(cat "$1" | "$0" --print-state --state /dev/stdin)") == text);
    // A named pipe opens only when both ends are there.
    EXPECT_TRUE(outputOf(R"(mkfifo "$1".pipe; cat "$1" >"$1".pipe &
                            "$0" --print-state --state "$1".pipe)") == text);
}

TEST_F(SimProgram, RefusesOptionsThatDoNotGoTogether) {
    const Words wrong[] = {{"--bogus"},
                           {"--state"},
                           {"--send", "show", "--private"},
                           {"--send", "show", "--state", "x"},
                           {"--send", "show", "--print-state"},
                           {"--send", "show", "command"},
                           {"--print-state", "--private"},
                           {"--print-state", "command"}};
    for (const Words& words : wrong) {
        const auto result = sim(words);
        EXPECT_EQ(result.status, 2) << words.back();
        EXPECT_EQ(result.output, "");
        EXPECT_NE(result.errors, "");
    }
}

TEST_F(SimProgram, FailsWhereNobodyCanHearThatItIsReady) {
    const auto result =
        sim({"--private", "--", "sh", "-c", "\"$0\" --private >/dev/full", HALVANE_SIM});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors,
              std::string(kNotice) + "halvaned-sim: standard output: No space left on device\n");
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, RunsWithoutStandardFiles) {
    const auto result = runProgram(
        {"/bin/sh", "-c", "exec \"$0\" --private -- sh -c 'exit 3' <&- >&-", HALVANE_SIM});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.errors, kNotice);
    EXPECT_TRUE(isFolderEmpty());
}

TEST_F(SimProgram, ExplainsItself) {
    const auto help = sim({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output, "");
    EXPECT_THAT(help.errors, HasSubstr("Simulates the Wi-Fi daemon"));
    EXPECT_THAT(help.errors, HasSubstr("SIGTERM, SIGINT, SIGHUP or SIGQUIT"));
    EXPECT_THAT(help.errors, HasSubstr("128+N"));
    EXPECT_THAT(help.errors, HasSubstr("\nkick IF MAC [REASON] "));
    std::istringstream lines(help.errors);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
    const auto version = sim({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_THAT(version.output,
                StartsWith(std::string("halvaned-sim version ") + HALVANE_VERSION + " ("));
}

}  // namespace
