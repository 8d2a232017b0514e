#include "tools/halvane/output/findings_list.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "halvane/air/bss_profile.h"
#include "halvane/air/finding.h"
#include "halvane/air/profile.h"
#include "halvane/base/ssid.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/output/cell_text.h"

using halvane::Ssid;
using halvane::testing::joined;
using halvane::testing::rsnElement;
using halvane::testing::ssidElement;
using namespace halvane::air;
using namespace halvane::tool;

namespace {

TextStyle styleOf(std::size_t width) {
    return {.width = width, .glyphs = GlyphSet::UTF8};
}

BssProfile profileWith(const std::string& name, std::initializer_list<FindingKind> kinds) {
    BssProfile profile;
    profile.ssid = Derived<Ssid>{*Ssid::fromText(name)};
    for (const FindingKind kind : kinds) profile.findings.push_back({kind, {}});
    return profile;
}

TEST(FindingsList, IsTheScreenOf80Columns) {
    FindingsList list;
    list.add(profileWith("UNICORN", {FindingKind::WpaOnly}), -78);
    list.add(profileWith("", {FindingKind::OpenNetwork, FindingKind::HiddenName}), -88);
    list.add(profileWith("SS-2.4", {FindingKind::TkipAllowed}), -64);
    list.add(profileWith("A50GEST", {FindingKind::TkipAllowed}), std::nullopt);
    list.add(profileWith("A50", {FindingKind::TkipAllowed}), -80);
    EXPECT_EQ(list.text(Severity::Warning, styleOf(80)),
              R"(error       1 WPA without WPA2: deprecated since 2012.
              UNICORN
              Do: Switch on WPA2 with CCMP and switch TKIP off.
              wpa-only, clause 12.5.2
warning     3 TKIP is still allowed.
              SS-2.4, A50, A50GEST
              Do: Allow CCMP alone: a station that takes TKIP gets 54 Mbit/s at
              most.
              tkip-allowed, clause 9.4.2.24.2
warning     1 No encryption: everybody near reads along.
              (hidden)
              Do: Use Enhanced Open (OWE) where no password is wanted.
              open, clause 9.4.1.4
)");
}

TEST(FindingsList, NamesTheStrongestNetworks) {
    FindingsList list;
    int signal = -40;
    for (const char* const name : {"C&MDesign_5G", "BoB_MentorR1_2G",
                                   "DIRECT-FE-HP OfficeJet Pro 7740", "kjtimes", "e", "f"}) {
        list.add(profileWith(name, {FindingKind::WpsOn}), --signal);
    }
    list.add(profileWith("strongest", {FindingKind::WpsOn}), -20);
    const std::string text = list.text(Severity::Note, styleOf(80));
    EXPECT_NE(
        text.find("warning     7 WPS is switched on: where it takes a PIN, 8 digits open the\n"
                  "              network.\n"
                  "              strongest, C&MDesign_5G, BoB_MentorR1_2G, "
                  "DIRECT-FE-HP O\u2026 Pro 7740\n"
                  "              and 3 more\n"),
        std::string::npos)
        << text;
    EXPECT_TRUE(text.ends_with("              wps-on, Wi-Fi Simple Configuration 2.0\n")) << text;
    const std::string wide = list.text(Severity::Note, styleOf(120));
    EXPECT_NE(wide.find("              strongest, C&MDesign_5G, BoB_MentorR1_2G, "
                        "DIRECT-FE-HP O\u2026 Pro 7740 and 3 more\n"),
              std::string::npos)
        << wide;
}

TEST(FindingsList, LeavesOutWhatIsLessSevere) {
    FindingsList list;
    list.add(profileWith("net", {FindingKind::PmfOff, FindingKind::OpenNetwork}), -50);
    EXPECT_EQ(list.text(Severity::Error, styleOf(80)), "");
    EXPECT_EQ(list.text(Severity::Warning, styleOf(80)).find("pmf-off"), std::string::npos);
    EXPECT_NE(list.text(Severity::Note, styleOf(80)).find("note        1 Management frames"),
              std::string::npos);
    EXPECT_EQ(FindingsList().text(Severity::Note, styleOf(80)), "");
}

TEST(FindingsList, CountsANetworkOnceForAFinding) {
    FindingsList list;
    list.add(profileWith("net", {FindingKind::ElementTooShort, FindingKind::ElementTooShort}), -50);
    EXPECT_NE(list.text(Severity::Note, styleOf(80)).find("warning     1 "), std::string::npos);
}

TEST(FindingsList, CountsNetworksThatShareABeacon) {
    BssProfile sender = profileWith("net", {FindingKind::PmfOff});
    sender.nontransmitted.push_back({{}, 1, profileWith("guest", {FindingKind::PmfOff})});
    FindingsList list;
    list.add(sender, -50);
    const std::string text = list.text(Severity::Note, styleOf(80));
    EXPECT_NE(text.find("note        2 "), std::string::npos) << text;
    EXPECT_NE(text.find("\n              net, guest\n"), std::string::npos) << text;
}

TEST(FindingsList, ShowsNamesSafely) {
    FindingsList list;
    list.add(profileWith("a\x1B[2J\nb", {FindingKind::PmfOff}), -50);
    const std::string text = list.text(Severity::Note, styleOf(80));
    EXPECT_NE(text.find("              a\\x1B[2J\\x0Ab\n"), std::string::npos) << text;
}

TEST(FindingsList, FitsEveryWidth) {
    FindingsList list;
    for (const FindingInfo& info : findingInfos()) {
        for (const char* const name : {"a name with many blanks in it", "\u4F60\u597D\u4F60\u597D",
                                       "0123456789ABCDEF0123456789ABCDEF", "", "five"}) {
            list.add(profileWith(name, {info.kind}), -50);
        }
    }
    for (std::size_t width = 40; width <= 240; ++width) {
        std::istringstream lines(list.text(Severity::Note, styleOf(width)));
        for (std::string line; std::getline(lines, line);) {
            ASSERT_LE(cellsOf(line, {}), width) << line;
            ASSERT_FALSE(line.ends_with(' ')) << line;
        }
    }
}

TEST(FindingsList, IsTheSameWithoutItsColors) {
    FindingsList list;
    list.add(profileWith("net", {FindingKind::WpaOnly, FindingKind::PmfOff}), -50);
    TextStyle style = styleOf(80);
    const std::string plain = list.text(Severity::Note, style);
    style.theme = Theme(Palette::Colors16, true);
    std::string painted = list.text(Severity::Note, style);
    EXPECT_TRUE(painted.starts_with("\x1B[1;31merror       1\x1B[m ")) << painted;
    for (std::size_t at = 0; (at = painted.find('\x1B', at)) != std::string::npos;) {
        painted.erase(at, painted.find('m', at) - at + 1);
    }
    EXPECT_EQ(painted, plain);
}

}  // namespace
