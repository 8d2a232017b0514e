#include "halvane/capture/folded_sighting.h"

#include <utility>

#include "halvane/base/property_list_value.h"
#include "halvane/capture/sighted_channel_internal.h"
#include "halvane/ie/mac.h"

namespace halvane::capture {

namespace {

template <typename T, typename U>
void takeOver(std::optional<T>& number, const std::optional<U>& newer) {
    if (newer) number.emplace(*newer);
}

// Returns an empty record with that time of addition.
HalvaneMAC recordSince(const ByteBuffer& mac, std::uint64_t firstAdded) {
    PropertyListDictionary skeleton;
    skeleton.set("MAC", mac);
    skeleton.set("FirstUpdated", firstAdded);
    return HalvaneMAC::initWithSkeletonRepresentation(skeleton);
}

}  // namespace

// The elements of one frame with its capability field. The values that a record derives depend on
// both.
struct HALVANE_HIDDEN FoldedSighting::Elements {
    explicit Elements(const Sighting& sighting)
        : bytes(sighting.record.ieBuffer()),
          capabilities(sighting.record.capabilities()),
          origin(sighting.origin) {}

    void putInto(HalvaneMAC& record) const {
        record.setCapabilityField(capabilities);
        if (bytes) record.setInformationElements(*bytes);
    }

    std::optional<ByteBuffer> bytes;
    std::uint16_t capabilities;
    std::optional<ElementsOrigin> origin;
};

FoldedSighting::Values::Values(const Sighting& sighting)
    : channel(sighting.record.channel()),
      noise(sighting.record.noise()),
      RSSI(sighting.record.RSSI()),
      beaconInterval(sighting.record.beaconInterval()),
      radioChannel(sighting.radioChannel),
      radioFrequency(sighting.radioFrequency),
      capabilities(sighting.record.capabilities()),
      isChannelOfRadio(sighting.isChannelOfRadio),
      frames(sighting.frames) {}

bool FoldedSighting::Values::mayReplaceChannel(bool isLaterOfRadio) const {
    return !channel || isChannelOfRadio || !isLaterOfRadio;
}

void FoldedSighting::Values::update(const BeaconFrame& beacon, const RadioInfo& radio) {
    const auto sighted = sightedChannelOf(channelOfElements(beacon.elements), radio);
    if (sighted.isKnown() && mayReplaceChannel(sighted.isOfRadio())) {
        sighted.putInto(channel);
        isChannelOfRadio = sighted.isOfRadio();
    }
    sighted.putRadioInto(radioChannel);
    takeOver(radioFrequency, radio.frequencyMHz);
    takeOver(noise, radio.noiseDBm);
    takeOver(RSSI, radio.signalDBm);
    beaconInterval.emplace(beacon.beaconInterval);
    capabilities = beacon.capabilities;
    ++frames;
}

void FoldedSighting::Values::update(const Values& later) {
    if (later.channel && mayReplaceChannel(later.isChannelOfRadio)) {
        channel = later.channel;
        isChannelOfRadio = later.isChannelOfRadio;
    }
    takeOver(radioChannel, later.radioChannel);
    takeOver(radioFrequency, later.radioFrequency);
    takeOver(noise, later.noise);
    takeOver(RSSI, later.RSSI);
    takeOver(beaconInterval, later.beaconInterval);
    capabilities = later.capabilities;
    frames += later.frames;
}

FoldedSighting::FoldedSighting(const Sighting& sighting)
    : mac_(sighting.record.mac()),
      firstAdded_(sighting.record.firstAdded()),
      elements_(std::make_unique<Elements>(sighting)),
      values_(sighting),
      hasSSID_(sighting.record.SSID().has_value()),
      isCut_(sighting.isCut) {}

FoldedSighting::FoldedSighting(FoldedSighting&&) noexcept = default;
FoldedSighting& FoldedSighting::operator=(FoldedSighting&&) noexcept = default;
FoldedSighting::~FoldedSighting() = default;

void FoldedSighting::fold(const Sighting& sighting) {
    if (isCut_ && !sighting.isCut) {
        elements_ = std::make_unique<Elements>(sighting);
        revealing_.reset();
        hasSSID_ = sighting.record.SSID().has_value();
        isCut_ = false;
    } else if (isCut_ == sighting.isCut && !hasSSID_ && sighting.record.SSID()) {
        revealing_ = std::make_unique<Elements>(sighting);
        hasSSID_ = true;
    }
    values_.update(Values(sighting));
}

void FoldedSighting::fold(FoldedSighting&& later) {
    if (isCut_ && !later.isCut_) {
        elements_ = std::move(later.elements_);
        revealing_ = std::move(later.revealing_);
        hasSSID_ = later.hasSSID_;
        isCut_ = false;
    } else if (isCut_ == later.isCut_ && !hasSSID_ && later.hasSSID_) {
        revealing_ = std::move(later.revealing_ ? later.revealing_ : later.elements_);
        hasSSID_ = true;
    }
    values_.update(later.values_);
}

bool FoldedSighting::foldNumbers(const BeaconFrame& beacon, const RadioInfo& radio) {
    const bool mayComplete = isCut_ && !beacon.isCut;
    const bool mayReveal = isCut_ == beacon.isCut && !hasSSID_;
    if (mayComplete || mayReveal) return false;
    values_.update(beacon, radio);
    return true;
}

Sighting FoldedSighting::sighting() const {
    HalvaneMAC record = recordSince(mac_, firstAdded_);
    elements_->putInto(record);
    if (revealing_) revealing_->putInto(record);
    record.setCapabilityField(values_.capabilities);
    record.setChannel(values_.channel);
    record.setNoise(values_.noise);
    record.setRSSI(values_.RSSI);
    record.setBeaconInterval(values_.beaconInterval);
    return {.record = std::move(record),
            .radioChannel = values_.radioChannel,
            .isChannelOfRadio = values_.isChannelOfRadio,
            .radioFrequency = values_.radioFrequency,
            .origin = revealing_ ? revealing_->origin : elements_->origin,
            .frames = values_.frames,
            .isNameRevealed = revealing_ != nullptr,
            .isCut = isCut_};
}

}  // namespace halvane::capture
