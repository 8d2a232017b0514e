#include "halvane/air/tim.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kBitmapControl[] = {
    {0, 1, "Traffic Indicator"},
    {1, 7, "Bitmap Offset", {.unit = "2 octets"}},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("DTIM Count", element.dtimCount);
    codec.number("DTIM Period", element.dtimPeriod);
    codec.ifMore(element.bitmapControl, [&](auto& control) {
        codec.group("Bitmap Control", [&] { codec.bits(control, kBitmapControl); });
        codec.octets("Partial Virtual Bitmap", element.partialBitmap);
    });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Tim, kLayout)

}  // namespace halvane::air
