#include "tools/halvane/networks/watch_list.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace halvane::tool {

namespace {

using std::chrono::seconds;
using State = NetworkMoment::State;

constexpr seconds kNew{10};
constexpr seconds kLost{15};
constexpr seconds kGone{60};
constexpr seconds kBetweenOrders{5};

// What the order compares; networks without a signal stand behind all others.
int strengthOf(const NetworkMoment& moment) {
    constexpr int kNone = std::numeric_limits<int>::min() / 2;
    return moment.signal.value_or(kNone);
}

}  // namespace

void WatchList::add(const capture::Sighting& sighting, const HeardFrame& frame, Time now) {
    const auto address = MacAddress::fromBytes(sighting.record.mac().bytes());
    if (!address) return;
    survey_.add(sighting, frame);
    // The survey lets networks go one by one, their rows go all at once.
    if (rows_.size() >= 2 * survey_.most() && !rows_.contains(*address)) removeGone(now);
    const auto [entry, isFirst] = rows_.try_emplace(*address);
    Row& row = entry->second;
    if (isFirst) row.first = now;
    row.last = now;
    row.isChanged = true;
    if (frame.signal) row.signal.add(*frame.signal, now);
}

void WatchList::refresh(Rows::value_type& entry, Time now) {
    auto& [address, row] = entry;
    row.signal.forget(now);
    NetworkMoment& moment = row.moment;
    moment.age = (now - row.last).count();
    moment.signal = row.signal.median(now);
    moment.trend = row.signal.trend(now);
    moment.history = row.signal.history(now);
    const bool isNew = row.first >= kNew && now - row.first < kNew;
    const bool wasLost = moment.state == State::Lost;
    moment.state = now - row.last >= kLost ? State::Lost : isNew ? State::New : State::Known;
    if (wasLost && moment.state != State::Lost) row.isPlaced = false;
    if (!std::exchange(row.isChanged, false)) return;
    row.networks = survey_.networksOf(address);
    for (Network& network : row.networks) network.moment = &moment;
}

// Takes away what was not heard for long, and what the survey has let go.
void WatchList::removeGone(Time now) {
    const auto isGone = [&](const Rows::value_type& entry) {
        const bool isOld = now - entry.second.last >= kGone && !isFrozen_;
        return isOld || !survey_.contains(entry.first);
    };
    std::erase_if(order_, [&](Rows::iterator row) { return isGone(*row); });
    std::erase_if(rows_, isGone);
}

// Puts a row before the first one that is weaker or lost.
void WatchList::place(Rows::iterator row) {
    const int strength = strengthOf(row->second.moment);
    const auto place = std::ranges::find_if(order_, [&](Rows::iterator other) {
        const NetworkMoment& moment = other->second.moment;
        return moment.state == State::Lost || strengthOf(moment) < strength;
    });
    order_.insert(place, row);
    row->second.isPlaced = true;
}

void WatchList::takeOrder() {
    for (auto row = order_.begin(); row != order_.end(); ++row) {
        for (auto at = row; at != order_.begin(); --at) {
            const auto above = std::prev(at);
            const int gain = strengthOf((*at)->second.moment) - strengthOf((*above)->second.moment);
            if (gain < WatchedSignal::kChange) break;
            std::iter_swap(above, at);
        }
    }
}

void WatchList::sinkLost() {
    std::stable_partition(order_.begin(), order_.end(), [](Rows::iterator row) {
        return row->second.moment.state != State::Lost;
    });
}

void WatchList::advance(Time now) {
    removeGone(now);
    for (auto& entry : rows_) refresh(entry, now);
    std::erase_if(order_, [](Rows::iterator row) { return !row->second.isPlaced; });
    if (!isFrozen_) {
        if (now - lastOrder_ >= kBetweenOrders) {
            lastOrder_ = now;
            takeOrder();
        }
        sinkLost();
    }
    for (auto row = rows_.begin(); row != rows_.end(); ++row) {
        if (!row->second.isPlaced) place(row);
    }
}

std::vector<Network> WatchList::rows(const NetworkFilter& filter) const {
    std::vector<Network> rows;
    for (const Rows::iterator row : order_) {
        std::ranges::copy_if(row->second.networks, std::back_inserter(rows),
                             [&](const Network& network) { return filter.passes(network); });
    }
    return rows;
}

WatchList::Counts WatchList::counts() const {
    Counts counts{.networks = survey_.size(), .lost = survey_.size() - order_.size()};
    for (const Rows::iterator row : order_) {
        if (row->second.moment.state == State::New) ++counts.isNew;
        if (row->second.moment.state == State::Lost) ++counts.lost;
        counts.networks += row->second.networks.size() - 1;
    }
    return counts;
}

}  // namespace halvane::tool
