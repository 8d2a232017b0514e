// The networks that are heard now: what was heard when, how it changes, and in which order it
// stands. Rows stand still as far as they can.
//
// Times are those of a clock that does not go back, since the start of the watch; the caller has
// the clock. A list keeps no more networks than it is told to (Survey). For one thread.
#ifndef TOOLS_HALVANE_NETWORKS_WATCH_LIST_H
#define TOOLS_HALVANE_NETWORKS_WATCH_LIST_H

#include <chrono>
#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/network_order.h"
#include "tools/halvane/networks/watched_signal.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

class WatchList {
  public:
    using Time = WatchedSignal::Time;

    // REQUIRES: most > 0.
    explicit WatchList(std::size_t most = Survey::kDefaultMost) : survey_(most) {}

    void add(const capture::Sighting& sighting, const HeardFrame& frame, Time now);

    // Brings the rows up to `now`:
    // - a row that was first heard within the last 10 s is new, but not in the first 10 s of all
    // - after 15 s without a frame a row is lost and stands at the bottom, after 60 s it leaves
    // - a new row, or one that was lost and came back, comes to its place in the order, behind the
    //   equal ones; while the list is frozen, to the end
    // - every 5 s the order is taken anew: where it is that of the signals, a row passes another
    // one
    //   that is 4 dB weaker or more
    // REQUIRES: not earlier than any time before.
    void advance(Time now);

    // While it is frozen, no row moves or leaves; new ones come.
    void freeze(bool isFrozen) { isFrozen_ = isFrozen; }

    // The order from the next advance() on, which takes it at once. At first it is defaultOrder().
    void sortBy(const NetworkOrder& order);

    // The rows that pass, in their order. They borrow from the list, until it changes. Those that a
    // network's frames tell of (Multiple BSSID) follow it.
    std::vector<Network> rows(const NetworkFilter& filter) const;

    // The signals of the radio that told of the network; null if it has no row.
    const WatchedSignal* signalOf(const MacAddress& address) const;

    struct Counts {
        std::size_t networks = 0;  // heard at any time, as far as they are kept
        std::size_t isNew = 0;
        std::size_t lost = 0;  // those that have left too
    };
    Counts counts() const;

    const Survey& survey() const { return survey_; }

  private:
    struct Row {
        Time first{};
        Time last{};
        WatchedSignal signal{};
        NetworkMoment moment{};
        std::vector<Network> networks{};
        OrderValues values{};
        bool isChanged = true;  // since `networks` was made
        bool isPlaced = false;
        bool isOutOfPlace = false;  // until the list is not frozen any longer
    };
    using Rows = std::map<MacAddress, Row>;

    void refresh(Rows::value_type& entry, Time now);
    void removeGone(Time now);
    void place(Rows::iterator row);
    void takeOrder();
    void takeNewOrder();
    void takeOutOfPlace();
    void sinkLost();

    Survey survey_;
    Rows rows_;
    std::vector<Rows::iterator> order_;
    Time lastOrder_{};
    NetworkOrder networkOrder_ = defaultOrder();
    bool isNewOrder_ = false;  // since the last advance()
    bool isFrozen_ = false;
};

}  // namespace halvane::tool

#endif
