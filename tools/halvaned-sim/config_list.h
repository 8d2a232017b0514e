// The configurations of an interface, with unique SSIDs, in the order in which the SSIDs first
// arrived.
#ifndef TOOLS_HALVANED_SIM_CONFIG_LIST_H
#define TOOLS_HALVANED_SIM_CONFIG_LIST_H

#include <cstddef>
#include <list>
#include <map>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"

namespace halvane::sim {

class ConfigList {
  public:
    using value_type = HalvaneBSSConfig;
    using const_iterator = std::list<HalvaneBSSConfig>::const_iterator;

    ConfigList() = default;
    ConfigList(ConfigList&&) noexcept = default;
    ConfigList& operator=(ConfigList&&) noexcept = default;

    // Adds the configuration, or replaces the one with the same SSID. If memory runs out, the list
    // is unchanged.
    // REQUIRES: it has an SSID.
    void put(const HalvaneBSSConfig& config);

    // Null if there is none. Valid until the configuration is removed.
    const HalvaneBSSConfig* find(const ByteBuffer& ssid) const;

    // Does nothing if there is none.
    void remove(const ByteBuffer& ssid);

    bool empty() const { return configs_.empty(); }
    std::size_t size() const { return configs_.size(); }
    const_iterator begin() const { return configs_.begin(); }
    const_iterator end() const { return configs_.end(); }

    bool operator==(const ConfigList& other) const { return configs_ == other.configs_; }

  private:
    using Configs = std::list<HalvaneBSSConfig>;  // whose elements never move

    Configs configs_;
    std::map<ByteBuffer, Configs::iterator> placeOfSSID_;
};

}  // namespace halvane::sim

#endif
