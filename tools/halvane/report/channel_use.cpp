#include "tools/halvane/report/channel_use.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <utility>

#include "halvane/air/channel_use.h"
#include "halvane/air/neighbor.h"
#include "halvane/base/mac_address.h"

namespace halvane::tool {

namespace {

bool hasCell(const air::ChannelUse& channel, const ChannelCell& cell) {
    return channel.primaryChannel && **channel.primaryChannel == cell.number;
}

// The loads of a radio are those of its networks, which hear the same air.
std::optional<int> loadOf(const ReportData& data, const Radio& radio) {
    for (const std::size_t index : radio.networks) {
        const auto& load = data.networks[index].network.profile.load;
        if (load) return load->value.utilization;
    }
    return std::nullopt;
}

void addRadio(const ReportData& data, const Radio& radio, ChannelCell& cell) {
    const air::ChannelUse& channel = data.channelOf(radio);
    if (hasCell(channel, cell)) {
        ++cell.primaries;
        if (const auto load = loadOf(data, radio)) cell.loads.push_back(*load);
    }
    if (!reaches(channel, cell.frequency)) return;
    ++cell.radios;
    cell.networks += radio.networks.size();
    // The strongest radios come first.
    if (cell.strongest == nullptr) cell.strongest = &data.strongestOf(radio);
}

// Counts the access points that were not heard.
void addTold(const ReportData& data, std::vector<ChannelCell>& cells) {
    std::set<MacAddress> heard;
    for (const ReportNetwork& network : data.networks) heard.insert(network.network.bssid);
    std::set<std::pair<MacAddress, int>> told;
    for (const ReportNetwork& network : data.networks) {
        for (const air::Neighbor& neighbor : network.network.profile.neighbors) {
            if (!neighbor.bssid || !neighbor.frequency || heard.contains(*neighbor.bssid)) continue;
            if (!told.emplace(*neighbor.bssid, *neighbor.frequency).second) continue;
            const auto cell = std::ranges::find(cells, static_cast<double>(*neighbor.frequency),
                                                &ChannelCell::frequency);
            if (cell != cells.end()) ++cell->told;
        }
    }
}

}  // namespace

std::vector<std::size_t> radiosOf(const ReportData& data, air::Band band) {
    std::vector<std::size_t> indexes;
    for (std::size_t i = 0; i < data.radios.size(); ++i) {
        const Radio& radio = data.radios[i];
        const bool isKnown = data.channelOf(radio).span->center1.has_value();
        if (isKnown && data.bandOf(radio) == band) indexes.push_back(i);
    }
    return indexes;
}

std::vector<ChannelCell> channelCells(const ReportData& data, const ChartScale& scale,
                                      std::span<const std::size_t> radios) {
    std::vector<ChannelCell> cells;
    for (const int number : scale.channels()) {
        const auto frequency = air::centerFrequencyOf(scale.band(), number);
        if (!frequency) continue;
        ChannelCell& cell = cells.emplace_back();
        cell.number = number;
        cell.frequency = *frequency;
        for (const std::size_t index : radios) addRadio(data, data.radios[index], cell);
        std::ranges::sort(cell.loads, std::greater());
    }
    addTold(data, cells);
    return cells;
}

std::size_t mostRadios(std::span<const ChannelCell> cells) {
    std::size_t most = 0;
    for (const ChannelCell& cell : cells) most = std::max(most, cell.radios);
    return most;
}

}  // namespace halvane::tool
