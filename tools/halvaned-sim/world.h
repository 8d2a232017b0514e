// The simulated devices, interfaces, configurations and stations.
//
// This code does not know of a bus. It stores the events of stations until the caller takes them. A
// failed action changes nothing, and causes no event.
#ifndef TOOLS_HALVANED_SIM_WORLD_H
#define TOOLS_HALVANED_SIM_WORLD_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"

#include "tools/halvaned-sim/config_list.h"
#include "tools/halvaned-sim/notification.h"
#include "tools/halvaned-sim/station_list.h"

namespace halvane::sim {

// The most stations that may ever join. The list of all of them has to fit into one message of the
// bus. It takes up to kLargestNewcomer bytes for each station, and kLargestStationsInRange for
// everything that the stations in range add.
inline constexpr std::size_t kMaximumStations = 32768;
inline constexpr std::size_t kLargestNewcomer = 704;
inline constexpr std::size_t kLargestStationsInRange = 8 << 20;

// The deauthReason() of a station that was never sent away, and never left.
inline constexpr std::uint64_t kReasonNone = 0;

// That of a station that was sent away without a reason (IEEE 802.11-2020, 9.4.1.7).
inline constexpr std::uint64_t kReasonUnspecified = 1;

struct SimulatedInterface {
    HalvaneInterface record;
    bool isEnabled = true;
    ConfigList configs = {};
    std::vector<HalvaneClient> stations = {};   // stations in range, which join any BSS that starts
    std::optional<ByteBuffer> hostedSSID = {};  // of the BSS that is up

    const std::string& name() const { return *record.ifName(); }
};

class World {
  public:
    // REQUIRES: interfaces have a name, a role and a subsystem, names are unique, no BSS is up, and
    // a property list of all stations in range is at most kLargestStationsInRange bytes long.
    World(std::vector<HalvaneDevice> devices, std::vector<SimulatedInterface> interfaces);

    const std::vector<HalvaneDevice>& devices() const { return devices_; }
    const std::vector<SimulatedInterface>& interfaces() const { return interfaces_; }
    const SimulatedInterface* interfaceFor(std::string_view name) const;

    // All stations that have ever been associated.
    std::vector<HalvaneClient> clients() const { return stations_.clients(); }

    // The number of stations that are associated with the interface now.
    std::size_t associatedStations(const std::string& interface) const {
        return stations_.associatedWith(interface).size();
    }
    // The same for every interface that has some.
    std::map<std::string, std::size_t> associatedStations() const { return stations_.associated(); }

    // Adds the configuration, or replaces the one with the same SSID.
    DaemonStatus addConfig(std::string_view interface, const HalvaneBSSConfig& config);

    // Removes the equal configuration or, if there is none, the one with the same SSID. Stops a BSS
    // that is up with it.
    DaemonStatus removeConfig(std::string_view interface, const HalvaneBSSConfig& config);

    DaemonStatus enable(std::string_view interface);

    // Stops the BSS, if one is up.
    DaemonStatus disable(std::string_view interface);

    // Accepts any text that is not empty and that a property list can hold. Stops the BSS if one is
    // up and the role is not that of a host.
    DaemonStatus changeRole(std::string_view interface, const std::string& role);

    // Starts the configuration with the lowest preferred order; of several, the first. The stations
    // in range join and are authorized, one after the other. Does nothing while a BSS is up.
    DaemonStatus startBSS(std::string_view interface);

    // Stops the BSS. The associated stations leave, in the order in which they first joined. Does
    // nothing while no BSS is up.
    DaemonStatus stopBSS(std::string_view interface);

    // Actions by or on a station, at an interface whose BSS is up. A station that has joined may
    // join again. The other actions require that it has joined. The reason becomes the client's
    // deauthReason().
    DaemonStatus join(std::string_view interface, const ByteBuffer& mac);
    DaemonStatus authorize(std::string_view interface, const ByteBuffer& mac);
    DaemonStatus leave(std::string_view interface, const ByteBuffer& mac);
    DaemonStatus kick(std::string_view interface, const ByteBuffer& mac, std::uint64_t reason);

    // `count` new stations join.
    DaemonStatus burst(std::string_view interface, std::size_t count);

    // The events since the last call, in order.
    std::vector<Notification> takeNotifications();

  private:
    SimulatedInterface* find(std::string_view name);
    std::size_t indexOf(const SimulatedInterface& interface) const;
    std::size_t newStationsOf(const SimulatedInterface& interface) const;
    void bringUp(SimulatedInterface& interface, const HalvaneBSSConfig& config);
    void takeDown(SimulatedInterface& interface);
    void admit(const SimulatedInterface& interface, const HalvaneClient& station);
    void dismiss(HalvaneClient& client, std::uint64_t reason);
    void tell(Happening happening, const SimulatedInterface& interface, const ByteBuffer& mac);

    // Calls `change` with the interface and a station that is associated there.
    template <typename Change>
    DaemonStatus withStation(std::string_view interface, const ByteBuffer& mac, Change change);

    std::vector<HalvaneDevice> devices_;
    std::vector<SimulatedInterface> interfaces_;
    std::map<std::string, std::size_t, std::less<>> indexOfName_;
    StationList stations_;
    std::uint32_t burstStations_ = 0;
    std::vector<Notification> notifications_;
};

}  // namespace halvane::sim

#endif
