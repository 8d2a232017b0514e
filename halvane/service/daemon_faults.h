// Makes a daemon misbehave on purpose, so that its clients can be tested. No real daemon needs it.
//
// Threads: all calls come from the thread that runs the server's loop.
#ifndef HALVANE_SERVICE_DAEMON_FAULTS_H
#define HALVANE_SERVICE_DAEMON_FAULTS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// What a daemon sends instead of a message that should carry a reply.
struct DaemonAnswer {
    // How a request is answered.
    enum class Kind {
        Reply,
        Silence,   // there is never a reply
        Error,     // an error of D-Bus
        Gone,      // the daemon leaves the bus without a reply, and comes back
        NoMemory,  // an error of D-Bus: memory does not hold the reply
    };
    Kind kind = Kind::Reply;  // how the request is answered
    IPCMessage reply = {};    // of Kind::Reply
    std::string error = {};   // of Kind::Error: its name
    std::string text = {};    // of Kind::Error: for people
};

class HALVANE_EXPORT DaemonFaults {
  public:
    DaemonFaults() = default;
    DaemonFaults(const DaemonFaults&) = default;
    DaemonFaults& operator=(const DaemonFaults&) = default;
    virtual ~DaemonFaults();

    // Called for a known command before its keys are read. An answer replaces the whole request,
    // which then has no effect.
    virtual std::optional<DaemonAnswer> insteadOf(std::string_view command) = 0;

    // Returns the reply to send for a command that has been carried out.
    virtual IPCMessage reply(std::string_view command, IPCMessage reply) = 0;

    // Returns the notification to send, if any.
    virtual std::optional<IPCMessage> event(IPCMessage event) = 0;
};

}  // namespace halvane

#endif
