#include "tools/halvaned/hostapd/hosted_stations.h"

#include "tools/halvaned/hostapd/hostapd_file.h"

namespace halvane::hosting {

using Kind = StationChange::Kind;

HostedStations::Kinds HostedStations::connected(const MacAddress& address, std::uint64_t time) {
    if (!has(address) && size() >= kMaxStations) return {};
    known_[address] = {.joinTime = time, .isAuthorized = !exchangesKeys_};
    return exchangesKeys_ ? Kinds{Kind::Joined} : Kinds{Kind::Joined, Kind::Authorized};
}

// New keys of an authorized station are no news.
HostedStations::Kinds HostedStations::authorized(const MacAddress& address) {
    const auto found = known_.find(address);
    if (found == known_.end() || found->second.isAuthorized) return {};
    found->second.isAuthorized = true;
    return {Kind::Authorized};
}

HostedStations::Kinds HostedStations::disconnected(const MacAddress& address) {
    const auto found = known_.find(address);
    if (found == known_.end()) return {};
    const Kind kind = found->second.isKicked ? Kind::Kicked : Kind::Left;
    known_.erase(found);
    return {kind};
}

bool HostedStations::setKicked(const MacAddress& address, bool isKicked) {
    const auto found = known_.find(address);
    if (found == known_.end()) return false;
    found->second.isKicked = isKicked;
    return true;
}

// A station that has joined again since then stays.
HostedStations::Kinds HostedStations::kicked(const MacAddress& address) {
    const auto found = known_.find(address);
    if (found == known_.end() || !found->second.isKicked) return {};
    return disconnected(address);
}

bool HostedStations::isAuthorized(const MacAddress& address) const {
    const auto found = known_.find(address);
    return found != known_.end() && found->second.isAuthorized;
}

}  // namespace halvane::hosting
