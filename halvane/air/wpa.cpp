#include "halvane/air/wpa.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/rsn_layout_internal.h"

namespace halvane::air {

namespace {

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Version", element.version);
    kRsnSuitesLayout(codec, element);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(Wpa, kLayout)

}  // namespace halvane::air
