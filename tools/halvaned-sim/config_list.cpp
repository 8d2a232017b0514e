#include "tools/halvaned-sim/config_list.h"

#include <utility>

namespace halvane::sim {

void ConfigList::put(const HalvaneBSSConfig& config) {
    std::string key = config.ssid()->hex();
    const auto same = placeOfSSID_.find(key);
    if (same != placeOfSSID_.end()) {
        HalvaneBSSConfig copy = config;
        *same->second = std::move(copy);
        return;
    }
    Configs added = {config};
    placeOfSSID_.emplace(std::move(key), added.begin());
    configs_.splice(configs_.end(), added);
}

const HalvaneBSSConfig* ConfigList::find(const ByteBuffer& ssid) const {
    const auto found = placeOfSSID_.find(ssid.hex());
    return found != placeOfSSID_.end() ? &*found->second : nullptr;
}

void ConfigList::remove(const ByteBuffer& ssid) {
    const auto found = placeOfSSID_.find(ssid.hex());
    if (found == placeOfSSID_.end()) return;
    configs_.erase(found->second);
    placeOfSSID_.erase(found);
}

}  // namespace halvane::sim
