#include "halvane/air/owe_transition_mode.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.address("BSSID", element.bssid);
    codec.template sized<std::uint8_t>("SSID Length", 0, [&] { codec.text("SSID", element.ssid); });
    codec.ifMore(element.operatingClass, [&](auto& value) { codec.number("Band Info", value); });
    codec.ifMore(element.channel, [&](auto& value) { codec.number("Channel Info", value); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(OweTransitionMode, kLayout)

}  // namespace halvane::air
