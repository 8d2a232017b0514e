// One network interface of a Wi-Fi device, and the channels that it may use.
//
// A value type, except for its device, which copies of an interface and the interfaces of one
// device share. Only one thread at a time may use the interfaces that share a device.
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
    // Creates an interface without role, subsystem and channels. Each argument may be absent
    // (null). The device is shared, not copied.
    static HalvaneInterface initWithDevice_withMAC_withBSDName(
        std::shared_ptr<HalvaneDevice> device, std::optional<ByteBuffer> mac,
        std::optional<std::string> name);

    // Absent if "InterfaceName", "Role" or "Subsystem" is missing or not a string. Any other
    // missing key reads as nothing: an empty address, an empty device, no channels. The interface
    // gets a device of its own.
    static std::optional<HalvaneInterface> initWithSkeletonRepresentation(
        const PropertyListDictionary& skeleton);

    // Writes "MAC", "InterfaceName", "Role", "Subsystem" and "Device" if present, and "Channels" in
    // the order of availableChannels().
    PropertyListDictionary skeletonRepresentation() const;

    // The hardware address, 6 bytes.
    const std::optional<ByteBuffer>& ifMAC() const { return ifMAC_; }

    // The operating system's name for the interface: "wlan0".
    const std::optional<std::string>& ifName() const { return ifName_; }

    // Texts that the daemon chooses freely.
    const std::optional<std::string>& ifRole() const { return ifRole_; }
    const std::optional<std::string>& ifSubsystem() const { return ifSubsystem_; }

    // The device of the interface; null only if the interface was created without one.
    const std::shared_ptr<HalvaneDevice>& wifiDevice() const { return wifiDevice_; }

    // The channels that the interface can use, in the daemon's order:
    const std::vector<HalvaneChannel>& availableChannels() const { return availableChannels_; }
    std::vector<HalvaneChannel>& availableChannels() { return availableChannels_; }
    void setAvailableChannels(std::vector<HalvaneChannel> value) {
        availableChannels_ = std::move(value);
    }

    // Lines of padded labels. Channels are listed one per line between "[" and "]", as the
    // formatting engine prints an array.
    std::string description() const;

    // Devices are compared by value, whether shared or not.
    friend HALVANE_EXPORT bool operator==(const HalvaneInterface& a, const HalvaneInterface& b);

  private:
    friend class InterfaceBuilder;  // which sets what clients only read

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
