#include "tools/halvaned-sim/station_list.h"

#include <utility>

namespace halvane::sim {

bool StationList::has(const std::string& interface, const ByteBuffer& mac) const {
    return index_.count({mac, interface}) > 0;
}

HalvaneClient* StationList::find(const std::string& interface, const ByteBuffer& mac) {
    const auto found = index_.find({mac, interface});
    return found != index_.end() ? &stations_[found->second].client : nullptr;
}

HalvaneClient& StationList::add(const std::string& interface, HalvaneClient client) {
    const auto added = index_.emplace(Key(client.mac(), interface), stations_.size()).first;
    try {
        stations_.push_back({interface, std::move(client)});
    } catch (...) {
        index_.erase(added);
        throw;
    }
    return stations_.back().client;
}

std::vector<HalvaneClient> StationList::clients() const {
    std::vector<HalvaneClient> clients;
    clients.reserve(stations_.size());
    for (const Station& station : stations_) clients.push_back(station.client);
    return clients;
}

std::map<std::string, std::size_t> StationList::associated() const {
    std::map<std::string, std::size_t> counts;
    for (const auto& [where, client] : stations_) {
        if (client.isAssociated()) ++counts[where];
    }
    return counts;
}

std::vector<ByteBuffer> StationList::associatedWith(const std::string& interface) const {
    std::vector<ByteBuffer> addresses;
    for (const auto& [where, client] : stations_) {
        if (where == interface && client.isAssociated()) addresses.push_back(client.mac());
    }
    return addresses;
}

}  // namespace halvane::sim
