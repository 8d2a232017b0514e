#include "halvane/air/ssid_element.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) { codec.ssid("SSID", element.ssid); };

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(SsidElement, kLayout)

}  // namespace halvane::air
