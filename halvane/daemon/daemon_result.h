// The outcome of a request to the daemon: its result, or the reason why there is none.
//
// Plain values. Threads: as for their members.
#ifndef HALVANE_DAEMON_DAEMON_RESULT_H
#define HALVANE_DAEMON_DAEMON_RESULT_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

#include "halvane/base/export.h"
#include "halvane/base/result.h"

namespace halvane {

// The reason why a request has no result. Creating an error allocates nothing.
struct HALVANE_EXPORT DaemonError {
    // What went wrong.
    enum class Kind {
        Refused,         // the daemon returned a status other than 0
        Denied,          // the bus's policy forbids the request
        NoDaemon,        // nobody owns the daemon's name, so the request was not delivered
        DaemonLeft,      // the daemon went away before its reply; it may have acted all the same
        BusGone,         // the bus is missing or went away; in the latter case the daemon may have
                         // acted
        DeadlinePassed,  // the daemon has not replied in time; it may still act
        Undecodable,     // the reply does not follow the protocol
        Unsendable,      // a text in the request cannot be sent over the bus, or the request is too
                         // long
        Ending,          // the client is being destroyed, or belongs to another process
        OutOfMemory,     // the request or its reply does not fit into memory
        Failed,          // the daemon or the bus returned another D-Bus error
    };

    Kind kind = Kind::BusGone;  // what went wrong

    // The daemon's status if the kind is Refused, otherwise 0.
    std::int64_t status = 0;

    // The kind in words, as the end of a sentence: "the daemon answered with an error status". The
    // text is static.
    const char* text() const noexcept;

    friend bool operator==(const DaemonError&, const DaemonError&) = default;
};

// The value of a request, or the reason why there is none.
template <typename T>
using DaemonResult = Result<T, DaemonError>;

// Receives the result of a request that does not block.
// REQUIRES: throws nothing; an exception ends the program.
template <typename T>
using DaemonCompletion = std::function<void(DaemonResult<T>)>;

// When a blocking request gives up: at a point of the steady clock, or never.
class DaemonDeadline {
  public:
    using Clock = std::chrono::steady_clock;  // unaffected by changes of the time of day

    // Never.
    constexpr DaemonDeadline() = default;

    // At `end`.
    constexpr DaemonDeadline(Clock::time_point end) : end_(end) {}

    // The given time from now on. A time beyond the clock's range means never.
    template <typename Count, typename Period>
    DaemonDeadline(std::chrono::duration<Count, Period> left) {
        const auto now = Clock::now();
        const std::chrono::duration<double> seconds = left;
        if (seconds.count() <= 0) {
            end_ = now;
        } else if (seconds < Clock::time_point::max() - now) {
            end_ = now + std::chrono::duration_cast<Clock::duration>(left);
        }
    }

    constexpr const std::optional<Clock::time_point>& end() const { return end_; }
    // Whether the time has come. Never, if there is no end.
    bool hasPassed() const { return end_ && *end_ <= Clock::now(); }

  private:
    std::optional<Clock::time_point> end_;
};

}  // namespace halvane

#endif
