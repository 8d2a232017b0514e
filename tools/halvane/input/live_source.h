// The packets that network interfaces hear now, through libpcap.
//
// The interfaces are in monitor mode. A source belongs to one thread at a time; distinct sources
// are independent.
#ifndef TOOLS_HALVANE_INPUT_LIVE_SOURCE_H
#define TOOLS_HALVANE_INPUT_LIVE_SOURCE_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/capture/link_type.h"

#include "tools/halvane/input/live_fault.h"
#include "tools/halvane/input/packet_source.h"

namespace halvane::tool {

struct LiveOptions {
    int snapshotLength = 262144;  // octets that are kept of a packet
    // The kernel hands packets over in groups, at the latest after this time.
    std::chrono::milliseconds delay{100};
    // Descriptors that end a wait once they are readable: an event, signals, the keyboard. The
    // source does not read them.
    std::vector<int> interrupts{};
};

struct LiveInterface {
    std::string name;
    capture::LinkType linkType = capture::LinkType::Radiotap;
    int snapshotLength = 0;
    bool isDown = false;  // for now: it goes on once the interface is up again
    bool hasEnded = false;
};

// Since the opening. What was lost never became a packet.
struct LiveCounts {
    std::uint64_t received = 0;            // by the kernel, with those that it dropped
    std::uint64_t droppedByKernel = 0;     // no room was left: the program was too slow
    std::uint64_t droppedByInterface = 0;  // as far as its driver tells
};

class LiveSource : public PacketSource {
  public:
    using Clock = std::chrono::steady_clock;
    using Opened = Result<std::unique_ptr<LiveSource>, LiveFault>;

    // Why next() returned no packet.
    enum class Pause { None, Deadline, Interrupt };

    // Listens to all of them, or, if one of them does not work, to none.
    // REQUIRES: `names` is not empty, and names none twice.
    static Opened open(const std::vector<std::string>& names, const LiveOptions& options);

    // From this time on next() returns no packet. Absent: it waits for ever.
    virtual void setDeadline(std::optional<Clock::time_point> deadline) = 0;

    // Waits for a packet. Returns none at the deadline, and when an interrupt is readable; more may
    // follow. An interface that ends is added to faults(); the others go on. The error is the text
    // of the last one's fault: no packet follows.
    NextPacket next() override = 0;

    // Of the last call of next().
    virtual Pause pause() const = 0;

    // In the order of the names: Packet::interface counts them.
    virtual const std::vector<LiveInterface>& interfaces() const = 0;

    // Of the interfaces that have ended, in the order of their ends.
    virtual const std::vector<LiveFault>& faults() const = 0;

    // Of one interface, also after its end.
    // REQUIRES: `interface` is less than interfaces().size().
    virtual LiveCounts counts(std::size_t interface) = 0;

    // Of all interfaces.
    LiveCounts counts();
};

}  // namespace halvane::tool

#endif
