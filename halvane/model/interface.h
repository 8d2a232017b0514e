// One network interface of a Wi-Fi device, with the channels that it may use.
//
// A value type, but for its device: copies of an interface, and the interfaces of one device, share
// it. Interfaces that share a device are used by one thread at a time, all together.
#ifndef HALVANE_MODEL_INTERFACE_H
#define HALVANE_MODEL_INTERFACE_H

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/device.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

class HALVANE_EXPORT HalvaneInterface {
  public:
    // An interface without role, subsystem and channels. Each of the three may be absent (null).
    // The device is shared, not copied.
    static HalvaneInterface initWithDevice_withMAC_withBSDName(
        std::shared_ptr<HalvaneDevice> device, std::optional<ByteBuffer> mac,
        std::optional<std::string> name);

    // Absent where "InterfaceName", "Role" or "Subsystem" is missing, or is no string. Any other
    // missing key reads as nothing: an empty address, a device made of nothing, no channels. The
    // device is one of the interface's own.
    static std::optional<HalvaneInterface> initWithSkeletonRepresentation(
        const PropertyListDictionary& skeleton);

    // "MAC", "InterfaceName", "Role", "Subsystem" and "Device" where there is one, and "Channels",
    // in the order of availableChannels().
    PropertyListDictionary skeletonRepresentation() const;

    // The hardware address, 6 bytes.
    const std::optional<ByteBuffer>& ifMAC() const { return ifMAC_; }

    // The operating system's name of the interface: "wlan0".
    const std::optional<std::string>& ifName() const { return ifName_; }

    // Free texts of the daemon's.
    const std::optional<std::string>& ifRole() const { return ifRole_; }
    const std::optional<std::string>& ifSubsystem() const { return ifSubsystem_; }

    // The device that it belongs to; null only where it was made without one.
    const std::shared_ptr<HalvaneDevice>& wifiDevice() const { return wifiDevice_; }

    const std::vector<HalvaneChannel>& availableChannels() const { return availableChannels_; }
    std::vector<HalvaneChannel>& availableChannels() { return availableChannels_; }
    void setAvailableChannels(std::vector<HalvaneChannel> value) {
        availableChannels_ = std::move(value);
    }

    // Lines of padded labels; the channels, if any, stand one a line between "[" and "]", as the
    // formatting engine prints an array.
    std::string description() const;

    // Devices count by value, whether they are shared or not.
    friend HALVANE_EXPORT bool operator==(const HalvaneInterface& a, const HalvaneInterface& b);

  private:
    HalvaneInterface() = default;

    std::optional<ByteBuffer> ifMAC_;
    std::optional<std::string> ifName_;
    std::optional<std::string> ifRole_;
    std::optional<std::string> ifSubsystem_;
    std::shared_ptr<HalvaneDevice> wifiDevice_;
    std::vector<HalvaneChannel> availableChannels_;
};

}  // namespace halvane

#endif
