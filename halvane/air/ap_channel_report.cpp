#include "halvane/air/ap_channel_report.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Operating Class", element.operatingClass);
    codec.listToEnd(element.channels, [&](auto& channel) { codec.number("Channel", channel); });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ApChannelReport, kLayout)

}  // namespace halvane::air
