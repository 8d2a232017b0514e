#include "tools/halvane/survey/signal_history.h"

#include <algorithm>
#include <utility>

#include "tools/halvane/survey/signal_histogram.h"

namespace halvane::tool {

namespace {

// Towards the past.
std::int64_t finestIndexOf(std::int64_t time) {
    const std::int64_t index = time / SignalHistory::kFinestSlot;
    return time % SignalHistory::kFinestSlot < 0 ? index - 1 : index;
}

}  // namespace

void SignalHistory::Slot::add(const Slot& other) {
    sum += other.sum;
    count += other.count;
    least = std::min(least, other.least);
    greatest = std::max(greatest, other.greatest);
}

void SignalHistory::hold(const Slot& slot) {
    // Frames mostly come in their order.
    auto place = slots_.end();
    if (!slots_.empty() && slots_.back().index >= slot.index) {
        place = std::ranges::lower_bound(slots_, slot.index, {}, &Slot::index);
    }
    if (place != slots_.end() && place->index == slot.index) {
        place->add(slot);
    } else {
        slots_.insert(place, slot);
    }
}

void SignalHistory::doubleLength() {
    ++doublings_;
    std::vector<Slot> slots;
    slots.reserve(slots_.size());
    for (Slot slot : slots_) {
        slot.index >>= 1;
        if (!slots.empty() && slots.back().index == slot.index) {
            slots.back().add(slot);
        } else {
            slots.push_back(slot);
        }
    }
    slots_ = std::move(slots);
}

void SignalHistory::shrink() {
    while (slots_.size() > kMostSlots) doubleLength();
}

void SignalHistory::add(std::int64_t time, int dBm) {
    if (dBm > SignalHistogram::kMost) return;
    const int signal = std::max(dBm, SignalHistogram::kLeast);
    const auto level = static_cast<std::int8_t>(signal);
    hold({.index = finestIndexOf(time) >> doublings_,
          .sum = signal,
          .count = 1,
          .least = level,
          .greatest = level});
    shrink();
}

void SignalHistory::add(const SignalHistory& other) {
    while (doublings_ < other.doublings_) doubleLength();
    for (Slot slot : other.slots_) {
        slot.index >>= doublings_ - other.doublings_;
        hold(slot);
    }
    shrink();
}

}  // namespace halvane::tool
