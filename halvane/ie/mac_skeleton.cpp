#include <algorithm>
#include <cstddef>
#include <tuple>
#include <utility>

#include "halvane/base/skeleton_internal.h"
#include "halvane/ie/mac.h"
#include "halvane/ie/mac_record.h"

namespace halvane {

namespace {

constexpr const char* kMAC = "MAC";
constexpr const char* kRawIEBuffer = "RawIEBuffer";
constexpr const char* kIEs = "IEs";
constexpr const char* kLastUpdated = "LastUpdated";
// The format's key for firstAdded().
constexpr const char* kFirstUpdated = "FirstUpdated";
constexpr const char* kCapabilities = "Capabilities";
constexpr const char* kChannel = "Channel";
constexpr const char* kNoise = "Noise";
constexpr const char* kRSSI = "RSSI";
constexpr const char* kBeaconInterval = "BeaconInterval";

bool isBuffer(const PropertyListValue& value) {
    return value.as<ByteBuffer>() != nullptr;
}

// Returns the buffers of an array. Other items are skipped.
std::vector<ByteBuffer> buffersFor(const PropertyListDictionary& skeleton, const char* key) {
    std::vector<ByteBuffer> buffers;
    const auto* value = skeleton.find(key);
    const auto* array = value != nullptr ? value->as<PropertyListArray>() : nullptr;
    if (array == nullptr) return buffers;
    buffers.reserve(static_cast<std::size_t>(std::ranges::count_if(*array, isBuffer)));
    for (const PropertyListValue& item : *array) {
        if (const auto* buffer = item.as<ByteBuffer>()) buffers.push_back(*buffer);
    }
    return buffers;
}

// Returns whether the skeletons of two records have the same contents, apart from their elements.
// An absent element buffer equals an empty one.
bool areEqual(const MACRecord& a, const MACRecord& b) {
    const auto carried = [](const MACRecord& record) {
        return std::tie(record.mac, record.lastUpdated, record.firstAdded, record.capabilities,
                        record.channel, record.noise, record.RSSI, record.beaconInterval);
    };
    return carried(a) == carried(b) &&
           a.ieBuffer.value_or(ByteBuffer()) == b.ieBuffer.value_or(ByteBuffer());
}

}  // namespace

PropertyListDictionary HalvaneMAC::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton.set(kMAC, record_->mac);
    if (record_->ieBuffer) {
        skeleton.set(kRawIEBuffer, *record_->ieBuffer);
        skeleton.set(kIEs, PropertyListArray(IEs().begin(), IEs().end()));
    }
    skeleton.set(kLastUpdated, record_->lastUpdated);
    skeleton.set(kFirstUpdated, record_->firstAdded);
    skeleton.set(kCapabilities, record_->capabilities);
    skeleton::setIfPresent(skeleton, kChannel, record_->channel);
    skeleton::setIfPresent(skeleton, kNoise, record_->noise);
    skeleton::setIfPresent(skeleton, kRSSI, record_->RSSI);
    skeleton::setIfPresent(skeleton, kBeaconInterval, record_->beaconInterval);
    return skeleton;
}

HalvaneMAC HalvaneMAC::initWithSkeletonRepresentation(const PropertyListDictionary& skeleton) {
    return HalvaneMAC(skeleton);
}

HalvaneMAC::HalvaneMAC(const PropertyListDictionary& skeleton) {
    MACRecord record;
    record.mac = skeleton::dataFor(skeleton, kMAC);
    record.ieBuffer = skeleton::dataFor(skeleton, kRawIEBuffer);
    record.IEs = buffersFor(skeleton, kIEs);
    record.capabilities = skeleton::uint16For(skeleton, kCapabilities);
    record.lastUpdated = skeleton::uint64For(skeleton, kLastUpdated);
    record.firstAdded = skeleton::uint64For(skeleton, kFirstUpdated);
    record.channel = skeleton::numberFor(skeleton, kChannel);
    record.noise = skeleton::numberFor(skeleton, kNoise);
    record.RSSI = skeleton::numberFor(skeleton, kRSSI);
    record.beaconInterval = skeleton::numberFor(skeleton, kBeaconInterval);
    if (record.IEs.empty() && areEqual(record, *record_))
        return;  // the record is unchanged, which allocates nothing
    record_.change() = std::move(record);
    if (!record_->IEs.empty()) parseInformationElements();
}

bool operator==(const HalvaneMAC& a, const HalvaneMAC& b) {
    return a.IEs() == b.IEs() && areEqual(*a.record_, *b.record_);
}

}  // namespace halvane
