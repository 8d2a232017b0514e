#include "halvane/air/mobility_domain.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kCapability[] = {
    {0, 1, "Fast BSS Transition Over DS"},
    {1, 1, "Resource Request Protocol Capability"},
    {2, 6, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.octets("MDID", element.identifier);
    codec.group("FT Capability And Policy", [&] { codec.bits(element.capability, kCapability); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MobilityDomain, kLayout)

}  // namespace halvane::air
