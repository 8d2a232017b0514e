#include "halvane/air/bss_color_change.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kNewColor[] = {{0, 6, "New BSS Color"}, {6, 2, "Reserved"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Color Switch Countdown", element.countdown);
    codec.group("New BSS Color Information",
                [&] { codec.bits(element.newColorInformation, kNewColor); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(BssColorChange, kLayout)

}  // namespace halvane::air
