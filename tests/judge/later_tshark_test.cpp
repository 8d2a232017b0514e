// What a later tshark, which knows EHT and Multi-Link, read in real frames. Its values are kept
// beside the frames, outside of the tree; the test is skipped if they are missing.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_info.h"
#include "halvane/air/element_range.h"
#include "halvane/air/multi_link.h"
#include "halvane/utils/text/letter_case.h"

#include "tests/air/told_paths.h"
#include "tests/judge/field_table.h"
#include "tests/support/hostile_bytes.h"
#include "tools/halvane/input/capture_reader.h"

using namespace halvane;
using namespace halvane::testing;

namespace {

struct Column {
    std::string_view title;
    air::ElementId id;
    std::string_view path;
};

constexpr Column kColumns[] = {
    {"wlan.eht.eht_operation_information.control.channel_width", air::ElementId::EhtOperation,
     "EHT Operation Information/Channel Width"},
    {"wlan.eht.eht_operation_information.ccfs0", air::ElementId::EhtOperation,
     "EHT Operation Information/CCFS0"},
    {"wlan.eht.eht_operation_information.ccfs1", air::ElementId::EhtOperation,
     "EHT Operation Information/CCFS1"},
    {"wlan.eht.eht_operation_information.disabled_subchannel_bitmap", air::ElementId::EhtOperation,
     "EHT Operation Information/Disabled Subchannel Bitmap"},
    {"wlan.eht.phy_capabilities.bits_0_15.support_for_320mhz_in_6ghz",
     air::ElementId::EhtCapabilities,
     "EHT PHY Capabilities Information/Support For 320 MHz In 6 GHz"},
    {"wlan.eht.multi_link.control.type", air::ElementId::MultiLink, "Multi-Link Control/Type"},
    {"wlan.eht.multi_link.common_info.mld_mac_address", air::ElementId::MultiLink,
     "Common Info/MLD MAC Address"},
    {"wlan.eht.multi_link.common_info.link_id_subfield.link_id", air::ElementId::MultiLink,
     "Common Info/Link ID"},
    {"wlan.eht.multi_link.common_info.bss_parameters_change_count", air::ElementId::MultiLink,
     "Common Info/BSS Parameters Change Count"},
    {"wlan.eht.multi_link.common_info.mld_id", air::ElementId::MultiLink, "Common Info/AP MLD ID"},
    {"wlan.eht.multi_link.sta_profile.sta_control.link_id", air::ElementId::MultiLink,
     "Link Info/STA Control/Link ID"},
    {"wlan.eht.multi_link.sta_profile.sta_info.sta_mac_addr", air::ElementId::MultiLink,
     "Link Info/STA Info/STA MAC Address"},
    {"wlan.rnr.tbtt_info.info_len", air::ElementId::ReducedNeighborReport,
     "Neighbor AP Information/TBTT Information Header/TBTT Information Length"},
    {"wlan.rnr.tbtt_info.channel_num", air::ElementId::ReducedNeighborReport,
     "Neighbor AP Information/Channel Number"},
    {"wlan.rnr.tbtt_info.mld_parameters.mld_id", air::ElementId::ReducedNeighborReport,
     "Neighbor AP Information/TBTT Information/MLD Parameters/AP MLD ID"},
    {"wlan.rnr.tbtt_info.mld_parameters.link_id", air::ElementId::ReducedNeighborReport,
     "Neighbor AP Information/TBTT Information/MLD Parameters/Link ID"},
};

// "0x000c" and "False" as Halvane tells them.
std::string plain(const std::string& value) {
    if (value == "True") return "1";
    if (value == "False") return "0";
    if (value.starts_with("0x")) return std::to_string(std::stoull(value, nullptr, 16));
    return value;
}

std::vector<std::string> split(const std::string& cell) {
    std::vector<std::string> values;
    std::istringstream stream(cell);
    for (std::string value; std::getline(stream, value, ',');) values.push_back(plain(value));
    return values;
}

// The values of a column in the elements, and in those of the links that they hold.
void collect(air::Octets elements, const Column& column, std::vector<std::string>& values) {
    const std::string start = std::string(column.path) + '=';
    for (const air::Element& element : air::ElementRange(elements)) {
        if (element.id == column.id) {
            ToldPaths told;
            air::elementInfo(element.id)->decoder.describe(element.body, told);
            for (const std::string& line : told.lines_) {
                if (line.starts_with(start)) values.push_back(line.substr(start.size()));
            }
        }
        if (element.id != air::ElementId::MultiLink) continue;
        const auto multiLink = air::MultiLink::decode(element.body);
        if (!multiLink) continue;
        for (const air::MultiLinkSubelement& subelement : multiLink->subelements) {
            if (subelement.link) collect(subelement.link->elements(), column, values);
        }
    }
}

std::map<std::uint64_t, Bytes> elementsIn(const std::string& path) {
    std::map<std::uint64_t, Bytes> frames;
    auto reader = tool::CaptureReader::open(path);
    while (reader) {
        const auto frame = reader->next();
        if (!frame) break;
        if (const auto* const beacon = frame->beacon()) {
            frames[frame->number] = {beacon->elements.begin(), beacon->elements.end()};
        }
    }
    return frames;
}

// Where that tshark is wrong by 802.11be. All are in frames that were made for tests of a decoder.
struct Difference {
    std::uint64_t first, last;  // frames
    std::string_view titleStart;
    std::string_view why;
};

constexpr std::string_view kMadeFrames = "linux_kunit_105.pcap";
constexpr Difference kDifferences[] = {
    {1, 8, "wlan.rnr.", "9.4.2.170: an item that the end cuts is none; tshark shows its start"},
    {6, 6, "wlan.eht.", "9.4.2.312: a common info of no octets holds no address"},
    {9, 13, "wlan.eht.multi_link.sta_profile.",
     "9.4.2.312.2.3: the link info begins after the octets that Common Info Length counts"},
    {13, 13, "wlan.rnr.tbtt_info.mld", "9.4.2.170.2: the type 1 has MLD Parameters"},
    {15, 15, "wlan.rnr.", "9.4.2.170.2: the type 1 has MLD Parameters alone, of whatever length"},
    {17, 17, "wlan.rnr.tbtt_info.mld", "9.4.2.170.2: the length 10 has BSSID and MLD Parameters"},
    {21, 21, "wlan.rnr.", "9.4.2.170: an item that the end cuts is none; tshark shows its start"},
};

bool isDifferent(const std::string& file, std::uint64_t frame, std::string_view title) {
    return file == kMadeFrames && std::ranges::any_of(kDifferences, [&](const Difference& row) {
               return row.first <= frame && frame <= row.last && title.starts_with(row.titleStart);
           });
}

TEST(LaterTshark, AgreesOnWhatAnEarlierDoesNotKnow) {
    const std::filesystem::path folder = HALVANE_MODERN;
    const auto path = folder / "TSHARK.tsv";
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "no " << path;
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    const TableRow titles = cellsOf(line);
    std::map<std::string, std::map<std::uint64_t, Bytes>> captures;
    std::size_t compared = 0;
    for (const TableRow& row : readTable(path)) {
        if (!captures.contains(row[0])) captures[row[0]] = elementsIn(folder / row[0]);
        const auto& frames = captures[row[0]];
        const std::uint64_t number = std::stoull(row[1]);
        const auto frame = frames.find(number);
        if (frame == frames.end()) continue;  // an association request
        for (const Column& column : kColumns) {
            if (isDifferent(row[0], number, column.title)) continue;
            const auto title = std::ranges::find(titles, column.title);
            ASSERT_NE(title, titles.end()) << column.title;
            const auto index = static_cast<std::size_t>(title - titles.begin());
            const auto expected = split(index < row.size() ? row[index] : "");
            std::vector<std::string> values;
            collect(frame->second, column, values);
            // It writes addresses in small letters.
            for (std::string& value : values) tolowerstr(value.data(), value.size());
            compared += std::max(expected.size(), values.size());
            EXPECT_EQ(values, expected) << row[0] << " frame " << row[1] << ": " << column.title;
        }
    }
    std::cout << compared << " comparisons\n";
    EXPECT_GT(compared, 80u);
}

}  // namespace
