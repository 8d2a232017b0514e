// What differs between two lists of devices.
//
// A plain value, and a pure function that any thread may call.
#ifndef TOOLS_HALVANED_RADIO_DEVICE_CHANGE_H
#define TOOLS_HALVANED_RADIO_DEVICE_CHANGE_H

#include <string>
#include <vector>

#include "tools/halvaned/radio/device_list.h"

namespace halvane::hosting {

struct DeviceChange {
    enum class Kind {
        Went,
        Renamed,
        Came,
        Altered,   // another address, mode, radio or driver, or a radio that can do other things
        Channels,  // other channels, or other rules for them
        Country,   // another country's rules
    };

    Kind kind = Kind::Came;
    unsigned index = 0;        // of the interface
    std::string interface {};  // its name; the last one if it went
    std::string formerName{};  // if it was renamed

    bool operator==(const DeviceChange&) const = default;
};

// In the order of Kind, and each in the order of the interfaces. An interface is the same one if
// its index is. One interface may have changes of several kinds.
std::vector<DeviceChange> changesBetween(const DeviceList& before, const DeviceList& after);

}  // namespace halvane::hosting

#endif
