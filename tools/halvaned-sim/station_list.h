// The stations that have ever been associated, in the order in which they first came.
//
// A station is told by its address and the interface that it came to: one that comes to another
// interface is another station.
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

    // Null where there is none. Valid until the next add().
    HalvaneClient* find(const std::string& interface, const ByteBuffer& mac);

    // Both the station and its place in the index are added, or neither, where memory runs out.
    // REQUIRES: find() has none of its address on the interface.
    HalvaneClient& add(const std::string& interface, HalvaneClient client);

    std::size_t size() const { return stations_.size(); }

    std::vector<HalvaneClient> clients() const;

    // The addresses of those that are associated there now.
    std::vector<ByteBuffer> associatedWith(const std::string& interface) const;

    // How many are associated now, by interface; none of an interface that has none.
    std::map<std::string, std::size_t> associated() const;

  private:
    using Key = std::pair<ByteBuffer, std::string>;  // address and interface

    std::vector<Station> stations_;
    std::map<Key, std::size_t> index_;
};

}  // namespace halvane::sim

#endif
