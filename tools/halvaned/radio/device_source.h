// Where the daemon's devices come from: radios (radio_devices.h), or wired interfaces for trials
// without a radio (wired_devices.h).
//
// Nothing waits. Only one thread at a time may use a source.
#ifndef TOOLS_HALVANED_RADIO_DEVICE_SOURCE_H
#define TOOLS_HALVANED_RADIO_DEVICE_SOURCE_H

#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvaned/radio/device_change.h"
#include "tools/halvaned/radio/device_list.h"

namespace halvane::hosting {

struct DeviceUpdate {
    std::vector<DeviceChange> changes{};
    // What could not be learned, for the log. The list keeps what was known of it.
    std::vector<std::string> faults{};
};

class DeviceSource {
  public:
    DeviceSource() = default;
    DeviceSource(const DeviceSource&) = delete;
    DeviceSource& operator=(const DeviceSource&) = delete;
    virtual ~DeviceSource() = default;

    // Reads the list for the first time: all interfaces come. A system without such devices has
    // none. The error says why the kernel cannot be asked. REQUIRES: called once, before update().
    virtual Result<DeviceUpdate, std::string> start() = 0;

    // Readable (EPOLLIN) while update() has something to do. Stays the same from start() on.
    virtual int descriptor() const = 0;

    // Takes the events that have come, and returns what they changed in the list.
    virtual DeviceUpdate update() = 0;

    // The list as of the last start() or update().
    virtual const DeviceList& devices() const = 0;

    // Whether the kernel has what the source asks. If not, the list is empty; a daemon says so
    // once.
    virtual bool isAvailable() const = 0;

    // "nl80211" or "wired": the Subsystem of its interfaces (docs/protocol.md), and hostapd's
    // driver.
    virtual std::string_view subsystem() const = 0;
};

}  // namespace halvane::hosting

#endif
