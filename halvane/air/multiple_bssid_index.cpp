#include "halvane/air/multiple_bssid_index.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("BSSID Index", element.index);
    codec.ifMore(element.dtimPeriod, [&](auto& value) { codec.number("DTIM Period", value); });
    codec.ifMore(element.dtimCount, [&](auto& value) { codec.number("DTIM Count", value); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MultipleBssidIndex, kLayout)

}  // namespace halvane::air
