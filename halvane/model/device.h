// One Wi-Fi device, as the daemon reports it.
//
// A value type; only one thread at a time may use it.
#ifndef HALVANE_MODEL_DEVICE_H
#define HALVANE_MODEL_DEVICE_H

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "halvane/base/boxed.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"

namespace halvane {

class HALVANE_EXPORT HalvaneDevice {
  public:
    // Creates a device without radio chains. The address may be absent.
    static HalvaneDevice initWithMACAddress_withIndex(const std::optional<ByteBuffer>& address,
                                                      std::uint64_t index);

    // A missing key reads as 0, and a missing address as an empty one.
    static HalvaneDevice initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // Writes "MAC" if there is an address, "Index", and "NumberSpatialStreams" (numRadioChains()).
    PropertyListDictionary skeletonRepresentation() const;

    // The hardware address, 6 bytes.
    const std::optional<ByteBuffer>& MACAddress() const { return fields_->MACAddress; }

    // The daemon's number of the device.
    std::uint64_t deviceIndex() const { return fields_->deviceIndex; }

    // The number of radio chains, which is that of spatial streams.
    std::uint64_t numRadioChains() const { return fields_->numRadioChains; }
    void setNumRadioChains(std::uint64_t value) { fields_.change().numRadioChains = value; }

    // Three lines of padded labels.
    std::string description() const;

    friend bool operator==(const HalvaneDevice&, const HalvaneDevice&) = default;

  private:
    HalvaneDevice() = default;

    // Fresh fields equal those of an empty skeleton.
    struct Fields {
        std::optional<ByteBuffer> MACAddress{std::in_place};
        std::uint64_t deviceIndex = 0;
        std::uint64_t numRadioChains = 0;

        friend bool operator==(const Fields&, const Fields&) = default;
    };

    // In a box, since a daemon's reply may hold a device in every few bytes of text.
    Boxed<Fields> fields_;
};

}  // namespace halvane

#endif
