#include "tools/halvaned/radio/wired_devices.h"

#include <algorithm>
#include <utility>

#include "tools/halvane/input/interface_facts.h"
#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvaned/radio/device_change.h"

namespace halvane::hosting {

WiredDevices::WiredDevices(LinkEvents links, std::vector<std::string> names, SystemFiles files)
    : links_(std::move(links)), names_(std::move(names)), files_(std::move(files)) {}

Result<DeviceUpdate, std::string> WiredDevices::start() {
    list_ = read();
    return DeviceUpdate{.changes = changesBetween({}, list_)};
}

DeviceUpdate WiredDevices::update() {
    if (!links_.take()) return {};
    const DeviceList before = std::exchange(list_, read());
    return {.changes = changesBetween(before, list_)};
}

DeviceList WiredDevices::read() const {
    DeviceList list;
    for (const std::string& name : names_) {
        const auto facts = tool::interfaceFacts(name);
        if (!facts) continue;
        list.interfaces.push_back({.name = name,
                                   .index = facts->index,
                                   .address = facts->address,
                                   .mode = tool::InterfaceMode::AP,
                                   .driver = files_.driverOfInterface(name)});
    }
    std::ranges::sort(list.interfaces, {}, &DeviceInterface::index);
    return list;
}

}  // namespace halvane::hosting
