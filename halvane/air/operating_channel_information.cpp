#include "halvane/air/operating_channel_information.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Operating Class", element.operatingClass);
    codec.number("Primary Channel Number", element.primaryChannel);
    codec.number("Frequency Segment 1 Channel Number", element.centerSegment1);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(OperatingChannelInformation, kLayout)

}  // namespace halvane::air
