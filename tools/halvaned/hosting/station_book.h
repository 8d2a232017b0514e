// The stations of all networks, those that have left included: when each came and went.
//
// Only one thread at a time may use a book.
#ifndef TOOLS_HALVANED_HOSTING_STATION_BOOK_H
#define TOOLS_HALVANED_HOSTING_STATION_BOOK_H

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/client.h"
#include "halvane/model/station_change.h"

#include "tools/halvaned/hostapd/hosted_stations.h"

namespace halvane::hosting {

class StationBook {
  public:
    // Stations that have left and are remembered. Of more, those that left first are forgotten.
    static constexpr std::size_t kMostGone = 4096;

    // Notes a change at a time in microseconds of up-time. The change names the network's own
    // interface, and `interface` the one that was started. Who was not there joins first. Returns
    // whether the change counts: what a network tells of a station that has moved on to another one
    // of the same interface does not.
    bool note(const std::string& interface, const StationChange& change, std::uint64_t now);

    // Notes what hostapd tells of a station at one of the interface's networks. One that is not
    // there is not noted. `channel` is 0 if there is none.
    void note(const std::string& interface, const HostedStation& station, int channel,
              std::uint64_t now);

    // Every station, in the order in which they first joined.
    std::vector<HalvaneClient> list() const;

  private:
    struct Entry {
        std::string interface;
        std::string network;  // the interface of the one that it is in
        HalvaneClient client;
    };
    using Entries = std::list<Entry>;
    using Key = std::pair<std::string, MacAddress>;

    void join(const std::string& interface, const StationChange& change, std::uint64_t now);
    void leave(Entry& entry, std::uint16_t reason, std::uint64_t now);
    void forgetFirstGone();

    Entries entries_;
    std::map<Key, Entries::iterator> byKey_;
    std::size_t present_ = 0;
};

}  // namespace halvane::hosting

#endif
