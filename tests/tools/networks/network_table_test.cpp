#include "tools/halvane/networks/network_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

#include "halvane/air/feature.h"

#include "tests/support/captured_stream.h"
#include "tests/tools/networks/networks_for_tests.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/shown_text.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class NetworkTable : public ::testing::Test {
  protected:
    std::string printed(const NetworkTableOptions& options, const Theme& theme = {}) {
        const CapturedStream output(stdout);
        printNetworks(networks_, options, asciiSurroundings(), theme, stdout);
        return output.text();
    }

    NetworkMaker maker_;
    std::vector<Network> networks_ = {
        maker_.make({"home", 1, -40}), maker_.make({"", 2, -80, air::Band::Ghz5, 36}),
        maker_.make({"a name of thirty-two characters.", 3, std::nullopt, air::Band::Ghz2, 11,
                     air::Security::Wep})};
};

TEST_F(NetworkTable, PrintsTheColumnsOfTheWidth) {
    EXPECT_EQ(printed({.width = 80}),
              "  SSID                  dBm      GHz  CH  MHz GEN SECURITY PMF BSSID\n"
              "  home                  -40 #### 2.4   1  20  b   WPA2     -   02:00:00:00:00:01\n"
              "  (hidden)              -80 #...   5  36  20  b   WPA2     -   02:00:00:00:00:02\n"
              "  a name of th~racters.   -      2.4  11  20  b   WEP      -   02:00:00:00:00:03\n");
    EXPECT_EQ(printed({.width = 40}),
              "  SSID         dBm GHz  CH  MHz SECURITY\n"
              "  home         -40 2.4   1  20  WPA2\n"
              "  (00:00:02)   -80   5  36  20  WPA2\n"
              "  a name ~ers.   - 2.4  11  20  WEP\n");
}

TEST_F(NetworkTable, PrintsTheColumnsThatWereAskedFor) {
    const std::vector<const NetworkColumn*> columns = {networkColumnNamed("bssid"),
                                                       networkColumnNamed("ssid")};
    EXPECT_EQ(printed({.columns = columns, .width = 30}),
              "BSSID             SSID\n"
              "02:00:00:00:00:01 home\n"
              "02:00:00:00:00:02 (hidden)\n"
              "02:00:00:00:00:03 a name ~ers.\n");
}

TEST_F(NetworkTable, PrintsNoMoreRowsThanTheLimit) {
    EXPECT_EQ(printed({.width = 40, .limit = 1}),
              "  SSID         dBm GHz  CH  MHz SECURITY\n"
              "  home         -40 2.4   1  20  WPA2\n"
              "~ 2 more (--limit=0 shows all)\n");
    EXPECT_EQ(printed({.width = 40, .limit = 3}), printed({.width = 40}));
}

TEST_F(NetworkTable, PrintsNothingWithoutNetworks) {
    networks_.clear();
    EXPECT_EQ(printed({.width = 80}), "");
}

TEST_F(NetworkTable, RepeatsTheHeaderBelowATallTable) {
    const std::string tall = printed({.width = 40, .lines = 3});
    const std::string header = tall.substr(0, tall.find('\n') + 1);
    EXPECT_EQ(tall.substr(tall.size() - header.size()), header);
    EXPECT_EQ(printed({.width = 40, .lines = 4}), printed({.width = 40}));
}

TEST_F(NetworkTable, CutsNothingWhereItIsWide) {
    const std::string wide = printed({.width = 40, .isWide = true});
    EXPECT_NE(wide.find("a name of thirty-two characters."), std::string::npos);
    EXPECT_NE(wide.find("FINDINGS"), std::string::npos);
    const std::string unbound = printed({});
    EXPECT_NE(unbound.find("a name of thirty-two characters."), std::string::npos);
    EXPECT_EQ(unbound.find("FINDINGS"), std::string::npos);
}

TEST_F(NetworkTable, FitsEveryWidth) {
    for (std::size_t width = 40; width <= 240; ++width) {
        std::istringstream lines(printed({.width = width}));
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            EXPECT_LE(line.size(), width) << line;
        }
        EXPECT_EQ(count, networks_.size() + 1);
    }
}

TEST_F(NetworkTable, CutsFeaturesThatFindNoRoom) {
    std::vector<const NetworkColumn*> columns;
    for (const char* const name : {"ssid", "bssid", "features", "signal"}) {
        columns.push_back(networkColumnNamed(name));
    }
    for (const auto feature :
         {air::Feature::RadioMeasurement, air::Feature::BssTransition, air::Feature::FastTransition,
          air::Feature::Wmm, air::Feature::Wps}) {
        networks_.front().profile.features.push_back(feature);
    }
    EXPECT_GT(printed({.columns = columns, .width = 200}).find('\n'), 48U);
    std::istringstream lines(printed({.columns = columns, .width = 48}));
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 48U) << line;
}

// A table has 40 cells at least. Names of two cells a letter, and one with a combining mark.
TEST_F(NetworkTable, CutsNoCharacterAtAnyWidth) {
    constexpr std::size_t kLeast = 40;
    networks_.push_back(maker_.make({"\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G", 4, -50}));
    networks_.push_back(maker_.make({"Cafe\u0301 of a long name there", 5, -60}));
    CellSurroundings surroundings = {.glyphs = glyphsOf(GlyphSet::UTF8), .rules = {}};
    surroundings.makers = asciiSurroundings().makers;
    for (std::size_t width = 20; width <= 240; ++width) {
        const CapturedStream output(stdout);
        printNetworks(networks_, {.width = width}, surroundings, Theme(), stdout);
        std::istringstream lines(output.text());
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            ASSERT_LE(cellsOf(line, {}), std::max(width, kLeast)) << line;
            ASSERT_EQ(shownText(line, {}).octets().find("\\x"), std::string::npos) << line;
        }
        ASSERT_EQ(count, networks_.size() + 1) << width;
    }
}

TEST_F(NetworkTable, HasFullNamesOfSecurityWhereThereIsRoom) {
    EXPECT_EQ(printed({.width = 159}).find("WPA2-Personal"), std::string::npos);
    EXPECT_NE(printed({.width = 160}).find("WPA2-Personal"), std::string::npos);
}

TEST_F(NetworkTable, ColoursNothingButWhatTheThemeSays) {
    std::string coloured = printed({.width = 80}, Theme(Palette::Colors16, false));
    EXPECT_NE(coloured.find("\x1B[1;31mWEP\x1B[m"), std::string::npos) << coloured;
    for (std::size_t start = 0; (start = coloured.find('\x1B')) != std::string::npos;) {
        coloured.erase(start, coloured.find('m', start) + 1 - start);
    }
    EXPECT_EQ(coloured, printed({.width = 80}));
}

}  // namespace
