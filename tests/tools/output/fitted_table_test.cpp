#include "tools/halvane/output/fitted_table.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>

using namespace halvane::tool;

namespace {

constexpr TextRules kPlain = {};

// The columns of a list of networks.
constexpr auto kColumns = std::to_array<FittedColumn>({
    {.name = "mark", .header = "", .align = Align::Left, .least = 1, .most = kAnyWidth},
    {.name = "ssid", .header = "SSID", .align = Align::Left, .least = 12, .most = 32},
    {.name = "signal", .header = "dBm", .align = Align::Right, .least = 3, .most = kAnyWidth},
    {.name = "bar", .header = "", .align = Align::Left, .least = 4, .most = kAnyWidth, .from = 55},
    {.name = "band", .header = "GHz", .align = Align::Right, .least = 3, .most = kAnyWidth},
    {.name = "channel", .header = "CH", .align = Align::Right, .least = 3, .most = kAnyWidth},
    {.name = "width",
     .header = "MHz",
     .align = Align::Right,
     .least = 4,
     .most = kAnyWidth,
     .from = 40},
    {.name = "generation",
     .header = "GEN",
     .align = Align::Left,
     .least = 3,
     .most = kAnyWidth,
     .from = 59},
    {.name = "security", .header = "SECURITY", .align = Align::Left, .least = 8, .most = kAnyWidth},
    {.name = "pmf", .header = "PMF", .align = Align::Left, .least = 3, .most = 3, .from = 63},
    {.name = "load",
     .header = "LOAD",
     .align = Align::Right,
     .least = 4,
     .most = kAnyWidth,
     .from = 115,
     .isLeftOutUntold = true},
    {.name = "bssid",
     .header = "BSSID",
     .align = Align::Left,
     .least = 8,
     .most = kAnyWidth,
     .from = 50,
     .below = 74},
    {.name = "bssid",
     .header = "BSSID",
     .align = Align::Left,
     .least = 17,
     .most = kAnyWidth,
     .from = 74},
    {.name = "maker", .header = "MAKER", .align = Align::Left, .least = 5, .most = 16, .from = 106},
});

constexpr auto kSqueezes = std::to_array<Squeeze>({
    {.column = "maker", .least = 8},
    {.column = "ssid", .least = 12},
    {.column = "ssid", .least = 4, .from = 40},
});

constexpr TableDesign kDesign = {kColumns, kSqueezes};

struct Network {
    std::string mark, name, signal, bar, channel, width, security, load, bssid, maker;
};

const std::vector<Network> kNetworks = {
    {"", "Samsung_2.4G", "-14", "\u2588\u2588\u2588\u2588", "1", " 40 ", "WPA2", "-",
     "B8:55:10:E0:10:52", "Zioncom"},
    {"", "KT_GiGA_2G_Wave2_0DE3", "-78", "\u2588\u258F", "1", " 20 ", "WPA/WPA2", "9%",
     "B4:A9:4F:6F:0D:E7", "Mercury"},
    {"!", "[air purifier]_E30AJT1013767Z", "-86", "\u258B", "1", " 20 ", "WPA2", "-",
     "28:6D:97:E8:8B:45", "SAMJIN"},
};

FittedCell cellOf(const std::string& name, const Network& network, std::size_t least) {
    const auto own = [](const std::string& text) { return FittedCell{ownText(text, kPlain)}; };
    if (name == "mark") return {ownText(network.mark, kPlain), Meaning::Danger};
    if (name == "ssid") return {shownName(network.name, kPlain)};
    if (name == "signal") return own(network.signal);
    if (name == "bar") return {ownText(network.bar, kPlain), Meaning::FairSignal};
    if (name == "band") return own("2.4");
    if (name == "channel") return own(network.channel);
    if (name == "width") return own(network.width);
    if (name == "generation") return own("4");
    if (name == "security") return own(network.security);
    if (name == "pmf") return own("-");
    if (name == "load") return own(network.load);
    if (name == "bssid") return own(network.bssid.substr(network.bssid.size() - least));
    return own(network.maker);
}

// A table with its lines.
struct Printed {
    FittedTable table;
    std::vector<std::string> lines;
};

Printed printed(const std::vector<Network>& networks, std::optional<std::size_t> width,
                const Theme& theme = {}) {
    FittedTable table(kDesign, width);
    std::vector<std::vector<FittedCell>> rows;
    for (const Network& network : networks) {
        auto& row = rows.emplace_back();
        for (const std::size_t index : table.standing()) {
            row.push_back(cellOf(kColumns[index].name, network, kColumns[index].least));
        }
        table.fit(row);
    }
    table.settle();
    std::vector<std::string> lines = {table.header(theme)};
    for (const auto& row : rows) {
        lines.push_back(table.line(row, theme, ownText("\u2026", kPlain)));
    }
    return {table, lines};
}

std::string textOf(const Printed& table) {
    std::string text;
    for (const std::string& line : table.lines) text += line;
    return text;
}

std::string lineOf(const std::string& line) {
    return line.substr(0, line.size() - 1);
}

TEST(FittedTable, FillsEightyColumns) {
    EXPECT_EQ(textOf(printed(kNetworks, 80)),
              "  SSID                  dBm      GHz  CH  MHz GEN SECURITY PMF BSSID\n"
              "  Samsung_2.4G          -14 \u2588\u2588\u2588\u2588 2.4   1  40  4   WPA2     -   "
              "B8:55:10:E0:10:52\n"
              "  KT_GiGA_2G_Wave2_0DE3 -78 \u2588\u258F   2.4   1  20  4   WPA/WPA2 -   "
              "B4:A9:4F:6F:0D:E7\n"
              "! [air purifie\u20261013767Z -86 \u258B    2.4   1  20  4   WPA2     -   "
              "28:6D:97:E8:8B:45\n");
}

TEST(FittedTable, DropsColumnsByTheWidth) {
    EXPECT_EQ(textOf(printed(kNetworks, 60)),
              "  SSID           dBm      GHz  CH  MHz GEN SECURITY BSSID\n"
              "  Samsung_2.4G   -14 \u2588\u2588\u2588\u2588 2.4   1  40  4   WPA2     E0:10:52\n"
              "  KT_GiGA_\u2026_0DE3 -78 \u2588\u258F   2.4   1  20  4   WPA/WPA2 6F:0D:E7\n"
              "! [air pur\u20263767Z -86 \u258B    2.4   1  20  4   WPA2     E8:8B:45\n");
    EXPECT_EQ(textOf(printed(kNetworks, 40)),
              "  SSID         dBm GHz  CH  MHz SECURITY\n"
              "  Samsung_2.4G -14 2.4   1  40  WPA2\n"
              "  KT_GiGA\u20260DE3 -78 2.4   1  20  WPA/WPA2\n"
              "! [air pu\u2026767Z -86 2.4   1  20  WPA2\n");
}

TEST(FittedTable, CutsNothingWithoutAWidth) {
    EXPECT_EQ(
        textOf(printed({kNetworks[2]}, std::nullopt)),
        "  SSID                          dBm      GHz  CH  MHz GEN SECURITY PMF BSSID         "
        "    MAKER\n"
        "! [air purifier]_E30AJT1013767Z -86 \u258B    2.4   1  20  4   WPA2     -   "
        "28:6D:97:E8:8B:45 SAMJIN\n");
    Network network = kNetworks[0];
    network.maker = "A maker of more than sixteen letters";
    EXPECT_NE(textOf(printed({network}, std::nullopt)).find(network.maker), std::string::npos);
}

TEST(FittedTable, LeavesOutWhatNobodyTells) {
    EXPECT_EQ(textOf(printed({kNetworks[0]}, 120)).find("LOAD"), std::string::npos);
    EXPECT_NE(textOf(printed(kNetworks, 120)).find("PMF LOAD BSSID"), std::string::npos);
    EXPECT_EQ(textOf(printed(kNetworks, 114)).find("LOAD"), std::string::npos);
}

TEST(FittedTable, SqueezesOneColumnBeforeAnother) {
    Network network = kNetworks[0];
    network.name = std::string(32, 'W');
    network.maker = "Fourteen cells";
    const std::string full = printed({network}, 120).lines[1];
    EXPECT_NE(full.find(network.name + " "), std::string::npos);
    EXPECT_NE(full.find("Fourteen cells"), std::string::npos);

    network.signal = "-100";
    network.security = "WPA2/3-Ent";
    const std::string narrow = printed({network}, 106).lines[1];
    EXPECT_NE(narrow.find(network.name + " "), std::string::npos) << narrow;
    EXPECT_NE(narrow.find("Fourte\u2026ells"), std::string::npos) << narrow;

    // The maker does not stand here.
    const std::string narrower = printed({network}, 105).lines[1];
    EXPECT_NE(narrower.find(network.name + " "), std::string::npos) << narrower;
}

TEST(FittedTable, SqueezesTheNameBelowItsLeastOnlyWhereItMust) {
    Network network = kNetworks[1];
    EXPECT_EQ(printed({network}, 40).lines[1], "  KT_GiGA\u20260DE3 -78 2.4   1  20  WPA/WPA2\n");
    network.security = "WPA2/3-Ent";
    EXPECT_EQ(printed({network}, 40).lines[1], "  KT_GiG\u2026DE3 -78 2.4   1  20  WPA2/3-Ent\n");
    // Without room for that either, the row is as long as it must be.
    EXPECT_EQ(printed({network}, 30).lines[1], "  KT_GiGA\u20260DE3 -78 2.4   1 WPA2/3-Ent\n");
}

TEST(FittedTable, WritesNoTrailingBlanks) {
    Network network = kNetworks[0];
    network.maker = "";
    network.bssid = std::string(17, ' ');
    const Theme theme(Palette::Colors16, true);
    for (std::size_t width = 20; width <= 240; ++width) {
        for (const Theme& each : {Theme(), theme}) {
            for (const std::string& line : printed({network}, width, each).lines) {
                EXPECT_FALSE(line.ends_with(" \n")) << line;
                EXPECT_FALSE(line.ends_with(" \x1B[m\n")) << line;
            }
        }
    }
}

TEST(FittedTable, TakesTheBlanksOfTheLastCell) {
    constexpr auto columns = std::to_array<FittedColumn>({
        {.name = "a", .header = "A", .align = Align::Left, .least = 1, .most = kAnyWidth},
        {.name = "width", .header = "MHz", .align = Align::Right, .least = 4, .most = kAnyWidth},
    });
    FittedTable table({columns, {}}, 80);
    const std::vector<FittedCell> row = {{ownText("x", kPlain)}, {ownText(" 40 ", kPlain)}};
    table.fit(row);
    table.settle();
    EXPECT_EQ(table.line(row, {}, {}), "x  40\n");
    EXPECT_EQ(table.header({}), "A  MHz\n");
}

TEST(FittedTable, PutsNoBlankBehindAJoinedColumn) {
    constexpr auto columns = std::to_array<FittedColumn>({
        {.name = "state",
         .header = "",
         .align = Align::Left,
         .least = 1,
         .most = kAnyWidth,
         .isJoinedToNext = true},
        {.name = "mark", .header = "", .align = Align::Left, .least = 1, .most = kAnyWidth},
        {.name = "ssid", .header = "SSID", .align = Align::Left, .least = 4, .most = 32},
    });
    FittedTable table({columns, {}}, 80);
    const auto row = [](const char* state, const char* mark) {
        return std::vector<FittedCell>{
            {ownText(state, kPlain)}, {ownText(mark, kPlain)}, {ownText("UNICORN", kPlain)}};
    };
    table.fit(row("", "!"));
    table.settle();
    EXPECT_EQ(table.header({}), "   SSID\n");
    EXPECT_EQ(table.line(row("", "!"), {}, {}), " ! UNICORN\n");
    EXPECT_EQ(table.line(row("*", ""), {}, {}), "*  UNICORN\n");
}

TEST(FittedTable, PlacesByNumberBehindAnUnsteadyName) {
    Network network = kNetworks[0];
    network.name = "\u2764\uFE0F home";
    const Theme terminal(Palette::Colors16, true);
    const std::string line = printed({network}, 40, terminal).lines[1];
    EXPECT_EQ(line, "  \u2764\uFE0F home\x1B[16G-14 2.4   1  40  WPA2\n");
    EXPECT_EQ(printed({network}, 40).lines[1], "  \u2764\uFE0F home       -14 2.4   1  40  WPA2\n");
    EXPECT_EQ(printed({network}, 40, Theme(Palette::None, true)).lines[1],
              "  \u2764\uFE0F home       -14 2.4   1  40  WPA2\n");
}

TEST(FittedTable, EndsEachColourBeforeTheGap) {
    const std::string line = printed({kNetworks[2]}, 60, Theme(Palette::Colors16, true)).lines[1];
    EXPECT_EQ(line.substr(0, 16), "\x1B[1;31m!\x1B[m [air");
    EXPECT_NE(line.find("\x1B[36m\u258B\x1B[m    2.4"), std::string::npos) << line;
}

TEST(FittedTable, RepeatsItsHeaderWhereTheFirstIsGone) {
    EXPECT_FALSE(FittedTable::repeatsHeader(23, 24));
    EXPECT_TRUE(FittedTable::repeatsHeader(24, 24));
    EXPECT_FALSE(FittedTable::repeatsHeader(1000, std::nullopt));
}

const std::vector<Network> kStrangers = {
    {"!", std::string(32, 'W'), "-100", "\u258F", "233", "160 ", "WPA2/3-Ent", "100%",
     "00:00:00:00:00:00", "Sixteen cells ..."},
    {"x", "\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7\u65E5\u672C\u8A9E 5", "-", "", "6", " 80p", "Open",
     "-", "00:00:00:00:00:00", "-"},
    {"", "\U0001F469\u200D\U0001F469\u200D\U0001F467 family", "-67", "\u258F", "6", " 20 ",
     "WPA/WPA2", "0%", "00:00:00:00:00:00", "(local)"},
    {"", "\u05D1\u05D9\u05EA \u05E7\u05E4\u05D4 2", "-67", "\u258F", "6", " 20 ", "Unknown", "5%",
     "00:00:00:00:00:00", "\u65E5\u672C"},
    {"", "\xB2\xE2\xCA\xD4\x1B[31m\n", "-67", "\u258F", "6", " 20 ", "WPA3", "5%",
     "00:00:00:00:00:00", ""},
    {"", "", "-67", "\u258F", "6", " 20 ", "WPA3", "5%", "00:00:00:00:00:00", "x"},
};

// Returns the cells of a line without colours.
std::size_t cellsOfLine(const std::string& line) {
    return ownText(lineOf(line), kPlain).cells();
}

// Whether the cells from `begin` on, as wide as a column, are blank or hold this text at the side
// where it belongs.
void expectCell(const std::string& line, const FittedTable& table, std::size_t column,
                const std::string& expected, Align align) {
    const ShownText text = ownText(lineOf(line), kPlain);
    std::string found;
    std::size_t at = 0;
    std::size_t offset = 0;
    const std::size_t begin = table.beginOf(column);
    const std::size_t end = begin + table.cellsOf(column);
    for (const TextUnit& unit : text.units()) {
        if (at >= begin && at + unit.cells <= end) found += text.octets().substr(offset, unit.size);
        EXPECT_FALSE(at < begin && at + unit.cells > begin) << line;
        at += unit.cells;
        offset += unit.size;
    }
    if (align == Align::Left) {
        EXPECT_EQ(found.substr(0, expected.size()), expected) << line;
    } else {
        EXPECT_TRUE(found.ends_with(expected)) << line;
    }
}

TEST(FittedTable, AlignsNamesOfAnyScript) {
    struct Row {
        const char* name;
        const char* cell;
    };
    constexpr Row rows[] = {
        {"\xC6TME Enterprise", "\\xC6TME Enterprise   "},
        {"\xB2\xE2\xCA\xD4", "\\xB2\\xE2\\xCA\\xD4     "},
        {"Uncle Router's Gigabit LAN Party", "Uncle Router\u2026AN Party"},
        {"", "(hidden)             "},
        {"\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G",
         "\u65E5\u672C\u8A9E\u30AB\u30D5\u30A7 5G      "},
        {"Caf\u00E9 \u2615", "Caf\u00E9 \u2615              "},
        {"\u0642\u0647\u0648\u0629 \u0627\u0644\u0645\u062F\u064A\u0646\u0629",
         "\u0642\u0647\u0648\u0629 \u0627\u0644\u0645\u062F\u064A\u0646\u0629         "},
        {"\u05D1\u05D9\u05EA \u05E7\u05E4\u05D4 2",
         "\u05D1\u05D9\u05EA \u05E7\u05E4\u05D4 2            "},
        {"\U0001F4F6 home", "\U0001F4F6 home              "},
        {"\U0001F469\u200D\U0001F469\u200D\U0001F467 family",
         "\U0001F469\u200D\U0001F469\u200D\U0001F467 family        "},
        {"\u202Egnp.exe", "\\u{202E}gnp.exe      "},
        {"   ", "\"   \"                "},
        {" lead", "\" lead\"              "},
        {"(hidden)", "\"(hidden)\"           "},
        {"a\tb\x1B[31m", "a\\x09b\\x1B[31m       "},
        {"WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW", "WWWWWWWWWWWW\u2026WWWWWWWW"},
    };
    std::vector<Network> networks(std::size(rows), kNetworks[0]);
    for (std::size_t i = 0; i < networks.size(); ++i) networks[i].name = rows[i].name;
    const Printed table = printed(networks, 80);
    for (std::size_t i = 0; i < networks.size(); ++i) {
        const std::string expected = std::string("  ") + rows[i].cell + " -14 ";
        EXPECT_EQ(table.lines[i + 1].substr(0, expected.size()), expected);
    }
}

TEST(FittedTable, IsNeverWiderThanTheTerminal) {
    for (const auto& networks : {kNetworks, kStrangers, {kStrangers[1]}}) {
        const std::size_t narrowest = cellsOfLine(printed(networks, 20).lines[0]);
        EXPECT_LT(narrowest, 40u);
        for (std::size_t width = 20; width <= 240; ++width) {
            // Below 40 columns nothing gives way any more.
            const std::size_t most = width < 40 ? std::max(width, narrowest + 2) : width;
            for (const std::string& line : printed(networks, width).lines) {
                EXPECT_LE(cellsOfLine(line), most) << width << '\n' << line;
            }
        }
    }
}

TEST(FittedTable, BeginsEachColumnAtTheSameCellInAllLines) {
    for (const auto& networks : {kNetworks, kStrangers}) {
        for (std::size_t width = 20; width <= 240; ++width) {
            const Printed table = printed(networks, width);
            ASSERT_EQ(table.lines.size(), networks.size() + 1);
            const auto& standing = table.table.standing();
            for (std::size_t i = 0; i < standing.size(); ++i) {
                const FittedColumn& column = kColumns[standing[i]];
                if (std::string_view(column.name) == "ssid" || table.table.cellsOf(i) == 0)
                    continue;
                expectCell(table.lines[0], table.table, i, column.header, column.align);
                for (std::size_t row = 0; row < networks.size(); ++row) {
                    const FittedCell cell = cellOf(column.name, networks[row], column.least);
                    std::string text = cell.text.octets();
                    if (cell.text.cells() > table.table.cellsOf(i)) text = text.substr(0, 4);
                    if (i + 1 == standing.size()) text.erase(text.find_last_not_of(' ') + 1);
                    expectCell(table.lines[row + 1], table.table, i, text, column.align);
                }
            }
        }
    }
}

TEST(FittedTable, HasTheSameLinesWithoutItsColours) {
    const std::regex colour("\x1B\\[[0-9;]*m");
    for (const Palette palette : {Palette::Colors16, Palette::Colors256}) {
        for (const std::size_t width : {40u, 80u, 120u, 240u}) {
            const std::string painted = textOf(printed(kStrangers, width, Theme(palette, false)));
            EXPECT_NE(painted, textOf(printed(kStrangers, width)));
            EXPECT_EQ(std::regex_replace(painted, colour, ""), textOf(printed(kStrangers, width)));
        }
    }
}

}  // namespace
