// The tables of `halvane decode`, as users see them.
#include <cstddef>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/golden_file.h"
#include "tests/support/run_program.h"
#include "tests/support/run_tool.h"
#include "tests/support/scoped_environment.h"

using halvane::testing::expectGolden;
using halvane::testing::ProgramResult;
using halvane::testing::runTool;
using halvane::testing::ScopedEnvironment;

namespace {

const std::filesystem::path kSamples = HALVANE_SAMPLES;
const std::filesystem::path kGolden = HALVANE_GOLDEN;
const std::filesystem::path kCaptures = HALVANE_CAPTURES;

std::string sample(const char* name) {
    return (kSamples / name).string();
}

ProgramResult decode(std::vector<std::string> words) {
    words.insert(words.begin(), "decode");
    return runTool(std::move(words));
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// Locale, wishes and the register of makers are the same on every system.
class DecodeTable : public ::testing::Test {
  private:
    const ScopedEnvironment locale_{"LC_ALL", "C.UTF-8"};
    const ScopedEnvironment term_{"TERM", "xterm-256color"};
    const ScopedEnvironment colorTerm_{"COLORTERM", std::nullopt};
    const ScopedEnvironment noColor_{"NO_COLOR", std::nullopt};
    const ScopedEnvironment makers_{"HALVANE_IEEE_DATA", "/nowhere"};
};

TEST_F(DecodeTable, IsHeldAsFiles) {
    const std::pair<const char*, std::vector<std::string>> screens[] = {
        {"table-40.screen", {"--width=40"}},
        {"table-60.screen", {"--width=60"}},
        {"table-80.screen", {"--width=80"}},
        {"table-120.screen", {"--width=120"}},
        {"table-160.screen", {"--width=160"}},
        {"table-colored.screen", {"--width=80", "--color=always"}},
        {"table-wide.screen", {"--wide"}},
        {"table-sorted.screen", {"--width=80", "--sort=band,-channel,ssid", "--limit=6"}},
        {"table-by-name.screen", {"--width=80", "--group=ssid"}},
        {"table-by-radio.screen", {"--width=80", "--group=radio", "-v"}},
        {"table.csv", {"--format=csv"}},
    };
    for (const auto& [name, options] : screens) {
        std::vector<std::string> words = options;
        for (const char* const file : {"neighbourhood.pcap", "today.pcap", "shared-beacon.pcap"}) {
            words.push_back(sample(file));
        }
        const auto result = decode(words);
        EXPECT_EQ(result.status, 0);
        expectGolden(result.output + result.errors, kGolden / name);
    }
}

TEST_F(DecodeTable, NeitherCutsNorDropsInAPipe) {
    const auto lines = linesOf(decode({sample("today.pcap")}).output);
    ASSERT_FALSE(lines.empty());
    EXPECT_NE(lines[0].find("BEACONS"), std::string::npos) << lines[0];
    EXPECT_EQ(lines[0].find("FINDINGS"), std::string::npos) << lines[0];
}

TEST_F(DecodeTable, HasTheSameTextWithAndWithoutColours) {
    const auto plain = decode({"--width=80", sample("security.pcap")});
    auto coloured = decode({"--width=80", "--color=always", sample("security.pcap")}).output;
    EXPECT_NE(coloured, plain.output);
    coloured = std::regex_replace(coloured, std::regex("\x1B\\[[0-9;]*m"), "");
    EXPECT_EQ(coloured, plain.output);
}

TEST_F(DecodeTable, IsTheSameWithAnyNumberOfJobs) {
    const std::vector<std::string> files = {sample("neighbourhood.pcap"), sample("today.pcap"),
                                            sample("damaged.pcap"), sample("security.pcap")};
    const auto run = [&](const char* jobs, const char* format) {
        std::vector<std::string> words = files;
        words.insert(words.begin(), {jobs, format});
        const auto result = decode(words);
        return result.output + result.errors;
    };
    for (const char* const format : {"--format=table", "--format=json", "--format=csv"}) {
        EXPECT_EQ(run("--jobs=4", format), run("--jobs=1", format)) << format;
    }
}

TEST_F(DecodeTable, CountsNetworksThatAFilterLeaves) {
    const auto some = decode({"--width=80", "--band=5", sample("neighbourhood.pcap")});
    EXPECT_EQ(linesOf(some.output).size(), 3u) << some.output;
    EXPECT_EQ(linesOf(some.errors)[0], "2 of 8 networks: 2 on 5 GHz");

    const auto none =
        decode({"--band=6", "--ssid=Maple*", "--format=json", sample("neighbourhood.pcap")});
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.output, "[]\n");
    EXPECT_EQ(none.errors,
              "no network of 8 passes the filter\n"
              "  --ssid='Maple*' alone lets 1 through\n"
              "  --band=6        alone lets none through\n");
}

TEST_F(DecodeTable, SaysNothingWhereItIsQuiet) {
    EXPECT_EQ(decode({"--quiet", sample("neighbourhood.pcap")}).errors, "");
}

TEST_F(DecodeTable, ListsItsColumns) {
    const auto result = decode({"--columns=help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find("ssid        the name, or that of the mesh\n"), std::string::npos)
        << result.output;
}

TEST_F(DecodeTable, ReadsFolders) {
    const auto result = decode({"--format=json", kSamples.string()});
    EXPECT_EQ(result.errors.find("cannot"), std::string::npos) << result.errors;
    EXPECT_NE(result.output.find("Cedar Office"), std::string::npos);
}

// Every line fits, and no network is lost.
TEST_F(DecodeTable, FitsEveryWidth) {
    if (!std::filesystem::exists(kCaptures)) GTEST_SKIP() << "no captures beside the project";
    const auto file = (kCaptures / "airodump-80211-sample3.pcap").string();
    for (std::size_t width = 40; width <= 240; ++width) {
        const auto result = decode({"--ascii", "--width=" + std::to_string(width), file});
        const auto lines = linesOf(result.output);
        EXPECT_EQ(lines.size(), 19u) << width;
        for (const std::string& line : lines) EXPECT_LE(line.size(), width) << line;
    }
}

}  // namespace
