// One Wi-Fi device, as the daemon reports it.
//
// A value type, used by one thread at a time.
#ifndef HALVANE_MODEL_DEVICE_H
#define HALVANE_MODEL_DEVICE_H

#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"

namespace halvane {

class HALVANE_EXPORT HalvaneDevice {
  public:
    // A device without radio chains, so far. The address may be absent.
    static HalvaneDevice initWithMACAddress_withIndex(const std::optional<ByteBuffer>& address,
                                                      std::uint64_t index);

    // A missing key reads as 0, a missing address as an empty one.
    static HalvaneDevice initWithSkeletonRepresentation(const PropertyListDictionary& skeleton);

    // "MAC" unless there is no address, "Index", and "NumberSpatialStreams" (numRadioChains()).
    PropertyListDictionary skeletonRepresentation() const;

    // The hardware address, 6 bytes.
    const std::optional<ByteBuffer>& MACAddress() const { return MACAddress_; }

    std::uint64_t deviceIndex() const { return deviceIndex_; }

    // Radio chains, and so spatial streams.
    std::uint64_t numRadioChains() const { return numRadioChains_; }
    void setNumRadioChains(std::uint64_t value) { numRadioChains_ = value; }

    // Three lines of padded labels.
    std::string description() const;

    friend bool operator==(const HalvaneDevice&, const HalvaneDevice&) = default;

  private:
    HalvaneDevice() = default;

    std::optional<ByteBuffer> MACAddress_;
    std::uint64_t deviceIndex_ = 0;
    std::uint64_t numRadioChains_ = 0;
};

}  // namespace halvane

#endif
