// The networks that the daemon hosts now: a Host for each interface that has some, and their
// stations.
//
// Threads: the thread that runs the loop. Handlers must not destroy it.
#ifndef TOOLS_HALVANED_HOSTING_NETWORKS_H
#define TOOLS_HALVANED_HOSTING_NETWORKS_H

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/model/client.h"
#include "halvane/model/station_change.h"
#include "halvane/platform/bus/event_loop_internal.h"

#include "tools/halvaned/hostapd/host.h"
#include "tools/halvaned/hostapd/hostapd_file.h"
#include "tools/halvaned/hosting/made_interfaces.h"
#include "tools/halvaned/hosting/station_book.h"

namespace halvane::hosting {

class Networks {
  public:
    using Told = std::function<void(const StationChange&)>;
    using Clients = std::function<void(std::vector<HalvaneClient>)>;

    // `told` learns what happens to stations. The interface of a change is the one that was
    // started, whichever of its networks the station is in.
    Networks(sd_event* loop, HostSettings settings, Told told);
    Networks(const Networks&) = delete;
    Networks& operator=(const Networks&) = delete;

    // Whether an interface hosts, is about to, or comes back after a failure.
    bool isUp(const std::string& interface) const;

    // Whether one of the networks that the interface hosts, or is about to, has that name.
    bool hosts(const std::string& interface, const std::optional<ByteBuffer>& ssid) const;

    // Whether hostapd has made the interface for one of the networks, now or before.
    bool isMade(std::string_view interface) const;
    // Whether hostapd may make an interface of that name for the other one. It would replace one
    // that is there.
    bool mayMake(const std::string& name, const std::string& interface) const;
    // The system has a new interface, or one less.
    void noteCame(const std::string& interface);
    void noteGone(const std::string& interface) { made_.remove(interface); }

    // Starts what has been waiting. Nothing starts before: what another daemon has left in the
    // runtime folder ends first.
    void open();

    // Starts hosting, and calls `done` when that is done or has failed. If the interface hosts
    // already, or a start is under way, the plan is not used, and `done` learns how that turns out.
    // An interface that comes back after a failure is started anew.
    void start(const std::string& interface, const HostapdPlan& plan, Host::Done done);

    // Ends hosting. `done` is called when nothing runs.
    void stop(const std::string& interface, std::function<void()> done);
    // The same for all interfaces. Nothing starts after that.
    void stopAll(const std::function<void()>& done);
    // Kills what still runs. REQUIRES: no handler is running.
    void killAll() { hostings_.clear(); }

    // Sends a station of the interface away, whichever of its networks it is in.
    void kick(const std::string& interface, const MacAddress& station, const Host::Done& done);

    // All stations of all networks, with what hostapd tells of them now. A network that does not
    // answer adds what is known of its stations. Of many who ask at once, each is answered in a
    // turn of the loop of its own.
    void clients(Clients done);

  private:
    struct Hosting {
        std::unique_ptr<Host> host;
        HostapdPlan plan;
        std::vector<Host::Done> waiting;  // for the start that is under way or queued
        bool isQueued = false;            // whether the start is still to come
    };

    Hosting& hostingOf(const std::string& interface);
    std::optional<std::string> hostOf(std::string_view made) const;
    void queueStart(const std::string& interface);
    void startQueued(const std::string& interface);
    void finishStart(const std::string& interface, const Result<void, HostError>& result);
    void happened(const std::string& interface, const StationChange& change);
    void askForStations();
    void answerNext();
    void noteAll(const std::string& interface, const std::vector<HostedStation>& stations);

    sd_event* const loop_;
    const HostSettings settings_;
    const Told told_;
    StationBook book_;
    bool isOpen_ = false;
    bool isClosed_ = false;
    std::map<std::string, Hosting> hostings_;
    MadeInterfaces made_;
    std::vector<Clients> asking_;  // for the question to hostapd that is under way
    std::deque<Clients> answers_;  // that are due
    EventSourcePointer nextAnswer_;
};

}  // namespace halvane::hosting

#endif
