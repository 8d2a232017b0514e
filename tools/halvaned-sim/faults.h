// How the simulation misbehaves on request: for single commands, or for notifications.
#ifndef TOOLS_HALVANED_SIM_FAULTS_H
#define TOOLS_HALVANED_SIM_FAULTS_H

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/service/daemon_faults.h"

namespace halvane::sim {

enum class Fault {
    None,
    // The command is not carried out.
    Status,  // the reply has a status other than 0
    Silent,  // there is never a reply, or no notification
    Error,   // the reply is a D-Bus error
    Gone,    // the daemon leaves the bus, and comes back as another connection
    // The command is carried out, but its reply is damaged.
    Garbled,   // data is no property list
    Missing,   // lacks its data, or the status if it has no data; a notification holds only the
               // command
    Mistyped,  // every value is of another type
};

struct FaultSetting {
    Fault fault = Fault::None;
    std::int64_t status = 0;  // of Fault::Status
};

// The word for notifications among the names of commands.
inline constexpr std::string_view kEventTarget = "event";

class Faults final : public DaemonFaults {
  public:
    void set(const std::string& target, FaultSetting setting) { settings_[target] = setting; }
    void clear(const std::string& target) { settings_.erase(target); }
    void clear() { settings_.clear(); }

    FaultSetting of(std::string_view target) const {
        const auto found = settings_.find(target);
        return found != settings_.end() ? found->second : FaultSetting();
    }

    std::optional<DaemonAnswer> insteadOf(std::string_view command) override;
    IPCMessage reply(std::string_view command, IPCMessage reply) override;
    std::optional<IPCMessage> event(IPCMessage event) override;

    // "enable: status 5\n": one line per target, in the order of names.
    std::string text() const;

  private:
    std::map<std::string, FaultSetting, std::less<>> settings_;
};

// "silent" and so on; Fault::None has no word.
std::string_view wordOf(Fault fault);
std::optional<Fault> faultFor(std::string_view word);

// The message after the fault has damaged it. Other faults leave it unchanged.
IPCMessage spoilt(const IPCMessage& message, Fault fault);

}  // namespace halvane::sim

#endif
