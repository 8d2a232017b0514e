// Wired interfaces in the place of radios, for trials: hostapd authenticates their peers by 802.1X.
// They have no channels.
//
// Only one thread at a time may use an object.
#ifndef TOOLS_HALVANED_RADIO_WIRED_DEVICES_H
#define TOOLS_HALVANED_RADIO_WIRED_DEVICES_H

#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/device_source.h"
#include "tools/halvaned/radio/link_events.h"
#include "tools/halvaned/radio/system_files.h"

namespace halvane::hosting {

class WiredDevices : public DeviceSource {
  public:
    // The interfaces of these names, as far as they are there.
    WiredDevices(LinkEvents links, std::vector<std::string> names,
                 SystemFiles files = SystemFiles());

    Result<DeviceUpdate, std::string> start() override;
    int descriptor() const override { return links_.descriptor(); }
    DeviceUpdate update() override;
    const DeviceList& devices() const override { return list_; }
    bool isAvailable() const override { return true; }
    std::string_view subsystem() const override { return "wired"; }

  private:
    DeviceList read() const;

    LinkEvents links_;
    const std::vector<std::string> names_;
    const SystemFiles files_;
    DeviceList list_;
};

}  // namespace halvane::hosting

#endif
