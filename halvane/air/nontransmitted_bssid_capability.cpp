#include "halvane/air/nontransmitted_bssid_capability.h"

#include "halvane/air/capability_information_internal.h"
#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Nontransmitted BSSID Capability",
                [&] { codec.bits(element.capabilities.fields, kCapabilityInformation); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(NontransmittedBssidCapability, kLayout)

}  // namespace halvane::air
