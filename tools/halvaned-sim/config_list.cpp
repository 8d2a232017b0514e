#include "tools/halvaned-sim/config_list.h"

#include <utility>

namespace halvane::sim {

void ConfigList::put(const HalvaneBSSConfig& config) {
    const auto same = placeOfSSID_.find(*config.ssid());
    if (same != placeOfSSID_.end()) {
        HalvaneBSSConfig copy = config;
        *same->second = std::move(copy);
        return;
    }
    Configs added = {config};
    placeOfSSID_.emplace(*config.ssid(), added.begin());
    configs_.splice(configs_.end(), added);
}

const HalvaneBSSConfig* ConfigList::find(const ByteBuffer& ssid) const {
    const auto found = placeOfSSID_.find(ssid);
    return found != placeOfSSID_.end() ? &*found->second : nullptr;
}

void ConfigList::remove(const ByteBuffer& ssid) {
    const auto found = placeOfSSID_.find(ssid);
    if (found == placeOfSSID_.end()) return;
    configs_.erase(found->second);
    placeOfSSID_.erase(found);
}

}  // namespace halvane::sim
