// A scripted peer on the bus: a service that replies to requests and sends events, or an impostor
// of that service.
#ifndef TESTS_SUPPORT_BUS_PEER_H
#define TESTS_SUPPORT_BUS_PEER_H

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/platform/os/wake_event_internal.h"

#include "tests/support/private_bus.h"

namespace halvane::testing {

// ipcMessage({{"command", "enable"}, {"interface", "wlan0"}})
inline IPCMessage ipcMessage(std::initializer_list<PropertyListDictionary::Entry> entries) {
    PropertyListDictionary dictionary;
    for (const auto& [key, value] : entries) dictionary.set(key, value);
    return IPCMessage(std::move(dictionary));
}

// A request as it arrived on the wire, read by code other than the library's.
struct ReceivedRequest {
    struct Entry {
        std::string key;
        std::string type;         // what the variant holds: "s", "x", "b", "ay" or something else
        PropertyListValue value;  // of those four types; null for any other
    };

    std::string sender;     // the unique name of who sent it
    std::string path;       // of the object
    std::string interface;  // of the method
    std::string member;     // the method
    std::string signature;  // of the whole body
    std::vector<Entry> entries;

    // The entry of `key`, or null.
    const Entry* find(std::string_view key) const;

    // The string under "command"; empty where there is none.
    std::string command() const;

    // "command:s interface:s": what was sent, in order.
    std::string keysAndTypes() const;
};

// Replies to a request other than a message whose values have the four types.
struct PeerError {
    std::string name;  // "org.example.Error.Busy"
    std::string text;
};
struct PeerSilence {};  // nothing, until answerHeld()
struct PeerLeaves {};   // nothing: the peer loses its connection, as a process does that is killed
using PeerBody = std::function<void(sd_bus_message* message)>;  // appends any body
using PeerAnswer = std::variant<IPCMessage, PeerError, PeerSilence, PeerLeaves, PeerBody>;

// The peer runs on its own thread. Only the test's thread calls its functions; each returns when
// its work is done.
class BusPeer {
  public:
    using Script = std::function<PeerAnswer(const ReceivedRequest& request)>;

    // Connects to the bus, and owns `name` there, unless `name` is empty. The peer replies to
    // requests with {"status": 0} until a test sets another reply.
    explicit BusPeer(const PrivateBus& bus, const std::string& name = kDaemonServiceName);
    BusPeer(const BusPeer&) = delete;
    BusPeer& operator=(const BusPeer&) = delete;

    // Leaves the bus, like disconnect().
    ~BusPeer();

    // The bus's own name for the peer: ":1.7".
    const std::string& uniqueName() const { return uniqueName_; }

    // Sets the reply to later requests: one reply for all, or a function, which the peer calls on
    // its thread.
    void answer(PeerAnswer answer);
    void answerBy(Script script);

    // Replies, in order, to all requests that PeerSilence left without a reply.
    void answerHeld(const PeerAnswer& answer);

    // The requests so far.
    std::vector<ReceivedRequest> requests() const;

    // Waits for the request number `index`, counted from 0.
    ReceivedRequest waitForRequest(std::size_t index = 0);

    // Sends the signal that is an event of the service `name` to `destination`, or to all listeners
    // if that is empty.
    void sendEvent(const IPCMessage& event, const std::string& destination,
                   const std::string& name = kDaemonServiceName);
    void sendEventBody(const PeerBody& body, const std::string& destination,
                       const std::string& name = kDaemonServiceName);

    // Sends any signal, with whatever body.
    struct Signal {
        std::string path, interface, member, destination;
        std::string sender;  // what it claims to be from; empty: nothing
    };
    void sendSignal(const Signal& signal, const PeerBody& body);

    // Gives up the name; or takes it, replaces its owner, and lets others take it.
    void releaseName(const std::string& name = kDaemonServiceName);
    void ownName(const std::string& name = kDaemonServiceName);

    // Loses the connection at once, after writing what was sent.
    void disconnect();

    // Waits until the bus has disconnected the peer.
    void waitUntilDisconnected();

    // How many connections the bus has, this one included.
    std::size_t countConnections();

  private:
    using Task = std::function<void()>;

    void perform(const Task& task);
    void run();
    void runTasks();
    void processBus();
    void waitForSomething();
    void drop();

    static int requestArrived(sd_bus_message* message, void* peer, sd_bus_error*) noexcept;
    ReceivedRequest record(sd_bus_message* message);
    void reply(BusMessagePointer request, const PeerAnswer& answer);

    std::string uniqueName_;
    BusPointer bus_;
    WakeEvent wake_;
    std::vector<BusMessagePointer> held_;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Task> tasks_;
    std::vector<ReceivedRequest> requests_;
    Script script_;
    bool isDisconnected_ = false;
    bool isStopped_ = false;
    std::thread thread_;
};

}  // namespace halvane::testing

#endif
