#include "halvane/regulatory/channel.h"

#include "halvane/base/skeleton_internal.h"
#include "halvane/regulatory/channel_map_internal.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

// Never destroyed, so that lookups work while the process ends.
union ProcessMap {
    constexpr ProcessMap() : map() {}
    ProcessMap(const ProcessMap&) = delete;
    ProcessMap& operator=(const ProcessMap&) = delete;
    ~ProcessMap() {}

    ChannelMap map;
};

constinit ProcessMap gProcessMap;

ChannelMap& channelMap() {
    return gProcessMap.map;
}

}  // namespace

HalvaneChannel HalvaneChannel::initWithChannel_withFrequency_isRadarProne(const Number& channel,
                                                                          const Number& frequency,
                                                                          bool isRadarProne) {
    HalvaneChannel record;
    record.channelNumber_ = channel.int64();
    record.channelFrequency_ = frequency.int64();
    record.isRadarProne_ = isRadarProne;
    return record;
}

HalvaneChannel HalvaneChannel::initWithSkeletonRepresentation(
    const PropertyListDictionary& skeleton) {
    HalvaneChannel record;
    record.channelNumber_ = skeleton::int64For(skeleton, "ChannelNumber");
    record.channelFrequency_ = skeleton::int64For(skeleton, "ChannelFrequency");
    record.isRadarProne_ = skeleton::boolFor(skeleton, "isRadarProne");
    record.isDisabled_ = skeleton::boolFor(skeleton, "isDisabled");
    record.supports40MHz_ = skeleton::boolFor(skeleton, "supports40MHz");
    record.supports80MHz_ = skeleton::boolFor(skeleton, "supports80MHz");
    return record;
}

PropertyListDictionary HalvaneChannel::skeletonRepresentation() const {
    PropertyListDictionary skeleton;
    skeleton.reserve(6);  // interfaces have many channels
    skeleton.set("ChannelNumber", channelNumber_);
    skeleton.set("ChannelFrequency", channelFrequency_);
    skeleton.set("isRadarProne", isRadarProne_);
    skeleton.set("isDisabled", isDisabled_);
    skeleton.set("supports40MHz", supports40MHz_);
    skeleton.set("supports80MHz", supports80MHz_);
    return skeleton;
}

std::string HalvaneChannel::description() const {
    std::string text = stringPrintF("Channel <%lld>", static_cast<long long>(channelNumber_));
    if (channelFrequency_ > 0) {
        appendPrintF(text, " Frequency <%lld>", static_cast<long long>(channelFrequency_));
    }
    appendPrintF(text, " Radar Prone <%s>", yesNo(isRadarProne_));
    appendPrintF(text, " Supports HT40 <%s>", yesNo(supports40MHz_));
    return text;
}

void HalvaneChannel::initChannelMapTable() {
    channelMap().build();
}

void HalvaneChannel::addChannelToMapTable_frequency_extensionChannel(unsigned channel,
                                                                     unsigned frequency,
                                                                     unsigned extensionChannel) {
    channelMap().add(channel, frequency, extensionChannel);
}

unsigned HalvaneChannel::channelNumberForFrequency(unsigned frequency) {
    return channelMap().numberForFrequency(frequency);
}

unsigned HalvaneChannel::channelFrequencyForNumber(unsigned channel) {
    return channelMap().frequencyForNumber(channel);
}

unsigned HalvaneChannel::channelExtensionForNumber(unsigned channel) {
    return channelMap().extensionForNumber(channel);
}

}  // namespace halvane
