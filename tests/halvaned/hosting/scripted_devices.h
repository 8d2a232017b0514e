// Devices as the test has them come and go.
#ifndef TESTS_HALVANED_HOSTING_SCRIPTED_DEVICES_H
#define TESTS_HALVANED_HOSTING_SCRIPTED_DEVICES_H

#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/result.h"

#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvaned/radio/device_change.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/device_source.h"
#include "tools/halvaned/radio/radio.h"

namespace halvane::testing {

class ScriptedDevices : public hosting::DeviceSource {
  public:
    // What update() finds.
    hosting::DeviceList next;

    Result<hosting::DeviceUpdate, std::string> start() override {
        now_ = {};
        return update();
    }
    int descriptor() const override { return -1; }
    hosting::DeviceUpdate update() override {
        const auto before = std::exchange(now_, next);
        return {.changes = changesBetween(before, now_)};
    }
    const hosting::DeviceList& devices() const override { return now_; }
    bool isAvailable() const override { return true; }
    std::string_view subsystem() const override { return "nl80211"; }

  private:
    hosting::DeviceList now_;
};

// A radio that can host four networks on channel 6, and its interface.
inline void addRadio(hosting::DeviceList& list, unsigned index, const std::string& interface) {
    const hosting::RadioChannel channel{.frequency = 2437};
    hosting::Radio radio{.index = index,
                         .name = "phy" + std::to_string(index),
                         .modes = {tool::InterfaceMode::AP},
                         .mostAPs = 4};
    radio.bands[0].channels.emplace(channel.kilohertz(), channel);
    list.radios.push_back(radio);
    list.interfaces.push_back({.name = interface, .index = 10 + index, .radio = index});
}

}  // namespace halvane::testing

#endif
