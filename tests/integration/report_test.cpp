// `halvane report`, as users run it. What the page holds is tested where it is made, and in a
// browser by report_in_browser.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tests/support/capture_bytes.h"
#include "tests/support/golden_file.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/terminal_program.h"

using halvane::testing::append;
using halvane::testing::appendNumber;
using halvane::testing::Bytes;
using halvane::testing::contentsOf;
using halvane::testing::expectGolden;
using halvane::testing::expectMessage;
using halvane::testing::Order;
using halvane::testing::PcapngBytes;
using halvane::testing::ProgramResult;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using halvane::testing::TerminalProgram;
using halvane::testing::toolWords;

namespace {

std::string sample(const char* name) {
    return (std::filesystem::path(HALVANE_SAMPLES) / name).string();
}

// --- Captures made of a sample ---

constexpr std::size_t kFileHeader = 24;  // octets of a pcap file
constexpr std::size_t kRadiotap = 16;    // octets of the samples' radio header
constexpr std::size_t kSignalAt = 14;    // of it: dBm
constexpr unsigned kBareFrames = 105;    // link types
constexpr unsigned kRadiotapFrames = 127;

struct Packet {
    std::uint64_t microseconds;
    Bytes octets;
};

// The packets of neighbourhood.pcap, each with a radio header.
std::vector<Packet> samplePackets() {
    const std::string file = contentsOf(sample("neighbourhood.pcap"));
    const auto numberAt = [&](std::size_t place) {
        std::uint64_t number = 0;
        for (std::size_t i = 4; i-- > 0;) {
            number = number << 8 | static_cast<std::uint8_t>(file.at(place + i));
        }
        return number;
    };
    std::vector<Packet> packets;
    for (std::size_t place = kFileHeader; place < file.size();) {
        const std::string octets = file.substr(place + 16, numberAt(place + 8));
        packets.push_back({numberAt(place) * 1'000'000 + numberAt(place + 4),
                           Bytes(octets.begin(), octets.end())});
        place += 16 + octets.size();
    }
    return packets;
}

std::string textOf(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

std::string packetText(const Packet& packet) {
    Bytes bytes;
    for (const std::uint64_t number :
         {packet.microseconds / 1'000'000, packet.microseconds % 1'000'000,
          std::uint64_t{packet.octets.size()}, std::uint64_t{packet.octets.size()}}) {
        appendNumber(bytes, number, 4, Order::Little);
    }
    append(bytes, packet.octets);
    return textOf(bytes);
}

std::string pcapOf(const std::vector<Packet>& packets, unsigned linkType = kRadiotapFrames) {
    Bytes header = {0xD4, 0xC3, 0xB2, 0xA1, 2, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 0, 0};
    appendNumber(header, linkType, 4, Order::Little);
    std::string text = textOf(header);
    for (const Packet& packet : packets) text += packetText(packet);
    return text;
}

std::vector<Packet> withoutRadioHeaders(std::vector<Packet> packets) {
    for (Packet& packet : packets) {
        packet.octets.erase(packet.octets.begin(), packet.octets.begin() + kRadiotap);
    }
    return packets;
}

// A walk away from the networks: their frames again and again, each time 4 s later and 2 dB weaker.
std::vector<Packet> walk() {
    std::vector<Packet> packets;
    for (unsigned round = 0; round < 9; ++round) {
        for (Packet packet : samplePackets()) {
            packet.microseconds += round * 4'000'000;
            std::uint8_t& signal = packet.octets.at(kSignalAt);
            signal = static_cast<std::uint8_t>(signal - 2 * round);
            packets.push_back(std::move(packet));
        }
    }
    return packets;
}

// Packets in blocks that have no time.
std::string timelessPcapng(const std::vector<Packet>& packets) {
    PcapngBytes file;
    file.addInterface(PcapngBytes::kRadiotap);
    for (const Packet& packet : packets) file.addSimplePacket(packet.octets, packet.octets.size());
    return textOf(file.bytes());
}

// A named pipe into which packets go again and again, until that ends.
class EndlessPipe {
  public:
    EndlessPipe(const std::string& path, const std::vector<Packet>& packets)
        : header_(pcapOf({})), round_(pcapOf(packets).substr(kFileHeader)) {
        // Open in both directions, neither opening it nor the reader's end stops the writer.
        if (::mkfifo(path.c_str(), 0600) != 0 ||
            (pipe_ = ::open(path.c_str(), O_RDWR | O_CLOEXEC)) < 0) {
            throw std::system_error(errno, std::generic_category(), path);
        }
        thread_ = std::thread([this] { run(); });
    }
    EndlessPipe(const EndlessPipe&) = delete;
    EndlessPipe& operator=(const EndlessPipe&) = delete;
    ~EndlessPipe() { end(); }

    void end() {
        if (!thread_.joinable()) return;
        isOver_ = true;
        thread_.join();
        ::close(pipe_);
    }

  private:
    void run() {
        put(header_);
        while (!isOver_) {
            // With room, the pipe takes so few octets whole.
            pollfd room = {pipe_, POLLOUT, 0};
            if (::poll(&room, 1, 20) == 1) put(round_);
        }
    }
    void put(const std::string& text) const {
        [[maybe_unused]] const auto count = ::write(pipe_, text.data(), text.size());
    }

    const std::string header_;
    const std::string round_;
    int pipe_ = -1;
    std::atomic<bool> isOver_ = false;
    std::thread thread_;
};

// --- Pages ---

void cutOut(std::string& text, std::string_view start, std::string_view end) {
    const auto before = text.find(start);
    ASSERT_NE(before, text.npos) << start;
    const auto from = before + start.size();
    const auto to = text.find(end, from);
    ASSERT_NE(to, text.npos) << start;
    text.erase(from, to - from);
}

// The page without style and script, which are files of their own, and with an element a line.
std::string structureOf(std::string page) {
    cutOut(page, "script-src 'sha256-", "'");
    cutOut(page, "style-src 'sha256-", "'");
    cutOut(page, "<style>", "</style>");
    cutOut(page, "<script>", "</script>");
    std::string lines;
    for (const char octet : page) {
        if (octet == '<' && lines.ends_with('>')) lines += '\n';
        lines += octet;
    }
    return lines;
}

ProgramResult report(std::vector<std::string> words) {
    words.insert(words.begin(), "report");
    return runTool(std::move(words));
}

class Report : public ::testing::Test {
  protected:
    std::string path(const char* name) const { return (folder_.path() / name).string(); }
    std::size_t fileCount() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder_.path()), {}));
    }

  private:
    const ScopedEnvironment makers_{"HALVANE_IEEE_DATA", "/nowhere"};
    TemporaryFolder folder_;
};

TEST_F(Report, WritesThePageAndSaysSo) {
    const auto result = report({sample("neighbourhood.pcap"), "-o", path("survey.html")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "");
    const std::string page = contentsOf(path("survey.html"));
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.ends_with("</html>\n"));
    const std::size_t size = (page.size() + 999) / 1000;
    EXPECT_EQ(result.errors,
              path("survey.html") + ": 8 networks, " + std::to_string(size) + " kB\n");
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(Report, IsTheSameOnStandardOutputAndWithAnyNumberOfJobs) {
    const std::vector<std::string> files = {sample("neighbourhood.pcap"), sample("today.pcap"),
                                            sample("damaged.pcap")};
    const auto run = [&](std::vector<std::string> words) {
        words.insert(words.end(), files.begin(), files.end());
        return report(std::move(words)).output;
    };
    const std::string page = run({"--jobs=1"});
    EXPECT_TRUE(page.ends_with("</html>\n"));
    EXPECT_EQ(run({"--jobs=4"}), page);
    EXPECT_EQ(run({"-o", "-"}), page);
}

TEST_F(Report, OverwritesOnlyIfAskedTo) {
    std::ofstream(path("survey.html")) << "mine";
    const auto kept = report({sample("today.pcap"), "-o", path("survey.html")});
    expectMessage(kept, 1,
                  "halvane: " + path("survey.html") + ": File exists (--force overwrites it)\n");
    EXPECT_EQ(contentsOf(path("survey.html")), "mine");
    EXPECT_EQ(report({sample("today.pcap"), "-o", path("survey.html"), "--force"}).status, 0);
    EXPECT_TRUE(contentsOf(path("survey.html")).starts_with("<!DOCTYPE html>"));
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(Report, TellsWhatItCannotWrite) {
    const auto none = report({sample("today.pcap"), "-o", path("none/survey.html")});
    expectMessage(none, 1,
                  "halvane: " + path("none/survey.html") + ": No such file or directory\n");
    const auto full = report({sample("today.pcap"), "-o", "/dev/full"});
    expectMessage(full, 1, "halvane: /dev/full: No space left on device\n");
}

TEST_F(Report, IsNothingForATerminal) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    TerminalProgram tool(toolWords({"report", sample("today.pcap")}));
    tool.waitFor("name a file with -o FILE");
    EXPECT_EQ(WEXITSTATUS(tool.wait()), 2);
    EXPECT_EQ(tool.screen().find("<!DOCTYPE"), std::string::npos);
}

TEST_F(Report, TellsACaptureThatIsCut) {
    const std::string whole = contentsOf(sample("neighbourhood.pcap"));
    std::ofstream(path("cut.pcap"), std::ios::binary) << whole.substr(0, whole.size() - 5);
    const auto result = report({path("cut.pcap"), "-o", path("survey.html")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("cut.pcap"), std::string::npos);
    EXPECT_NE(contentsOf(path("survey.html")).find("not read to its end"), std::string::npos);
}

TEST_F(Report, MakesAnEmptyPageOfAFilterThatLetsNothingThrough) {
    const auto result = report({sample("today.pcap"), "--ssid=nobody", "-o", path("survey.html")});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.errors.find("passes the filter\n"), std::string::npos) << result.errors;
    EXPECT_NE(contentsOf(path("survey.html")).find("0 networks in 1 capture"), std::string::npos);
}

// A page with every part is kept in a file, so that it changes on purpose only.
TEST_F(Report, MakesThePageAsEverBefore) {
    std::ofstream(path("walk.pcap"), std::ios::binary) << pcapOf(walk());
    const auto result = report(
        {"--own=Maple*", "--details=own", sample("today.pcap"), path("walk.pcap"), "-o", "-"});
    EXPECT_EQ(result.status, 0);
    expectGolden(structureOf(result.output), std::filesystem::path(HALVANE_GOLDEN) / "report.html");
}

TEST_F(Report, MakesAPageOfCapturesThatTellLittle) {
    struct Row {
        const char* name;
        std::string capture;
        std::vector<const char*> texts;
    };
    const auto packets = samplePackets();
    for (const Row& row : {
             Row{"empty.pcap", pcapOf({}), {"0 networks in 1 capture", "No network was heard: "}},
             Row{"data.pcap",
                 pcapOf({packets[4], packets[5]}),
                 {"0 networks in 1 capture", "2 frames, of them 0 beacons",
                  "No network was heard: "}},
             Row{"bare.pcap",
                 pcapOf(withoutRadioHeaders(packets), kBareFrames),
                 {"8 networks in 1 capture", "The signal of no radio is told.",
                  "The captures tell no signals."}},
             Row{"one.pcap",
                 pcapOf({packets[0]}),
                 {"1 network in 1 capture", "1 frame, of them 1 beacon and", "1 radio, 1 network",
                  "No network was measured 8 times or more."}},
             Row{"timeless.pcapng",
                 timelessPcapng(walk()),
                 {"8 networks in 1 capture", "<p class=\"lede\">108 frames",
                  "The captures tell no times."}},
             Row{"moment.pcap",
                 pcapOf(std::vector<Packet>(8, packets[0])),
                 {"1 network in 1 capture", "less than 1 s", "8 times"}},
         }) {
        SCOPED_TRACE(row.name);
        std::ofstream(path(row.name), std::ios::binary) << row.capture;
        const auto result = report({path(row.name)});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.errors, "");
        const std::string page = structureOf(result.output);
        for (const char* const text : row.texts) EXPECT_NE(page.find(text), page.npos) << text;
        for (const char* const number : {"\"nan", "\"-nan", "\"inf", "\"-inf", ">nan", ">inf"}) {
            EXPECT_EQ(page.find(number), page.npos) << number;
        }
    }
}

TEST_F(Report, ReadsFilesOfSeveralKindsTogether) {
    std::ofstream(path("walk.pcapng"), std::ios::binary) << timelessPcapng(walk());
    std::ofstream(path("empty.pcap"), std::ios::binary) << pcapOf({});
    const auto result =
        report({path("walk.pcapng"), sample("country.pcapng"), sample("security.pcap"),
                sample("setup.pcap"), path("empty.pcap"), "-o", path("survey.html")});
    EXPECT_EQ(result.status, 0);
    const std::string page = contentsOf(path("survey.html"));
    EXPECT_NE(page.find(" networks in 5 captures"), page.npos);
    for (const char* const name :
         {"walk.pcapng", "country.pcapng", "security.pcap", "empty.pcap"}) {
        EXPECT_NE(page.find("<bdi>" + std::string(name) + "</bdi>"), page.npos) << name;
    }
}

// As many networks as are told to, each heard once; the last one is the weakest.
std::vector<Packet> flood(std::uint64_t networks) {
    constexpr std::size_t kAddress = kRadiotap + 10;  // the sender's, and then the BSSID
    std::vector<Packet> packets(networks, samplePackets().at(1));
    for (std::uint64_t i = 0; i < networks; ++i) {
        Bytes address = {0x02, 0x1A};
        for (int shift = 24; shift >= 0; shift -= 8) {
            address.push_back(static_cast<std::uint8_t>(i >> shift));
        }
        Bytes& octets = packets[i].octets;
        for (std::size_t j = 0; j < 2 * address.size(); ++j) {
            octets.at(kAddress + j) = address[j % address.size()];
        }
    }
    packets.back().octets.at(kSignalAt) = static_cast<std::uint8_t>(-99);
    return packets;
}

TEST_F(Report, StaysSmallInAFloodAndKeepsTheOwnNetwork) {
    std::ofstream(path("flood.pcap"), std::ios::binary) << pcapOf(flood(8000));
    const auto result = report({"--own=02:1A:00:00:1F:3F", path("flood.pcap")});
    EXPECT_EQ(result.status, 0);
    const std::string& page = result.output;
    EXPECT_LT(page.size(), 11'000'000u);
    std::size_t rows = 0;
    for (auto at = page.find("<tbody id="); at != page.npos; at = page.find("<tbody id=", at + 1)) {
        ++rows;
    }
    EXPECT_EQ(rows, 1500u);
    EXPECT_NE(page.find("<tbody id=\"n-021a00001f3f\""), page.npos);
    EXPECT_NE(page.find("500 weaker ones are counted above and left out here"), page.npos);
}

// What takes the line of the progress away.
constexpr std::string_view kErased = "\r\x1B[K";

TEST_F(Report, ShowsHowFarItHasComeAndThenTakesThatAway) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const ScopedEnvironment terminal("TERM", "xterm");
    EndlessPipe pipe(path("walk.fifo"), samplePackets());
    TerminalProgram tool(toolWords({"report", path("walk.fifo"), "-o", path("survey.html")}));
    tool.waitFor(std::string(kErased) + "walk.fifo  ");
    EXPECT_FALSE(std::filesystem::exists(path("survey.html")));
    pipe.end();
    const std::string before = tool.waitFor(path("survey.html") + ": 8 networks, ");
    EXPECT_TRUE(before.ends_with(kErased)) << before;
    EXPECT_EQ(WEXITSTATUS(tool.wait()), 0);
    EXPECT_EQ(tool.screen().find(kErased), std::string::npos);
    EXPECT_EQ(fileCount(), 2u);
}

TEST_F(Report, LeavesNothingBehindIfItIsInterrupted) {
    HALVANE_SKIP_WITHOUT_TERMINALS();
    const ScopedEnvironment terminal("TERM", "xterm");
    EndlessPipe pipe(path("walk.fifo"), samplePackets());
    TerminalProgram tool(toolWords({"report", path("walk.fifo"), "-o", path("survey.html")}));
    tool.waitFor(std::string(kErased) + "walk.fifo  ");
    ::kill(tool.process(), SIGINT);
    const int status = tool.wait();
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    const std::string screen = tool.screen();
    EXPECT_TRUE(screen.ends_with(kErased)) << screen;
    EXPECT_EQ(fileCount(), 1u);
}

TEST_F(Report, RefusesBadUsage) {
    EXPECT_EQ(report({}).status, 2);
    EXPECT_EQ(report({sample("today.pcap"), "--details=some"}).status, 2);
}

}  // namespace
