// What a request of the daemon comes to: its result, or why there is none.
//
// Plain values; threads as for what they hold.
#ifndef HALVANE_DAEMON_DAEMON_RESULT_H
#define HALVANE_DAEMON_DAEMON_RESULT_H

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

#include "halvane/base/export.h"
#include "halvane/base/result.h"

namespace halvane {

// Why a request has no result. Making one allocates nothing.
struct HALVANE_EXPORT DaemonError {
    enum class Kind {
        Refused,         // the daemon answered with a status other than 0
        Denied,          // the bus does not let the caller through, or the daemon answered with an
                         // error of D-Bus
        NoDaemon,        // nobody owns the daemon's name: the request was not delivered
        DaemonLeft,      // the daemon went away before it answered; it may have done what was asked
        BusGone,         // there is no bus, or it went away before the answer; the same
        DeadlinePassed,  // the daemon has not answered in time; it may yet do what was asked
        Undecodable,     // the answer is not what the protocol has for the request
        Unsendable,      // a text in the request has no form on the bus, or all of it is too long
        Ending,          // the client is being destroyed, or belongs to another process
        OutOfMemory,     // the request or its answer does not fit
    };

    Kind kind = Kind::BusGone;

    // The daemon's status, where it refused; else 0.
    std::int64_t status = 0;

    // The kind in words, as the end of a sentence: "the daemon answered with an error status".
    // Static text.
    const char* text() const noexcept;

    friend bool operator==(const DaemonError&, const DaemonError&) = default;
};

template <typename T>
using DaemonResult = Result<T, DaemonError>;

// Who takes a result that is not waited for.
// REQUIRES: throws nothing; an exception ends the program.
template <typename T>
using DaemonCompletion = std::function<void(DaemonResult<T>)>;

// When a blocking request gives up: never, or at a point of the steady clock.
class DaemonDeadline {
  public:
    using Clock = std::chrono::steady_clock;

    // Never.
    constexpr DaemonDeadline() = default;

    constexpr DaemonDeadline(Clock::time_point end) : end_(end) {}

    // So long from now on; never, for what is beyond the clock's range.
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
    bool hasPassed() const { return end_ && *end_ <= Clock::now(); }

  private:
    std::optional<Clock::time_point> end_;
};

}  // namespace halvane

#endif
