// How the simulation misbehaves where it was told to: for one command each, or for notifications.
#ifndef TOOLS_HALVANED_SIM_FAULTS_H
#define TOOLS_HALVANED_SIM_FAULTS_H

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane::sim {

enum class Fault {
    None,
    // The command is not carried out.
    Status,  // another status than 0 is the answer
    Silent,  // there is never an answer; of notifications: none is sent
    Error,   // an error of D-Bus is the answer
    Gone,    // the daemon leaves the bus, and comes back as another connection
    // The command is carried out, the answer is spoilt.
    Garbled,   // data is no property list
    Missing,   // lacks what was asked for, or the status where that is all; of notifications: all
               // but the command
    Mistyped,  // every value is of another type
};

struct FaultSetting {
    Fault fault = Fault::None;
    std::int64_t status = 0;  // of Fault::Status
};

// What stands for notifications among the names of commands.
inline constexpr std::string_view kEventTarget = "event";

class Faults {
  public:
    void set(const std::string& target, FaultSetting setting) { settings_[target] = setting; }
    void clear(const std::string& target) { settings_.erase(target); }
    void clear() { settings_.clear(); }

    FaultSetting of(std::string_view target) const {
        const auto found = settings_.find(target);
        return found != settings_.end() ? found->second : FaultSetting();
    }

    // "enable: status 5\n", a line a target, in the order of their names.
    std::string text() const;

  private:
    std::map<std::string, FaultSetting, std::less<>> settings_;
};

// "silent" and so on; Fault::None has no word.
std::string_view wordOf(Fault fault);
std::optional<Fault> faultFor(std::string_view word);

// The message with the fault that spoils it; as it is for those that do not.
IPCMessage spoilt(const IPCMessage& message, Fault fault);

}  // namespace halvane::sim

#endif
