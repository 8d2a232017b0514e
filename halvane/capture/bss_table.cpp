#include "halvane/capture/bss_table.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/ie/mac.h"

namespace halvane::capture {

namespace {

template <typename T>
void takeOver(std::optional<T>& number, const std::optional<T>& newer) {
    if (newer) number = newer;
}

// Returns an empty record with that time of addition.
HalvaneMAC recordSince(const ByteBuffer& mac, std::uint64_t firstAdded) {
    PropertyListDictionary skeleton;
    skeleton.set("MAC", mac);
    skeleton.set("FirstUpdated", firstAdded);
    return HalvaneMAC::initWithSkeletonRepresentation(skeleton);
}

// The elements of one frame with its capability field. The values that a record derives depend on
// both.
struct Elements {
    explicit Elements(const HalvaneMAC& record)
        : bytes(record.ieBuffer()), capabilities(record.capabilities()) {}

    void putInto(HalvaneMAC& record) const {
        record.setCapabilityField(capabilities);
        if (bytes) record.setInformationElements(*bytes);
    }

    std::optional<ByteBuffer> bytes;
    std::uint16_t capabilities;
};

// One BSS.
class Entry {
  public:
    explicit Entry(const Sighting& sighting);

    void fold(const Sighting& sighting);
    Sighting sighting() const;

  private:
    ByteBuffer mac_;
    std::uint64_t firstAdded_;
    Elements elements_;
    std::unique_ptr<Elements> revealing_;  // later elements that revealed the SSID
    std::optional<Number> channel_, noise_, RSSI_, beaconInterval_, radioChannel_;
    std::optional<int> radioFrequency_;
    std::uint16_t capabilities_;
    bool isChannelOfRadio_;
    bool hasSSID_;
};

Entry::Entry(const Sighting& sighting)
    : mac_(sighting.record.mac()),
      firstAdded_(sighting.record.firstAdded()),
      elements_(sighting.record),
      channel_(sighting.record.channel()),
      noise_(sighting.record.noise()),
      RSSI_(sighting.record.RSSI()),
      beaconInterval_(sighting.record.beaconInterval()),
      radioChannel_(sighting.radioChannel),
      radioFrequency_(sighting.radioFrequency),
      capabilities_(sighting.record.capabilities()),
      isChannelOfRadio_(sighting.isChannelOfRadio),
      hasSSID_(sighting.record.SSID().has_value()) {}

void Entry::fold(const Sighting& sighting) {
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
    takeOver(radioFrequency_, sighting.radioFrequency);
    takeOver(noise_, newer.noise());
    takeOver(RSSI_, newer.RSSI());
    takeOver(beaconInterval_, newer.beaconInterval());
    capabilities_ = newer.capabilities();
}

Sighting Entry::sighting() const {
    HalvaneMAC record = recordSince(mac_, firstAdded_);
    elements_.putInto(record);
    if (revealing_) revealing_->putInto(record);
    record.setCapabilityField(capabilities_);
    record.setChannel(channel_);
    record.setNoise(noise_);
    record.setRSSI(RSSI_);
    record.setBeaconInterval(beaconInterval_);
    return {std::move(record), radioChannel_, isChannelOfRadio_, radioFrequency_};
}

}  // namespace

class HALVANE_HIDDEN BSSTable::Entries {
  public:
    void add(const Sighting& sighting) {
        const ByteBuffer& address = sighting.record.mac();
        const auto known = indexOfAddress_.find(address);
        if (known != indexOfAddress_.end()) return entries_[known->second].fold(sighting);
        // If memory runs out, neither entry is added.
        const auto added = indexOfAddress_.emplace(address, entries_.size()).first;
        try {
            entries_.emplace_back(sighting);
        } catch (...) {
            indexOfAddress_.erase(added);
            throw;
        }
    }

    std::size_t size() const { return entries_.size(); }
    Sighting at(std::size_t index) const { return entries_[index].sighting(); }

  private:
    std::deque<Entry> entries_;
    // Keyed by octets, since a record from a skeleton may have any number of them.
    std::map<ByteBuffer, std::size_t> indexOfAddress_;
};

BSSTable::BSSTable() noexcept = default;
BSSTable::BSSTable(BSSTable&& other) noexcept = default;
BSSTable& BSSTable::operator=(BSSTable&& other) noexcept = default;
BSSTable::~BSSTable() = default;

void BSSTable::add(const Sighting& sighting) {
    if (!entries_) entries_ = std::make_unique<Entries>();
    entries_->add(sighting);
}

std::size_t BSSTable::size() const {
    return entries_ ? entries_->size() : 0;
}

Sighting BSSTable::at(std::size_t index) const {
    return entries_->at(index);
}

}  // namespace halvane::capture
