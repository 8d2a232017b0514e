// Lines that tell the simulation what happens, and how to misbehave.
#ifndef TOOLS_HALVANED_SIM_CONTROL_H
#define TOOLS_HALVANED_SIM_CONTROL_H

#include <optional>
#include <string>
#include <string_view>

#include "tools/halvaned-sim/notification.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

// What a line asks of the connection to the bus.
struct BusAction {
    enum class Kind {
        Drop,     // give up the service's name
        Take,     // own it again
        Restart,  // leave the bus, forget the subscribers, and come back as another connection
        Quit,
        Spoof,  // send `forged` to the subscribers from a connection that does not own the name
    };
    Kind kind;
    std::optional<Notification> forged;
};

struct ControlResult {
    std::string refusal;  // why the line cannot be followed; nothing has happened then. Else empty
    std::string text;     // what the line asked to be told
    std::optional<BusAction> action;  // what is left to do
};

// Does what one line says. Its words are separated by blanks.
ControlResult control(Simulation& simulation, std::string_view line);

// What lines there are, for people: one each, with what it does.
std::string controlHelp();

}  // namespace halvane::sim

#endif
