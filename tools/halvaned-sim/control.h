// Control lines: they tell the simulation what happens, and how to misbehave.
#ifndef TOOLS_HALVANED_SIM_CONTROL_H
#define TOOLS_HALVANED_SIM_CONTROL_H

#include <optional>
#include <string>
#include <string_view>

#include "tools/halvaned-sim/notification.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

// The action that a line requires of the connection to the bus.
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
    std::string refusal;              // why the line was refused and nothing happened; else empty
    std::string text;                 // the text that the line asked for
    std::optional<BusAction> action;  // the action that is left to do
};

// Carries out one line. Blanks separate its words.
ControlResult control(Simulation& simulation, std::string_view line);

// The list of lines for people: one line each, with its meaning.
std::string controlHelp();

}  // namespace halvane::sim

#endif
