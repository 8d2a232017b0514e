#include "halvane/air/eht_mcs_sets.h"

#include "halvane/air/eht_mcs_sets_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

std::optional<EhtMcsSets> EhtMcsSets::decode(Octets octets, const EhtPhyCapabilities& eht,
                                             const HePhyCapabilities& he, EhtSender sender) {
    const auto presence = ehtMcsSetsPresence(eht, he, sender);
    return decodeBy<EhtMcsSets>(
        [&](auto& codec, auto& sets) { kEhtMcsSetsLayout(codec, sets, presence); }, octets);
}

std::vector<std::uint8_t> EhtMcsSets::encode() const {
    return encodeBy([](auto& codec, auto& sets) { kEhtMcsSetsLayout(codec, sets, {}); }, *this);
}

}  // namespace halvane::air
