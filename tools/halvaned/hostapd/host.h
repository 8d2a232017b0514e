// hostapd as the daemon's host of one interface: its process, its control sockets and its stations.
//
//   Idle      nothing runs
//   Starting  hostapd runs and is not ready yet: its sockets, its radio, its stations so far
//   Ready     hostapd hosts
//   Failing   hostapd has ended by itself, or does not answer: it is started again after a pause
//   Ending    hostapd has been asked to end
//
// What hostapd tells of stations: AP-STA-CONNECTED comes when frames of a station pass, which in a
// network with WPA is after the handshake. A station that never gets that far is not told. Stations
// that hostapd has already are asked for when it becomes ready, and whenever stations() is called.
//
// Threads: the thread that runs the loop. Handlers may call the Host, but must not destroy it.
#ifndef TOOLS_HALVANED_HOSTAPD_HOST_H
#define TOOLS_HALVANED_HOSTAPD_HOST_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/model/station_change.h"
#include "halvane/platform/bus/event_loop_internal.h"

#include "tools/halvaned/hostapd/child_process.h"
#include "tools/halvaned/hostapd/control_socket.h"
#include "tools/halvaned/hostapd/event_source.h"
#include "tools/halvaned/hostapd/hostapd_file.h"
#include "tools/halvaned/hostapd/hosted_stations.h"

namespace halvane::hosting {

// Times are in microseconds.
struct HostSettings {
    std::string program = "/usr/sbin/hostapd";
    // Absolute; for the configuration, the number of the process and the sockets. It exists, and
    // nobody else may enter it. hostapd's own sockets are in the plan's controlFolder.
    std::string runtimeFolder = {};
    std::uint64_t startTimeout = 15'000'000;
    // Instead, while hostapd looks for radar (IEEE 802.11-2020, 11.8) or for a channel.
    std::uint64_t radarTimeout = 700'000'000;
    std::uint64_t replyTimeout = 3'000'000;
    std::uint64_t endTimeout = 700'000;       // from SIGTERM to SIGKILL
    std::uint64_t socketInterval = 20'000;    // between two looks for hostapd's sockets
    std::uint64_t pingInterval = 10'000'000;  // between two questions whether it still answers
    std::uint64_t firstPause = 500'000;       // before the next start; it doubles with each
    std::uint64_t longestPause = 30'000'000;
    std::uint64_t steadyTime = 60'000'000;  // after it, being ready, the next pause is the first
};

// Why a request of a Host failed.
struct HostError {
    enum class Kind {
        Busy,            // it hosts already, or still ends
        NotReady,        // it does not host
        BadPlan,         // there is no file for the plan; hostapd was not started
        Refused,         // hostapd ended before it was ready
        NoAnswer,        // hostapd did not become ready, or was lost meanwhile
        UnknownStation,  // no such station
        Stopped,         // stop() came first
    };
    Kind kind = Kind::NotReady;
    std::string text = {};  // sentences; no secret is in them
};

class Host {
  public:
    enum class State { Idle, Starting, Ready, Failing, Ending };

    using Done = std::function<void(Result<void, HostError>)>;
    using StationsDone = std::function<void(Result<std::vector<HostedStation>, HostError>)>;

    struct Handlers {
        // What happens to stations, in its order. `kicked` replaces `left`.
        std::function<void(const StationChange&)> station = {};
        // A line for the log, without secrets: what hostapd prints, what is left out of
        // configurations, why it is started again.
        std::function<void(std::string_view)> log = {};
    };

    Host(sd_event* loop, HostSettings settings, Handlers handlers);
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // Kills hostapd and removes its files. No handler is called.
    ~Host();

    State state() const { return state_; }

    // The number of hostapd's process; -1 without one.
    pid_t process() const { return child_ ? child_->process() : -1; }

    // Starts hostapd. `done` is called when it hosts, or with the reason why not: nothing runs
    // then. Stations that it has already are told after that. Once it hosts, it is started again
    // whenever it ends, until stop(). REQUIRES: SIGCHLD is blocked.
    void start(const HostapdPlan& plan, Done done);

    // Ends hostapd. `done` is called when it has ended, at once if nothing runs. Stations that it
    // did not tell as disconnected are told as left after that. A start() that waits fails.
    void stop(Done done);

    // Asks hostapd for all stations. The answer holds each that is in a network. If hostapd tells
    // nothing of one, its record has its address alone. Differences from what was told are told as
    // changes before.
    void stations(StationsDone done);

    // Sends a station away. The change is told before `done`, since hostapd tells it first.
    void kick(const MacAddress& address, const Done& done);

  private:
    struct Link;

    struct Walk;

    // Starting.
    Result<void, HostError> prepare(const HostapdPlan& plan);
    Result<void, std::string> launch();
    void startAgain();
    void startedTooLong();
    void look();
    bool connect(Link& link);
    void attach(Link& link);
    void askState();
    void stateIs(std::string_view state);
    void becomeReady();
    void becomeSteady();
    void ping();

    // Ending.
    void lost(const std::string& reason);
    void childEnded(const ChildEnd& end);
    std::string reasonFor(const ChildEnd& end) const;
    std::string refusedLine() const;
    void pauseAndStartAgain();
    void becomeIdle();
    void removeFiles() const;
    void dropTimers();
    void closeLinks();

    // Stations.
    void happened(Link& link, std::string_view message);
    void connected(Link& link, const MacAddress& address);
    void askWhetherAuthorized(Link& link, const MacAddress& address);
    void tell(const Link& link, const MacAddress& address, const HostedStations::Kinds& kinds);
    void tellAll(const std::vector<StationChange>& changes);
    std::vector<StationChange> stationsLeave();
    Link* linkOf(const MacAddress& address) const;
    void walk(StationsDone done);
    void walkOn(const std::string& command);
    void walked(const Result<std::string_view, ControlFailure>& reply);
    void finishLink(bool isWhole);
    void finishWalk(const std::vector<StationChange>& changes);
    void failWalk();

    // Words.
    void printed(std::string_view line);
    void say(const std::string& text) const;
    std::string path(const char* suffix) const;
    std::uint64_t now() const;

    sd_event* const loop_;
    const HostSettings settings_;
    const Handlers handlers_;
    State state_ = State::Idle;
    std::string interface_;
    std::string text_;                  // of the file
    std::vector<std::string> secrets_;  // that stand in it
    std::vector<std::unique_ptr<Link>> links_;
    std::unique_ptr<ChildProcess> child_;
    std::vector<std::string> firstLines_;  // that hostapd printed before it was ready
    std::string failure_;                  // why hostapd was told to end, if it was
    std::vector<StationChange> early_;     // told when it is ready
    bool isEnabled_ = false;               // hostapd says so
    bool seeksChannel_ = false;            // hostapd says so
    bool hasBeenReady_ = false;            // since start()
    bool tellsStations_ = false;           // of this hostapd: it has been ready
    std::uint64_t pause_ = 0;              // before the next start
    Done started_;
    std::vector<Done> stopped_;
    std::unique_ptr<Walk> walk_;
    EventSourcePointer startTimer_;
    EventSourcePointer lookTimer_;
    EventSourcePointer pingTimer_;
    EventSourcePointer pauseTimer_;
    EventSourcePointer steadyTimer_;
};

// "idle", "starting", "ready", "failing" or "ending". Static text.
const char* nameOf(Host::State state) noexcept;

}  // namespace halvane::hosting

#endif
