// What `decode --explain` prints for one network, several, and none.
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <regex>
#include <stdio.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/support/captured_stream.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/decode_options.h"

using halvane::testing::CapturedStream;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TemporaryFolder;
using halvane::testing::ToolCommandLine;
using namespace halvane::tool;

namespace {

struct Ran {
    int status = -1;
    std::string output;
    std::string errors;
};

Ran explain(std::vector<std::string> words) {
    words.insert(words.begin(), "--explain");
    const ScopedEnvironment columns("COLUMNS", std::nullopt);
    ToolCommandLine line(std::move(words));
    const CapturedStream output(stdout);
    const CapturedStream errors(stderr);
    if (!line.parse(decodeOptions())) return {};
    const int status = decodeCommand();
    return {status, output.text(), errors.text()};
}

const std::string kNeighbourhood = HALVANE_SAMPLES "/neighbourhood.pcap";

// "name  address  ..." and the line below it, with which each network begins.
std::size_t networksIn(const std::string& text) {
    const std::regex head("(^|\n)[^\n]+  ([0-9A-F]{2}:){5}[0-9A-F]{2}[^\n]*\n[^\n]+ of elements");
    return static_cast<std::size_t>(std::distance(
        std::sregex_iterator(text.begin(), text.end(), head), std::sregex_iterator()));
}

TEST(DecodeCommand, ExplainsEachNetwork) {
    const Ran ran = explain({kNeighbourhood});
    EXPECT_EQ(ran.status, kExitDone);
    EXPECT_GT(networksIn(ran.output), 3u) << ran.output;
    EXPECT_FALSE(ran.output.starts_with('\n'));
    EXPECT_EQ(ran.output.find("\n\n\n"), std::string::npos);
}

TEST(DecodeCommand, ExplainsTheNetworkOfOneAddress) {
    const std::string all = explain({kNeighbourhood}).output;
    std::smatch address;
    ASSERT_TRUE(std::regex_search(all, address, std::regex("([0-9A-F]{2}:){5}[0-9A-F]{2}")));
    const Ran one = explain({"--bssid=" + address.str(), kNeighbourhood});
    EXPECT_EQ(one.status, kExitDone);
    EXPECT_EQ(networksIn(one.output), 1u) << one.output;
    EXPECT_TRUE(all.starts_with(one.output)) << one.output;
}

TEST(DecodeCommand, NamesTheFileOfTheFrameWhereThereAreSeveral) {
    const std::string other = HALVANE_SAMPLES "/today.pcap";
    EXPECT_EQ(explain({kNeighbourhood}).output.find("neighbourhood.pcap"), std::string::npos);
    for (const std::string form : {"--format=text", "--per-frame"}) {
        const Ran ran = explain({form, "--width=200", kNeighbourhood, other});
        EXPECT_EQ(ran.status, kExitDone);
        const auto namesOf = [&](const std::string& path) {
            const std::regex line("(^|\n)" + path + ": frame [0-9]+, (beacon|probe-response), ");
            return std::distance(std::sregex_iterator(ran.output.begin(), ran.output.end(), line),
                                 std::sregex_iterator());
        };
        EXPECT_GT(namesOf(kNeighbourhood), 3) << ran.output;
        EXPECT_GT(namesOf(other), 3) << ran.output;
        EXPECT_EQ(namesOf(kNeighbourhood) + namesOf(other),
                  static_cast<std::ptrdiff_t>(networksIn(ran.output)));
    }
}

TEST(DecodeCommand, ExplainsNothingWithoutANetwork) {
    const Ran none = explain({"--bssid=06:00:00:00:00:01", kNeighbourhood});
    EXPECT_EQ(none.status, kExitDone);
    EXPECT_EQ(none.output, "");
    EXPECT_TRUE(none.errors.starts_with("no network of 8 passes the filter")) << none.errors;
}

TEST(DecodeCommand, ExplainsElementsOfHexadecimalText) {
    const TemporaryFolder folder;
    const auto file = [&](std::string_view text) {
        return folder.write("hex", std::vector<std::uint8_t>(text.begin(), text.end()));
    };
    const Ran named = explain({"--hex", "--bssid=02:00:00:00:00:01", file("00046E1B5BB2")});
    EXPECT_EQ(named.status, kExitDone);
    EXPECT_TRUE(
        named.output.starts_with("n\\x1B[\\xB2  02:00:00:00:00:01  (local)\n"
                                 "6 octets of elements; @N is octet N of the elements\n\n"))
        << named.output;
    EXPECT_TRUE(explain({"--hex", file("0000")}).output.starts_with("(hidden)\n"));
    EXPECT_TRUE(explain({"--hex", file("030106")}).output.starts_with("(no name)\n"));
    const Ran cut = explain({"--hex", file("0001613014")});
    EXPECT_EQ(cut.status, kExitFailed);
    EXPECT_NE(cut.output.find("frame-cut, clause 9.4.2.1; RSN @3\n"), std::string::npos)
        << cut.output;
}

TEST(DecodeCommand, RefusesToExplainInAnotherFormat) {
    const Ran ran = explain({"--format=json", kNeighbourhood});
    EXPECT_EQ(ran.status, kExitUsage);
    EXPECT_EQ(ran.output, "");
    EXPECT_NE(ran.errors.find("--explain goes with --format=text alone"), std::string::npos);
}

}  // namespace
