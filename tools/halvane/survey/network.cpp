#include "tools/halvane/survey/network.h"

#include <span>

#include "halvane/air/bit_octets.h"
#include "halvane/air/rule.h"

#include "tools/halvane/survey/air_profile.h"

namespace halvane::tool {

std::string_view nameOf(const Network& network) {
    if (network.details.meshID) return *network.details.meshID;
    const auto& ssid = network.profile.ssid;
    if (!ssid) return {};
    const auto octets = ssid->value.bytes();
    return {reinterpret_cast<const char*>(octets.data()), octets.size()};
}

bool isHidden(const Network& network) {
    const air::BssProfile& profile = network.profile;
    const bool hasName = profile.ssid && !profile.isHidden;
    return !hasName && !network.details.meshID && !isNameCutOff(network);
}

bool isNameCutOff(const Network& network) {
    return network.profile.isCut && !network.profile.ssid && !network.details.meshID;
}

bool isNamed(const Network& network) {
    return !isHidden(network) && !isNameCutOff(network);
}

std::optional<int> widthOf(const Network& network) {
    const auto& span = network.profile.channel.span;
    const bool isSilent = span.rule == air::Rule::WidthDefault && !tellsGeneration(network);
    const bool isUntold = isSilent || span.rule == air::Rule::FrameCut;
    return isUntold ? std::nullopt : std::optional(span->width);
}

bool tellsGeneration(const Network& network) {
    const air::Rule rule = network.profile.generation.rule;
    const bool isSilent = rule == air::Rule::GenerationLegacy && network.details.highestRate == 0;
    return rule != air::Rule::FrameCut && !isSilent;
}

std::optional<int> signalOf(const Network& network) {
    if (network.moment != nullptr && network.moment->signal) return network.moment->signal;
    return network.statistics->signal.median();
}

Network networkOf(const MacAddress& bssid, const capture::Sighting& sighting,
                  const NetworkStatistics* statistics) {
    const auto& elements = sighting.record.ieBuffer();
    return {.bssid = bssid,
            .profile = airProfileOf(sighting),
            .details = networkDetailsOf(elements ? elements->bytes() : air::Octets()),
            .beaconInterval = sighting.record.beaconInterval(),
            .statistics = statistics};
}

}  // namespace halvane::tool
