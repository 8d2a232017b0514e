#include "halvane/daemon/daemon_client.h"

#include <new>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/daemon/link_internal.h"
#include "halvane/daemon/pending_internal.h"
#include "halvane/daemon/requests_internal.h"

namespace halvane {

namespace {

using LinkPointer = std::shared_ptr<DaemonLink>;

template <typename T>
DaemonResult<T> readReply(DaemonReply reply, DaemonResult<T> (*read)(const IPCMessage&)) {
    try {
        return std::move(reply).and_then(read);
    } catch (const std::bad_alloc&) {
        return Unexpected(DaemonError{DaemonError::Kind::OutOfMemory});
    }
}

// The two forms of every request. `make` builds the request; a lack of memory is a failure. The
// link is held, since the client may be destroyed before the request is done.
template <typename Make>
// NOLINTNEXTLINE(performance-unnecessary-value-param)
auto call(LinkPointer link, const DaemonDeadline& deadline, Make make,
          DaemonLink::Wish wish = std::nullopt) -> decltype(make().read(IPCMessage())) {
    try {
        auto [message, read] = make();
        return readReply(link->request(std::move(message), deadline, wish), read);
    } catch (const std::bad_alloc&) {
        link->remember(wish);
        return Unexpected(DaemonError{DaemonError::Kind::OutOfMemory});
    }
}

template <typename T, typename Make>
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void call(LinkPointer link, const DaemonCompletion<T>& done, Make make,
          DaemonLink::Wish wish = std::nullopt) {
    IPCMessage message;
    DaemonLink::Completion completion;
    try {
        auto [made, read] = make();
        message = std::move(made);
        completion = [done, read = read](DaemonReply reply) {
            done(readReply(std::move(reply), read));
        };
    } catch (const std::bad_alloc&) {
        link->remember(wish);
        return done(Unexpected(DaemonError{DaemonError::Kind::OutOfMemory}));
    }
    link->request(std::move(message), std::move(completion), wish);
}

}  // namespace

DaemonClient::DaemonClient(DaemonEvents events)
    : link_(std::make_shared<DaemonLink>(std::move(events))) {
    link_->connect();
}

DaemonClient::~DaemonClient() {
    link_->end();
}

DaemonState DaemonClient::state() const {
    return link_->state();
}

// --- Lists ---

DaemonResult<DaemonClient::Devices> DaemonClient::devices(Deadline deadline) {
    return call(link_, deadline, requests::devices);
}
void DaemonClient::devices(const Done<Devices>& done) {
    call(link_, done, requests::devices);
}

DaemonResult<DaemonClient::Interfaces> DaemonClient::interfaces(Deadline deadline) {
    return call(link_, deadline, requests::interfaces);
}
void DaemonClient::interfaces(const Done<Interfaces>& done) {
    call(link_, done, requests::interfaces);
}

DaemonResult<DaemonClient::Channels> DaemonClient::channels(std::string_view interface,
                                                            Deadline deadline) {
    return call(link_, deadline, [&] { return requests::channels(interface); });
}
void DaemonClient::channels(std::string_view interface, const Done<Channels>& done) {
    call(link_, done, [&] { return requests::channels(interface); });
}

DaemonResult<DaemonClient::Configurations> DaemonClient::configurations(
    std::optional<std::string_view> interface, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::configurations(interface); });
}
void DaemonClient::configurations(std::optional<std::string_view> interface,
                                  const Done<Configurations>& done) {
    call(link_, done, [&] { return requests::configurations(interface); });
}

DaemonResult<DaemonClient::Stations> DaemonClient::stations(Deadline deadline) {
    return call(link_, deadline, requests::stations);
}
void DaemonClient::stations(const Done<Stations>& done) {
    call(link_, done, requests::stations);
}

// --- Actions ---

DaemonResult<void> DaemonClient::add(std::string_view interface,
                                     const HalvaneBSSConfig& configuration, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::add(interface, configuration); });
}
void DaemonClient::add(std::string_view interface, const HalvaneBSSConfig& configuration,
                       const Done<void>& done) {
    call(link_, done, [&] { return requests::add(interface, configuration); });
}

DaemonResult<void> DaemonClient::remove(std::string_view interface,
                                        const HalvaneBSSConfig& configuration, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::remove(interface, configuration); });
}
void DaemonClient::remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                          const Done<void>& done) {
    call(link_, done, [&] { return requests::remove(interface, configuration); });
}

DaemonResult<void> DaemonClient::enable(std::string_view interface, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::enable(interface); });
}
void DaemonClient::enable(std::string_view interface, const Done<void>& done) {
    call(link_, done, [&] { return requests::enable(interface); });
}

DaemonResult<void> DaemonClient::disable(std::string_view interface, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::disable(interface); });
}
void DaemonClient::disable(std::string_view interface, const Done<void>& done) {
    call(link_, done, [&] { return requests::disable(interface); });
}

DaemonResult<void> DaemonClient::setRole(std::string_view interface, std::string_view role,
                                         Deadline deadline) {
    return call(link_, deadline, [&] { return requests::role(interface, role); });
}
void DaemonClient::setRole(std::string_view interface, std::string_view role,
                           const Done<void>& done) {
    call(link_, done, [&] { return requests::role(interface, role); });
}

DaemonResult<void> DaemonClient::start(std::string_view interface, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::start(interface); });
}
void DaemonClient::start(std::string_view interface, const Done<void>& done) {
    call(link_, done, [&] { return requests::start(interface); });
}

DaemonResult<void> DaemonClient::stop(std::string_view interface, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::stop(interface); });
}
void DaemonClient::stop(std::string_view interface, const Done<void>& done) {
    call(link_, done, [&] { return requests::stop(interface); });
}

DaemonResult<void> DaemonClient::kick(std::string_view interface, const MacAddress& station,
                                      Deadline deadline) {
    return call(link_, deadline, [&] { return requests::kick(interface, station); });
}
void DaemonClient::kick(std::string_view interface, const MacAddress& station,
                        const Done<void>& done) {
    call(link_, done, [&] { return requests::kick(interface, station); });
}

// --- Notifications and logging ---

DaemonResult<void> DaemonClient::subscribe(bool isWanted, Deadline deadline) {
    return call(
        link_, deadline, [&] { return requests::subscribe(isWanted); }, isWanted);
}
void DaemonClient::subscribe(bool isWanted, const Done<void>& done) {
    call(
        link_, done, [&] { return requests::subscribe(isWanted); }, isWanted);
}

DaemonResult<void> DaemonClient::setLogging(const DaemonLogControls& controls, Deadline deadline) {
    return call(link_, deadline, [&] { return requests::setLogging(controls); });
}
void DaemonClient::setLogging(const DaemonLogControls& controls, const Done<void>& done) {
    call(link_, done, [&] { return requests::setLogging(controls); });
}

DaemonResult<std::string> DaemonClient::logging(Deadline deadline) {
    return call(link_, deadline, requests::logging);
}
void DaemonClient::logging(const Done<std::string>& done) {
    call(link_, done, requests::logging);
}

}  // namespace halvane
