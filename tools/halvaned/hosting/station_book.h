// The stations of all networks, those that have left included: when each came and went.
//
// Only one thread at a time may use a book.
#ifndef TOOLS_HALVANED_HOSTING_STATION_BOOK_H
#define TOOLS_HALVANED_HOSTING_STATION_BOOK_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/model/client.h"
#include "halvane/model/station_change.h"

#include "tools/halvaned/hostapd/control_message.h"

namespace halvane::hosting {

class StationBook {
  public:
    // Stations that have left and are remembered. Of more, those that left first are forgotten.
    static constexpr std::size_t kMostGone = 4096;

    // Notes a change at a time in microseconds of up-time. Who was not there joins first.
    void note(const StationChange& change, std::uint64_t now);

    // Notes what hostapd tells of a station. One that is not there is not noted. `channel` is 0 if
    // there is none.
    void note(const std::string& interface, const StationRecord& record, int channel,
              std::uint64_t now);

    // Every station, in the order in which they first joined.
    std::vector<HalvaneClient> list() const;

    // Those that are there now, at an interface.
    std::size_t count(std::string_view interface) const;

  private:
    struct Entry {
        std::string interface;
        HalvaneClient client;
    };
    using Entries = std::list<Entry>;
    using Key = std::pair<std::string, MacAddress>;

    Entry& enter(const StationChange& change, std::uint64_t now);
    void leave(Entry& entry, std::uint16_t reason, std::uint64_t now);
    void forgetFirstGone();

    Entries entries_;
    std::map<Key, Entries::iterator> byKey_;
    std::map<std::string, std::size_t, std::less<>> present_;
};

}  // namespace halvane::hosting

#endif
