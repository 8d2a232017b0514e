// The stations that have ever been associated, in the order in which they first joined.
//
// Address and interface identify a station: the same address at another interface is another
// station.
#ifndef TOOLS_HALVANED_SIM_STATION_LIST_H
#define TOOLS_HALVANED_SIM_STATION_LIST_H

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/client.h"

namespace halvane::sim {

class StationList {
  public:
    struct Station {
        std::string interface;
        HalvaneClient client;
    };

    bool has(const std::string& interface, const ByteBuffer& mac) const;

    // Null if there is none. Valid until the next add().
    HalvaneClient* find(const std::string& interface, const ByteBuffer& mac);

    // Adds both the station and its place in the index, or neither if memory runs out.
    // REQUIRES: find() has none of its address on the interface.
    HalvaneClient& add(const std::string& interface, HalvaneClient client);

    std::size_t size() const { return stations_.size(); }

    std::vector<HalvaneClient> clients() const;

    // The addresses of the stations that are associated there now.
    std::vector<ByteBuffer> associatedWith(const std::string& interface) const;

    // The number of associated stations by interface, without interfaces that have none.
    std::map<std::string, std::size_t> associated() const;

  private:
    using Key = std::pair<ByteBuffer, std::string>;  // address and interface

    std::vector<Station> stations_;
    std::map<Key, std::size_t> index_;
};

}  // namespace halvane::sim

#endif
