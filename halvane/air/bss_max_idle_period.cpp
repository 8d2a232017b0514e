#include "halvane/air/bss_max_idle_period.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kOptions[] = {{0, 1, "Protected Keep-Alive Required"}, {1, 7, "Reserved"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Max Idle Period", element.period, {.unit = "1000 TU"});
    codec.group("Idle Options", [&] { codec.bits(element.options, kOptions); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(BssMaxIdlePeriod, kLayout)

}  // namespace halvane::air
