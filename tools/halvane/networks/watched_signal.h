// The signals of one network over the last minute.
//
// Times are nanoseconds of one clock that does not go back, of any origin. For one thread.
#ifndef TOOLS_HALVANE_NETWORKS_WATCHED_SIGNAL_H
#define TOOLS_HALVANE_NETWORKS_WATCHED_SIGNAL_H

#include <chrono>
#include <deque>
#include <optional>

#include "tools/halvane/survey/network_moment.h"

namespace halvane::tool {

class WatchedSignal {
  public:
    using Time = std::chrono::nanoseconds;

    // A change of less is noise, dB.
    static constexpr int kChange = 4;

    // Of frames that follow each other within 50 ms the first counts, so that the memory has an
    // end. A signal above 0 dBm is not believed.
    void add(int dBm, Time time);

    // Forgets what is older than a minute, but for the last signal.
    void forget(Time now);

    // The median of the last 4 s; without a frame in these, that of the 4 s up to the last frame.
    // Of an even number the stronger of the two in the middle.
    std::optional<int> median(Time now) const;

    // Whether the median of the last 4 s differs from that of the 8 s before by kChange or more.
    NetworkMoment::Trend trend(Time now) const;

    // The median of what was heard later than `after`, up to `until`. Without a frame in that time,
    // the last signal before it, which is held for 6 s.
    std::optional<int> held(Time after, Time until) const;

    // The greatest of the last minute.
    std::optional<int> best(Time now) const;

    // The medians of the last twelve times 5 s.
    decltype(NetworkMoment::history) history(Time now) const;

  private:
    struct Sample {
        Time time;
        int dBm;
    };

    // Of the samples later than `after`, up to `until`.
    std::optional<int> medianBetween(Time after, Time until) const;

    std::deque<Sample> samples_;  // the oldest first
};

}  // namespace halvane::tool

#endif
