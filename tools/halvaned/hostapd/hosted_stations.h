// The stations of one network, and what has been told of them.
//
// Threads: as for an ordinary container.
#ifndef TOOLS_HALVANED_HOSTAPD_HOSTED_STATIONS_H
#define TOOLS_HALVANED_HOSTAPD_HOSTED_STATIONS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/station_change.h"

#include "tools/halvaned/hostapd/control_message.h"

namespace halvane::hosting {

// A station of a network.
struct HostedStation {
    std::string interface;       // of its network
    StationRecord record;        // as hostapd tells it now
    std::uint64_t joinTime = 0;  // microseconds of system up-time
};

// Turns what hostapd says of stations into changes (docs/protocol.md). Each function returns the
// kinds of changes to tell of that station, in their order.
class HostedStations {
  public:
    using Kinds = std::vector<StationChange::Kind>;

    struct Known {
        std::uint64_t joinTime = 0;  // microseconds of system up-time
        bool isAuthorized = false;
        bool isKicked = false;  // the daemon sends it away
    };

    // Whether stations of the network exchange keys before their frames pass.
    explicit HostedStations(bool exchangesKeys) : exchangesKeys_(exchangesKeys) {}

    // A station is associated, or associated again. Beyond kMaxStations it is not kept, and nothing
    // is told.
    Kinds connected(const MacAddress& address, std::uint64_t time);

    // Its frames pass.
    Kinds authorized(const MacAddress& address);

    Kinds disconnected(const MacAddress& address);

    // The daemon sends it away, or has failed to. Returns whether there is such a station.
    bool setKicked(const MacAddress& address, bool isKicked);

    // hostapd says that the kick is done. Empty if it has told of the end itself.
    Kinds kicked(const MacAddress& address);

    bool has(const MacAddress& address) const { return known_.contains(address); }
    bool isAuthorized(const MacAddress& address) const;
    std::size_t size() const { return known_.size(); }
    const std::unordered_map<MacAddress, Known>& known() const { return known_; }

    void clear() { known_.clear(); }

  private:
    bool exchangesKeys_;
    std::unordered_map<MacAddress, Known> known_;
};

}  // namespace halvane::hosting

#endif
