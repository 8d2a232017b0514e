// The part of a Wi-Fi daemon that knows radios. DaemonServer (daemon_server.h) does the rest:
// docs/daemon.md shows how to write a daemon.
//
// Each function gets a reply, which the backend calls at once or keeps and calls later, when a
// child process or the kernel has answered. The functions therefore never have to block. Replies
// may be called in any order.
//
// Arguments are valid during the call alone: a backend that replies later copies what it needs.
// They have the types of the protocol, but no further checks: a name may be of no interface, a role
// or a configuration may make no sense. A refused request should change nothing.
//
// Threads: all calls come from the thread that runs the server's loop, and replies and tell() have
// to be called on it.
#ifndef HALVANE_SERVICE_BACKEND_H
#define HALVANE_SERVICE_BACKEND_H

#include <optional>
#include <string_view>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"       // IWYU pragma: export
#include "halvane/model/bss_config.h"       // IWYU pragma: export
#include "halvane/model/client.h"           // IWYU pragma: export
#include "halvane/model/device.h"           // IWYU pragma: export
#include "halvane/model/interface.h"        // IWYU pragma: export
#include "halvane/model/station_change.h"   // IWYU pragma: export
#include "halvane/regulatory/channel.h"     // IWYU pragma: export
#include "halvane/service/backend_reply.h"  // IWYU pragma: export

namespace halvane {

// Learns what happens to stations.
class HALVANE_EXPORT StationListener {
  public:
    // A station joined, left, was authorized or was sent away.
    virtual void happened(const StationChange& change) = 0;

  protected:
    StationListener() = default;
    StationListener(const StationListener&) = default;
    StationListener& operator=(const StationListener&) = default;
    ~StationListener() = default;
};

// REQUIRES of each function: throws nothing but std::bad_alloc, which loses the reply.
class HALVANE_EXPORT Backend {
  public:
    Backend() = default;
    Backend(const Backend&) = delete;
    Backend& operator=(const Backend&) = delete;
    virtual ~Backend();

    // Lists. An interface needs a name, a role and a subsystem, or clients leave it out.
    virtual void devices(BackendReply<std::vector<HalvaneDevice>> reply) = 0;
    virtual void interfaces(BackendReply<std::vector<HalvaneInterface>> reply) = 0;
    virtual void channels(std::string_view interface,
                          BackendReply<std::vector<HalvaneChannel>> reply) = 0;
    // Of one interface, or of all.
    virtual void configurations(std::optional<std::string_view> interface,
                                BackendReply<std::vector<HalvaneBSSConfig>> reply) = 0;
    // Of all interfaces.
    virtual void stations(BackendReply<std::vector<HalvaneClient>> reply) = 0;

    // Actions on an interface.
    virtual void add(std::string_view interface, const HalvaneBSSConfig& configuration,
                     BackendReply<void> reply) = 0;
    virtual void remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                        BackendReply<void> reply) = 0;
    virtual void enable(std::string_view interface, BackendReply<void> reply) = 0;
    virtual void disable(std::string_view interface, BackendReply<void> reply) = 0;
    virtual void changeRole(std::string_view interface, std::string_view role,
                            BackendReply<void> reply) = 0;
    virtual void start(std::string_view interface, BackendReply<void> reply) = 0;
    virtual void stop(std::string_view interface, BackendReply<void> reply) = 0;

    // Sends an associated station away. Unless a backend can do so, it replies
    // DaemonStatus::UnknownCommand.
    virtual void kick(std::string_view interface, const MacAddress& station,
                      BackendReply<void> reply);

    // The server sets itself as the listener, and null when it ends.
    void setListener(StationListener* listener) { listener_ = listener; }

  protected:
    // Tells subscribers what happened to a station, in the order of the calls. What is told during
    // one of the functions above reaches them after that function, so a reply that it calls comes
    // first. Otherwise reply to a request before you tell its effects.
    void tell(const StationChange& change) const {
        if (listener_ != nullptr) listener_->happened(change);
    }

  private:
    StationListener* listener_ = nullptr;
};

}  // namespace halvane

#endif
