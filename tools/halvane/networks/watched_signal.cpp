#include "tools/halvane/networks/watched_signal.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

namespace halvane::tool {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kLeastGap{50};
constexpr seconds kRecent{4};
constexpr seconds kBefore{8};
constexpr seconds kStep{5};
constexpr seconds kKept{60};
constexpr seconds kHeld{6};
constexpr int kMostBelieved = 0;  // dBm

}  // namespace

void WatchedSignal::add(int dBm, Time time) {
    forget(time);
    if (dBm > kMostBelieved) return;
    if (!samples_.empty() && time < samples_.back().time + kLeastGap) return;
    samples_.push_back({time, dBm});
}

void WatchedSignal::forget(Time now) {
    while (samples_.size() > 1 && samples_.front().time <= now - kKept) samples_.pop_front();
}

std::optional<int> WatchedSignal::medianBetween(Time after, Time until) const {
    const auto isUpTo = [](Time time, const Sample& sample) { return time < sample.time; };
    const auto begin = std::upper_bound(samples_.begin(), samples_.end(), after, isUpTo);
    const auto end = std::upper_bound(begin, samples_.end(), until, isUpTo);
    if (begin == end) return std::nullopt;
    std::vector<int> signals;
    std::transform(begin, end, std::back_inserter(signals),
                   [](const Sample& sample) { return sample.dBm; });
    const auto middle = signals.begin() + static_cast<std::ptrdiff_t>(signals.size() / 2);
    std::ranges::nth_element(signals, middle);
    return *middle;
}

std::optional<int> WatchedSignal::median(Time now) const {
    if (samples_.empty()) return std::nullopt;
    if (const auto recent = medianBetween(now - kRecent, now)) return recent;
    const Time last = samples_.back().time;
    return medianBetween(last - kRecent, last);
}

NetworkMoment::Trend WatchedSignal::trend(Time now) const {
    const auto recent = medianBetween(now - kRecent, now);
    const auto before = medianBetween(now - kRecent - kBefore, now - kRecent);
    if (!recent || !before) return NetworkMoment::Trend::Steady;
    if (*recent - *before >= kChange) return NetworkMoment::Trend::Rising;
    if (*before - *recent >= kChange) return NetworkMoment::Trend::Falling;
    return NetworkMoment::Trend::Steady;
}

std::optional<int> WatchedSignal::held(Time after, Time until) const {
    if (const auto heard = medianBetween(after, until)) return heard;
    const auto isUpTo = [](Time time, const Sample& sample) { return time < sample.time; };
    const auto next = std::upper_bound(samples_.begin(), samples_.end(), after, isUpTo);
    if (next == samples_.begin()) return std::nullopt;
    const Sample& last = *std::prev(next);
    return until - last.time < kHeld ? std::optional(last.dBm) : std::nullopt;
}

std::optional<int> WatchedSignal::best(Time now) const {
    std::optional<int> best;
    for (const Sample& sample : samples_) {
        if (sample.time > now - kKept) best = std::max(best.value_or(sample.dBm), sample.dBm);
    }
    return best;
}

decltype(NetworkMoment::history) WatchedSignal::history(Time now) const {
    decltype(NetworkMoment::history) history;
    Time until = now;
    for (std::size_t i = history.size(); i-- > 0; until -= kStep) {
        history[i] = medianBetween(until - kStep, until);
    }
    return history;
}

}  // namespace halvane::tool
