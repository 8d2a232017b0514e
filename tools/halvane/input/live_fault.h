// Why an interface cannot be listened to, or not any longer.
#ifndef TOOLS_HALVANE_INPUT_LIVE_FAULT_H
#define TOOLS_HALVANE_INPUT_LIVE_FAULT_H

#include <string>

namespace halvane::tool {

enum class LiveProblem {
    NoSuchInterface,
    NotPermitted,
    NotMonitor,  // its frames are not 802.11
    Down,
    WentAway,     // while it was listened to
    LeftMonitor,  // likewise
    Other,
};

struct LiveFault {
    LiveProblem problem = LiveProblem::Other;
    std::string interface {};
    int linkType = 0;    // of NotMonitor: the number as captures have it
    std::string text{};  // of Other: the system's words
};

}  // namespace halvane::tool

#endif
