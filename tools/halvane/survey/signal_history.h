// The signals of a network over time, in slots of equal length. However long the network is heard,
// there are at most kMostSlots of them: where there would be more, slots become twice as long.
//
// The result does not depend on the order of the frames, and adding two histories gives that of all
// their frames.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_SURVEY_SIGNAL_HISTORY_H
#define TOOLS_HALVANE_SURVEY_SIGNAL_HISTORY_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace halvane::tool {

class SignalHistory {
  public:
    static constexpr std::size_t kMostSlots = 128;
    static constexpr std::int64_t kFinestSlot = 62'500'000;  // nanoseconds

    // What was heard in a slot. Slots without a signal are not kept, so that a pause of years costs
    // nothing.
    struct Slot {
        std::int64_t index = 0;  // counts slots since 1970-01-01 00:00 UTC
        std::int64_t sum = 0;    // of all signals, dBm
        std::uint32_t count = 0;
        std::int8_t least = 0;  // dBm
        std::int8_t greatest = 0;

        double mean() const { return static_cast<double>(sum) / count; }
        void add(const Slot& other);
    };

    // Notes a signal; `time` in nanoseconds since 1970-01-01 00:00 UTC. Signals that a
    // SignalHistogram does not believe are left out.
    void add(std::int64_t time, int dBm);
    void add(const SignalHistory& other);

    // By time.
    std::span<const Slot> slots() const { return slots_; }
    // Nanoseconds.
    std::int64_t slotLength() const { return kFinestSlot << doublings_; }

  private:
    void hold(const Slot& slot);
    void doubleLength();
    void shrink();

    std::vector<Slot> slots_;
    int doublings_ = 0;
};

}  // namespace halvane::tool

#endif
