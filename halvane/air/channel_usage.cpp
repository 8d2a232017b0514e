#include "halvane/air/channel_usage.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kModes[] = {{0, "noninfrastructure network"},
                                {1, "off-channel TDLS direct link"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Usage Mode", element.mode, {.names = kModes});
    codec.listWhile(
        [&](const auto& reader) {
            return reader.remaining() >= 2 && element.channels.size() < ChannelUsage::kMaxChannels;
        },
        element.channels,
        [&](auto& entry) {
            codec.number("Operating Class", entry.operatingClass);
            codec.number("Channel", entry.channel);
        });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ChannelUsage, kLayout)

}  // namespace halvane::air
