#include "tools/halvaned/radio/device_change.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "tools/halvaned/radio/radio.h"

namespace halvane::hosting {

namespace {

using Kind = DeviceChange::Kind;

const DeviceInterface* withIndex(const DeviceList& list, unsigned index) {
    const auto found = std::ranges::find(list.interfaces, index, &DeviceInterface::index);
    return found == list.interfaces.end() ? nullptr : &*found;
}

// Everything but the name.
bool isAltered(DeviceInterface before, const DeviceInterface& after) {
    before.name = after.name;
    return before != after;
}

using Channels = std::map<std::uint16_t, RadioBand>;

// The radio without its channels, and the channels alone.
std::pair<Radio, Channels> partsOf(const Radio* radio) {
    if (radio == nullptr) return {};
    Radio rest = *radio;
    Channels channels = std::exchange(rest.bands, {});
    return {std::move(rest), std::move(channels)};
}

void addChangesOf(const DeviceInterface& interface, const DeviceList& before,
                  const DeviceList& after, std::vector<DeviceChange>& changes) {
    const auto add = [&](Kind kind, std::string formerName = {}) {
        changes.push_back({kind, interface.index, interface.name, std::move(formerName)});
    };
    const DeviceInterface* const former = withIndex(before, interface.index);
    if (former == nullptr) return add(Kind::Came);
    if (former->name != interface.name) add(Kind::Renamed, former->name);
    const auto [radioBefore, channelsBefore] = partsOf(before.radioOf(*former));
    const auto [radioAfter, channelsAfter] = partsOf(after.radioOf(interface));
    if (isAltered(*former, interface) || radioBefore != radioAfter) add(Kind::Altered);
    if (channelsBefore != channelsAfter) add(Kind::Channels);
    if (before.countryOf(*former) != after.countryOf(interface)) add(Kind::Country);
}

}  // namespace

std::vector<DeviceChange> changesBetween(const DeviceList& before, const DeviceList& after) {
    std::vector<DeviceChange> changes;
    for (const DeviceInterface& interface : before.interfaces) {
        if (withIndex(after, interface.index) != nullptr) continue;
        changes.push_back({Kind::Went, interface.index, interface.name, {}});
    }
    for (const DeviceInterface& interface : after.interfaces) {
        addChangesOf(interface, before, after, changes);
    }
    std::ranges::stable_sort(changes, {}, &DeviceChange::kind);
    return changes;
}

}  // namespace halvane::hosting
