#include "halvane/capture/bss_table.h"

#include <utility>

#include "halvane/base/property_list_value.h"

namespace halvane::capture {

namespace {

void takeOver(std::optional<Number>& number, const std::optional<Number>& newer) {
    if (newer) number = newer;
}

// An empty record that was added then.
HalvaneMAC recordSince(const ByteBuffer& mac, std::uint64_t firstAdded) {
    PropertyListDictionary skeleton;
    skeleton.set("MAC", mac);
    skeleton.set("FirstUpdated", firstAdded);
    return HalvaneMAC::initWithSkeletonRepresentation(skeleton);
}

}  // namespace

void BSSTable::Elements::putInto(HalvaneMAC& record) const {
    record.setCapabilityField(capabilities);
    if (bytes) record.setInformationElements(*bytes);
}

BSSTable::Entry::Entry(const Sighting& sighting)
    : mac_(sighting.record.mac()),
      firstAdded_(sighting.record.firstAdded()),
      elements_(sighting.record),
      channel_(sighting.record.channel()),
      noise_(sighting.record.noise()),
      RSSI_(sighting.record.RSSI()),
      beaconInterval_(sighting.record.beaconInterval()),
      radioChannel_(sighting.radioChannel),
      capabilities_(sighting.record.capabilities()),
      isChannelOfRadio_(sighting.isChannelOfRadio),
      hasSSID_(sighting.record.SSID().has_value()) {}

void BSSTable::Entry::fold(const Sighting& sighting) {
    const HalvaneMAC& newer = sighting.record;
    if (!hasSSID_ && newer.SSID()) {
        revealing_ = std::make_unique<Elements>(newer);
        hasSSID_ = true;
    }
    const bool isToldAlready = channel_ && !isChannelOfRadio_;
    if (newer.channel() && !(sighting.isChannelOfRadio && isToldAlready)) {
        channel_ = newer.channel();
        isChannelOfRadio_ = sighting.isChannelOfRadio;
    }
    takeOver(radioChannel_, sighting.radioChannel);
    takeOver(noise_, newer.noise());
    takeOver(RSSI_, newer.RSSI());
    takeOver(beaconInterval_, newer.beaconInterval());
    capabilities_ = newer.capabilities();
}

Sighting BSSTable::Entry::sighting() const {
    HalvaneMAC record = recordSince(mac_, firstAdded_);
    elements_.putInto(record);
    if (revealing_) revealing_->putInto(record);
    record.setCapabilityField(capabilities_);
    record.setChannel(channel_);
    record.setNoise(noise_);
    record.setRSSI(RSSI_);
    record.setBeaconInterval(beaconInterval_);
    return {std::move(record), radioChannel_, isChannelOfRadio_};
}

void BSSTable::add(const Sighting& sighting) {
    const ByteBuffer& address = sighting.record.mac();
    const auto known = indexOfAddress_.find(address);
    if (known != indexOfAddress_.end()) return entries_[known->second].fold(sighting);
    // Both or none, where memory runs out.
    const auto added = indexOfAddress_.emplace(address, entries_.size()).first;
    try {
        entries_.emplace_back(sighting);
    } catch (...) {
        indexOfAddress_.erase(added);
        throw;
    }
}

}  // namespace halvane::capture
