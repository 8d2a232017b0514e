#include "tools/halvane/output/explain_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"

#include "tests/air/element_samples.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/guessed_name.h"
#include "tools/halvane/output/shown_text.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::element;
using halvane::testing::htOperationElement;
using halvane::testing::joined;
using halvane::testing::rsnElement;
using halvane::testing::ssidElement;
using halvane::testing::wpaElement;

namespace {

const std::filesystem::path kModern = HALVANE_MODERN;
const std::filesystem::path kSamples = HALVANE_SAMPLES;
constexpr MacAddress kAddress({2, 0, 0, 0, 8, 0x2A});

TextStyle styleOf(std::size_t width) {
    return {.width = width, .glyphs = GlyphSet::UTF8};
}

// A beacon of these elements, as if it had been captured without a radio header.
std::string explained(const Bytes& elements, std::size_t width = 80) {
    capture::BeaconFrame beacon{.bssid = kAddress,
                                .beaconInterval = 100,
                                .capabilities = 0x0011,
                                .elements = elements,
                                .elementsOffset = 36};
    return explainText({capture::sightingOf(beacon)}, styleOf(width));
}

// The lines that begin with `head`, and those that go on.
std::string rowOf(const std::string& text, std::string_view head) {
    std::istringstream lines(text);
    std::string row;
    for (std::string line; std::getline(lines, line);) {
        const bool isNew = line.starts_with(head) && row.empty();
        const bool isOn = !row.empty() && line.starts_with(' ');
        if (!row.empty() && !isOn) break;
        if (isNew || isOn) row += line + '\n';
    }
    return row;
}

TEST(ExplainText, GuessesWhatANameReadsThatIsNotUTF8) {
    if (!nameInGB18030("\xB2\xE2")) GTEST_SKIP() << "the system does not know GB18030";
    const std::string text = explained(ssidElement("\xB2\xE2\xCA\xD4"));
    EXPECT_TRUE(text.starts_with("\\xB2\\xE2\\xCA\\xD4  02:00:00:00:08:2A  heard once\n")) << text;
    EXPECT_NE(text.find("\nnot UTF-8; in GB18030 it would read \u6D4B\u8BD5\n"), std::string::npos)
        << text;
    EXPECT_EQ(explained(ssidElement("plain")).find("GB18030"), std::string::npos);
}

TEST(ExplainText, TellsTheRateThatIsListedBeforeWiFi4) {
    const Bytes old = joined({ssidElement("old"), element(1, {0x82, 0x84, 0x8B, 0x16})});
    EXPECT_EQ(rowOf(explained(old), "Rate"),
              "Rate        11 Mbit/s              Supported Rates @41: the highest rate listed\n");
    const Bytes newer = joined({old, element(50, {0x0C, 0x12, 0x6C, 0x61})});
    EXPECT_EQ(rowOf(explained(newer), "Rate"),
              "Rate        54 Mbit/s              Supported Rates @41\n"
              "                                   Extended Supported Rates and BSS Membership\n"
              "                                   Selectors @47: the highest rate listed\n");
    EXPECT_EQ(rowOf(explained(element(1, {0x0B})), "Rate").substr(0, 23),
              "Rate        5.5 Mbit/s ");
    EXPECT_EQ(rowOf(explained(ssidElement("old")), "Rate"), "");
}

// The sightings of all frames of a capture.
std::vector<capture::Sighting> sightingsIn(const std::filesystem::path& path) {
    std::vector<capture::Sighting> sightings;
    auto reader = CaptureReader::open(path.string());
    if (!reader) return sightings;
    while (const auto frame = reader->next()) {
        if (frame->beacon()) sightings.push_back(CaptureReader::sightingOf(*frame));
    }
    return sightings;
}

// The screen of the first frame with the address.
std::string screenOf(const std::filesystem::path& path, const char* bssid, const std::string& maker,
                     std::size_t width) {
    const auto address = MacAddress::fromText(bssid)->buffer();
    for (const auto& sighting : sightingsIn(path)) {
        if (sighting.record.mac() != address) continue;
        const auto signal = sighting.record.RSSI()->exactInt64();
        return explainText({sighting, maker, static_cast<int>(*signal)}, styleOf(width));
    }
    return {};
}

TEST(ExplainText, IsTheScreenOf80Columns) {
    const auto capture = kModern / "scapy_frames_127.pcap";
    if (!std::filesystem::exists(capture)) GTEST_SKIP() << capture << " is missing";
    EXPECT_EQ(screenOf(capture, "60:8d:26:a6:d6:05", "Arcadyan", 80),
              R"(Arc-QA-Lab-5G  60:8D:26:A6:D6:05  Arcadyan  -70 dBm, heard once
frame 7, beacon, 383 octets of elements; @N is octet N of the 802.11 frame

Band        5 GHz                  HT Operation @209: channel 36
                                   radiotap: received on 5180 MHz
Channel     36, 5180 MHz           HT Operation @209: primary 36
Width       160 MHz                VHT Operation @259: width 1, CCFS0 42,
            5170 to 5330           CCFS1 50; |50 - 42| = 8: 160 MHz at 50
            centre 5250            not taken: HT Operation @209, 40 MHz
Punctured   no                     no EHT Operation
Generation  Wi-Fi 6, 4 streams     HE Capabilities @273; no EHT Capabilities
Rate        4803.9 Mbit/s          HE: 4 streams, MCS 11, 160 MHz, GI 0.8 us
                                   1960 x 10 x 5/6 x 4 / 13.6 us
            3466.7 VHT             4 streams, MCS 9, 160 MHz, short GI
            600 HT                 MCS 31, 40 MHz, short GI
Security    WPA2-Personal, FT      RSN @136: AKM PSK and FT-PSK
                                   Mobility Domain @176: 0064
Ciphers     CCMP-128               RSN @136: pairwise and group
PMF         none                   RSN @160: capabilities 000C, bits 6, 7 clear
Country     AE, indoor and outdoor Country @67
Load        68 %, 0 stations       BSS Load @162: 173 of 255
Beacons     DTIM 3                 TIM @61
Features    802.11k, 802.11v       RM Enabled @169; Extended Capabilities @233
            802.11r, WMM, U-APSD   Mobility Domain @176; HE Capabilities @273
            WPS, WPS configured    vendor @389, @339
            TWT, MU-MIMO
Colour      59                     HE Operation @314

warning     WPS is switched on: where it takes a PIN, 8 digits open the network.
            Switch WPS off, or at least its PIN.
            wps-on, Wi-Fi Simple Configuration 2.0; Wi-Fi Protected Setup @339
warning     The access point tells a channel load above 60 %.
            Move the channel or the stations.
            load-high, clause 9.4.2.27; BSS Load @162
note        Management frames are not protected: anybody can send stations away.
            Set PMF to capable, or to required with WPA3.
            pmf-off, clause 9.4.2.24.4; RSN @136
)");
}

TEST(ExplainText, IsTheScreenOf120Columns) {
    const auto capture = kModern / "issue_threads_127.pcap";
    if (!std::filesystem::exists(capture)) GTEST_SKIP() << capture << " is missing";
    EXPECT_EQ(screenOf(capture, "02:00:00:00:00:61", "(local)", 120),
              R"(Test 6G  02:00:00:00:00:61  (local)  -55 dBm, heard once
frame 2, beacon, 204 octets of elements; @N is octet N of the 802.11 frame

Band        6 GHz                          HE Operation @164: 6 GHz Operation Information
Channel     57, 6235 MHz                   HE Operation @164: primary 57; radiotap: received on 6235 MHz
Width       160 MHz, 6105 to 6265          HE Operation @164: width 3, CCFS0 55, CCFS1 47; |47 - 55| = 8: 160 MHz at 47
            centre 6185                    EHT Operation @206 has no operation information: HE decides
Generation  Wi-Fi 7, 3 streams             EHT Capabilities @183
Rate        4323.5 Mbit/s                  EHT: 3 streams, MCS 13, 160 MHz, GI 0.8 us: 1960 x 12 x 5/6 x 3 / 13.6 us
            3602.9 HE                      3 streams, MCS 11, 160 MHz
Security    WPA3-Personal, H2E             RSN @69: AKM SAE; RSNX @123: SAE hash-to-element
Ciphers     GCMP-256 CCMP-128 GCMP-128     RSN @69: pairwise; group CCMP-128
PMF         required                       RSN @97: capabilities 00CC, bits 6 and 7 set
Country     RU, global table (E-4)         Country @61: operating class 134, 6 GHz, 160 MHz
Beacons     DTIM 2                         TIM @55
Features    SAE-H2E, WMM, TWT, MU-MIMO     RSNX @123; HE Capabilities @126; vendor @214
Colour      44, switched off               HE Operation @164

note        The BSS colour is switched off: spatial reuse does not work.
            color-disabled, clause 802.11ax 26.17.3; HE Operation @164
)");
}

TEST(ExplainText, AlignsValuesAndReasons) {
    const std::string text =
        explained(joined({ssidElement("net"), htOperationElement(36, 5), rsnElement(2)}));
    EXPECT_TRUE(
        text.starts_with("net  02:00:00:00:08:2A  heard once\n"
                         "beacon, 51 octets of elements; @N is octet N of the 802.11 frame\n"
                         "\n"))
        << text;
    EXPECT_EQ(rowOf(text, "Band"),
              "Band        5 GHz                  HT Operation @41: channel 36, above 14\n");
    EXPECT_EQ(rowOf(text, "Channel"),
              "Channel     36, 5180 MHz           HT Operation @41: primary 36\n");
    EXPECT_EQ(rowOf(text, "Width"),
              "Width       40 MHz                 HT Operation @41: secondary channel above\n"
              "            5170 to 5210           40 MHz at 38\n"
              "            centre 5190\n");
    EXPECT_EQ(rowOf(text, "Ciphers"),
              "Ciphers     CCMP-128               RSN @65: pairwise and group\n");
}

TEST(ExplainText, NamesVendorElementsByTheirKind) {
    const std::string text = explained(joined({ssidElement("net"), wpaElement(2)}));
    EXPECT_EQ(rowOf(text, "Security"), "Security    WPA-Personal           WPA @41: AKM PSK\n");
    EXPECT_NE(text.find("wpa-only, clause 12.5.2; WPA @41\n"), std::string::npos) << text;
}

TEST(ExplainText, NamesSourcesThatAreNoElements) {
    EXPECT_EQ(rowOf(explained(ssidElement("net")), "Security"),
              "Security    WEP                    capabilities: The privacy bit is set, and no\n"
              "                                   element tells of keys: WEP.\n");
}

TEST(ExplainText, EndsWithFindingsAndTheirAdvice) {
    const std::string text = explained(joined({ssidElement(""), rsnElement(2)}));
    const auto findings = text.find("\n\nnote");
    ASSERT_NE(findings, std::string::npos);
    EXPECT_EQ(text.substr(findings + 2),
              "note        Management frames are not protected: anybody can send stations away.\n"
              "            Set PMF to capable, or to required with WPA3.\n"
              "            pmf-off, clause 9.4.2.24.4; RSN @38\n"
              "note        A hidden name protects nothing: stations call it out instead.\n"
              "            Show the name.\n"
              "            hidden-name, clause 9.4.2.2; SSID @36\n");
}

// DS Parameter Set and HT Operation name different channels; EHT Operation tells no width.
TEST(ExplainText, SaysWhatWasNotTaken) {
    const std::string text =
        explained(joined({ssidElement("net"), element(3, {1}), htOperationElement(6, 0),
                          element(255, bytesOf("6A 00 11000000"))}));
    EXPECT_EQ(rowOf(text, "Channel"),
              "Channel     6, 2437 MHz            HT Operation @44: primary 6\n"
              "                                   not taken: DS Parameter Set @41, channel 1\n");
    EXPECT_EQ(rowOf(text, "Width"),
              "Width       20 MHz                 EHT Operation @68 has no operation\n"
              "            2427 to 2447           information\n"
              "                                   HT Operation @44: no secondary channel\n");
}

// The name of a network that shares the beacon, and the country, come from the air.
TEST(ExplainText, EscapesWhatComesFromTheAir) {
    const Bytes octets =
        joined({ssidElement("a\x1B[m\xE2\x80\xAE"), element(7, {0x1B, 0x5B, 0x20, 1, 13, 20}),
                element(71, bytesOf("02 00 0E 53020100 00051B5B6DE280 550101"))});
    const std::string text = explained(octets);
    EXPECT_TRUE(text.starts_with("a\\x1B[m\\u{202E}  ")) << text;
    EXPECT_NE(rowOf(text, "Country").find("\\x1B["), std::string::npos) << text;
    EXPECT_NE(rowOf(text, "Also").find("\\x1B[m\\xE2\\x80 "), std::string::npos) << text;
    EXPECT_EQ(text.find('\x1B'), std::string::npos) << text;
    EXPECT_EQ(text.find('\xE2'), std::string::npos) << text;
}

// The profile is that of an open network behind an RSN element; its own index is missing.
TEST(ExplainText, TellsFindingsOfNetworksThatShareTheBeacon) {
    const std::string text =
        explained(joined({ssidElement("net"), rsnElement(2),
                          element(71, bytesOf("02 00 0E 53020100 0005 4775657374 550101"))}));
    EXPECT_NE(text.find("\nGuest  02:00:00:00:08:2B  shares the beacon\n"), std::string::npos)
        << text;
}

TEST(ExplainText, CountsInTheElementsWithoutAFrame) {
    auto record = HalvaneMAC::initWithMAC(kAddress.buffer());
    record.setInformationElements(ByteBuffer(joined({ssidElement("net"), rsnElement(2)})));
    const std::string text = explainText({{record}}, styleOf(80));
    EXPECT_TRUE(
        text.starts_with("net  02:00:00:00:08:2A\n"
                         "27 octets of elements; @N is octet N of the elements\n"))
        << text;
    EXPECT_EQ(rowOf(text, "Ciphers"),
              "Ciphers     CCMP-128               RSN @5: pairwise and group\n");
}

TEST(ExplainText, SaysThatALaterFrameToldTheName) {
    capture::Sighting sighting =
        capture::sightingOf({.subtype = capture::BeaconSubtype::ProbeResponse, .bssid = kAddress});
    sighting.origin->frame = 12;
    sighting.frames = 3;
    sighting.isNameRevealed = true;
    const std::string text = explainText({sighting, "", -60}, styleOf(80));
    EXPECT_TRUE(
        text.starts_with("(no name)  02:00:00:00:08:2A  -60 dBm, heard 3 times\n"
                         "frame 12, probe-response, 0 octets of elements\n"
                         "@N is octet N of the 802.11 frame; earlier frames hide the name\n"))
        << text;
}

TEST(ExplainText, FitsEveryWidth) {
    std::vector<std::filesystem::path> captures;
    for (const auto& folder : {kSamples, kModern}) {
        if (!std::filesystem::exists(folder)) continue;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() == ".pcap") captures.push_back(entry.path());
        }
    }
    ASSERT_FALSE(captures.empty());
    for (const auto& path : captures) {
        for (const auto& sighting : sightingsIn(path)) {
            for (const std::size_t width : {20U, 33U, 59U, 60U, 80U, 119U, 120U, 240U}) {
                std::istringstream lines(explainText({sighting, "Maker", -50}, styleOf(width)));
                for (std::string line; std::getline(lines, line);) {
                    ASSERT_LE(cellsOf(line, {}), width) << path << '\n' << line;
                    ASSERT_FALSE(line.ends_with(' ')) << line;
                }
            }
        }
    }
}

// Two cells a letter, and a letter with a combining mark.
TEST(ExplainText, CutsNoCharacterAtAnyWidth) {
    const std::string name = "\u65E5\u672C\u8A9E\u30AB e\u0301\u65E5";
    const Bytes elements =
        joined({ssidElement(name), htOperationElement(36, 5), rsnElement(2),
                element(71, bytesOf("02 00 0E 53020100 0005 4775657374 550101"))});
    for (std::size_t width = 20; width <= 240; ++width) {
        std::istringstream lines(explained(elements, width));
        for (std::string line; std::getline(lines, line);) {
            ASSERT_LE(cellsOf(line, {}), width) << line;
            ASSERT_EQ(shownText(line, {}).octets().find("\\x"), std::string::npos) << line;
        }
    }
}

TEST(ExplainText, IsTheSameWithoutItsColors) {
    capture::BeaconFrame beacon{.bssid = kAddress};
    const Bytes elements = joined({ssidElement("net"), htOperationElement(36, 5), rsnElement(2)});
    beacon.elements = elements;
    const auto sighting = capture::sightingOf(beacon);
    TextStyle style = styleOf(80);
    const std::string plain = explainText({sighting}, style);
    style.theme = Theme(Palette::Colors16, true);
    std::string painted = explainText({sighting}, style);
    EXPECT_NE(painted.find("\x1B[1m40 MHz\x1B[m"), std::string::npos) << painted;
    for (std::size_t at = 0; (at = painted.find('\x1B', at)) != std::string::npos;) {
        painted.erase(at, painted.find('m', at) - at + 1);
    }
    EXPECT_EQ(painted, plain);
}

}  // namespace
