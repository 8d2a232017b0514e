// Elements whose values were worked out by hand from the figures of the standard, octet by octet,
// without any program. They are those that tshark 4.0 does not know (see tests/judge).
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/eht_phy_capabilities.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/air/profile.h"

#include "tests/air/element_samples.h"
#include "tests/air/told_paths.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using halvane::testing::ToldPaths;
using namespace halvane::air;

namespace {

struct Row {
    std::string_view what;
    std::string_view clause;
    ElementId id;
    std::string_view hex;  // of the body
    // Told in this order, perhaps with others between them.
    std::vector<std::string_view> told;
    // Told nowhere, as the beginning of a line.
    std::vector<std::string_view> untold{};
};

Bytes elementOf(ElementId id, std::string_view hex) {
    Bytes bytes = bytesOf(hex);
    if (const auto extension = extensionOf(id)) bytes.insert(bytes.begin(), *extension);
    bytes.insert(bytes.begin(), {idOctetOf(id), static_cast<std::uint8_t>(bytes.size())});
    return bytes;
}

std::vector<std::string> toldOf(const Row& row) {
    const Bytes octets = elementOf(row.id, row.hex);
    const Element element = *ElementRange(octets).begin();
    ToldPaths told;
    const VendorElementInfo* const vendor =
        row.id == ElementId::Vendor ? vendorElementInfo(element.body) : nullptr;
    const bool isDamaged =
        vendor != nullptr ? vendor->decoder.describe(element.body.subspan(4), told).has_value()
                          : elementInfo(row.id)->decoder.describe(element.body, told).has_value();
    EXPECT_FALSE(isDamaged) << row.what;
    return told.lines_;
}

void expectTold(const Row& row) {
    SCOPED_TRACE(std::string(row.what) + ", " + std::string(row.clause));
    const std::vector<std::string> told = toldOf(row);
    std::string all;
    for (const std::string& line : told) all += line + '\n';
    auto next = told.begin();
    for (const std::string_view line : row.told) {
        const auto found = std::find(next, told.end(), line);
        EXPECT_TRUE(found != told.end()) << line << " in\n" << all;
        if (found != told.end()) next = found + 1;
    }
    for (const std::string_view start : row.untold) {
        EXPECT_TRUE(std::ranges::none_of(
            told, [&](const std::string& line) { return line.starts_with(start); }))
            << start << " in\n"
            << all;
    }
}

// --- EHT ---

TEST(AirHandWorked, EhtOperation) {
    const Row rows[] = {
        // 0x03: information and bitmap. Width 4 is 320 MHz; the primary 160 MHz are centred on 47
        // (0x2F), the whole on 31 (0x1F). 0x3000: the 13th and the 14th subchannel.
        {"320 MHz, two subchannels disabled",
         "802.11be 9.4.2.311",
         ElementId::EhtOperation,
         "03 44444444 04 2F 1F 0030",
         {"EHT Operation Parameters/EHT Operation Information Present=1",
          "EHT Operation Parameters/Disabled Subchannel Bitmap Present=1",
          "EHT Operation Parameters/EHT Default PE Duration=0",
          "Basic EHT-MCS and Nss Set/Rx Max NSS That Supports EHT-MCS 0-7=4",
          "Basic EHT-MCS and Nss Set/Tx Max NSS That Supports EHT-MCS 12-13=4",
          "EHT Operation Information/Channel Width=4", "EHT Operation Information/CCFS0=47",
          "EHT Operation Information/CCFS1=31",
          "EHT Operation Information/Disabled Subchannel Bitmap=12288"}},
        // 0x01: information alone. 80 MHz centred on 155 (0x9B). 0x21: 1 stream received and 2
        // sent with MCS 0 to 7; 0x10: 0 and 1 with MCS 12 and 13.
        {"80 MHz, unlike streams",
         "802.11be 9.4.2.311",
         ElementId::EhtOperation,
         "01 21 11 11 10 02 9B 00",
         {"Basic EHT-MCS and Nss Set/Rx Max NSS That Supports EHT-MCS 0-7=1",
          "Basic EHT-MCS and Nss Set/Tx Max NSS That Supports EHT-MCS 0-7=2",
          "Basic EHT-MCS and Nss Set/Rx Max NSS That Supports EHT-MCS 12-13=0",
          "Basic EHT-MCS and Nss Set/Tx Max NSS That Supports EHT-MCS 12-13=1",
          "EHT Operation Information/Channel Width=2", "EHT Operation Information/CCFS0=155",
          "EHT Operation Information/CCFS1=0"},
         {"EHT Operation Information/Disabled"}},
        // 0x3C = 0011 1100: PE duration (bit 2), limit (bit 3), exponent 3 (bits 4 and 5).
        {"no information",
         "802.11be 9.4.2.311",
         ElementId::EhtOperation,
         "3C 11111111",
         {"EHT Operation Parameters/EHT Operation Information Present=0",
          "EHT Operation Parameters/EHT Default PE Duration=1",
          "EHT Operation Parameters/Group Addressed BU Indication Limit=1",
          "EHT Operation Parameters/Group Addressed BU Indication Exponent=3"},
         {"EHT Operation Information/"}},
    };
    for (const Row& row : rows) expectTold(row);
}

TEST(AirHandWorked, EhtCapabilities) {
    const Row rows[] = {
        // MAC 0x7056: bits 1, 2, 4, 6, 12, 13 and 14. 0x56 = 0101 0110, 0x70 = 0111 0000.
        // PHY, each octet with the least significant bit first:
        //   0x62: bits 1, 5, 6;
        //   0xDB: 1101 1011: bits 7-9 are 0 and 1 1 = 6, 10-12 are 0 1 1 = 6, 13-15 are 0 1 1 = 6;
        //   0x88: 1000 1000: bits 16-18 are 0, 19-21 are 1, 22 and 23 are 0 and 1;
        //   0x00: bit 24 is 0, so that bits 22-24 are 2;
        //   0x38: 0011 1000: bit 35, and bits 36-39 are 3;
        //   0xF8: 1111 1000: bits 43 (PPE), 44-45 are 3, 46 and 47 are 1;
        //   0xF8: 1111 1000: bits 48-50 are 0, so that 46-50 are 3; 51-54 are 15, 55 (DUP);
        //   0x12: 0001 0010: bits 57 and 60;
        //   0x04: 0000 0100: bit 66.
        {"every field of the two words",
         "802.11be 9.4.2.313.2 and 9.4.2.313.3",
         ElementId::EhtCapabilities,
         "5670 62DB8800 38F8F81204 222222",
         {"EHT MAC Capabilities Information/EPCS Priority Access Support=0",
          "EHT MAC Capabilities Information/EHT OM Control Support=1",
          "EHT MAC Capabilities Information/Triggered TXOP Sharing Mode 1 Support=1",
          "EHT MAC Capabilities Information/Restricted TWT Support=1",
          "EHT MAC Capabilities Information/SCS Traffic Description Support=0",
          "EHT MAC Capabilities Information/Maximum MPDU Length=1",
          "EHT MAC Capabilities Information/EHT TRS Support=0",
          "EHT MAC Capabilities Information/EHT Link Adaptation Support=3",
          "EHT MAC Capabilities Information/Unsolicited EPCS Priority Access Parameter Update=1",
          "EHT PHY Capabilities Information/Support For 320 MHz In 6 GHz=1",
          "EHT PHY Capabilities Information/SU Beamformer=1",
          "EHT PHY Capabilities Information/SU Beamformee=1",
          "EHT PHY Capabilities Information/Beamformee SS (<= 80 MHz)=6",
          "EHT PHY Capabilities Information/Beamformee SS (= 160 MHz)=6",
          "EHT PHY Capabilities Information/Beamformee SS (= 320 MHz)=6",
          "EHT PHY Capabilities Information/Number Of Sounding Dimensions (<= 80 MHz)=0",
          "EHT PHY Capabilities Information/Number Of Sounding Dimensions (= 160 MHz)=1",
          "EHT PHY Capabilities Information/Number Of Sounding Dimensions (= 320 MHz)=2",
          "EHT PHY Capabilities Information/EHT MU PPDU With 4x EHT-LTF And 0.8 us GI=1",
          "EHT PHY Capabilities Information/Max Nc=3",
          "EHT PHY Capabilities Information/PPE Thresholds Present=1",
          "EHT PHY Capabilities Information/Common Nominal Packet Padding=3",
          "EHT PHY Capabilities Information/Maximum Number Of Supported EHT-LTFs=3",
          "EHT PHY Capabilities Information/Support Of MCS 15=15",
          "EHT PHY Capabilities Information/Support Of EHT DUP In 6 GHz=1",
          "EHT PHY Capabilities Information/Non-OFDMA UL MU-MIMO (BW <= 80 MHz)=1",
          "EHT PHY Capabilities Information/Non-OFDMA UL MU-MIMO (BW = 160 MHz)=0",
          "EHT PHY Capabilities Information/MU Beamformer (BW <= 80 MHz)=1",
          "EHT PHY Capabilities Information/20 MHz-Only Limited Capabilities Support=1",
          "Supported EHT-MCS And NSS Set And EHT PPE Thresholds=222222"}},
    };
    for (const Row& row : rows) expectTold(row);
}

// 802.11be 9.4.2.313.4. The octets of a map are for MCS 0 to 9, 10 to 11 and 12 to 13; the lower
// half of each is what is received, the upper half what is sent.
TEST(AirHandWorked, EhtMcsMaps) {
    struct MapRow {
        std::string_view what;
        std::string_view hePhy;  // bit 1: 40 MHz at 2.4 GHz, 2: 40 and 80, 3: 160 MHz
        bool has320;
        EhtSender sender;
        std::string_view hex;
        std::vector<int> streams;  // received with MCS 9 and 13, sent with MCS 11, of each map
    };
    const MapRow rows[] = {
        {"80 MHz", "04", false, EhtSender::AccessPoint, "42 32 21", {2, 1, 3}},
        {"160 MHz", "0C", false, EhtSender::AccessPoint, "444444 222211", {4, 4, 4, 2, 1, 2}},
        {"320 MHz",
         "0C",
         true,
         EhtSender::AccessPoint,
         "444444 332222 221100",
         {4, 4, 4, 3, 2, 2, 2, 0, 1}},
        {"20 MHz alone, from an access point",
         "00",
         false,
         EhtSender::AccessPoint,
         "22 22 11",
         {2, 1, 2}},
    };
    for (const MapRow& row : rows) {
        SCOPED_TRACE(row.what);
        HePhyCapabilities he;
        he.bits.octets[0] = bytesOf(row.hePhy)[0];
        EhtPhyCapabilities eht;
        eht.bits.octets[0] = row.has320 ? 2 : 0;
        const auto sets = EhtMcsSets::decode(bytesOf(row.hex), eht, he, row.sender);
        ASSERT_TRUE(sets);
        EXPECT_FALSE(sets->only20);
        std::vector<int> streams;
        for (const auto& map : {sets->upTo80, sets->at160, sets->at320}) {
            if (!map) continue;
            streams.push_back(map->rxStreams(9));
            streams.push_back(map->rxStreams(13));
            streams.push_back(map->txStreams(11));
        }
        EXPECT_EQ(streams, row.streams);
        EXPECT_EQ(sets->rest.size(), 0u);
    }
    // Four octets, for MCS 0 to 7, 8 to 9, 10 to 11 and 12 to 13.
    const auto station = EhtMcsSets::decode(bytesOf("22 21 11 10"), {}, {}, EhtSender::Station);
    ASSERT_TRUE(station);
    ASSERT_TRUE(station->only20);
    EXPECT_EQ(station->only20->rxStreams(7), 2);
    EXPECT_EQ(station->only20->rxStreams(8), 1);
    EXPECT_EQ(station->only20->txStreams(9), 2);
    EXPECT_EQ(station->only20->rxStreams(12), 0);
    EXPECT_FALSE(station->upTo80);
}

// --- Links ---

TEST(AirHandWorked, MultiLink) {
    const Row rows[] = {
        // Control 0x03F0: type 0, the presence bits 4 to 9. The common info has 16 octets with its
        // length. Medium synchronization delay 0x1320: 0x20 times 32 us, threshold 3, 1 TXOP.
        // EML 0x2827: EMLSR, padding 3 (bits 1-3), transition 2 (bits 4-6), timeout 5 (11-14).
        // MLD 0x34B2: 2 (bits 0-3), SRS (4), TID-to-link 1 (5-6), separation 9 (7-11: 0x480),
        // AAR (12), link reconfiguration (13).
        // STA control 0x09F1: link 1, complete (4), address (5), interval (6), TSF (7), DTIM (8),
        // change count (11); its info has 20 octets with its length.
        // STA control 0x0233: link 3, complete, address (5), NSTR (9) of one octet (10).
        // STA control 0x0204: link 4, NSTR, but no bitmap, because the profile is not complete.
        {"basic, two links",
         "802.11be 9.4.2.312.2",
         ElementId::MultiLink,
         "F003 10 020000000A01 02 05 2013 2728 B234 00 "
         "00 1B F109 14 020000000A11 6400 FEFFFFFFFFFFFFFF 0103 07 1104 030124 "
         "00 0A 3302 08 020000000A31 05 00 03 0402 01",
         {"Multi-Link Control/Type=0",
          "Common Info/MLD MAC Address=02:00:00:00:0A:01",
          "Common Info/Link ID=2",
          "Common Info/BSS Parameters Change Count=5",
          "Common Info/Medium Synchronization Duration=32",
          "Common Info/"
          "Medium Synchronization OFDM ED Threshold=3",
          "Common Info/"
          "Medium Synchronization Maximum Number Of TXOPs=1",
          "Common Info/EML Capabilities/EMLSR Support=1",
          "Common Info/EML Capabilities/EMLSR Padding Delay=3",
          "Common Info/EML Capabilities/EMLSR Transition Delay=2",
          "Common Info/EML Capabilities/EMLMR Support=0",
          "Common Info/EML Capabilities/Transition Timeout=5",
          "Common Info/MLD Capabilities And Operations/Maximum Number Of Simultaneous Links less "
          "1=2",
          "Common Info/MLD Capabilities And Operations/SRS Support=1",
          "Common Info/MLD Capabilities And Operations/"
          "TID-To-Link Mapping Negotiation Support=1",
          "Common Info/MLD Capabilities And Operations/"
          "Frequency Separation For STR/AP MLD Type Indication=9",
          "Common Info/MLD Capabilities And Operations/AAR Support=1",
          "Common Info/MLD Capabilities And Operations/Link Reconfiguration Operation Support=1",
          "Common Info/MLD Capabilities And Operations/Aligned TWT Support=0",
          "Common Info/AP MLD ID=0",
          "Link Info/STA Control/Link ID=1",
          "Link Info/STA Control/Complete Profile=1",
          "Link Info/STA Info/STA MAC Address=02:00:00:00:0A:11",
          "Link Info/STA Info/Beacon Interval=100",
          "Link Info/STA Info/TSF Offset=-2",
          "Link Info/STA Info/DTIM Count=1",
          "Link Info/STA Info/DTIM Period=3",
          "Link Info/STA Info/BSS Parameters Change Count=7",
          "Link Info/STA Profile=1104030124",
          "Link Info/STA Control/Link ID=3",
          "Link Info/STA Info/STA MAC Address=02:00:00:00:0A:31",
          "Link Info/STA Info/NSTR Indication Bitmap=5",
          "Link Info/STA Control/Link ID=4",
          "Link Info/STA Control/NSTR Link Pair Present=1",
          "Link Info/STA Info/STA Info Length=1",
          "Link Info/STA Profile="}},
        // The common info is three octets longer than its presence bits say; the link info stands
        // after them. NSTR bitmap of two octets (bits 9 and 10): 0x8001.
        {"basic, longer than known",
         "802.11be 9.4.2.312.2.3",
         ElementId::MultiLink,
         "1000 0B 020000000A01 04 BEEF01 00 05 1506 03 0180",
         {"Common Info/Link ID=4", "Link Info/STA Control/Link ID=5",
          "Link Info/STA Info/NSTR Indication Bitmap=32769"},
         {"Common Info/BSS Parameters", "Link Info/STA Info/Further octets"}},
        // Control 0x0011: type 1, AP MLD ID (bit 4). STA control 0x0013: link 3, whole profile.
        {"probe request",
         "802.11be 9.4.2.312.3",
         ElementId::MultiLink,
         "1100 02 07 00 02 1300",
         {"Multi-Link Control/Type=1", "Common Info/AP MLD ID=7", "Link Info/STA Control/Link ID=3",
          "Link Info/STA Control/Complete Profile Requested=1"}},
    };
    for (const Row& row : rows) expectTold(row);
}

// The header is 16 bits: type, filtered, count less 1 in bits 4 to 7, length in bits 8 to 15. Then
// class 81 (0x51), channel 6, offset 10 TU. BSS Parameters 0x42: same SSID (bit 1), co-located (6).
// PSD 0xEC: -20. MLD Parameters 0x201302: MLD 2, link 3, change count 1, link disabled (bit 21).
TEST(AirHandWorked, ReducedNeighborReportOfEachLength) {
    struct LengthRow {
        std::string_view hex;  // after the offset
        bool hasBssid, hasShortSsid, hasParameters, hasPsd, hasMld;
    };
    const LengthRow rows[] = {
        {"", false, false, false, false, false},                                    // 1
        {"42", false, false, true, false, false},                                   // 2
        {"78563412", false, true, false, false, false},                             // 5
        {"78563412 42", false, true, true, false, false},                           // 6
        {"0200000000AA", true, false, false, false, false},                         // 7
        {"0200000000AA 42", true, false, true, false, false},                       // 8
        {"0200000000AA 42 EC", true, false, true, true, false},                     // 9
        {"0200000000AA 021320", true, false, false, false, true},                   // 10
        {"0200000000AA 78563412", true, true, false, false, false},                 // 11
        {"0200000000AA 78563412 42", true, true, true, false, false},               // 12
        {"0200000000AA 78563412 42 EC", true, true, true, true, false},             // 13
        {"0200000000AA 78563412 42 EC 021320", true, true, true, true, true},       // 16
        {"0200000000AA 78563412 42 EC 021320 FFFF", true, true, true, true, true},  // 18
    };
    for (const LengthRow& row : rows) {
        const std::size_t length = 1 + bytesOf(row.hex).size();
        char head[] = "00__51060A";
        constexpr char kDigits[] = "0123456789ABCDEF";
        head[2] = kDigits[length / 16];
        head[3] = kDigits[length % 16];
        const std::string hex = std::string(head) + std::string(row.hex);
        const std::string item = "Neighbor AP Information/TBTT Information/";
        std::vector<std::string> told = {item + "Neighbor AP TBTT Offset=10"};
        std::vector<std::string> untold;
        const auto add = [&](bool isThere, const std::string& name,
                             std::initializer_list<const char*> values) {
            if (!isThere) untold.push_back(item + name);
            for (const char* const value : values) {
                if (isThere) told.push_back(item + name + value);
            }
        };
        add(row.hasBssid, "BSSID", {"=02:00:00:00:00:AA"});
        add(row.hasShortSsid, "Short SSID", {"=305419896"});
        add(row.hasParameters, "BSS Parameters/",
            {"OCT Recommended=0", "Same SSID=1", "Multiple BSSID=0", "Co-Located AP=1"});
        add(row.hasPsd, "20 MHz PSD", {"=-20"});
        add(row.hasMld, "MLD Parameters/",
            {"AP MLD ID=2", "Link ID=3", "BSS Parameters Change Count=1", "All Updates Included=0",
             "Disabled Link Indication=1"});
        const std::string what = "length " + std::to_string(length);
        expectTold({what,
                    "802.11be 9.4.2.170.2",
                    ElementId::ReducedNeighborReport,
                    hex,
                    {told.begin(), told.end()},
                    {untold.begin(), untold.end()}});
    }
}

TEST(AirHandWorked, ReducedNeighborReportOfOtherForms) {
    const Row rows[] = {
        // 0x0324: type 0, filtered (bit 2), three access points (bits 4-7 are 2), length 3, which
        // is reserved: each has three octets that say nothing. Then a channel with length 1.
        {"reserved length",
         "802.11be 9.4.2.170.2",
         ElementId::ReducedNeighborReport,
         "2403 51 01 0A0B0C 0A0B0C 0A0B0C 0001 51 0B FF",
         {"Neighbor AP Information/TBTT Information Header/Filtered Neighbor AP=1",
          "Neighbor AP Information/TBTT Information Header/TBTT Information Count less 1=2",
          "Neighbor AP Information/Channel Number=1", "Neighbor AP Information/Channel Number=11",
          "Neighbor AP Information/TBTT Information/Neighbor AP TBTT Offset=255"},
         {"Neighbor AP Information/TBTT Information/BSSID"}},
        // 0x0311: type 1, two access points, length 3: MLD parameters alone. 0xF00F00: MLD 0,
        // link 15, change count 0, and the reserved upper half with the updates (bit 20) and the
        // disabled link (bit 21).
        {"type 1",
         "802.11be 9.4.2.170.2",
         ElementId::ReducedNeighborReport,
         "1103 83 25 000FF0 FF2010",
         {"Neighbor AP Information/TBTT Information Header/TBTT Information Field Type=1",
          "Neighbor AP Information/TBTT Information/MLD Parameters/AP MLD ID=0",
          "Neighbor AP Information/TBTT Information/MLD Parameters/Link ID=15",
          "Neighbor AP Information/TBTT Information/MLD Parameters/BSS Parameters Change Count=0",
          "Neighbor AP Information/TBTT Information/MLD Parameters/All Updates Included=1",
          "Neighbor AP Information/TBTT Information/MLD Parameters/Disabled Link Indication=1",
          "Neighbor AP Information/TBTT Information/MLD Parameters/AP MLD ID=255",
          "Neighbor AP Information/TBTT Information/MLD Parameters/Link ID=0",
          "Neighbor AP Information/TBTT Information/MLD Parameters/BSS Parameters Change Count=2",
          "Neighbor AP Information/TBTT Information/MLD Parameters/All Updates Included=1"}},
    };
    for (const Row& row : rows) expectTold(row);
}

TEST(AirHandWorked, TidToLinkMapping) {
    const Row rows[] = {
        // 0x1A: both directions (2), switch time (bit 3), duration (bit 4). 0x81: TIDs 0 and 7.
        {"both directions",
         "802.11be 9.4.2.314",
         ElementId::TidToLinkMapping,
         "1A 81 3412 563412 0300 0480",
         {"TID-To-Link Control/Direction=2", "TID-To-Link Control/Default Link Mapping=0",
          "TID-To-Link Control/Link Mapping Size=0",
          "TID-To-Link Control/Link Mapping Presence Indicator=129", "Mapping Switch Time=4660",
          "Expected Duration=1193046", "Link Mapping Of TID 0=3", "Link Mapping Of TID 7=32772"}},
        // 0x21: uplink (1), maps of one octet (bit 5). 0x06: TIDs 1 and 2.
        {"maps of one octet",
         "802.11be 9.4.2.314",
         ElementId::TidToLinkMapping,
         "21 06 04 80",
         {"TID-To-Link Control/Direction=1", "TID-To-Link Control/Link Mapping Size=1",
          "Link Mapping Of TID 1=4", "Link Mapping Of TID 2=128"},
         {"Mapping Switch Time", "Expected Duration", "Link Mapping Of TID 0"}},
        // 0x06: both directions, default mapping (bit 2), so that no indicator follows.
        {"default",
         "802.11be 9.4.2.314",
         ElementId::TidToLinkMapping,
         "06",
         {"TID-To-Link Control/Direction=2", "TID-To-Link Control/Default Link Mapping=1"},
         {"TID-To-Link Control/Link Mapping Presence", "Link Mapping"}},
    };
    for (const Row& row : rows) expectTold(row);
}

TEST(AirHandWorked, MultiLinkTrafficAndBandwidthIndication) {
    const Row rows[] = {
        // 0x0012: bitmaps of 3 bits (2 and 1), from AID offset 1 (bits 4 to 14).
        {"traffic",
         "802.11be 9.4.2.315",
         ElementId::MultiLinkTraffic,
         "1200 A501",
         {"Multi-Link Traffic Indication Control/Bitmap Size less 1=2",
          "Multi-Link Traffic Indication Control/AID Offset=1",
          "Per-Link Traffic Indication List=a501"}},
        // 0x02: bitmap (bit 1). Width 3 is 160 MHz: the primary 80 MHz on 42, the whole on 50.
        {"bandwidth",
         "802.11be 9.4.2.319",
         ElementId::BandwidthIndication,
         "02 03 2A 32 0200",
         {"Bandwidth Indication Parameters/Disabled Subchannel Bitmap Present=1",
          "Bandwidth Indication Information/Channel Width=3",
          "Bandwidth Indication Information/CCFS0=42", "Bandwidth Indication Information/CCFS1=50",
          "Bandwidth Indication Information/Disabled Subchannel Bitmap=2"}},
        {"bandwidth without bitmap",
         "802.11be 9.4.2.319",
         ElementId::BandwidthIndication,
         "00 02 9B 00",
         {"Bandwidth Indication Information/Channel Width=2",
          "Bandwidth Indication Information/CCFS0=155"},
         {"Bandwidth Indication Information/Disabled"}},
    };
    for (const Row& row : rows) expectTold(row);
}

// --- Others ---

TEST(AirHandWorked, Twt) {
    const Row rows[] = {
        // Control 0x28: broadcast schedules (bits 2-3 are 2), wake duration in TU (bit 5).
        // Request type 0x2892: command 1 (bits 1-3), trigger (4), recommendation 1 (7-9: 0x080),
        // exponent 10 (10-14: 0x2800). Broadcast info 0x0509: restricted (bit 0), ID 1 (3-7),
        // persistence 5. 0x03: both TID bitmaps hold.
        {"broadcast, restricted",
         "802.11be 9.4.2.199",
         ElementId::Twt,
         "28 9228 3412 10 0002 0905 03 0F F0",
         {"Control/Negotiation Type=2", "Control/Wake Duration Unit=1",
          "Broadcast TWT Parameter Set/TWT Request=0",
          "Broadcast TWT Parameter Set/TWT Setup Command=1",
          "Broadcast TWT Parameter Set/Trigger=1",
          "Broadcast TWT Parameter Set/Last Broadcast Parameter Set=0",
          "Broadcast TWT Parameter Set/Broadcast TWT Recommendation=1",
          "Broadcast TWT Parameter Set/TWT Wake Interval Exponent=10",
          "Broadcast TWT Parameter Set/Target Wake Time=4660",
          "Broadcast TWT Parameter Set/Nominal Minimum TWT Wake Duration=16",
          "Broadcast TWT Parameter Set/TWT Wake Interval Mantissa=512",
          "Broadcast TWT Parameter Set/Restricted TWT Traffic Info Present=1",
          "Broadcast TWT Parameter Set/Broadcast TWT ID=1",
          "Broadcast TWT Parameter Set/Broadcast TWT Persistence=5",
          "Broadcast TWT Parameter Set/DL TID Bitmap Valid=1",
          "Broadcast TWT Parameter Set/UL TID Bitmap Valid=1",
          "Broadcast TWT Parameter Set/Restricted TWT DL TID Bitmap=15",
          "Broadcast TWT Parameter Set/Restricted TWT UL TID Bitmap=240"}},
        // Control 0x40: the link bitmap comes at the end. Request type 0xAB69: request (bit 0),
        // command 4 (bits 1-3), implicit (5), unannounced (6), flow 6 (7-9: 0x300), exponent 10,
        // protection (15).
        {"individual, with links",
         "802.11be 9.4.2.199",
         ElementId::Twt,
         "40 69AB 0100000000000000 40 0002 01 0500",
         {"Control/Link ID Bitmap Present=1", "Individual TWT Parameter Set/TWT Request=1",
          "Individual TWT Parameter Set/TWT Setup Command=4",
          "Individual TWT Parameter Set/Trigger=0", "Individual TWT Parameter Set/Implicit=1",
          "Individual TWT Parameter Set/Flow Type=1",
          "Individual TWT Parameter Set/TWT Flow Identifier=6",
          "Individual TWT Parameter Set/TWT Wake Interval Exponent=10",
          "Individual TWT Parameter Set/TWT Protection=1",
          "Individual TWT Parameter Set/Target Wake Time=1",
          "Individual TWT Parameter Set/TWT Channel=1",
          "Individual TWT Parameter Set/Link ID Bitmap=5"}},
    };
    for (const Row& row : rows) expectTold(row);
}

TEST(AirHandWorked, RsnOverride) {
    const Row rows[] = {
        // After OUI and type the body of RSN: version 1, CCMP, one CCMP, SAE, 0x00C0: PMF required
        // (bit 6) and capable (bit 7).
        {"first",
         "Wi-Fi Alliance WPA3 3.4",
         ElementId::Vendor,
         "506F9A29 0100 000FAC04 0100 000FAC04 0100 000FAC08 C000",
         {"Version=1", "Group Data Cipher Suite=CCMP-128", "Pairwise Cipher Suite=CCMP-128",
          "AKM Suite=SAE", "RSN Capabilities/Management Frame Protection Required=1",
          "RSN Capabilities/Management Frame Protection Capable=1"}},
        // GCMP-256 (9), SAE with the group-dependent hash (24), no PMKID, BIP-GMAC-256 (12).
        {"second",
         "Wi-Fi Alliance WPA3 3.4",
         ElementId::Vendor,
         "506F9A2A 0100 000FAC04 0100 000FAC09 0100 000FAC18 C000 0000 000FAC0C",
         {"Group Data Cipher Suite=CCMP-128", "Pairwise Cipher Suite=GCMP-256",
          "AKM Suite=SAE-EXT-KEY", "PMKID Count=0", "Group Management Cipher Suite=BIP-GMAC-256"}},
        // 0x20: one octet (bits 0-3 are 0), SAE hash-to-element (bit 5).
        {"extension",
         "Wi-Fi Alliance WPA3 3.4",
         ElementId::Vendor,
         "506F9A2B 20",
         {"Extended RSN Capabilities/Field Length=0",
          "Extended RSN Capabilities/SAE Hash-to-element=1", "Extended RSN Capabilities/SAE-PK=0"}},
    };
    for (const Row& row : rows) expectTold(row);
}

// 802.11be 35.15.2: bit k of the bitmap is the subchannel k from the lowest frequency on. At 6 GHz
// the number n has the frequency 5950 + 5n MHz.
TEST(AirHandWorked, PuncturingAndCentres) {
    struct ChannelRow {
        std::string_view what;
        std::string_view heOperation;   // with 6 GHz Operation Information
        std::string_view ehtOperation;  // body
        int primary, width, center;
        std::uint16_t punctured;
    };
    const ChannelRow rows[] = {
        // Primary 37 (0x25). HE tells 160 MHz: 39 (0x27) and 47 (0x2F). Centre 31 is 6105 MHz.
        {"320 MHz, lower of the two", "000002 00 FCFF 25 03 27 2F 06", "03 11111111 04 2F 1F 0030",
         37, 320, 6105, 0x3000},
        // The same primary in the other channel of 320 MHz: centre 63 (0x3F) is 6265 MHz.
        {"320 MHz, upper of the two", "000002 00 FCFF 25 03 27 2F 06", "03 11111111 04 2F 3F 0100",
         37, 320, 6265, 0x0001},
        // 80 MHz with centre 39: channels 33, 37, 41 and 45; the last one is disabled.
        {"80 MHz", "000002 00 FCFF 25 02 27 00 06", "03 11111111 02 27 00 0800", 37, 80, 6145, 8},
    };
    for (const ChannelRow& row : rows) {
        SCOPED_TRACE(row.what);
        Bytes elements = elementOf(ElementId::HeOperation, row.heOperation);
        const Bytes eht = elementOf(ElementId::EhtOperation, row.ehtOperation);
        elements.insert(elements.end(), eht.begin(), eht.end());
        const BssProfile profile = profileOf(elements, {}, {});
        ASSERT_TRUE(profile.channel.primaryChannel);
        EXPECT_EQ(**profile.channel.primaryChannel, row.primary);
        EXPECT_EQ(profile.channel.span->width, row.width);
        EXPECT_EQ(profile.channel.span->center1, row.center);
        ASSERT_TRUE(profile.channel.punctured);
        EXPECT_EQ(**profile.channel.punctured, row.punctured);
    }
}

}  // namespace
