// How long to wait before each further attempt: twice as long every time, within bounds.
//
// Threads: only one thread at a time may use an object.
#ifndef HALVANE_DAEMON_BACK_OFF_INTERNAL_H
#define HALVANE_DAEMON_BACK_OFF_INTERNAL_H

#include <algorithm>
#include <chrono>
#include <utility>

namespace halvane {

class BackOff {
  public:
    static constexpr std::chrono::milliseconds kShortest{100};
    static constexpr std::chrono::milliseconds kLongest{10000};

    std::chrono::milliseconds next() {
        return std::exchange(delay_, std::min(delay_ * 2, kLongest));
    }

    // The attempt succeeded: the next delay is the shortest again.
    void reset() { delay_ = kShortest; }

  private:
    std::chrono::milliseconds delay_ = kShortest;
};

}  // namespace halvane

#endif
