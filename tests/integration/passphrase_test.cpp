// The commands that take a passphrase, as their users run them.
#include <chrono>
#include <cinttypes>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/sanitizers.h"
#include "tests/support/spawn_program.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_program.h"

using halvane::testing::expectMessage;
using halvane::testing::runProgram;
using halvane::testing::runTool;
using halvane::testing::spawnProgram;
using halvane::testing::TerminalProgram;
using nlohmann::json;

namespace {

using Words = std::vector<std::string>;

constexpr char kIEEEKey[] = "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e";

// Waits until all that was written to a pipe has been read.
bool isTaken(int pipe) {
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(30);
    int left = 1;
    while (left > 0 && Clock::now() < end && ::ioctl(pipe, FIONREAD, &left) == 0) {
        std::this_thread::yield();
    }
    return left == 0;
}

TEST(PSK, IsPrintedAndNothingElse) {
    const auto result = runTool({"psk", "IEEE"}, "password\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, std::string(kIEEEKey) + "\n");
    EXPECT_EQ(runTool({"psk", "--ssid-hex", "49454545"}, "password\n").output, result.output);
    EXPECT_EQ(runTool({"psk", "ThisIsASSID"}, "ThisIsAPassword").output,
              "0dc0d6eb90555ed6419756b9a15ec3e3209b63df707dd508d14581f8982721af\n");
}

TEST(PSK, IsOfTheFirstLineOfStandardInput) {
    for (const char* input : {"password", "password\n", "password\r\n", "password\nmore\n"}) {
        EXPECT_EQ(runTool({"psk", "IEEE"}, input).output, std::string(kIEEEKey) + "\n") << input;
    }
    EXPECT_NE(runTool({"psk", "IEEE"}, " password\n").output, std::string(kIEEEKey) + "\n");
}

TEST(PSK, LeavesTheLinesBehindIt) {
    const auto result =
        runProgram({"/bin/sh", "-c", "\"$0\" psk IEEE; \"$0\" psk IEEE; cat", HALVANE_TOOL},
                   "password\npassword\nrest\n");
    EXPECT_EQ(result.output, std::string(kIEEEKey) + "\n" + kIEEEKey + "\nrest\n");
}

TEST(PSK, TellsWhyAPassphraseMakesNone) {
    const auto expectProblem = [](std::string_view input, const std::string& problem) {
        expectMessage(runTool({"psk", "IEEE"}, input), 1, "halvane: psk: " + problem + "\n");
    };
    expectProblem("", "no passphrase");
    expectProblem("\n", "no passphrase");
    expectProblem("\r\npassword\n", "no passphrase");
    expectProblem("passwor\n", "the passphrase is shorter than 8 characters");
    const std::string tooLong = "the passphrase is longer than 63 characters";
    for (const std::size_t size : {64u, 255u, 256u, 257u, 100000u}) {
        expectProblem(std::string(size, 'p') + "\n", tooLong);
    }
    for (const std::string& input :
         {std::string(32, 'p'), std::string("\xC3\xA4 has 32 octets, but 31 letters")}) {
        expectProblem(input + "\n", "no key is made of a passphrase of exactly 32 octets");
    }
    const std::string notPrintable = "the passphrase holds a character that is not printable ASCII";
    for (const std::string_view input :
         {std::string_view("p\xC3\xA4ssword"), std::string_view("pass\0word\n", 10),
          std::string_view("pass\tword"), std::string_view("password\r"),
          std::string_view("password\x7F\n")}) {
        expectProblem(input, notPrintable);
    }
    EXPECT_EQ(runTool({"psk", "IEEE"}, std::string(63, '~')).status, 0);
}

TEST(PSK, ReadsNoFurtherThanALineMayBe) {
    const auto result =
        runProgram({"/bin/sh", "-c", "timeout 30 \"$0\" psk IEEE < /dev/zero", HALVANE_TOOL});
    expectMessage(result, 1, "halvane: psk: the passphrase is longer than 63 characters\n");
}

// Both ends of the pipe are non-blocking, and the program reads before there is any input.
TEST(PSK, WaitsForAnInputThatDoesNotWaitByItself) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
    const halvane::testing::TemporaryFolder folder;
    const auto file = folder.path() / "key";
    const pid_t child =
        spawnProgram({HALVANE_TOOL, "psk", "IEEE"}, {.input = ends[0], .output = file});
    EXPECT_EQ(::write(ends[1], "pass", 4), 4);
    EXPECT_TRUE(isTaken(ends[1]));
    EXPECT_EQ(::write(ends[1], "word\n", 5), 5);
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    ::close(ends[0]);  // not before: a writer without a reader is ended
    ::close(ends[1]);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(halvane::testing::contentsOf(file), std::string(kIEEEKey) + "\n");
}

TEST(PSK, IsNotPrintedWhereItCannotBe) {
    const auto full =
        runProgram({"/bin/sh", "-c", "\"$0\" psk IEEE > /dev/full", HALVANE_TOOL}, "password\n");
    expectMessage(full, 1, "halvane: standard output: No space left on device\n");
}

TEST(PSK, RepeatsNothingThatStandsAtTheWrongPlace) {
    for (const Words& words :
         {Words{"psk", "IEEE", "sekret1234"}, Words{"psk", "--ssid-hex", "sekret1234"},
          Words{"psk", "--ssid-hex=sekret1234"}, Words{"psk", "--ssid-hex", "sekret1234", "IEEE"},
          Words{"psk", "sekret1234 sekret1234 sekret1234 x"}}) {
        const auto result = runTool(words, "password\n");
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ((result.output + result.errors).find("sekret"), std::string::npos)
            << result.errors;
    }
}

TEST(PSK, TellsThatStandardInputCannotBeRead) {
    const auto directory = runProgram({"/bin/sh", "-c", "\"$0\" psk IEEE < /", HALVANE_TOOL});
    expectMessage(directory, 1, "halvane: psk: standard input: Is a directory\n");
    const auto closed = runProgram({"/bin/sh", "-c", "\"$0\" psk IEEE <&-", HALVANE_TOOL});
    expectMessage(closed, 1, "halvane: psk: standard input: Bad file descriptor\n");
}

TEST(PSK, TakesOneSSIDAndNoPassphrase) {
    const std::string one = "halvane: psk: takes one SSID\n";
    expectMessage(runTool({"psk"}, "password\n"), 2, one);
    expectMessage(runTool({"psk", "IEEE", "password"}, "password\n"), 2, one);
    expectMessage(runTool({"psk", ""}, "password\n"), 2,
                  "halvane: psk: an SSID has 1 to 32 octets, not 0\n");
    expectMessage(runTool({"psk", std::string(33, 's')}, "password\n"), 2,
                  "halvane: psk: an SSID has 1 to 32 octets, not 33\n");
    expectMessage(runTool({"psk", "--ssid-hex", "xy"}, "password\n"), 2,
                  "halvane: psk: the SSID is not hexadecimal text\n");
    EXPECT_EQ(runTool({"psk", "--passphrase", "IEEE"}, "password\n").status, 2);
    EXPECT_EQ(runTool({"psk", "--", "-x"}, "password\n").status, 0);
}

// --- At a terminal ---

TEST(PassphrasePrompt, ShowsNothingOfWhatIsTyped) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
    EXPECT_EQ(program.waitFor("Passphrase: "), "");
    EXPECT_FALSE(program.shows());
    program.type("password\n");
    const int status = program.wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ(program.screen(), "\r\n" + std::string(kIEEEKey) + "\r\n");
    EXPECT_TRUE(program.shows());
}

TEST(PassphrasePrompt, IsOfTheTerminalAlsoWhereOutputIsNot) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const halvane::testing::TemporaryFolder folder;
    const std::string file = folder.path() / "key";
    TerminalProgram program({"/bin/sh", "-c", "exec \"$0\" psk IEEE >\"$1\"", HALVANE_TOOL, file});
    EXPECT_EQ(program.waitFor("Passphrase: "), "");
    program.type("password\n");
    program.wait();
    EXPECT_EQ(program.screen(), "\r\n");
    EXPECT_EQ(halvane::testing::contentsOf(file), std::string(kIEEEKey) + "\n");
}

TEST(PassphrasePrompt, TellsWhatIsWrongWithTheLine) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
    program.waitFor("Passphrase: ");
    program.type(std::string(300, 'p') + "\n");
    const int status = program.wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_EQ(program.screen(),
              "\r\nhalvane: psk: the passphrase is longer than 63 characters\r\n");
    EXPECT_TRUE(program.shows());
}

TEST(PassphrasePrompt, EndsWithTheInput) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
    program.waitFor("Passphrase: ");
    program.type("\x04");  // end of file
    const int status = program.wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << status;
    EXPECT_EQ(program.screen(), "halvane: psk: no passphrase\r\n");
}

TEST(PassphrasePrompt, LeavesTheTerminalAsItWasWhenASignalEndsIt) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) {
        TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
        program.waitFor("Passphrase: ");
        EXPECT_FALSE(program.shows());
        program.type("half a pass");
        ASSERT_EQ(::kill(program.process(), signal), 0);
        const int status = program.wait();
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_TRUE(program.shows()) << signal;
        EXPECT_EQ(program.screen(), "") << signal;
    }
}

TEST(PassphrasePrompt, IsEndedFromTheKeyboard) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
    program.waitFor("Passphrase: ");
    program.type("\x03");  // interrupt
    const int status = program.wait();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_TRUE(program.shows());
}

TEST(PassphrasePrompt, IsRepeatedWhereTheProgramGoesOnAfterASignal) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({"/bin/sh", "-c", "trap '' TERM; exec \"$0\" psk IEEE", HALVANE_TOOL});
    program.waitFor("Passphrase: ");
    program.type("half a pass");
    ASSERT_EQ(::kill(program.process(), SIGTERM), 0);
    EXPECT_EQ(program.waitFor("Passphrase: "), "");
    EXPECT_FALSE(program.shows());
    program.type("password\n");
    program.wait();
    EXPECT_EQ(program.screen(), "\r\n" + std::string(kIEEEKey) + "\r\n");
}

TEST(PassphrasePrompt, LeavesASignalThatWasBlockedToWhoBlockedIt) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    sigset_t interrupt;
    sigset_t before;
    ::sigemptyset(&interrupt);
    ::sigaddset(&interrupt, SIGINT);
    ::pthread_sigmask(SIG_BLOCK, &interrupt, &before);
    TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    program.waitFor("Passphrase: ");
    // With the signal, the terminal discards what was typed before it.
    program.type("wrong\x03password\n");
    EXPECT_EQ(program.waitFor(kIEEEKey), "\r\n");
    EXPECT_EQ(WEXITSTATUS(program.wait()), 0);
}

TEST(PassphrasePrompt, IsRepeatedAfterAStop) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({HALVANE_TOOL, "psk", "IEEE"});
    program.waitFor("Passphrase: ");
    ASSERT_EQ(::kill(program.process(), SIGTSTP), 0);
    // The system does not stop a process group that nobody could continue, so the prompt comes at
    // once.
    EXPECT_EQ(program.waitFor("Passphrase: "), "");
    program.type("password\n");
    const int status = program.wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

// A shell with job control, like an interactive one. The job prints its process number and is
// stopped. It continues after a line is typed.
TerminalProgram stoppableJob() {
    return TerminalProgram({"/bin/sh", "-c",
                            "set -m\n"
                            "sh -c 'echo pid $$; exec \"$0\" psk IEEE' \"$0\"\n"
                            "stty echo; echo stopped; read line; fg > /dev/null",
                            HALVANE_TOOL});
}

pid_t numberOfJob(TerminalProgram& program) {
    program.waitFor("pid ");
    return std::stoi(program.waitFor("\r\n"));
}

TEST(PassphrasePrompt, HidesAgainWhatIsTypedAfterAnyStop) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    for (const int signal : {SIGSTOP, SIGTSTP}) {
        TerminalProgram program = stoppableJob();
        const pid_t job = numberOfJob(program);
        program.waitFor("Passphrase: ");
        EXPECT_FALSE(program.shows());
        ASSERT_EQ(::kill(job, signal), 0);
        program.waitFor("stopped\r\n");
        EXPECT_TRUE(program.shows());
        program.type("\n");
        EXPECT_EQ(program.waitFor("Passphrase: "), "\r\n") << signal;
        EXPECT_FALSE(program.shows());
        program.type("password\n");
        EXPECT_EQ(program.waitFor(kIEEEKey), "\r\n");
        program.wait();
    }
}

// Whether the text is in the writable memory of a process. Absent if the test may not read that
// memory.
std::optional<bool> holds(pid_t process, std::string_view text) {
    const std::string folder = "/proc/" + std::to_string(process);
    std::ifstream memory(folder + "/mem", std::ios::binary);
    std::ifstream maps(folder + "/maps");
    if (!memory || !maps) return std::nullopt;
    bool isRead = false;
    for (std::string line; std::getline(maps, line);) {
        std::uintptr_t first = 0, end = 0;
        char mode[5] = {};
        if (std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR " %4s", &first, &end, mode) != 3) {
            continue;
        }
        if (std::string_view(mode) != "rw-p") continue;
        std::string part(end - first, '\0');
        memory.clear();
        memory.seekg(static_cast<std::streamoff>(first));
        if (!memory.read(part.data(), static_cast<std::streamsize>(part.size()))) continue;
        isRead = true;
        if (part.find(text) != part.npos) return true;
    }
    return isRead ? std::optional(false) : std::nullopt;
}

TEST(PassphrasePrompt, IsStoppedWithNothingOfWhatWasTyped) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    if (HALVANE_IS_SANITIZED) GTEST_SKIP() << "a sanitizer maps more memory than can be read";
    TerminalProgram program = stoppableJob();
    const pid_t job = numberOfJob(program);
    program.waitFor("Passphrase: ");
    program.type("half a pass\x04");  // end of file delivers the line so far
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(30);
    std::optional<bool> isThere = holds(job, "half a pass");
    while (isThere == false && Clock::now() < end) isThere = holds(job, "half a pass");
    if (!isThere) GTEST_SKIP() << "no look into other processes";
    EXPECT_EQ(isThere, true);
    ASSERT_EQ(::kill(job, SIGTSTP), 0);
    program.waitFor("stopped\r\n");
    EXPECT_EQ(holds(job, "half a pass"), false);
}

// --- Configurations ---

const Words kWPANetwork = {"config",          "--ssid=IEEE",    "--passphrase",
                           "--security=WPA2", "--unicast=CCMP", "--channel=36"};

Words with(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

TEST(Config, IsDescribed) {
    const auto result = runTool(kWPANetwork, "password\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output,
              "Preferred Order       : 0\n"
              "SSID                  : IEEE\n"
              "Passphrase            : 70617373776f7264  |  password\n"
              "Authentication        : Open \n"
              "Security              : WPA2 \n"
              "Unicast Ciphers       : CCMP \n"
              "Multicast Cipher      : CCMP \n"
              "Key Management        : PSK \n"
              "PHY Modes             : 802.11b 802.11g 802.11a 802.11n \n"
              "Channel               : 36\n"
              "Channel Width         : 0\n"
              "EAPOL Retry Count     : 3\n"
              "EAPOL Retry Interval  : 100\n"
              "EAPOL GTK Rotation    : 300\n");
}

TEST(Config, IsJSONOrAPropertyList) {
    const auto document = runTool(with(kWPANetwork, {"--key", "--format=json"}), "password\n");
    EXPECT_EQ(document.status, 0);
    const json object = json::parse(document.output);
    EXPECT_EQ(object["ssid"], "49454545");
    EXPECT_EQ(object["keyMaterial"], kIEEEKey);
    EXPECT_EQ(object["allowSecurityWPA2"], true);
    EXPECT_EQ(object["channel"], 36);
    const auto line = runTool(with(kWPANetwork, {"--key", "--format=jsonl"}), "password\n");
    EXPECT_EQ(json::parse(line.output), object);
    EXPECT_EQ(line.output.find('\n'), line.output.size() - 1);

    const auto list = runTool(with(kWPANetwork, {"--format=plist"}), "password\n");
    pugi::xml_document xml;
    ASSERT_TRUE(xml.load_string(list.output.c_str())) << list.output;
    const auto skeleton = xml.child("plist").child("dict");
    EXPECT_STREQ(skeleton.child("key").text().get(), "SSID");
    EXPECT_NE(std::string(skeleton.child("data").text().get()).find("SUVFRQ=="), std::string::npos);
}

TEST(Config, NeedsNoInputWithoutAPassphrase) {
    const auto result = runTool({"config", "--format=jsonl"});
    EXPECT_EQ(result.status, 0);
    EXPECT_FALSE(json::parse(result.output).contains("passphrase"));
}

TEST(Config, TellsWhatIsWrongWithThePassphrase) {
    expectMessage(runTool(kWPANetwork, ""), 1, "halvane: config: no passphrase\n");
    expectMessage(runTool(kWPANetwork, std::string(64, 'p')), 1,
                  "halvane: config: the passphrase is longer than 63 characters\n");
    expectMessage(runTool(kWPANetwork, std::string_view("pass\0word\n", 10)), 1,
                  "halvane: config: the passphrase holds a character that is not printable "
                  "ASCII\n");
    expectMessage(runTool(with(kWPANetwork, {"--key"}), "pass\tword"), 1,
                  "halvane: config: the passphrase holds a character that is not printable "
                  "ASCII\n");
    expectMessage(runTool(kWPANetwork, "\xFFpassword"), 1,
                  "halvane: config: the passphrase is not UTF-8 text\n");
    EXPECT_EQ(runTool(kWPANetwork, "short").status, 0) << "only a key asks for eight characters";
    const Words withKey = with(kWPANetwork, {"--key"});
    expectMessage(runTool(withKey, "short"), 1,
                  "halvane: config: the passphrase is shorter than 8 characters\n");
    expectMessage(runTool(withKey, std::string(32, 'p')), 1,
                  "halvane: config: no key is made of a passphrase of exactly 32 octets\n");
}

TEST(Config, RefusesWhatItCannotFollow) {
    expectMessage(runTool({"config", "--passphrase", "secret"}, "password\n"), 2,
                  "halvane: config: takes options only\n");
    expectMessage(runTool({"config", "--security=WPA3"}), 2,
                  "halvane: config: --security: 'WPA3' is not one of Open, WEP, WPA, WPA2, WPS\n");
    expectMessage(runTool({"config", "--format=xml"}), 2,
                  "halvane: config: --format: 'xml' is not text, json, jsonl or plist\n");
}

TEST(Config, AsksForThePassphraseAtATerminal) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram program({HALVANE_TOOL, "config", "--ssid=IEEE", "--passphrase"});
    EXPECT_EQ(program.waitFor("Passphrase: "), "");
    program.type("password\n");
    program.waitFor("70617373776f7264  |  password");
    const int status = program.wait();
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
}

}  // namespace
