// Questions to the kernel's configuration of 802.11 (nl80211), and its events.
//
// A channel belongs to one thread at a time; distinct channels are independent.
#ifndef TOOLS_HALVANE_INPUT_NL80211_CHANNEL_H
#define TOOLS_HALVANE_INPUT_NL80211_CHANNEL_H

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/input/netlink_attributes.h"

namespace halvane::tool {

// Why a question has no answer.
struct Nl80211Fault {
    enum class Kind {
        NoFamily,  // the kernel has no nl80211
        Refused,   // by the kernel, with an error of <errno.h>
        Lost,      // between the kernel and this program
    };

    Kind kind = Kind::Lost;
    int error = 0;       // of Refused, above 0
    std::string text{};  // of Lost

    bool operator==(const Nl80211Fault&) const = default;
};

struct Nl80211Request {
    std::uint8_t command = 0;
    NetlinkAttributeList attributes{};
    bool isList = false;  // its answer is a list of messages
};

struct Nl80211Answer {
    // Each begins with the header of generic netlink.
    std::vector<std::vector<std::uint8_t>> messages;
    // The list changed while it was sent: entries may be missing, or stand there twice.
    bool isInterrupted = false;
};

// Events that have come so far.
struct Nl80211Events {
    // As those of an answer.
    std::vector<std::vector<std::uint8_t>> messages{};
    bool wereLost = false;  // others found no room
};

class Nl80211Channel {
  public:
    using Clock = std::chrono::steady_clock;
    using Message = std::vector<std::uint8_t>;
    using Opened = Result<std::unique_ptr<Nl80211Channel>, Nl80211Fault>;

    // Every kernel has the family "nlctrl", with which tests try the channel.
    static Opened open(const std::string& family = "nl80211");

    virtual ~Nl80211Channel() = default;

    // Asks, and waits for the whole answer.
    virtual Result<Nl80211Answer, Nl80211Fault> ask(const Nl80211Request& request) = 0;

    // From now on keeps the events of the group, and of the groups before.
    virtual std::optional<Nl80211Fault> subscribe(const std::string& group) = 0;

    // Waits for the next event. Absent at the deadline, and once `interrupt` is readable (-1:
    // nothing interrupts).
    virtual Result<std::optional<Message>, Nl80211Fault> nextEvent(Clock::time_point deadline,
                                                                   int interrupt) = 0;

    // For a loop that waits itself: a descriptor that is readable while events wait, from the first
    // subscribe() on (-1 before it), and the events that are there now, without waiting. Of very
    // many it returns some, and the descriptor stays readable.
    virtual int eventDescriptor() const = 0;
    virtual Result<Nl80211Events, Nl80211Fault> readyEvents() = 0;
};

}  // namespace halvane::tool

#endif
