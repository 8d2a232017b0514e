#include "tools/halvane/survey/air_profile.h"

#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/base/mac_address.h"
#include "halvane/ie/mac.h"

namespace halvane::tool {

namespace {

std::optional<int> signalOf(const HalvaneMAC& record) {
    const auto& signal = record.RSSI();
    const auto exact = signal ? signal->exactInt64() : std::nullopt;
    return exact ? std::optional(static_cast<int>(*exact)) : std::nullopt;
}

}  // namespace

air::BssProfile airProfileOf(const capture::Sighting& sighting) {
    const HalvaneMAC& record = sighting.record;
    const auto& elements = record.ieBuffer();
    air::FixedFields fixed;
    fixed.bssid = MacAddress::fromBytes(record.mac().bytes()).value_or(MacAddress());
    fixed.capabilities = record.capabilities();
    if (const auto interval = record.beaconInterval()) {
        fixed.beaconInterval = static_cast<std::uint16_t>(interval->exactInt64().value_or(0));
    }
    return air::profileOf(elements ? elements->bytes() : air::Octets(), fixed,
                          {sighting.radioFrequency, signalOf(record), sighting.isCut});
}

}  // namespace halvane::tool
