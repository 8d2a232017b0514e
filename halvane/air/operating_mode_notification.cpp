#include "halvane/air/operating_mode_notification.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kWidths[] = {
    {0, "20 MHz"}, {1, "40 MHz"}, {2, "80 MHz"}, {3, "160 or 80+80 MHz (deprecated)"}};
constexpr ValueName kStreams[] = {{0, "1"}, {1, "2"}, {2, "3"}, {3, "4"},
                                  {4, "5"}, {5, "6"}, {6, "7"}, {7, "8"}};

// 9.4.1.53.
constexpr BitField kMode[] = {
    {0, 2, "Channel Width", {.names = kWidths}}, {2, 1, "160/80+80 BW"}, {3, 1, "No LDPC"},
    {4, 3, "Rx NSS", {.names = kStreams}},       {7, 1, "Rx NSS Type"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Operating Mode", [&] { codec.bits(element.mode, kMode); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(OperatingModeNotification, kLayout)

}  // namespace halvane::air
