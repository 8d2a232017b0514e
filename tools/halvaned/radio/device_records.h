// The records of docs/protocol.md about devices.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANED_RADIO_DEVICE_RECORDS_H
#define TOOLS_HALVANED_RADIO_DEVICE_RECORDS_H

#include <string>
#include <string_view>
#include <vector>

#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

#include "tools/halvaned/radio/device_list.h"

namespace halvane::hosting {

// Each radio is a device, with the kernel's index. A wired interface is a device without radio
// chains, and has the index of the interface.
std::vector<HalvaneDevice> deviceRecords(const DeviceList& devices);

// In the order of the bands and frequencies. A channel counts as disabled if no network can be
// hosted there: if it is disabled, or passive without the need to look for radar. Channels without
// a number are left out.
std::vector<HalvaneChannel> channelRecords(const DeviceList& devices,
                                           const DeviceInterface& interface);

HalvaneInterface interfaceRecord(const DeviceList& devices, const DeviceInterface& interface,
                                 std::string role, std::string_view subsystem);

}  // namespace halvane::hosting

#endif
