#include "tools/halvane/networks/watch_list.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/output/glyphs.h"

namespace halvane::tool {

namespace {

using std::chrono::seconds;
using State = NetworkMoment::State;

constexpr seconds kNew{10};
constexpr seconds kLost{15};
constexpr seconds kGone{60};
constexpr seconds kBetweenOrders{5};

// Values for an order depend on no terminal.
const CellSurroundings& orderSurroundings() {
    static const CellSurroundings surroundings{
        .glyphs = glyphsOf(GlyphSet::ASCII), .rules = {}, .list = ListKind::Watch};
    return surroundings;
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
    if (wasLost && moment.state != State::Lost) row.isOutOfPlace = true;
    if (std::exchange(row.isChanged, false)) {
        row.networks = survey_.networksOf(address);
        for (Network& network : row.networks) network.moment = &moment;
    }
    if (row.networks.empty()) return;
    row.values = orderValuesOf(row.networks.front(), networkOrder_, orderSurroundings());
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

// Puts a row before the first one that it stands before, or that is lost.
void WatchList::place(Rows::iterator row) {
    const auto place = std::ranges::find_if(order_, [&](Rows::iterator other) {
        return other->second.moment.state == State::Lost ||
               standsBefore(row->second.values, other->second.values, networkOrder_);
    });
    row->second.isPlaced = true;
    row->second.isOutOfPlace = isFrozen_;
    order_.insert(isFrozen_ ? order_.end() : place, row);
}

void WatchList::takeOrder() {
    for (auto row = order_.begin(); row != order_.end(); ++row) {
        for (auto at = row; at != order_.begin(); --at) {
            const auto above = std::prev(at);
            if (!standsBefore((*at)->second.values, (*above)->second.values, networkOrder_,
                              WatchedSignal::kChange)) {
                break;
            }
            std::iter_swap(above, at);
        }
    }
}

// An order that was asked for comes at once, and whole.
void WatchList::takeNewOrder() {
    std::stable_sort(order_.begin(), order_.end(), [&](Rows::iterator left, Rows::iterator right) {
        return standsBefore(left->second.values, right->second.values, networkOrder_);
    });
    sinkLost();
}

// Takes the rows out of the order that are to come to their places anew.
void WatchList::takeOutOfPlace() {
    std::erase_if(order_, [](Rows::iterator row) { return row->second.isOutOfPlace; });
    for (auto& [address, row] : rows_) {
        if (std::exchange(row.isOutOfPlace, false)) row.isPlaced = false;
    }
}

void WatchList::sinkLost() {
    std::stable_partition(order_.begin(), order_.end(), [](Rows::iterator row) {
        return row->second.moment.state != State::Lost;
    });
}

void WatchList::sortBy(const NetworkOrder& order) {
    networkOrder_ = order;
    isNewOrder_ = true;
}

void WatchList::advance(Time now) {
    removeGone(now);
    for (auto& entry : rows_) refresh(entry, now);
    if (!isFrozen_) takeOutOfPlace();
    if (std::exchange(isNewOrder_, false)) takeNewOrder();
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

const WatchedSignal* WatchList::signalOf(const MacAddress& address) const {
    const auto own = rows_.find(address);
    if (own != rows_.end()) return &own->second.signal;
    const auto teller = std::ranges::find_if(rows_, [&](const Rows::value_type& entry) {
        return std::ranges::count(entry.second.networks, address, &Network::bssid) > 0;
    });
    return teller == rows_.end() ? nullptr : &teller->second.signal;
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
