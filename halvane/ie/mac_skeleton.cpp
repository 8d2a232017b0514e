#include <tuple>

#include "halvane/base/skeleton_internal.h"
#include "halvane/ie/mac.h"

namespace halvane {

namespace {

constexpr const char* kMAC = "MAC";
constexpr const char* kRawIEBuffer = "RawIEBuffer";
constexpr const char* kIEs = "IEs";
constexpr const char* kLastUpdated = "LastUpdated";
// The key that the format has for firstAdded().
constexpr const char* kFirstUpdated = "FirstUpdated";
constexpr const char* kCapabilities = "Capabilities";
constexpr const char* kChannel = "Channel";
constexpr const char* kNoise = "Noise";
constexpr const char* kRSSI = "RSSI";
constexpr const char* kBeaconInterval = "BeaconInterval";

// The buffers of an array; what is no buffer is passed over.
std::vector<ByteBuffer> buffersFor(const PropertyListDictionary& skeleton, const char* key) {
    std::vector<ByteBuffer> buffers;
    const auto* value = skeleton.find(key);
    const auto* array = value != nullptr ? value->as<PropertyListArray>() : nullptr;
    if (array == nullptr) return buffers;
    for (const PropertyListValue& item : *array) {
        if (const auto* buffer = item.as<ByteBuffer>()) buffers.push_back(*buffer);
    }
    return buffers;
}

}  // namespace

PropertyListDictionary HalvaneMAC::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton.set(kMAC, mac_);
    if (ieBuffer_) {
        skeleton.set(kRawIEBuffer, *ieBuffer_);
        skeleton.set(kIEs, PropertyListArray(IEs_.begin(), IEs_.end()));
    }
    skeleton.set(kLastUpdated, lastUpdated_);
    skeleton.set(kFirstUpdated, firstAdded_);
    skeleton.set(kCapabilities, capabilities_);
    skeleton::setIfPresent(skeleton, kChannel, channel_);
    skeleton::setIfPresent(skeleton, kNoise, noise_);
    skeleton::setIfPresent(skeleton, kRSSI, RSSI_);
    skeleton::setIfPresent(skeleton, kBeaconInterval, beaconInterval_);
    return skeleton;
}

HalvaneMAC HalvaneMAC::initWithSkeletonRepresentation(const PropertyListDictionary& skeleton) {
    return HalvaneMAC(skeleton);
}

HalvaneMAC::HalvaneMAC(const PropertyListDictionary& skeleton)
    : mac_(skeleton::dataFor(skeleton, kMAC)),
      ieBuffer_(skeleton::dataFor(skeleton, kRawIEBuffer)),
      IEs_(buffersFor(skeleton, kIEs)) {
    setCapabilityField(skeleton::uint16For(skeleton, kCapabilities));
    // The restored stamp overrides the one that the capability field set.
    lastUpdated_ = skeleton::uint64For(skeleton, kLastUpdated);
    firstAdded_ = skeleton::uint64For(skeleton, kFirstUpdated);
    channel_ = skeleton::numberFor(skeleton, kChannel);
    noise_ = skeleton::numberFor(skeleton, kNoise);
    RSSI_ = skeleton::numberFor(skeleton, kRSSI);
    beaconInterval_ = skeleton::numberFor(skeleton, kBeaconInterval);
    parseInformationElements();
}

bool operator==(const HalvaneMAC& a, const HalvaneMAC& b) {
    const auto carried = [](const HalvaneMAC& record) {
        return std::tie(record.mac_, record.IEs_, record.lastUpdated_, record.firstAdded_,
                        record.capabilities_, record.channel_, record.noise_, record.RSSI_,
                        record.beaconInterval_);
    };
    return carried(a) == carried(b) &&
           a.ieBuffer_.value_or(ByteBuffer()) == b.ieBuffer_.value_or(ByteBuffer());
}

}  // namespace halvane
