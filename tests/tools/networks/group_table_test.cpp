#include "tools/halvane/networks/group_table.h"

#include <cstddef>
#include <cstdio>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/captured_stream.h"
#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class GroupTable : public ::testing::Test {
  protected:
    GroupTable() {
        for (const int channel : {36, 40, 44, 48, 60, 100, 149}) {
            networks_.push_back(maker_.make(
                {"many", static_cast<std::uint8_t>(channel), -60, air::Band::Ghz5, channel}));
        }
        networks_.push_back(maker_.make({"many", 1, -50, air::Band::Ghz2, 6, air::Security::Open}));
        networks_.push_back(maker_.make({"single", 2, std::nullopt}));
    }

    std::string printed(const GroupTableOptions& options) {
        const CapturedStream output(stdout);
        printGroups(networks_, options, asciiSurroundings(), {}, stdout);
        return output.text();
    }

    NetworkMaker maker_;
    std::vector<Network> networks_;
};

TEST_F(GroupTable, HasARowForEachName) {
    EXPECT_EQ(printed({.grouping = Grouping::Name, .width = 90}),
              "  SSID         dBm      BSS  AP 2.4 GHz 5 GHz                SECURITY\n"
              "  many         -50 ###.   8   8 6       36 40 44 48 60 100 ~ differs: WPA2, Open\n"
              "  single         -        1   1 1       -                    WPA2\n");
}

TEST_F(GroupTable, HasARowForEachRadio) {
    networks_.push_back(maker_.make({"twin", 3}));
    EXPECT_EQ(printed({.grouping = Grouping::Radio, .width = 60, .limit = 1}),
              "  RADIO         dBm      GHz  CH  MHz GEN NAMES\n"
              "  00:00:24      -60 ##..   5  36  20  b   many\n"
              "~ 8 more (--limit=0 shows all)\n");
    EXPECT_NE(printed({.grouping = Grouping::Radio}).find("single, twin"), std::string::npos);
}

TEST_F(GroupTable, ShowsAddressesIfAskedTo) {
    EXPECT_NE(printed({.grouping = Grouping::Name, .areAddressesShown = true})
                  .find("\n    02:00:00:00:00:24  -60 dBm\n"),
              std::string::npos);
}

TEST_F(GroupTable, FitsEveryWidth) {
    for (const Grouping grouping : {Grouping::Name, Grouping::Radio}) {
        for (std::size_t width = 50; width <= 200; ++width) {
            std::istringstream lines(printed({.grouping = grouping, .width = width}));
            for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), width);
        }
    }
}

TEST_F(GroupTable, PrintsNothingWithoutNetworks) {
    networks_.clear();
    EXPECT_EQ(printed({.grouping = Grouping::Radio}), "");
}

}  // namespace
