// `halvane watch` on interfaces of a private network that hear what a test writes.
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <utility>
#include <vector>

#include "tests/support/capture_bytes.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/private_network.h"
#include "tests/support/run_tool.h"
#include "tests/support/running_program.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_program.h"

using halvane::testing::append;
using halvane::testing::beaconFrame;
using halvane::testing::Bytes;
using halvane::testing::HeardInterface;
using halvane::testing::inPrivateNetwork;
using halvane::testing::RunningProgram;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using halvane::testing::TerminalProgram;
using halvane::testing::toolWords;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

// An interface that hears 802.11 and is up.
struct Monitor : HeardInterface {
    Monitor() : HeardInterface("mon0") { setUp(true); }

    // A beacon of 02:00:00:00:00:<last> on channel 1, with a signal of dBm.
    void hearBeacon(std::uint8_t last, int signal) {
        Bytes packet = {0x00, 0x00, 0x0D, 0x00, 0x28, 0x00, 0x00, 0x00, 0x6C, 0x09, 0x80, 0x00};
        packet.push_back(static_cast<std::uint8_t>(signal));
        append(packet, beaconFrame(last));
        hear(packet);
    }
};

class WatchTool : public ::testing::Test {
  protected:
    static std::vector<std::string> watch(std::vector<std::string> words) {
        words.insert(words.begin(), "watch");
        return toolWords(std::move(words));
    }

  private:
    const ScopedEnvironment locale_{"LC_ALL", "C.UTF-8"};
    const ScopedEnvironment term_{"TERM", "xterm"};
    const ScopedEnvironment noColor_{"NO_COLOR", "1"};
    const ScopedEnvironment columns_{"COLUMNS", "80"};
    const ScopedEnvironment lines_{"LINES", "12"};
    const ScopedEnvironment makers_{"HALVANE_IEEE_DATA", "/nowhere"};
};

std::string restOf(const RunningProgram& program) {
    std::string text;
    for (std::string line; !(line = program.outputLine()).empty();) text += line;
    return text;
}

TEST_F(WatchTool, PrintsTheTableAtTheEndAndKeepsTheFrames) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "live.pcapng").string();
    inPrivateNetwork([&path] {
        Monitor monitor;
        RunningProgram program(watch({"--count=3", "--write", path, "mon0"}));
        EXPECT_EQ(program.errorLine(), "halvane: watch: listening to mon0; Control-C ends\n");
        monitor.hearBeacon(1, -80);
        monitor.hearBeacon(2, -40);
        monitor.hearBeacon(1, -80);
        const std::string table = restOf(program);
        EXPECT_EQ(program.errorLine(), "2 networks: 2 on 2.4 GHz\n");
        EXPECT_EQ(program.wait(), 0);
        EXPECT_THAT(table, HasSubstr("-40 "));
        EXPECT_LT(table.find("-40 "), table.find("-80 "));
        EXPECT_EQ(runTool({"decode", path}).output, table);
    });
}

TEST_F(WatchTool, StreamsRecordsOnceTheyAreHeard) {
    inPrivateNetwork([] {
        Monitor monitor;
        RunningProgram program(watch({"--format=jsonl", "mon0"}));
        EXPECT_THAT(program.errorLine(), StartsWith("halvane: watch: listening"));
        monitor.hearBeacon(1, -40);
        const json first = json::parse(program.outputLine());
        EXPECT_EQ(first["mac"], "02:00:00:00:00:01");
        EXPECT_EQ(first["RSSI"], -40);
        monitor.hearBeacon(1, -60);  // nothing that its record tells
        monitor.hearBeacon(2, -40);
        EXPECT_EQ(json::parse(program.outputLine())["mac"], "02:00:00:00:00:02");
        EXPECT_EQ(program.stop(SIGINT), 0);
        EXPECT_EQ(program.outputLine(), "");
    });
}

TEST_F(WatchTool, EndsAfterItsTimeWithoutAnyFrame) {
    inPrivateNetwork([] {
        const Monitor monitor;
        const auto result = runTool({"watch", "--duration=0.02", "mon0"});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, HasSubstr("\nno networks\n0 frames\n"));
    });
}

TEST_F(WatchTool, DrawsAScreenAndGivesTheTerminalBack) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        Monitor monitor;
        TerminalProgram program(watch({"mon0"}));
        EXPECT_THAT(program.waitFor("\x1B[?1049h"), Not(HasSubstr("missing")));
        EXPECT_THAT(program.waitFor("\x1B[?1007h"), HasSubstr("\x1B[?1007s"));  // the wheel
        EXPECT_THAT(program.waitFor("mon0 "), Not(HasSubstr("missing")));
        EXPECT_FALSE(program.shows());
        monitor.hearBeacon(1, -40);
        EXPECT_THAT(program.waitFor("02:00:00:00:00:01"), HasSubstr("mon0  channel 1  "));
        program.type("q");
        EXPECT_THAT(program.waitFor("\x1B[?1049l"), HasSubstr("\x1B[?1007r"));
        EXPECT_EQ(program.wait(), 0);
        EXPECT_TRUE(program.shows());
        const std::string rest = program.screen();
        EXPECT_THAT(rest, HasSubstr("  a            -40 "));
        EXPECT_THAT(rest, HasSubstr("1 network: 1 on 2.4 GHz\r\n"));
    });
}

TEST_F(WatchTool, GivesTheTerminalBackAtSignals) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        const Monitor monitor;
        for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
            TerminalProgram program(watch({"mon0"}));
            program.waitFor(" q quit");
            ::kill(program.process(), signal);
            EXPECT_THAT(program.waitFor("\x1B[?1049l"), Not(HasSubstr("missing"))) << signal;
            EXPECT_EQ(program.wait(), 0) << signal;
            EXPECT_TRUE(program.shows()) << signal;
        }
    });
}

TEST_F(WatchTool, GivesTheTerminalBackWhileItIsStopped) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        const Monitor monitor;
        TerminalProgram program(watch({"mon0"}));
        program.waitFor(" q quit");
        program.type("\x1A");
        EXPECT_THAT(program.waitFor("\x1B[?1049l"), Not(HasSubstr("missing")));
        int status = 0;
        EXPECT_EQ(::waitpid(program.process(), &status, WUNTRACED), program.process());
        EXPECT_TRUE(WIFSTOPPED(status));
        EXPECT_TRUE(program.shows());
        ::kill(program.process(), SIGCONT);
        EXPECT_THAT(program.waitFor("\x1B[?1049h"), Not(HasSubstr("missing")));
        EXPECT_THAT(program.waitFor(" q quit"), HasSubstr("mon0 "));
        program.type("q");
        EXPECT_EQ(program.wait(), 0);
    });
}

TEST_F(WatchTool, DrawsAnewWhenTheTerminalChanges) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const ScopedEnvironment columns("COLUMNS", std::nullopt);
    const ScopedEnvironment lines("LINES", std::nullopt);
    inPrivateNetwork([] {
        const Monitor monitor;
        TerminalProgram program(watch({"mon0"}));
        program.waitFor("\x1B[?1049h");
        program.resize(24, 120);
        EXPECT_THAT(program.waitFor("   Enter one network   ? keys"), HasSubstr("\x1B[24;1H"));
        program.resize(12, 40);
        EXPECT_THAT(program.waitFor(" q quit  / filter  s sort  ? keys"), HasSubstr("\x1B[12;1H"));
        program.type("q");
        EXPECT_EQ(program.wait(), 0);
    });
}

// Each key is waited for, so that it is seen to have had its effect.
TEST_F(WatchTool, TakesKeys) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        Monitor monitor;
        TerminalProgram program(watch({"mon0"}));
        program.waitFor(" q quit");
        monitor.hearBeacon(1, -40);
        monitor.hearBeacon(2, -60);
        program.waitFor("02:00:00:00:00:02");
        program.type("s");
        EXPECT_THAT(program.waitFor("  s sort: band  "), Not(HasSubstr("missing")));
        program.type("b");
        EXPECT_THAT(program.waitFor("  b band: 2.4  "), Not(HasSubstr("missing")));
        program.type("g");
        EXPECT_THAT(program.waitFor("  g group: name  "), HasSubstr("BSS  AP"));
        program.type("gg?");
        EXPECT_THAT(program.waitFor(" any key goes back"), HasSubstr(" KEYS"));
        program.type("q");
        EXPECT_THAT(program.waitFor(" q quit"), HasSubstr("02:00:00:00:00:02"));
        program.type("\x1B[B\x1BOB");  // both forms of an arrow
        EXPECT_THAT(program.waitFor("  >a "), Not(HasSubstr("missing")));
        program.type("\r");
        EXPECT_THAT(program.waitFor("02:00:00:00:00:02  "), HasSubstr("a  "));
        EXPECT_THAT(program.waitFor(" dBm   best -60"), Not(HasSubstr("missing")));
        program.type("\x1B");
        EXPECT_THAT(program.waitFor("s sort: band"), HasSubstr("  >a "));
        program.type("q");
        EXPECT_EQ(program.wait(), 0);
        EXPECT_TRUE(program.shows());
    });
}

TEST_F(WatchTool, PrintsWhatTheTypedFilterLetsThrough) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        Monitor monitor;
        TerminalProgram program(watch({"mon0"}));
        program.waitFor(" q quit");
        monitor.hearBeacon(1, -40);
        monitor.hearBeacon(2, -60);
        program.waitFor("02:00:00:00:00:02");
        program.type("/q");
        EXPECT_THAT(program.waitFor(" /q_  Enter keeps"),
                    HasSubstr("no network of 2 passes the filter"));
        program.type(
            "\x7F"
            "02:00:00:00:00:02\r");
        EXPECT_THAT(program.waitFor("/ filter: 02:00:00:00"), HasSubstr("02:00:00:00:00:02"));
        program.type("q");
        program.waitFor("\x1B[?1049l");
        EXPECT_EQ(program.wait(), 0);
        const std::string rest = program.screen();
        EXPECT_THAT(rest, HasSubstr("1 of 2 networks: 1 on 2.4 GHz\r\n"));
        EXPECT_THAT(rest, Not(HasSubstr("-40 ")));
    });
}

TEST_F(WatchTool, BeginsWithOneNetworkWhereOneIsAskedFor) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        Monitor monitor;
        TerminalProgram program(watch({"--bssid=02:00:00:00:00:02", "mon0"}));
        EXPECT_THAT(program.waitFor("not heard yet"), HasSubstr("-  02:00:00:00:00:02"));
        monitor.hearBeacon(2, -60);
        EXPECT_THAT(program.waitFor("-60 dBm   best -60  (last 60 s)"), Not(HasSubstr("missing")));
        program.type("\x1B");
        EXPECT_THAT(program.waitFor(" q quit  / filter"), HasSubstr("  >a "));
        program.type("q");
        EXPECT_EQ(program.wait(), 0);
    });
}

TEST_F(WatchTool, TakesTheKeyboardAgainAfterAStopThatGaveNothingBack) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    inPrivateNetwork([] {
        const Monitor monitor;
        TerminalProgram program(watch({"mon0"}));
        program.waitFor(" q quit");
        ::kill(program.process(), SIGSTOP);
        int status = 0;
        EXPECT_EQ(::waitpid(program.process(), &status, WUNTRACED), program.process());
        program.showTyped();  // as a shell does
        ::kill(program.process(), SIGCONT);
        EXPECT_THAT(program.waitFor(" q quit"), HasSubstr("mon0 "));
        EXPECT_FALSE(program.shows());
        program.type("q");
        EXPECT_EQ(program.wait(), 0);
        EXPECT_TRUE(program.shows());
    });
}

TEST_F(WatchTool, EndsWithTheInterface) {
    inPrivateNetwork([] {
        Monitor monitor;
        RunningProgram program(watch({"--format=jsonl", "mon0"}));
        EXPECT_THAT(program.errorLine(), StartsWith("halvane: watch: listening"));
        monitor.hearBeacon(1, -40);
        EXPECT_THAT(program.outputLine(), HasSubstr("02:00:00:00:00:01"));
        monitor.remove();
        EXPECT_EQ(program.errorLine(), "1 network: 1 on 2.4 GHz\n");
        std::string errors;
        for (std::string line; !(line = program.errorLine()).empty();) errors += line;
        EXPECT_THAT(errors, HasSubstr("halvane: watch: mon0: "));
        EXPECT_EQ(program.wait(), 1);
    });
}

TEST_F(WatchTool, SaysWhatIsWrong) {
    const auto missing = runTool({"watch", "halvane-none"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.errors,
                StartsWith("halvane: watch: no interface 'halvane-none'\n  there "));
    EXPECT_EQ(runTool({"watch"}).status, 2);
    EXPECT_EQ(runTool({"watch", "a", "a"}).errors,
              "halvane: watch: interface 'a' is given twice\n");
    EXPECT_EQ(runTool({"watch", "--count=0", "a"}).errors,
              "halvane: watch: --count: '0' is not a number from 1 on\n");
    for (const std::string duration : {"0", "0.0", "0.0001", "-1", "1.", ".5", "1.5s", "1e3", ""}) {
        EXPECT_EQ(runTool({"watch", "--duration=" + duration, "a"}).errors,
                  "halvane: watch: --duration: '" + duration +
                      "' is not a number of seconds from 0.001 on\n");
    }
    EXPECT_EQ(runTool({"watch", "--write=-", "a"}).errors,
              "halvane: watch: --write: '-' is no file\n");
    EXPECT_EQ(runTool({"watch", "--write=", "a"}).errors,
              "halvane: watch: --write: '' is no file\n");
}

}  // namespace
